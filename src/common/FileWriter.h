// A file that is written piece by piece from its start.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>

#include "common/Bytes.h"

namespace kelvane {

class FileWriter {
 public:
  FileWriter() = default;
  explicit FileWriter(const std::filesystem::path& path) { Open(path); }

  // Makes the file, or empties the one that is there; one that was open before is closed first. Failures: 76 where the
  // folder is missing, 75, 70, 61, 57.
  void Open(const std::filesystem::path& path);
  // Appends `bytes`. Failures: 52 where no file is open, 61, 57.
  void Write(ByteView bytes);
  // Does nothing where no file is open. The file counts as closed even on a failure: 61, 57.
  void Close();

 private:
  struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<std::FILE, CloseFile> file_;
};

}  // namespace kelvane
