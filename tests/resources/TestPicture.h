// A picture of as many colours as a test asks for, in each of the files that it can stand in.
#pragma once

#include <cstdint>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

// 16 pixels wide, opaque. Counted from the bottom left on, row by row upwards, pixel i has colour i modulo `colours`;
// other tints have other colours.
class TestPicture {
 public:
  explicit TestPicture(int colours, int height = 32, int tint = 0);

  [[nodiscard]] Bytes Bmp32() const;
  [[nodiscard]] Bytes Png() const;
  // With a palette of 256 colours; no more of them may be in use.
  [[nodiscard]] Bytes Bmp8() const;
  // What a GIM of it is with 32 bits a pixel, and with a palette in the order in which the colours are met.
  [[nodiscard]] Bytes DirectGim() const;
  [[nodiscard]] Bytes IndexedGim() const;
  // The latter with the colour of the top left pixel cleared.
  [[nodiscard]] Bytes IndexedGimWithoutFirstColour() const;

 private:
  struct Colour {
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
  };
  [[nodiscard]] Colour ColourOf(std::uint32_t index) const;
  // Indexes of colours, the top row first.
  [[nodiscard]] std::vector<std::uint32_t> Indexes() const;
  [[nodiscard]] std::vector<std::uint32_t> GimPalette() const;

  int colours_;
  int height_;
  int tint_;
};

}  // namespace kelvane::test
