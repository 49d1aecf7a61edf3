// Writers of image files. `rgba` holds 4 bytes a pixel, the top row first; alpha is straight.
#pragma once

#include "common/Bytes.h"

namespace kelvane::sample {

// 54 bytes of header and 24 bits a pixel, without alpha.
[[nodiscard]] Bytes Bmp24(ByteView rgba, int width, int height);
// The same with 32 bits a pixel.
[[nodiscard]] Bytes Bmp32(ByteView rgba, int width, int height);
// 8 bits a pixel with a palette of 256 colours, without alpha.
[[nodiscard]] Bytes Bmp8(ByteView rgba, int width, int height);

[[nodiscard]] Bytes PngRgba(ByteView rgba, int width, int height);
// Up to 256 colours with their alpha.
[[nodiscard]] Bytes PngIndexed(ByteView rgba, int width, int height);
// 8 bits of grey: the lightness of each pixel.
[[nodiscard]] Bytes PngGrey(ByteView rgba, int width, int height);

// Up to 255 colours; pixels that can be seen through by half or more are transparent. The codes are literals, with the
// table cleared before they would get longer.
[[nodiscard]] Bytes Gif(ByteView rgba, int width, int height);

// Baseline, full colour resolution, without alpha.
[[nodiscard]] Bytes Jpeg(ByteView rgba, int width, int height);

// One strip of plain 24-bit pixels, without alpha.
[[nodiscard]] Bytes Tiff(ByteView rgba, int width, int height);

}  // namespace kelvane::sample
