#include "common/FileWriter.h"

#include <cerrno>

#include "common/RuntimeFailure.h"

namespace kelvane {

void FileWriter::Open(const std::filesystem::path& path) {
  Close();
  file_.reset(std::fopen(path.c_str(), "wb"));
  if (!file_) {
    // For a file that is to be made, a missing part of the path can only be a folder.
    throw FailureFromErrno(errno == ENOENT ? ENOTDIR : errno);
  }
  // Writers hand over whole chunks; without a buffer a full disk shows at the write that met it.
  std::setvbuf(file_.get(), nullptr, _IONBF, 0);
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
