// Colours brought down to a palette.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::sample {

using Rgba8 = std::array<std::uint8_t, 4>;

struct IndexedPixels {
  std::vector<std::uint8_t> indexes;
  std::vector<Rgba8> colours;
};

// `rgba` holds 4 bytes a pixel in rows of `width` pixels. At most `maxColours` (up to 256) come out: the picture's own
// if they are no more than that, else those of a median cut. `dither` spreads what a pixel loses over its neighbours.
[[nodiscard]] IndexedPixels Quantise(ByteView rgba, int width, std::size_t maxColours, bool dither = false);

}  // namespace kelvane::sample
