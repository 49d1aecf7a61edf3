// Writes BMP files, well-formed or broken on purpose.
#pragma once

#include <cstdint>
#include <optional>

#include "common/Bytes.h"

namespace kelvane::test {

struct BmpSpec {
  std::int32_t width = 1;
  // Negative: rows are stored from the top down.
  std::int32_t height = 1;
  std::uint16_t bitCount = 32;
  // 0 none, 1 runs of 8-bit indexes, 2 runs of 4-bit indexes, 3 bit fields.
  std::int32_t compression = 0;
  // The header of 12 bytes with 16-bit sizes and palette entries of 3 bytes.
  bool coreHeader = false;
  // Behind the header's first 40 bytes, counted in its size: masks of larger headers, and whatever they hold.
  Bytes moreHeader = {};
  // Behind the header: the masks of bit fields, or the palette, 4 bytes an entry, blue first.
  Bytes palette = {};
  // The rows as they are stored, each padded to 4 bytes.
  Bytes bits = {};
  std::uint16_t signature = 19778;
  // Otherwise where the bits are.
  std::optional<std::int32_t> bitsOffset = {};
};

[[nodiscard]] Bytes BuildBmp(const BmpSpec& spec);

}  // namespace kelvane::test
