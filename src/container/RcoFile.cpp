#include "container/RcoFile.h"

#include <algorithm>
#include <array>
#include <utility>

#include "common/Files.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

RcoFile::~RcoFile() {
  try {
    Close();
  } catch (...) {
    Discard();  // the operation has failed already and its failure is being told; the old file is whole
  }
}

void RcoFile::Open(const std::filesystem::path& path) {
  Close();
  image_ = GapBuffer(ReadWholeFile(path));
  path_ = path;
  position_ = 0;
  changed_ = false;
  open_ = true;
}

void RcoFile::Close() {
  if (!open_) {
    return;
  }
  open_ = false;
  const GapBuffer content = std::exchange(image_, GapBuffer());
  if (std::exchange(changed_, false)) {
    SaveStaged(path_, content.Parts());
  }
}

void RcoFile::Discard() {
  changed_ = false;
  Close();
}

void RcoFile::Flush() {
  RequireOpen();
  if (std::exchange(changed_, false)) {
    open_ = false;
    SaveStaged(path_, image_.Parts());
    open_ = true;
  }
}

void RcoFile::RequireOpen() const {
  if (!open_) {
    throw RuntimeFailure(FailureCode::BadFileNumber);
  }
}

std::int64_t RcoFile::Length() const {
  RequireOpen();
  return image_.Size();
}

void RcoFile::Seek(std::int64_t position) {
  RequireOpen();
  if (position < 0) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  position_ = position;
}

void RcoFile::Read(std::span<std::uint8_t> target) {
  RequireOpen();
  const std::int64_t wanted = static_cast<std::int64_t>(target.size());
  const std::int64_t there = std::clamp(Length() - position_, std::int64_t{0}, wanted);
  if (there > 0) {
    image_.Read(position_, target.first(static_cast<std::size_t>(there)));
  }
  std::fill(target.begin() + there, target.end(), std::uint8_t{0});
  position_ += wanted;
}

Bytes RcoFile::ReadBytes(std::int64_t count) {
  RequireOpen();
  Bytes bytes = AllocateBytes(count);
  Read(bytes);
  return bytes;
}

std::int32_t RcoFile::ReadI32() {
  std::array<std::uint8_t, 4> bytes{};
  Read(bytes);
  return kelvane::ReadI32(bytes, 0);
}

std::int16_t RcoFile::ReadI16() {
  std::array<std::uint8_t, 2> bytes{};
  Read(bytes);
  return kelvane::ReadI16(bytes, 0);
}

std::int32_t RcoFile::ReadI32At(std::int64_t position) {
  Seek(position);
  return ReadI32();
}

std::int16_t RcoFile::ReadI16At(std::int64_t position) {
  Seek(position);
  return ReadI16();
}

void RcoFile::ReadLongsAt(std::int64_t position, std::span<std::int32_t> target) {
  Seek(position);
  for (std::int32_t& value : target) {
    value = ReadI32();
  }
}

ByteView RcoFile::Look(std::int64_t position, std::int64_t length) const {
  RequireOpen();
  return image_.Look(position, length);
}

void RcoFile::Write(ByteView bytes) {
  RequireOpen();
  const std::int64_t end = position_ + static_cast<std::int64_t>(bytes.size());
  if (end > Length()) {
    RequireArraySize(end - Length());
    image_.Grow(end);
  }
  image_.Write(position_, bytes);
  position_ = end;
  changed_ = true;
}

void RcoFile::WriteI32(std::int32_t value) {
  std::array<std::uint8_t, 4> bytes{};
  kelvane::WriteI32(bytes, 0, value);
  Write(bytes);
}

void RcoFile::WriteI32At(std::int64_t position, std::int32_t value) {
  Seek(position);
  WriteI32(value);
}

void RcoFile::WriteI16At(std::int64_t position, std::int16_t value) {
  std::array<std::uint8_t, 2> bytes{};
  kelvane::WriteI16(bytes, 0, value);
  Seek(position);
  Write(bytes);
}

void RcoFile::WriteLongsAt(std::int64_t position, std::span<const std::int32_t> values) {
  Seek(position);
  for (const std::int32_t value : values) {
    WriteI32(value);
  }
}

void RcoFile::Splice(std::int64_t position, std::int64_t removed, ByteView inserted) {
  RequireOpen();
  if (position < 0 || removed < 0) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  if (position > Length()) {
    RequireArraySize(position - Length());
    image_.Grow(position);
  }
  image_.Splice(position, std::min(removed, Length() - position), inserted);
  changed_ = true;
}

void RcoFile::Assign(Bytes content) {
  RequireOpen();
  image_ = GapBuffer(std::move(content));
  changed_ = true;
}

const Bytes& RcoFile::Image() {
  RequireOpen();
  return image_.Whole();
}

}  // namespace kelvane
