// Indexed rows with every pixel replaced by its colour.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "common/Bytes.h"
#include "gim/WideLookup.h"

namespace kelvane {

class RowExpander {
 public:
  // `bits` is 4 or 8. `palette` has 2^bits colours, as bitmaps keep them, and must outlive the expander. Without `wide`
  // colours are looked up one by one.
  RowExpander(const std::vector<std::uint32_t>& palette, int bits, const WideLookup* wide = BestWideLookup());

  // Writes the colours of all pixels in `row`, 4 bytes each; at 4 bits that is two for every byte, the lower half
  // first.
  void Expand(ByteView row, std::uint8_t* target);

 private:
  using PixelPair = std::array<std::uint32_t, 2>;

  const std::vector<std::uint32_t>& palette_;
  int bits_;
  const WideLookup* wide_;
  SplitPalette split_;
  std::vector<PixelPair> pairs_;  // both pixels of every byte of a 4-bit row
  Bytes indexes_;                 // of a 4-bit row, a byte each
};

}  // namespace kelvane
