// Byte arrays and the little-endian integers in them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "common/RuntimeFailure.h"

namespace kelvane {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

// The most bytes that one array sized by a file's field may take; more is failure 7.
inline constexpr std::int64_t kMaxArrayBytes = std::int64_t{1} << 30;

// A count of bytes below 1 is failure 9 (an array must hold something), one above kMaxArrayBytes failure 7.
void RequireArraySize(std::int64_t count);

// `count` zero bytes; failures as above.
[[nodiscard]] Bytes AllocateBytes(std::int64_t count);

// Checked element access for arrays whose index comes from a file or a user: failure 9 outside.
template <class Container>
auto& At(Container& container, std::int64_t index) {
  if (index < 0 || index >= static_cast<std::int64_t>(std::size(container))) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  return container[static_cast<std::size_t>(index)];
}

// Little-endian integers at a byte offset; every byte of them must lie inside `bytes`, else failure 9.
[[nodiscard]] std::uint16_t ReadU16(ByteView bytes, std::int64_t offset);
[[nodiscard]] std::int16_t ReadI16(ByteView bytes, std::int64_t offset);
[[nodiscard]] std::uint32_t ReadU32(ByteView bytes, std::int64_t offset);
[[nodiscard]] std::int32_t ReadI32(ByteView bytes, std::int64_t offset);
void WriteU16(std::span<std::uint8_t> bytes, std::int64_t offset, std::uint16_t value);
void WriteI16(std::span<std::uint8_t> bytes, std::int64_t offset, std::int16_t value);
void WriteU32(std::span<std::uint8_t> bytes, std::int64_t offset, std::uint32_t value);
void WriteI32(std::span<std::uint8_t> bytes, std::int64_t offset, std::int32_t value);

// Copies `source` into `target` from `offset` on; failure 9 where it doesn't fit.
void CopyInto(std::span<std::uint8_t> target, std::int64_t offset, ByteView source);

// Appends `more` to `bytes`.
void Append(Bytes& bytes, ByteView more);

}  // namespace kelvane
