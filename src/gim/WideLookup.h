// Colours by their indexes, 64 pixels at a time, where the processor has tables of 128 bytes in its registers.
// Elsewhere there is no such thing, and callers look up one pixel after the other, with the same results.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kelvane {

// A palette taken apart: byte `k` of colour `i`, the lowest first, is bytes[k][i].
struct SplitPalette {
  alignas(64) std::array<std::array<std::uint8_t, 256>, 4> bytes{};

  void Set(std::size_t index, std::uint32_t colour) {
    for (std::size_t k = 0; k < bytes.size(); ++k) {
      bytes[k][index] = static_cast<std::uint8_t>(colour >> 8 * k);
    }
  }
};

struct WideLookup {
  // Writes the colours of `count` indexes, 4 bytes each.
  void (*expand)(const SplitPalette& palette, const std::uint8_t* indexes, std::size_t count, std::uint8_t* target);
  // Guesses the index of each of `count` pixels of 4 bytes: `guesses` has one for the upper 16 bits of the 32 that the
  // product of a pixel with `factor` has. Gives the number of pixels, from the first on, whose colours are those of
  // their guesses; it may be less than could be.
  std::size_t (*guess)(const SplitPalette& palette, const std::uint8_t* guesses, std::uint32_t factor,
                       const std::uint8_t* pixels, std::size_t count, std::uint8_t* indexes);
};

// Null where the processor lacks the instructions.
[[nodiscard]] const WideLookup* BestWideLookup();

}  // namespace kelvane
