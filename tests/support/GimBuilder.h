// Writes GIM files from pixels, block by block, for tests, benches, fuzz corpora and samples. It knows the format by
// itself and shares nothing with the converters that it is used to check.
#pragma once

#include <cstdint>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

// A colour as GIM files keep it: red in the lowest byte, then green, blue and alpha.
constexpr std::uint32_t Rgba(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha = 0xFF) {
  return std::uint32_t{red} | std::uint32_t{green} << 8 | std::uint32_t{blue} << 16 | std::uint32_t{alpha} << 24;
}

struct GimImageBlock {
  int width = 0;
  int height = 0;
  // 4 and 8: indexes; 16: words that are kept as they are; 32: colours.
  int bits = 32;
  // width x height values, the top row first: an index, a 16-bit word, or Rgba(...).
  std::vector<std::uint32_t> pixels = {};
  bool tiled = true;
  // Bytes that a row is padded to; a tile is this many bytes wide. It must hold a whole number of pixels.
  int pitchAlign = 16;
  // What the pixels that pad the image hold, to the right and below.
  std::uint32_t padding = 0;
  // The data begin at byte 32 + pixelStart of the block. Above 48 a gap of zeros lies before them, below 48 they begin
  // over the last bytes of the block's head.
  int pixelStart = 48;
  // Bytes behind the data that belong to the block.
  Bytes behind = {};
};

struct GimPaletteBlock {
  // Any number of them.
  std::vector<std::uint32_t> colours = {};
  int pixelStart = 48;
  Bytes behind = {};
};

class GimBuilder {
 public:
  // Each adds a block behind those that are there already. A wrong number of pixels, a depth other than those above or
  // a `pitchAlign` that cuts a pixel is std::invalid_argument.
  GimBuilder& Image(const GimImageBlock& image);
  GimBuilder& Palette(const GimPaletteBlock& palette);
  // A block of another kind: 80 bytes of head with `blockId`, and `content` behind it.
  GimBuilder& Other(std::uint16_t blockId, const Bytes& content = {});
  // Bytes that are no block at all.
  GimBuilder& Raw(const Bytes& bytes);

  // The file: signature, root and picture heads, and the blocks.
  [[nodiscard]] Bytes Build() const;

 private:
  Bytes blocks_;
  // Where the heads of the blocks lie in blocks_.
  std::vector<std::size_t> heads_;
  bool hasPalette_ = false;
};

// A file with an image block alone; `pixels` are Rgba(...) values, the top row first.
[[nodiscard]] Bytes BuildRgbaGim(int width, int height, const std::vector<std::uint32_t>& pixels, bool tiled = true);
// A file with a palette block before its image block; `bits` is 4 or 8.
[[nodiscard]] Bytes BuildIndexedGim(int width, int height, int bits, const std::vector<std::uint32_t>& indexes,
                                    const std::vector<std::uint32_t>& colours, bool tiled = true);

}  // namespace kelvane::test
