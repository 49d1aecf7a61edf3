// Bitmaps whose depth is kept: 4, 8 and 32 bits a pixel.
#include <gtest/gtest.h>

#include "gim/BitmapToGim.h"
#include "gim/GimToBitmap.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

using namespace test;
using Values = std::vector<std::uint32_t>;

Values Counted(std::size_t count, std::uint32_t limit) {
  Values values(count);
  for (std::size_t i = 0; i < count; ++i) {
    values[i] = static_cast<std::uint32_t>(i * 11 + i / 7) % limit;
  }
  return values;
}

// The same colours as a bitmap keeps them and as a GIM does.
Values BmpColours(std::uint32_t count) {
  Values colours;
  for (std::uint32_t i = 0; i < count; ++i) {
    colours.push_back(Bgra(static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i * 5),
                           static_cast<std::uint8_t>(255 - i), static_cast<std::uint8_t>(i * 9 + 1)));
  }
  return colours;
}

Values GimColours(std::uint32_t count) {
  Values colours;
  for (std::uint32_t i = 0; i < count; ++i) {
    colours.push_back(Rgba(static_cast<std::uint8_t>(255 - i), static_cast<std::uint8_t>(i * 5),
                           static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i * 9 + 1)));
  }
  return colours;
}

Bytes Converted(const Bytes& bmp, Int16 pixelOrder = 1, bool firstColTrans = false) {
  const std::optional<Bytes> gim = BitmapToGim(bmp, false, pixelOrder, firstColTrans);
  EXPECT_TRUE(gim.has_value());
  return gim.value_or(Bytes{});
}

Values Mapped(const Values& pixels, const Values& colours) {
  Values mapped;
  for (const std::uint32_t pixel : pixels) {
    mapped.push_back(colours[pixel]);
  }
  return mapped;
}

// A 4-bit bitmap whose rows are the bytes of a GIM's rows: the even pixel in the lower half.
Bytes Bmp4(int width, int height, const Values& indexes, const Values& palette) {
  PlainBmp bmp = {.width = width, .height = height, .bits = 4, .palette = palette};
  for (int y = 0; y < height; ++y) {
    Bytes row(static_cast<std::size_t>(width + 1) / 2);
    for (int x = 0; x < width; ++x) {
      const std::uint32_t index = indexes[static_cast<std::size_t>(y * width + x)];
      row[static_cast<std::size_t>(x / 2)] |= static_cast<std::uint8_t>(x % 2 == 0 ? index : index << 4);
    }
    bmp.rows.push_back(row);
  }
  return BuildBmp(bmp);
}

TEST(BitmapToGim, An8BitBitmapOf100By30GivesTheSizesOfTheWorkedCase) {
  const Bytes gim = Converted(BuildBmp8(100, 30, Counted(3000, 256), BmpColours(256)));
  ASSERT_EQ(gim.size(), 4816U);
  EXPECT_EQ(ReadU32(gim, 16 + 4), 4800U);         // root
  EXPECT_EQ(ReadU32(gim, 32 + 4), 4784U);         // picture
  EXPECT_EQ(ReadU32(gim, 48 + 4), 1104U);         // palette
  EXPECT_EQ(ReadU32(gim, 48 + 1104 + 4), 3664U);  // image
}

TEST(BitmapToGim, SmallImagesTakeOneTileOf128Bytes) {
  EXPECT_EQ(Converted(BuildBmp8(16, 8, Values(128), BmpColours(256))).size(), 48U + 1104 + 80 + 128);
  EXPECT_EQ(Converted(BuildBmp32(1, 1, {1})).size(), 48U + 80 + 128);
  EXPECT_EQ(Converted(Bmp4(2, 1, {1, 2}, BmpColours(16))).size(), 48U + 144 + 80 + 128);
}

