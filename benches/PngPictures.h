// Pictures for the benches of image decoding: photographs as a camera's noise and soft shapes make them, and drawings
// as programs make them, written to PNG files by libpng with its own choice of filters.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::bench {

enum class Content { Photo, Drawn };

struct PngKind {
  std::string name;
  int colourType = 6;
  int bitDepth = 8;
  bool interlaced = false;
};

// A square picture of `side` pixels.
[[nodiscard]] Bytes MakePng(const PngKind& kind, Content content, int side);

// The image data of all IDAT chunks of a PNG, and how many bytes it inflates to.
struct ImageData {
  Bytes compressed;
  std::size_t rawLength = 0;
};
[[nodiscard]] ImageData ImageDataOf(ByteView png);

}  // namespace kelvane::bench
