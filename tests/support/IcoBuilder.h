// Writes icon and cursor files, well-formed or broken on purpose.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

// A bitmap as icons hold it. Everything is stored as it stands here: rows bottom first, padded to 4 bytes.
struct IcoBitmap {
  std::int32_t width = 16;
  // Of the picture; the header tells twice as much.
  std::int32_t height = 16;
  std::uint16_t bitCount = 32;
  std::int32_t compression = 0;
  // 4 bytes an entry, blue first.
  Bytes palette = {};
  Bytes xorBits = {};
  Bytes andMask = {};
  std::int32_t headerBytes = 40;
};

[[nodiscard]] Bytes BuildIcoBitmap(const IcoBitmap& bitmap);

// One entry of the directory with its image.
struct IcoImage {
  std::uint8_t width = 16;
  std::uint8_t height = 16;
  // In a cursor the place of its hot spot.
  std::uint16_t planes = 1;
  std::uint16_t bitCount = 32;
  Bytes data = {};
  // Otherwise the size and the place of `data`.
  std::optional<std::int32_t> bytesInRes = {};
  std::optional<std::int32_t> imageOffset = {};
};

struct IcoSpec {
  std::uint16_t reserved = 0;
  // 1 icon, 2 cursor.
  std::uint16_t type = 1;
  std::vector<IcoImage> images = {};
  // Otherwise the number of images.
  std::optional<std::uint16_t> count = {};
};

[[nodiscard]] Bytes BuildIco(const IcoSpec& spec);

// An image of `side` by `side` equal pixels: 1, 4 and 8 bits by a full palette whose entry 1 has the colour; 16
// (the upper 5 bits of each colour), 24 and 32 bits directly. The mask is clear.
[[nodiscard]] IcoImage PlainIcoImage(std::int32_t side, std::uint16_t bitCount, std::uint8_t blue, std::uint8_t green,
                                     std::uint8_t red, std::uint8_t alpha = 255);

}  // namespace kelvane::test
