#include <gtest/gtest.h>

#include "gim/ExpectedBitmap.h"
#include "gim/GimToBitmap.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

using namespace test;
using Values = std::vector<std::uint32_t>;

// 0, 1, 2 ... as they come.
Values Counted(std::size_t count, std::uint32_t limit) {
  Values values(count);
  for (std::size_t i = 0; i < count; ++i) {
    values[i] = static_cast<std::uint32_t>(i * 7 + i / 5) % limit;
  }
  return values;
}

// Colours that differ in all four bytes, as a GIM keeps them and as a bitmap does.
Values GimColours(std::uint32_t count) {
  Values colours;
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto n = static_cast<std::uint8_t>(i);
    colours.push_back(
        Rgba(n, static_cast<std::uint8_t>(n + 1), static_cast<std::uint8_t>(~n), static_cast<std::uint8_t>(n * 3)));
  }
  return colours;
}

Values BmpColours(std::uint32_t count) {
  Values colours;
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto n = static_cast<std::uint8_t>(i);
    colours.push_back(
        Bgra(static_cast<std::uint8_t>(~n), static_cast<std::uint8_t>(n + 1), n, static_cast<std::uint8_t>(n * 3)));
  }
  return colours;
}

Bytes Converted(const Bytes& gim, bool force32) {
  const GimConversion conversion = GimToBitmap(gim, force32);
  EXPECT_TRUE(conversion.ok);
  return conversion.written.value_or(Bytes{});
}

// The rows of `pixels`, the bottom one first, each value taken from `colours`.
Bytes DirectRows(std::size_t width, const Values& pixels, const Values& colours) {
  Values longs;
  for (std::size_t end = pixels.size(); end > 0; end -= width) {
    for (std::size_t x = 0; x < width; ++x) {
      longs.push_back(colours[pixels[end - width + x]]);
    }
  }
  return Longs(longs);
}

TEST(GimToBitmap, A32BitImageKeepsItsPixelsInBitmapOrderInBothModes) {
  const Values pixels = Counted(37 * 19, 200);
  Values colours;
  for (const std::uint32_t pixel : pixels) {
    colours.push_back(GimColours(200)[pixel]);
  }
  const Bytes expected = Joined({Header32(37, 19), DirectRows(37, pixels, BmpColours(200))});
  for (const bool tiled : {false, true}) {
    const Bytes gim = BuildRgbaGim(37, 19, colours, tiled);
    EXPECT_EQ(Converted(gim, false), expected);
    EXPECT_EQ(Converted(gim, true), expected);
  }
}

TEST(GimToBitmap, An8BitImageKeepsIndexesAndPalette) {
  const Values indexes = Counted(18 * 11, 256);
  Bytes rows;
  for (std::size_t y = 11; y-- > 0;) {
    for (std::size_t x = 0; x < 18; ++x) {
      rows.push_back(static_cast<std::uint8_t>(indexes[y * 18 + x]));
    }
    rows.insert(rows.end(), {0xCC, 0xCC});  // 18 bytes become 20: pixels that pad the GIM's row
  }
  for (const bool tiled : {false, true}) {
    const Bytes gim =
        GimBuilder()
            .Palette({.colours = GimColours(256)})
            .Image({.width = 18, .height = 11, .bits = 8, .pixels = indexes, .tiled = tiled, .padding = 0xCC})
            .Build();
    EXPECT_EQ(Converted(gim, false), Joined({HeaderBytes({18, 11, 8, 1078, 198, 256}), Longs(BmpColours(256)), rows}));
    EXPECT_EQ(Converted(gim, true), Joined({Header32(18, 11), DirectRows(18, indexes, BmpColours(256))}));
  }
}

TEST(GimToBitmap, ATiled4BitGimOf20By10) {
  const Values indexes = Counted(200, 16);
  const Bytes gim = GimBuilder()
                        .Palette({.colours = GimColours(16)})
                        .Image({.width = 20, .height = 10, .bits = 4, .pixels = indexes, .padding = 0xB})
                        .Build();
  ASSERT_EQ(gim.size(), 48U + 144 + 80 + 16 * 32 / 2);
  Bytes rows;
  for (std::size_t y = 10; y-- > 0;) {
    for (std::size_t x = 0; x < 20; x += 2) {
      rows.push_back(static_cast<std::uint8_t>(indexes[y * 20 + x] | indexes[y * 20 + x + 1] << 4));
    }
    rows.insert(rows.end(), {0xBB, 0xBB});
  }
  ASSERT_EQ(rows.size(), 120U);
  EXPECT_EQ(Converted(gim, false), Joined({HeaderBytes({20, 10, 4, 118, 100, 16}), Longs(BmpColours(16)), rows}));
  EXPECT_EQ(Converted(gim, true), Joined({Header32(20, 10), DirectRows(20, indexes, BmpColours(16))}));
}