TEST(BitmapToGim, TheHeadsOfA4BitImageAreWrittenByteForByte) {
  const Bytes gim = Converted(Bmp4(20, 10, Values(200, 3), BmpColours(16)));
  // The image block takes 80 + 16 x 16 bytes, the palette block 80 + 64.
  const Bytes heads = {'M', 'I', 'G', '.', '0',  '0', '.', '1', 'P', 'S', 'P', 0, 0,  0, 0, 0,   // signature
                       2,   0,   0,   0,   0x00, 2,   0,   0,   16,  0,   0,   0, 16, 0, 0, 0,   // root: 512
                       3,   0,   0,   0,   0xF0, 1,   0,   0,   16,  0,   0,   0, 16, 0, 0, 0};  // picture: 496
  const Bytes palette = {5,  0, 0, 0, 144, 0, 0, 0, 144, 0, 0,  0, 16,  0, 0, 0,                 //
                         48, 0, 0, 0,                                                            //
                         3,  0, 0, 0, 16,  0, 1, 0, 32,  0, 16, 0, 1,   0, 2, 0,  // 16 colours of 32 bits
                         0,  0, 0, 0, 48,  0, 0, 0, 64,  0, 0,  0, 128, 0, 0, 0,  //
                         0,  0, 0, 0, 2,   0, 1, 0, 3,   0, 1,  0, 64,  0, 0, 0,  //
                         0,  0, 0, 0, 0,   0, 0, 0, 0,   0, 0,  0};
  const Bytes image = {4,  0, 0, 0, 0x50, 1, 0,  0, 0x50, 1, 0,  0, 16,   0, 0, 0,  // 336
                       48, 0, 0, 0,                                                 //
                       4,  0, 1, 0, 20,   0, 10, 0, 4,    0, 16, 0, 8,    0, 2, 0,  //
                       0,  0, 0, 0, 48,   0, 0,  0, 64,   0, 0,  0, 0x40, 1, 0, 0,  // 320
                       0,  0, 0, 0, 1,    0, 1,  0, 3,    0, 1,  0, 64,   0, 0, 0,  //
                       0,  0, 0, 0, 0,    0, 0,  0, 0,    0, 0,  0};
  ASSERT_EQ(palette.size(), 80U);
  ASSERT_EQ(image.size(), 80U);
  ASSERT_EQ(gim.size(), 48U + 144 + 336);
  EXPECT_EQ(Bytes(gim.begin(), gim.begin() + 48), heads);
  EXPECT_EQ(Bytes(gim.begin() + 48, gim.begin() + 128), palette);
  EXPECT_EQ(Bytes(gim.begin() + 192, gim.begin() + 272), image);
}

TEST(BitmapToGim, RowsThatPadTheHeightHoldIndex0) {
  const Bytes gim = Converted(BuildBmp8(100, 30, Values(3000, 9), BmpColours(256)));
  ASSERT_EQ(gim.size(), 4816U);
  // The last band of 8 rows is 7 tiles of 128 bytes; rows 30 and 31 are the last two of each tile.
  for (std::size_t tile = 4816 - 7 * 128; tile < 4816; tile += 128) {
    EXPECT_EQ(Bytes(gim.begin() + static_cast<std::ptrdiff_t>(tile + 96),
                    gim.begin() + static_cast<std::ptrdiff_t>(tile + 128)),
              Bytes(32));
    EXPECT_EQ(gim[tile + 80], 9);
  }
}

TEST(BitmapToGim, An8BitBitmapBecomesTheGimOfItsPixels) {
  for (const auto& [width, height] : std::vector<std::pair<int, int>>{{1, 1}, {16, 8}, {18, 11}, {100, 30}, {33, 17}}) {
    const Values indexes = Counted(static_cast<std::size_t>(width * height), 256);
    const Bytes bmp = BuildBmp8(width, height, indexes, BmpColours(256));
    EXPECT_EQ(Converted(bmp, 1), BuildIndexedGim(width, height, 8, indexes, GimColours(256), true));
    EXPECT_EQ(Converted(bmp, 0), BuildIndexedGim(width, height, 8, indexes, GimColours(256), false));
  }
}

TEST(BitmapToGim, A4BitBitmapKeepsItsNibbles) {
  for (const auto& [width, height] : std::vector<std::pair<int, int>>{{2, 1}, {32, 8}, {20, 10}, {66, 17}, {15, 3}}) {
    const Values indexes = Counted(static_cast<std::size_t>(width * height), 16);
    const Bytes bmp = Bmp4(width, height, indexes, BmpColours(16));
    EXPECT_EQ(Converted(bmp, 1), BuildIndexedGim(width, height, 4, indexes, GimColours(16), true));
    EXPECT_EQ(Converted(bmp, 0), BuildIndexedGim(width, height, 4, indexes, GimColours(16), false));
  }
}

