#include "container/FileHead.h"

namespace kelvane {

void FileHead::RequireInside(std::int64_t position, std::int64_t length) const {
  if (position < 0 || position > end_ - length) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
}

std::uint8_t FileHead::ReadU8(std::int64_t position) const {
  RequireInside(position, 1);
  std::uint8_t value = 0;
  file_.Seek(position);
  file_.Read({&value, 1});
  return value;
}

std::int16_t FileHead::ReadI16(std::int64_t position) const {
  RequireInside(position, 2);
  return file_.ReadI16At(position);
}

std::int32_t FileHead::ReadI32(std::int64_t position) const {
  RequireInside(position, 4);
  return file_.ReadI32At(position);
}

ByteView FileHead::Look(std::int64_t position, std::int64_t length) const {
  return position <= end_ - length ? file_.Look(position, length) : ByteView();
}

void FileHead::Remember(std::int64_t position, std::int64_t length) {
  if (patches_.empty()) {
    lengthBefore_ = file_.Length();
  }
  file_.Seek(position);
  patches_.push_back({position, file_.ReadBytes(length)});
}

void FileHead::WriteI16(std::int64_t position, std::int16_t value) {
  if (ReadI16(position) != value) {
    Remember(position, 2);
    file_.WriteI16At(position, value);
  }
}

void FileHead::WriteI32(std::int64_t position, std::int32_t value) {
  if (ReadI32(position) != value) {
    Remember(position, 4);
    file_.WriteI32At(position, value);
  }
}

void FileHead::AddI32(std::int64_t position, std::int32_t delta) {
  WriteI32(position, AddInt32(ReadI32(position), delta));
}

void FileHead::TakeBack() {
  for (auto patch = patches_.rbegin(); patch != patches_.rend(); ++patch) {
    file_.Seek(patch->position);
    file_.Write(patch->before);
  }
  if (!patches_.empty() && file_.Length() > lengthBefore_) {
    file_.Splice(lengthBefore_, file_.Length() - lengthBefore_, {});
  }
  patches_.clear();
}

}  // namespace kelvane
