// A folder of its own for a test, removed at the end with all that is in it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

class TempFolder {
 public:
  TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  // The path of a file in the folder.
  [[nodiscard]] std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  // Writes a file and returns its path.
  std::filesystem::path Write(const std::string& name, ByteView content) const;
  // The names of what lies in the folder, sorted.
  [[nodiscard]] std::vector<std::string> Names() const;

 private:
  std::filesystem::path path_;
};

}  // namespace kelvane::test
