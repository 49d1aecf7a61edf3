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
  // Makes the file where nothing has that name. False, with no file open, where something has or it can't be made.
  bool OpenNew(const std::filesystem::path& path);
  // Makes the file; one of that name is deleted first, so that a link to elsewhere isn't followed. Failures: 76, 75,
  // 70, 61, 57.
  void Replace(const std::filesystem::path& path);
  [[nodiscard]] bool IsOpen() const { return file_ != nullptr; }
  // Appends `bytes`. Failures: 52 where no file is open, 61, 57.
  void Write(ByteView bytes);
  // Does nothing where no file is open. The file counts as closed even on a failure: 61, 57.
  void Close();

 private:
  struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  // Opens by a mode of the standard library. False, with errno set, where that fails.
  bool OpenBy(const std::filesystem::path& path, const char* mode);

  std::unique_ptr<std::FILE, CloseFile> file_;
};

}  // namespace kelvane
