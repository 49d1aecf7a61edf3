#include "common/Bytes.h"

namespace kelvane {

namespace {

void RequireInside(std::size_t size, std::int64_t offset, std::int64_t length) {
  if (offset < 0 || length > static_cast<std::int64_t>(size) || offset > static_cast<std::int64_t>(size) - length) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
}

}  // namespace

void RequireArraySize(std::int64_t count) {
  if (count < 1) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  if (count > kMaxArrayBytes) {
    throw RuntimeFailure(FailureCode::OutOfMemory);
  }
}

Bytes AllocateBytes(std::int64_t count) {
  RequireArraySize(count);
  return Bytes(static_cast<std::size_t>(count));
}

std::uint16_t ReadU16(ByteView bytes, std::int64_t offset) {
  RequireInside(bytes.size(), offset, 2);
  const std::uint8_t* at = bytes.data() + offset;
  return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}

std::int16_t ReadI16(ByteView bytes, std::int64_t offset) {
  return static_cast<std::int16_t>(ReadU16(bytes, offset));
}

std::uint32_t ReadU32(ByteView bytes, std::int64_t offset) {
  RequireInside(bytes.size(), offset, 4);
  const std::uint8_t* at = bytes.data() + offset;
  return std::uint32_t{at[0]} | std::uint32_t{at[1]} << 8 | std::uint32_t{at[2]} << 16 | std::uint32_t{at[3]} << 24;
}

std::int32_t ReadI32(ByteView bytes, std::int64_t offset) {
  return static_cast<std::int32_t>(ReadU32(bytes, offset));
}

void WriteU16(std::span<std::uint8_t> bytes, std::int64_t offset, std::uint16_t value) {
  RequireInside(bytes.size(), offset, 2);
  std::uint8_t* at = bytes.data() + offset;
  at[0] = static_cast<std::uint8_t>(value);
  at[1] = static_cast<std::uint8_t>(value >> 8);
}

void WriteI16(std::span<std::uint8_t> bytes, std::int64_t offset, std::int16_t value) {
  WriteU16(bytes, offset, static_cast<std::uint16_t>(value));
}

void WriteU32(std::span<std::uint8_t> bytes, std::int64_t offset, std::uint32_t value) {
  RequireInside(bytes.size(), offset, 4);
  std::uint8_t* at = bytes.data() + offset;
  at[0] = static_cast<std::uint8_t>(value);
  at[1] = static_cast<std::uint8_t>(value >> 8);
  at[2] = static_cast<std::uint8_t>(value >> 16);
  at[3] = static_cast<std::uint8_t>(value >> 24);
}

void WriteI32(std::span<std::uint8_t> bytes, std::int64_t offset, std::int32_t value) {
  WriteU32(bytes, offset, static_cast<std::uint32_t>(value));
}

void CopyInto(std::span<std::uint8_t> target, std::int64_t offset, ByteView source) {
  RequireInside(target.size(), offset, static_cast<std::int64_t>(source.size()));
  if (!source.empty()) {
    std::memcpy(target.data() + offset, source.data(), source.size());
  }
}

void Append(Bytes& bytes, ByteView more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

}  // namespace kelvane
