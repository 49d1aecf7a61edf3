// One small indexed image as a GIM file and as the two bitmaps that it makes, worked out by hand.
#pragma once

#include "common/Bytes.h"

namespace kelvane::test {

// 4 x 2 pixels of 8 bits with two colours: {1, 2, 3, 4} and {5, 6, 7, 8} as red, green, blue, alpha. The upper row is
// 0 1 1 0, the lower one 1 1 0 0; `tint` is added to the first colour's red.
[[nodiscard]] Bytes SmallGim(std::uint8_t tint = 0);
// Its bitmap with the depth kept: 256 colours, then two rows of 4 bytes, the lower one first.
[[nodiscard]] Bytes SmallGimBitmap(std::uint8_t tint = 0);
// Its bitmap of 32 bits a pixel.
[[nodiscard]] Bytes SmallGimBitmap32(std::uint8_t tint = 0);

}  // namespace kelvane::test
