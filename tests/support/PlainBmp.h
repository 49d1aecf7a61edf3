// Writes BMP files of the 54-byte header form from rows of bytes, for tests, benches and fuzz corpora.
#pragma once

#include <cstdint>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

// A colour as bitmaps keep it: blue in the lowest byte, then green, red and alpha.
constexpr std::uint32_t Bgra(std::uint8_t blue, std::uint8_t green, std::uint8_t red, std::uint8_t alpha = 0xFF) {
  return std::uint32_t{blue} | std::uint32_t{green} << 8 | std::uint32_t{red} << 16 | std::uint32_t{alpha} << 24;
}

struct PlainBmp {
  std::int32_t width = 0;
  std::int32_t height = 0;
  int bits = 32;
  std::vector<std::uint32_t> palette = {};
  // The bytes of each row, the top row first; each is filled with zeros to a multiple of 4.
  std::vector<Bytes> rows = {};
  // Bytes between the palette and the pixels, which bfOffBits counts.
  Bytes gap = {};
};

[[nodiscard]] Bytes BuildBmp(const PlainBmp& bmp);

// 32 bits a pixel; width x height Bgra(...) values, the top row first.
[[nodiscard]] Bytes BuildBmp32(int width, int height, const std::vector<std::uint32_t>& pixels);
// 8 bits a pixel; width x height indexes, the top row first.
[[nodiscard]] Bytes BuildBmp8(int width, int height, const std::vector<std::uint32_t>& indexes,
                              const std::vector<std::uint32_t>& palette);

}  // namespace kelvane::test
