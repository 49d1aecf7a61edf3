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
    image_.clear();  // the operation has failed already and its failure is being told; the old file is whole
  }
}

void RcoFile::Open(const std::filesystem::path& path) {
  Close();
  image_ = ReadWholeFile(path);
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
  const Bytes content = std::exchange(image_, {});
  if (std::exchange(changed_, false)) {
    SaveStaged(path_, content);
  }
}

void RcoFile::Flush() {
  RequireOpen();
  if (std::exchange(changed_, false)) {
    open_ = false;
    SaveStaged(path_, image_);
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
  return static_cast<std::int64_t>(image_.size());
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
  std::copy_n(image_.begin() + (there > 0 ? position_ : 0), there, target.begin());
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

void RcoFile::Write(ByteView bytes) {
  RequireOpen();
  const std::int64_t end = position_ + static_cast<std::int64_t>(bytes.size());
  if (end > Length()) {
    image_.resize(static_cast<std::size_t>(end));
  }
  CopyInto(image_, position_, bytes);
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
  if (position < 0 || position > Length() || removed < 0) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  const std::int64_t cut = std::min(removed, Length() - position);
  const std::int64_t kept = std::min(cut, static_cast<std::int64_t>(inserted.size()));
  CopyInto(image_, position, inserted.first(static_cast<std::size_t>(kept)));
  const auto at = image_.begin() + position + kept;
  if (kept < cut) {
    image_.erase(at, image_.begin() + position + cut);
  } else {
    image_.insert(at, inserted.begin() + kept, inserted.end());
  }
  changed_ = true;
}

void RcoFile::Assign(Bytes content) {
  RequireOpen();
  image_ = std::move(content);
  changed_ = true;
}

const Bytes& RcoFile::Image() const {
  RequireOpen();
  return image_;
}

}  // namespace kelvane
