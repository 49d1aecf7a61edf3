#include "container/InsertRun.h"

#include <utility>

#include "common/Bytes.h"

namespace kelvane {

void InsertPointers(RcoFile& file, std::int64_t position, const std::vector<std::int32_t>& pointers) {
  RequireArraySize(file.Length() - position);
  Bytes bytes(pointers.size() * 4);
  for (std::size_t i = 0; i < pointers.size(); ++i) {
    WriteI32(bytes, static_cast<std::int64_t>(i) * 4, pointers[i]);
  }
  file.Splice(position, 0, bytes);
}

void InsertedFile::Close() {
  const bool wasOpen = file_.IsOpen();
  try {
    file_.Close();
  } catch (...) {
    PutBack();
    throw;
  }
  if (!wasOpen) {
    PutBack();
  }
  before_.reset();
}

void InsertedFile::PutBack() {
  if (before_) {
    document_ = std::move(*before_);
    before_.reset();
  }
}

}  // namespace kelvane
