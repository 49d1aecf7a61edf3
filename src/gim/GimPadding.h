// How much wider and higher than the image its pixels are stored.
#pragma once

#include "common/Int16.h"

namespace kelvane {

struct GimPadding {
  Int16 paddedWidth;
  Int16 paddedHeight;
};

// Width and height of an image in pixels, rounded up: the width to a whole number of pixels that fill `pitchAlign`
// bytes at `bits` bits each, the height to a multiple of 8 rows unless `pixelOrder` is 0. Failures: 11 where `bits` or
// the number of pixels in `pitchAlign` bytes is 0, 5 where that number is negative, 6 for a result above 32767.
[[nodiscard]] GimPadding ComputeGimPadding(Int16 width, Int16 height, Int16 pitchAlign, Int16 pixelOrder, Int16 bits);

}  // namespace kelvane
