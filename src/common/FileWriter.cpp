#include "common/FileWriter.h"

#include <cerrno>

#include "common/Files.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

bool FileWriter::OpenBy(const std::filesystem::path& path, const char* mode) {
  Close();
  file_.reset(std::fopen(path.c_str(), mode));
  if (!file_) {
    return false;
  }
  // Writers hand over whole chunks; without a buffer a full disk shows at the write that met it.
  std::setvbuf(file_.get(), nullptr, _IONBF, 0);
  return true;
}

void FileWriter::Open(const std::filesystem::path& path) {
  if (!OpenBy(path, "wb")) {
    // For a file that is to be made, a missing part of the path can only be a folder.
    throw FailureFromErrno(errno == ENOENT ? ENOTDIR : errno);
  }
}

bool FileWriter::OpenNew(const std::filesystem::path& path) {
  return OpenBy(path, "wbx");
}

void FileWriter::Replace(const std::filesystem::path& path) {
  if (!OpenNew(path)) {
    DeleteFileIfThere(path);
    Open(path);
  }
}

void FileWriter::Write(ByteView bytes) {
  if (!file_) {
    throw RuntimeFailure(FailureCode::BadFileNumber);
  }
  if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) {
    throw FailureFromErrno(errno);
  }
}

void FileWriter::Close() {
  if (file_ && std::fclose(file_.release()) != 0) {
    throw FailureFromErrno(errno);
  }
}

}  // namespace kelvane
