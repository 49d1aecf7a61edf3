#include <gtest/gtest.h>
#include <stdexcept>

#include "support/GimBuilder.h"

namespace kelvane::test {
namespace {

Bytes Slice(const Bytes& bytes, std::size_t offset, std::size_t length) {
  return {bytes.begin() + static_cast<std::ptrdiff_t>(offset),
          bytes.begin() + static_cast<std::ptrdiff_t>(offset + length)};
}

TEST(GimBuilder, WritesADirectImageByteForByte) {
  const Bytes file = BuildRgbaGim(1, 1, {Rgba(0x11, 0x22, 0x33, 0x44)});
  Bytes expected = {'M', 'I', 'G', '.', '0', '0', '.', '1', 'P', 'S', 'P', 0,  0,  0,    0,    0,  // signature
                    2,   0,   16,  0,   240, 0,   0,   0,   16,  0,   0,   0,  16, 0,    0,    0,  // root
                    3,   0,   16,  0,   160, 0,   0,   0,   16,  0,   0,   0,  16, 0,    0,    0,  // picture
                    4,   0,   16,  0,   208, 0,   0,   0,   208, 0,   0,   0,  16, 0,    0,    0,  // image
                    48,  0,   0,   0,   3,   0,   1,   0,   1,   0,   1,   0,  32, 0,    16,   0,    8,
                    0,   2,   0,   0,   0,   0,   0,   48,  0,   0,   0,   64, 0,  0,    0,    192,  0,
                    0,   0,   0,   0,   0,   0,   1,   0,   1,   0,   3,   0,  1,  0,    64,   0,    0,
                    0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,  0,  0x11, 0x22, 0x33, 0x44};
  expected.resize(48 + 80 + 128);
  EXPECT_EQ(file, expected);
}

TEST(GimBuilder, SizesOfAPaddedIndexedImageAreThoseOfTheWorkedCase) {
  const Bytes file =
      BuildIndexedGim(100, 30, 8, std::vector<std::uint32_t>(3000, 7), std::vector<std::uint32_t>(256, 1));
  ASSERT_EQ(file.size(), 4816U);
  EXPECT_EQ(ReadU32(file, 20), 4800U);
  EXPECT_EQ(ReadU32(file, 36), 4784U);
  EXPECT_EQ(ReadU16(file, 18), 0);
  EXPECT_EQ(ReadU16(file, 48), 5);
  EXPECT_EQ(ReadU32(file, 52), 1104U);
  EXPECT_EQ(ReadU16(file, 48 + 1104), 4);
  EXPECT_EQ(ReadU32(file, 48 + 1104 + 4), 3664U);
}

TEST(GimBuilder, PutsTheEvenPixelOfA4BitImageIntoTheLowNibble) {
  const Bytes file =
      GimBuilder().Image({.width = 3, .height = 1, .bits = 4, .pixels = {1, 2, 3}, .tiled = false}).Build();
  ASSERT_EQ(file.size(), 48U + 80 + 16);
  EXPECT_EQ(Slice(file, 128, 3), (Bytes{0x21, 0x03, 0}));
}

TEST(GimBuilder, OrdersTilesFromLeftToRightThenDown) {
  std::vector<std::uint32_t> pixels(32 * 16);
  for (std::uint32_t y = 0; y < 16; ++y) {
    for (std::uint32_t x = 0; x < 32; ++x) {
      pixels[y * 32 + x] = y << 4 | x >> 1;
    }
  }
  const Bytes file = GimBuilder().Image({.width = 32, .height = 16, .bits = 8, .pixels = pixels}).Build();
  // Tile 0 rows 0 and 1, tile 1 row 0, tile 2 (the second band) row 0.
  EXPECT_EQ(Slice(file, 128, 16), (Bytes{0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7}));
  EXPECT_EQ(Slice(file, 144, 2), (Bytes{0x10, 0x10}));
  EXPECT_EQ(Slice(file, 128 + 128, 2), (Bytes{8, 8}));
  EXPECT_EQ(Slice(file, 128 + 256, 2), (Bytes{0x80, 0x80}));
}

TEST(GimBuilder, MovesTheDataByPixelStartAndCountsBytesBehindThem) {
  const Bytes file = GimBuilder().Palette({.colours = {Rgba(1, 2, 3, 4)}, .pixelStart = 50, .behind = {9, 8}}).Build();
  EXPECT_EQ(ReadU32(file, 52), 32U + 50 + 4 + 2);
  EXPECT_EQ(Slice(file, 128, 8), (Bytes{0, 0, 1, 2, 3, 4, 9, 8}));
}

TEST(GimBuilder, RefusesPixelsThatDoNotFitTheSize) {
  EXPECT_THROW((void)BuildRgbaGim(2, 1, {0}), std::invalid_argument);
}

}  // namespace
}  // namespace kelvane::test