TEST(GimToBitmap, A4BitRowOf9PixelsTakes4Bytes) {
  const Bytes gim = BuildIndexedGim(9, 2, 4, {1, 2, 3, 4, 5, 6, 7, 8, 9, 9, 8, 7, 6, 5, 4, 3, 2, 1}, GimColours(16));
  EXPECT_EQ(Converted(gim, false), Joined({HeaderBytes({9, 2, 4, 118, 9, 16}),
                                           Longs(BmpColours(16)),
                                           {0x89, 0x67, 0x45, 0x23, 0x21, 0x43, 0x65, 0x87}}));
}

TEST(GimToBitmap, A4BitGimOfWidth1InKeepDepthModeIsFalse) {
  const GimConversion conversion = GimToBitmap(BuildIndexedGim(1, 3, 4, {1, 2, 3}, GimColours(16)), false);
  EXPECT_FALSE(conversion.ok);
  // 1.5 bytes round to 2.
  EXPECT_EQ(conversion.written, Joined({HeaderBytes({1, 3, 4, 118, 2, 16}), Longs(BmpColours(16))}));
}

TEST(GimToBitmap, A4BitGimOfWidth1Expands) {
  EXPECT_EQ(Converted(BuildIndexedGim(1, 2, 4, {1, 2}, GimColours(16)), true),
            Joined({Header32(1, 2), Longs({BmpColours(16)[2], BmpColours(16)[1]})}));
}

TEST(GimToBitmap, KeepDepthModeDoesNotSwapNibbles) {
  const Bytes gim = BuildIndexedGim(8, 1, 4, {1, 2, 3, 4, 5, 6, 7, 8}, GimColours(16));
  const Bytes bitmap = Converted(gim, false);
  EXPECT_EQ(Bytes(bitmap.begin() + 118, bitmap.end()), (Bytes{0x21, 0x43, 0x65, 0x87}));
}

TEST(GimToBitmap, TheLastColumnOfAnExpanded4BitImageStays0WhereTheWidthLeaves3ByFour) {
  for (std::uint32_t width = 1; width <= 16; ++width) {
    Values indexes;
    Values expected;
    for (std::uint32_t x = 0; x < width; ++x) {
      indexes.push_back(15 - x % 16);
      expected.push_back(BmpColours(16)[15 - x % 16]);
    }
    if (width % 4 == 3) {
      expected.back() = 0;
    }
    EXPECT_EQ(Converted(BuildIndexedGim(static_cast<int>(width), 1, 4, indexes, GimColours(16)), true),
              Joined({Header32(width, 1), Longs(expected)}))
        << width;
  }
}

TEST(GimToBitmap, APaletteOf16EntriesInAn8BitImageIsFilledWithZeros) {
  Values palette = BmpColours(16);
  palette.resize(256);
  const Bytes gim = BuildIndexedGim(4, 1, 8, {15, 16, 255, 0}, GimColours(16));
  EXPECT_EQ(Converted(gim, false), Joined({HeaderBytes({4, 1, 8, 1078, 4, 256}), Longs(palette), {15, 16, 255, 0}}));
  EXPECT_EQ(Converted(gim, true), Joined({Header32(4, 1), Longs({BmpColours(16)[15], 0, 0, BmpColours(16)[0]})}));
}

TEST(GimToBitmap, APaletteThatIsTooLongIsCut) {
  const Bytes gim = BuildIndexedGim(8, 1, 4, {0, 1, 2, 3, 12, 13, 14, 15}, GimColours(200));
  EXPECT_EQ(Converted(gim, false),
            Joined({HeaderBytes({8, 1, 4, 118, 4, 16}), Longs(BmpColours(16)), {0x10, 0x32, 0xDC, 0xFE}}));
}

