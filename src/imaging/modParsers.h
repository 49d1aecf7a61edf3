// Small routines that all image parsers share.
#pragma once

#include <cstdint>
#include <memory>

#include "common/Bytes.h"
#include "imaging/PictureLoader.h"

namespace kelvane {

// True for an array that was never given elements.
[[nodiscard]] bool IsArrayEmptyMark(ByteView array);

// The bytes of a row of `width` pixels with `bitDepth` bits each, padded to 32 bits. `bitDepth` is an unsigned 8-bit
// value. Failure 6 outside that, or where the row's bits don't fit in signed 32 bits.
[[nodiscard]] std::int32_t AlignedRowBytes(std::int32_t bitDepth, std::int32_t width);

// `value` with its four bytes reversed.
[[nodiscard]] constexpr std::int32_t SwapLong(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  return static_cast<std::int32_t>(bits << 24 | (bits & 0xFF00U) << 8 | (bits >> 8 & 0xFF00U) | bits >> 24);
}

// The picture in `streamLength` bytes of `stream` from `streamStart` on, by the toolkit's readers; null without a
// loader or where the bytes are none that it reads. Failure 9 for a span outside the stream.
[[nodiscard]] std::unique_ptr<Picture> ArrayToPicture(PictureLoader* pictures, ByteView stream,
                                                      std::int32_t streamStart, std::int32_t streamLength);

// `streamLength` bytes of `stream` from `streamStart` on; failure 9 where they don't lie inside.
[[nodiscard]] ByteView SpanOf(ByteView stream, std::int32_t streamStart, std::int32_t streamLength);

}  // namespace kelvane
