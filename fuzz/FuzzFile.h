// An input as the open file, with nothing written back to disk.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

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

class FuzzFile {
 public:
  explicit FuzzFile(ByteView content) : file_(Empty().path) { file_.Assign(Bytes(content.begin(), content.end())); }
  FuzzFile(const FuzzFile&) = delete;
  FuzzFile& operator=(const FuzzFile&) = delete;
  ~FuzzFile() { file_.Discard(); }

  [[nodiscard]] RcoFile& File() { return file_; }

 private:
  // An empty file that is there as long as the program runs.
  struct EmptyFile {
    EmptyFile() {
      std::string name = (std::filesystem::temp_directory_path() / "kelvane-fuzz-XXXXXX").string();
      if (mkstemp(name.data()) < 0) {
        throw std::runtime_error("no temporary file");
      }
      path = name;
    }
    EmptyFile(const EmptyFile&) = delete;
    EmptyFile& operator=(const EmptyFile&) = delete;
    ~EmptyFile() {
      std::error_code error;
      std::filesystem::remove(path, error);
    }
    std::filesystem::path path;
  };
  static const EmptyFile& Empty() {
    static const EmptyFile empty;
    return empty;
  }

  RcoFile file_;
};

}  // namespace kelvane::fuzz