TEST(GimToBitmap, BiHeightIsTheUnpaddedHeightAndPaddingRowsNeverReachTheBitmap) {
  const Bytes gim = GimBuilder()
                        .Image({.width = 4, .height = 9, .pixels = Values(36, Rgba(1, 2, 3, 4)), .padding = 0xEEEEEEEE})
                        .Build();
  EXPECT_EQ(Converted(gim, false), Joined({Header32(4, 9), Longs(Values(36, Bgra(3, 2, 1, 4)))}));
  const Bytes indexed = GimBuilder()
                            .Palette({.colours = GimColours(256)})
                            .Image({.width = 16, .height = 1, .bits = 8, .pixels = Values(16, 9), .padding = 0xEE})
                            .Build();
  EXPECT_EQ(Converted(indexed, false),
            Joined({HeaderBytes({16, 1, 8, 1078, 16, 256}), Longs(BmpColours(256)), Bytes(16, 9)}));
  EXPECT_EQ(Converted(indexed, true), Joined({Header32(16, 1), Longs(Values(16, BmpColours(256)[9]))}));
}

TEST(GimToBitmap, TheAlphaOfAPaletteEntryArrivesInTheFourthByte) {
  Values palette(16);
  palette[1] = Rgba(10, 20, 30, 0x7F);
  const Bytes gim = BuildIndexedGim(2, 1, 4, {1, 0}, palette);
  const Bytes kept = Converted(gim, false);
  EXPECT_EQ(Bytes(kept.begin() + 58, kept.begin() + 62), (Bytes{30, 20, 10, 0x7F}));
  const Bytes direct = Converted(gim, true);
  EXPECT_EQ(Bytes(direct.begin() + 54, direct.end()), (Bytes{30, 20, 10, 0x7F, 0, 0, 0, 0}));
}

TEST(GimToBitmap, A16BitImageIsCopiedUnchanged) {
  for (const bool tiled : {false, true}) {
    const Bytes gim =
        GimBuilder()
            .Image({.width = 3, .height = 2, .bits = 16, .pixels = {0x1122, 0x3344, 0x5566, 7, 8, 9}, .tiled = tiled})
            .Build();
    EXPECT_EQ(Converted(gim, false), Joined({HeaderBytes({3, 2, 16, 54, 12, 65536}),
                                             {7, 0, 8, 0, 9, 0, 0, 0, 0x22, 0x11, 0x44, 0x33, 0x66, 0x55, 0, 0}}));
  }
}

TEST(GimToBitmap, AnIndexedImageWithoutAPaletteKeepsItsDepth) {
  const Bytes gim = GimBuilder().Image({.width = 4, .height = 1, .bits = 8, .pixels = {9, 8, 7, 6}}).Build();
  EXPECT_EQ(Converted(gim, false), Joined({HeaderBytes({4, 1, 8, 54, 4, 256}), {9, 8, 7, 6}}));
}

TEST(GimToBitmap, AnotherDepthWithAPaletteThatFitsExpandsToNothing) {
  // 2 bits a pixel: 64 pixels in 16 bytes, and a palette of 4 entries.
  Bytes gim = GimBuilder()
                  .Palette({.colours = GimColours(4)})
                  .Image({.width = 16, .height = 1, .bits = 8, .pixels = Values(16, 0xE4), .tiled = false})
                  .Build();
  const std::int64_t image = 48 + 80 + 16;
  WriteU16(gim, image + 28, 2);
  EXPECT_EQ(Converted(gim, false), Joined({HeaderBytes({16, 1, 2, 70, 4, 4}), Longs(BmpColours(4)), Bytes(4, 0xE4)}));
  EXPECT_EQ(Converted(gim, true), Joined({Header32(16, 1), Bytes(64)}));
}

TEST(GimToBitmap, TilesAreAsWideAsPitchAlignSays) {
  const Values indexes = Counted(70 * 17, 256);
  Bytes rows;
  for (std::size_t y = 17; y-- > 0;) {
    for (std::size_t x = 0; x < 70; ++x) {
      rows.push_back(static_cast<std::uint8_t>(indexes[y * 70 + x]));
    }
    rows.insert(rows.end(), {0, 0});
  }
  const Bytes expected = Joined({HeaderBytes({70, 17, 8, 1078, 1190, 256}), Longs(BmpColours(256)), rows});
  for (const int pitchAlign : {1, 4, 7, 8, 16, 32, 100}) {
    const Bytes gim = GimBuilder()
                          .Palette({.colours = GimColours(256)})
                          .Image({.width = 70, .height = 17, .bits = 8, .pixels = indexes, .pitchAlign = pitchAlign})
                          .Build();
    EXPECT_EQ(Converted(gim, false), expected) << pitchAlign;
    EXPECT_EQ(Converted(gim, true), Joined({Header32(70, 17), DirectRows(70, indexes, BmpColours(256))})) << pitchAlign;
  }
}

}  // namespace
}  // namespace kelvane
