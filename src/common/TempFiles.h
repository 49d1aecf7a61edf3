// Temporary files of one command.
#pragma once

#include <filesystem>
#include <utility>
#include <vector>

#include "common/Files.h"

namespace kelvane {

// Deletes the files at the end of its scope, on whatever way the scope is left. Those that were never made don't
// matter.
class TempFiles {
 public:
  explicit TempFiles(std::vector<std::filesystem::path> paths) : paths_(std::move(paths)) {}
  TempFiles(const TempFiles&) = delete;
  TempFiles& operator=(const TempFiles&) = delete;
  ~TempFiles() {
    for (const std::filesystem::path& path : paths_) {
      DeleteFileQuietly(path);
    }
  }

  // Leaves the files alone from now on.
  void Dismiss() { paths_.clear(); }

 private:
  std::vector<std::filesystem::path> paths_;
};

}  // namespace kelvane