TEST(BitmapToGim, A32BitBitmapBecomesTheGimOfItsPixels) {
  for (const auto& [width, height] : std::vector<std::pair<int, int>>{{1, 1}, {4, 8}, {37, 19}}) {
    const Values pixels = Counted(static_cast<std::size_t>(width * height), 200);
    const Bytes bmp = BuildBmp32(width, height, Mapped(pixels, BmpColours(200)));
    EXPECT_EQ(Converted(bmp, 1), BuildRgbaGim(width, height, Mapped(pixels, GimColours(200)), true));
    EXPECT_EQ(Converted(bmp, 0), BuildRgbaGim(width, height, Mapped(pixels, GimColours(200)), false));
  }
}

TEST(BitmapToGim, A32BitBitmapKeepsEachPixelsAlphaFromTheFourthByte) {
  const Bytes gim = Converted(BuildBmp32(2, 1, {Bgra(1, 2, 3, 0), Bgra(4, 5, 6, 0x80)}), 0);
  EXPECT_EQ(Bytes(gim.begin() + 128, gim.begin() + 136), (Bytes{3, 2, 1, 0, 6, 5, 4, 0x80}));
}

TEST(BitmapToGim, BytesThatPadTheBitmapsRowLandInThePaddingOfTheGim) {
  PlainBmp bmp = {.width = 5, .height = 1, .bits = 8, .palette = BmpColours(256)};
  bmp.rows = {{1, 2, 3, 4, 5, 0xE1, 0xE2, 0xE3}};
  const Bytes gim = Converted(BuildBmp(bmp), 0);
  EXPECT_EQ(Bytes(gim.end() - 16, gim.end()), (Bytes{1, 2, 3, 4, 5, 0xE1, 0xE2, 0xE3, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(BitmapToGim, RowsOf9PixelsAt4BitsAreReadAs4Bytes) {
  // Rows of 8 bytes in the file, of which 4 are taken at a time: the top row is read from the bottom row's second half.
  PlainBmp bmp = {.width = 9, .height = 2, .bits = 4, .palette = BmpColours(16)};
  bmp.rows = {{0x11, 0x12, 0x13, 0x14, 0x15}, {0x21, 0x22, 0x23, 0x24, 0x25}};
  const Bytes gim = Converted(BuildBmp(bmp), 0);
  EXPECT_EQ(Bytes(gim.end() - 32, gim.end()), (Bytes{0x25, 0,    0,    0,    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                                     0x21, 0x22, 0x23, 0x24, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(BitmapToGim, OfTheHeaderWidthHeightAndDepthCountOnly) {
  const Values indexes = Counted(18 * 11, 256);
  Bytes bmp = BuildBmp8(18, 11, indexes, BmpColours(256));
  const Bytes expected = BuildIndexedGim(18, 11, 8, indexes, GimColours(256));
  for (std::size_t i = 0; i < 54; ++i) {
    if (i < 18 || i >= 30 || (i >= 26 && i < 28)) {
      bmp[i] = 0xA5;
    }
  }
  EXPECT_EQ(Converted(bmp), expected);
}

TEST(BitmapToGim, AShortPaletteIsMisread) {
  // 16 entries in an 8-bit bitmap: the pixels are taken for the entries behind them.
  Bytes bmp = BuildBmp8(4, 1, {1, 2, 3, 4}, BmpColours(16));
  const Bytes gim = Converted(bmp, 0);
  Values palette = GimColours(16);
  palette.push_back(Rgba(3, 2, 1, 4));
  palette.resize(256);
  EXPECT_EQ(gim, BuildIndexedGim(4, 1, 8, {0, 0, 0, 0}, palette, false));
}

TEST(BitmapToGim, AGapBehindThePaletteIsTakenForPixels) {
  PlainBmp bmp = {.width = 4, .height = 1, .bits = 8, .palette = BmpColours(256), .rows = {{1, 2, 3, 4}}};
  bmp.gap = {9, 9, 9, 9};
  EXPECT_EQ(Converted(BuildBmp(bmp), 0), BuildIndexedGim(4, 1, 8, {9, 9, 9, 9}, GimColours(256), false));
}

TEST(BitmapToGim, MissingPixelsAreZero) {
  Bytes bmp = BuildBmp8(4, 2, {1, 2, 3, 4, 5, 6, 7, 8}, BmpColours(256));
  bmp.resize(bmp.size() - 3);  // of the top row, which comes last
  EXPECT_EQ(Converted(bmp), BuildIndexedGim(4, 2, 8, {1, 0, 0, 0, 5, 6, 7, 8}, GimColours(256)));
  bmp.resize(54);
  EXPECT_EQ(Converted(bmp), BuildIndexedGim(4, 2, 8, Values(8), Values(256)));
}

TEST(BitmapToGim, ThePixelOrderGoesIntoTheGimAsItIs) {
  const Bytes bmp = BuildBmp8(18, 9, Counted(162, 256), BmpColours(256));
  Bytes expected = BuildIndexedGim(18, 9, 8, Counted(162, 256), GimColours(256));
  for (const std::int16_t order : {std::int16_t{2}, std::int16_t{-1}}) {
    WriteI16(expected, 48 + 1104 + 22, order);
    EXPECT_EQ(Converted(bmp, order), expected);
  }
}

TEST(BitmapToGim, Convert32HasNoEffectOnPalettedBitmaps) {
  const Bytes bmp8 = BuildBmp8(18, 9, Counted(162, 256), BmpColours(256));
  EXPECT_EQ(BitmapToGim(bmp8, true, 1, false), Converted(bmp8));
  const Bytes bmp4 = Bmp4(4, 1, {1, 2, 3, 4}, BmpColours(16));
  EXPECT_EQ(BitmapToGim(bmp4, true, 1, false), Converted(bmp4));
}

TEST(BitmapToGim, TheTopLeftPixelDecidesWhichColourIsCleared) {
  Values indexes = Counted(18 * 9, 256);
  indexes[0] = 201;
  Values palette = GimColours(256);
  palette[201] = 0;
  EXPECT_EQ(Converted(BuildBmp8(18, 9, indexes, BmpColours(256)), 1, true),
            BuildIndexedGim(18, 9, 8, indexes, palette));
}

TEST(BitmapToGim, TheLowNibbleDecidesIn4BitBitmaps) {
  Values palette = GimColours(16);
  palette[0xC] = 0;
  EXPECT_EQ(Converted(Bmp4(2, 2, {0xC, 0x7, 1, 2}, BmpColours(16)), 1, true),
            BuildIndexedGim(2, 2, 4, {0xC, 0x7, 1, 2}, palette));
}

TEST(BitmapToGim, A32BitBitmapNeverHasAColourCleared) {
  const Values pixels = Counted(20 * 9, 30);
  const Bytes bmp = BuildBmp32(20, 9, Mapped(pixels, BmpColours(30)));
  EXPECT_EQ(Converted(bmp, 1, true), Converted(bmp, 1, false));
  const std::optional<Bytes> indexed = BitmapToGim(bmp, true, 1, false);
  ASSERT_TRUE(indexed.has_value());
  EXPECT_EQ(BitmapToGim(bmp, true, 1, true), indexed);
}

// What an image of that size is after a way to a bitmap and back, beside the file that it was.
void ExpectSameAfterRoundTrip(int width, int bits) {
  const int height = 10;
  const std::uint32_t colours = bits == 4 ? 16 : 256;
  const Values indexes = Counted(static_cast<std::size_t>(width * height), colours);
  const Bytes gim = BuildIndexedGim(width, height, bits, indexes, GimColours(colours));
  const GimConversion bitmap = GimToBitmap(gim, false);
  ASSERT_TRUE(bitmap.ok);
  EXPECT_EQ(Converted(bitmap.written.value_or(Bytes{})), gim) << width;
}

TEST(BitmapToGim, GoingToABitmapAndBackKeepsPixelsPaletteAndAlphaAt8Bits) {
  for (const int width : {1, 2, 3, 16, 33, 100, 480}) {
    ExpectSameAfterRoundTrip(width, 8);
  }
}

TEST(BitmapToGim, GoingToABitmapAndBackKeepsPixelsPaletteAndAlphaAt4Bits) {
  // Widths whose rows don't lose their last pixel to the rounding of half a byte.
  for (const int width : {2, 3, 7, 16, 20, 34, 100, 480}) {
    ExpectSameAfterRoundTrip(width, 4);
  }
}

TEST(BitmapToGim, GoingToABitmapAndBackKeeps32BitPixels) {
  const Bytes gim = BuildRgbaGim(37, 19, Mapped(Counted(37 * 19, 200), GimColours(200)));
  const GimConversion bitmap = GimToBitmap(gim, false);
  ASSERT_TRUE(bitmap.ok);
  EXPECT_EQ(Converted(bitmap.written.value_or(Bytes{})), gim);
}

}  // namespace
}  // namespace kelvane
