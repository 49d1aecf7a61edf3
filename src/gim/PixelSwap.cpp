#include "gim/PixelSwap.h"

#include <bit>
#include <cstddef>
#include <cstring>

namespace kelvane {

// The masks below name the bytes of a pixel as a long of this order.
static_assert(std::endian::native == std::endian::little);

void SwapRedAndBlue(std::span<std::uint8_t> pixels) {
  std::uint8_t* at = pixels.data();
  const std::size_t count = pixels.size() / 4;
  for (std::size_t i = 0; i < count; ++i) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, at + i * 4, 4);
    pixel = (pixel & 0xFF00FF00U) | (pixel >> 16 & 0xFFU) | (pixel & 0xFFU) << 16;
    std::memcpy(at + i * 4, &pixel, 4);
  }
}

}  // namespace kelvane
