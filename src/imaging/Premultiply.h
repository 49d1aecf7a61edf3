// Colours multiplied by their alpha.
#pragma once

#include <cstdint>
#include <span>

#include "common/Bytes.h"

namespace kelvane {

// Gives each pixel (4 bytes: blue, green, red, alpha) the alpha of the pixel at the same place in `alphaSource`, which
// holds at least as many bytes, and multiplies its colours by it: times alpha divided by 255, truncated.
void Premultiply(std::span<std::uint8_t> pixels, ByteView alphaSource);

}  // namespace kelvane
