// An input as the open file, with nothing written back to disk.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "common/RuntimeFailure.h"
#include "container/RcoFile.h"

namespace kelvane::fuzz {

// Runs an action, which may end in a run-time failure; false if it did.
template <class Action>
bool Succeeds(Action&& action) {
  try {
    action();
    return true;
  } catch (...) {
    static_cast<void>(CurrentFailure());
    return false;
  }
}

// A file that is there as long as the program runs; in memory where the system has a place for that, since changed
// files are flushed to disk.
class TempFile {
 public:
  TempFile() {
    const std::filesystem::path memory = "/dev/shm";
    std::error_code error;
    const std::filesystem::path folder =
        std::filesystem::is_directory(memory, error) ? memory : std::filesystem::temp_directory_path();
    std::string name = (folder / "kelvane-fuzz-XXXXXX").string();
    const int made = mkstemp(name.data());
    if (made < 0) {
      throw std::runtime_error("no temporary file");
    }
    close(made);
    path_ = name;
  }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;
  ~TempFile() {
    std::error_code error;
    std::filesystem::remove(path_, error);
  }
  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

class FuzzFile {
 public:
  explicit FuzzFile(ByteView content) : file_(Empty()) { file_.Assign(Bytes(content.begin(), content.end())); }
  FuzzFile(const FuzzFile&) = delete;
  FuzzFile& operator=(const FuzzFile&) = delete;
  ~FuzzFile() { file_.Discard(); }

  [[nodiscard]] RcoFile& File() { return file_; }

 private:
  static const std::filesystem::path& Empty() {
    static const TempFile empty;
    return empty.Path();
  }

  RcoFile file_;
};

}  // namespace kelvane::fuzz
