#include "imaging/Premultiply.h"

#include <bit>
#include <cstring>

namespace kelvane {

namespace {

// The value whose lowest byte is the first one in memory, from the value as it was loaded, and back.
constexpr std::uint32_t FirstByteLowest(std::uint32_t value) {
  if constexpr (std::endian::native == std::endian::little) {
    return value;
  } else {
    return value << 24 | (value & 0xFF00U) << 8 | (value >> 8 & 0xFF00U) | value >> 24;
  }
}

std::uint32_t Load(const std::uint8_t* pixel) {
  std::uint32_t value = 0;
  std::memcpy(&value, pixel, sizeof value);
  return FirstByteLowest(value);
}

}  // namespace

void Premultiply(std::span<std::uint8_t> pixels, ByteView alphaSource) {
  std::uint8_t* const target = pixels.data();
  const std::uint8_t* const source = alphaSource.data();
  const std::size_t size = pixels.size() / 4 * 4;
  for (std::size_t i = 0; i < size; i += 4) {
    const std::uint32_t pixel = Load(target + i);
    const std::uint32_t alpha = Load(source + i) >> 24;
    // (n + 1 + n / 256) / 256 is n / 255 for every product n of two bytes; blue and red are worked out together.
    constexpr std::uint32_t kBlueAndRed = 0x00FF00FF;
    std::uint32_t blueAndRed = (pixel & kBlueAndRed) * alpha;
    blueAndRed = (blueAndRed + 0x00010001 + (blueAndRed >> 8 & kBlueAndRed)) >> 8 & kBlueAndRed;
    std::uint32_t green = (pixel >> 8 & 0xFF) * alpha;
    green = (green + 1 + (green >> 8)) >> 8;
    const std::uint32_t result = FirstByteLowest(blueAndRed | green << 8 | alpha << 24);
    std::memcpy(target + i, &result, sizeof result);
  }
}

}  // namespace kelvane
