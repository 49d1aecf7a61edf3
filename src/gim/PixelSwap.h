// GIM files keep red, green, blue, alpha; BMP files keep blue, green, red, alpha.
#pragma once

#include <cstdint>
#include <span>

namespace kelvane {

// Swaps the first and third byte of every pixel of 4 bytes; a rest of fewer bytes stays as it is.
void SwapRedAndBlue(std::span<std::uint8_t> pixels);

}  // namespace kelvane
