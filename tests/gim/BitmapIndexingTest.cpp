// 32-bit bitmaps that are written with a palette. Their rows keep the padding of 32-bit pixels; what follows from that
// is what files in the field hold.
#include <gtest/gtest.h>

#include "gim/BitmapToGim.h"
#include "gim/Palette.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

using namespace test;
using Values = std::vector<std::uint32_t>;

// Offsets in a file with a palette of 256 entries, and in one of 16.
constexpr std::size_t kPaletteAt = 48;
constexpr std::size_t kImage8At = 48 + 80 + 1024;
constexpr std::size_t kImage4At = 48 + 80 + 64;

// Pixel `n` of a bitmap, and the palette entry that it becomes.
std::uint32_t Pixel(std::uint32_t n) {
  return Bgra(static_cast<std::uint8_t>(n), 2, static_cast<std::uint8_t>(n / 256), static_cast<std::uint8_t>(255 - n));
}
std::uint32_t Entry(std::uint32_t n) {
  return Rgba(static_cast<std::uint8_t>(n / 256), 2, static_cast<std::uint8_t>(n), static_cast<std::uint8_t>(255 - n));
}

// A bitmap of width x height pixels of `colours` colours, numbered in the order in which they lie in the file: the
// bottom row first.
Bytes BitmapOfColours(std::uint32_t width, std::uint32_t height, std::uint32_t colours) {
  Values pixels(width * height);
  for (std::uint32_t i = 0; i < width * height; ++i) {
    pixels[(height - 1 - i / width) * width + i % width] = Pixel(i % colours);
  }
  return BuildBmp32(static_cast<int>(width), static_cast<int>(height), pixels);
}

Bytes Indexed(const Bytes& bmp, Int16 pixelOrder = 1) {
  const std::optional<Bytes> gim = BitmapToGim(bmp, true, pixelOrder, false);
  EXPECT_TRUE(gim.has_value());
  return gim.value_or(Bytes{});
}

Bytes Slice(const Bytes& bytes, std::size_t offset, std::size_t length) {
  if (offset + length > bytes.size()) {
    ADD_FAILURE() << "the file ends at " << bytes.size();
    return {};
  }
  return {bytes.begin() + static_cast<std::ptrdiff_t>(offset),
          bytes.begin() + static_cast<std::ptrdiff_t>(offset + length)};
}

Values EntriesUpTo(std::uint32_t colours, std::size_t size) {
  Values palette;
  for (std::uint32_t n = 0; n < colours; ++n) {
    palette.push_back(Entry(n));
  }
  palette.resize(size);
  return palette;
}

TEST(BitmapIndexing, ABitmapOf16PixelColumnsBecomesAnOrdinary8BitGim) {
  Values indexes(16 * 8);
  for (std::uint32_t i = 0; i < 128; ++i) {
    indexes[(7 - i / 16) * 16 + i % 16] = i % 100;
  }
  EXPECT_EQ(Indexed(BitmapOfColours(16, 8, 100)), BuildIndexedGim(16, 8, 8, indexes, EntriesUpTo(100, 256)));
}

TEST(BitmapIndexing, ThePaletteIsBuiltFromTheBottomRowUp) {
  const Bytes gim = Indexed(BuildBmp32(16, 2, [] {
    Values pixels;
    for (std::uint32_t x = 0; x < 16; ++x) {
      pixels.push_back(Pixel(100 + x));  // top
    }
    for (std::uint32_t x = 0; x < 16; ++x) {
      pixels.push_back(Pixel(200 - x));  // bottom
    }
    return pixels;
  }()));
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 80), Entry(200));
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 80 + 15 * 4), Entry(185));
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 80 + 16 * 4), Entry(100));
  EXPECT_EQ(gim[kImage8At + 80], 16);  // top left
  EXPECT_EQ(gim[kImage8At + 80 + 16], 0);
}

TEST(BitmapIndexing, ABitmapOf16ColoursGetsOutBits8AndAPaletteOf256EntriesWhoseLast240Are0) {
  const Bytes gim = Indexed(BitmapOfColours(16, 8, 16));
  ASSERT_EQ(gim.size(), 48U + 1104 + 80 + 128);
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 4), 1104U);
  EXPECT_EQ(ReadU16(gim, kPaletteAt + 24), 256);
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 80 + 15 * 4), Entry(15));
  EXPECT_EQ(Slice(gim, kPaletteAt + 80 + 64, 960), Bytes(960));
  EXPECT_EQ(ReadU16(gim, kImage8At), 4);
  EXPECT_EQ(ReadU16(gim, kImage8At + 20), 5);
  EXPECT_EQ(ReadU16(gim, kImage8At + 28), 8);
}

TEST(BitmapIndexing, RowsAreRoundedUpTo16BytesButTheSizesCountThe32BitPadding) {
  // 18 columns pad to 20 at 32 bits, and rows of 32 bytes are written: sizes say 8 x 20, the file holds 8 x 32.
  const Bytes gim = Indexed(BitmapOfColours(18, 5, 90));
  EXPECT_EQ(ReadU32(gim, kImage8At + 4), 8U * 20 + 80);
  EXPECT_EQ(ReadU32(gim, kImage8At + 8), 8U * 20 + 80);
  EXPECT_EQ(ReadU32(gim, kImage8At + 48), 8U * 20 + 64);
  EXPECT_EQ(ReadU16(gim, kImage8At + 24), 18);
  EXPECT_EQ(ReadU16(gim, kImage8At + 26), 5);
  // (240 + 48 + 1104 - 16) is 1376, a multiple of 16.
  EXPECT_EQ(ReadU32(gim, 16 + 4), 1376U);
  EXPECT_EQ(ReadU32(gim, 32 + 4), 1360U);
  ASSERT_EQ(gim.size(), kImage8At + 80 + 8U * 32);
  // Two tiles. The top row is the last in the file: colours 72 to 89.
  Bytes left;
  Bytes right;
  for (std::uint32_t y = 0; y < 5; ++y) {
    for (std::uint32_t x = 0; x < 16; ++x) {
      left.push_back(static_cast<std::uint8_t>((4 - y) * 18 + x));
    }
    right.push_back(static_cast<std::uint8_t>((4 - y) * 18 + 16));
    right.push_back(static_cast<std::uint8_t>((4 - y) * 18 + 17));
    right.insert(right.end(), 14, 0);
  }
  left.resize(128);
  right.resize(128);
  EXPECT_EQ(Slice(gim, kImage8At + 80, 128), left);
  EXPECT_EQ(Slice(gim, kImage8At + 80 + 128, 128), right);
}

TEST(BitmapIndexing, TheFileIsAsLongAsItsSizesSayWherePaddingIsAMultipleOf16) {
  const Bytes gim = Indexed(BitmapOfColours(30, 8, 90));  // 32 columns
  EXPECT_EQ(gim.size(), ReadU32(gim, 16 + 4) + 16);
}

TEST(BitmapIndexing, Below16ColoursOnlyTheLeftHalfOfTheIndexesReachesTheFile) {
  // 40 columns: byte columns up to 20 are written, so two tiles of one index a byte.
  const Bytes gim = Indexed(BitmapOfColours(40, 8, 15));
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 4), 144U);
  EXPECT_EQ(ReadU16(gim, kPaletteAt + 24), 16);
  EXPECT_EQ(Slice(gim, kPaletteAt + 80 + 60, 4), Bytes(4));
  EXPECT_EQ(ReadU16(gim, kImage4At), 4);
  EXPECT_EQ(ReadU16(gim, kImage4At + 20), 5);  // says 8-bit indexes
  EXPECT_EQ(ReadU16(gim, kImage4At + 28), 4);  // says 4 bits
  EXPECT_EQ(ReadU32(gim, kImage4At + 4), 8U * 40 / 2 + 80);
  ASSERT_EQ(gim.size(), kImage4At + 80 + 2 * 128);
  Bytes tiles;
  for (std::uint32_t x0 = 0; x0 < 32; x0 += 16) {
    for (std::uint32_t y = 0; y < 8; ++y) {
      for (std::uint32_t x = x0; x < x0 + 16; ++x) {
        tiles.push_back(static_cast<std::uint8_t>(((7 - y) * 40 + x) % 15));
      }
    }
  }
  EXPECT_EQ(Slice(gim, kImage4At + 80, 256), tiles);
}

TEST(BitmapIndexing, ASmallImageBelow16ColoursWritesOneTile) {
  const Bytes gim = Indexed(BuildBmp32(2, 1, {Pixel(7), Pixel(7)}));
  EXPECT_EQ(ReadU32(gim, kImage4At + 4), 4U * 8 / 2 + 80);
  ASSERT_EQ(gim.size(), kImage4At + 80 + 128);
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 80), Entry(7));
  EXPECT_EQ(Slice(gim, kImage4At + 80, 128), Bytes(128));
}

TEST(BitmapIndexing, AllBlocksOfAnIndexedImageHaveFlags0) {
  const Bytes gim = Indexed(BitmapOfColours(16, 8, 100));
  for (const std::size_t head : {std::size_t{16}, std::size_t{32}, kPaletteAt, kImage8At}) {
    EXPECT_EQ(ReadU16(gim, static_cast<std::int64_t>(head) + 2), 0);
  }
}

TEST(BitmapIndexing, PixelsThatDifferInAlphaOnlyGetTwoEntries) {
  const Bytes gim = Indexed(BuildBmp32(2, 1, {Bgra(1, 2, 3, 4), Bgra(1, 2, 3, 5)}));
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 80), Rgba(3, 2, 1, 4));
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 84), Rgba(3, 2, 1, 5));
  EXPECT_EQ(Slice(gim, kImage4At + 80, 2), (Bytes{0, 1}));
}

TEST(BitmapIndexing, With255ColoursTheResultIsTrueAndWith256OrMoreFalse) {
  EXPECT_TRUE(BitmapToGim(BitmapOfColours(20, 20, 255), true, 1, false).has_value());
  EXPECT_FALSE(BitmapToGim(BitmapOfColours(20, 20, 256), true, 1, false).has_value());
  EXPECT_FALSE(BitmapToGim(BitmapOfColours(20, 20, 257), true, 1, false).has_value());
  // The 256th colour may be the very last pixel.
  EXPECT_FALSE(BitmapToGim(BitmapOfColours(16, 16, 256), true, 1, false).has_value());
}

TEST(BitmapIndexing, ABitmapOfExactly256ColoursIsCountedAndChosenAndThenRefused) {
  const Bytes bmp = BitmapOfColours(20, 20, 256);
  Int16 colours = 0;
  EXPECT_TRUE(CountBitmapColours(bmp, colours));
  EXPECT_EQ(colours, 256);
  EXPECT_TRUE(ShouldUsePalette(colours, ReadBitmapHeader(ByteView(bmp)), 0));
  EXPECT_TRUE(ShouldUsePalette(colours, ReadBitmapHeader(ByteView(bmp)), 1));
  EXPECT_FALSE(BitmapToGim(bmp, true, 1, false).has_value());
}

TEST(BitmapIndexing, HoweverManyColoursThereAreTheResultIsFalse) {
  Values pixels(300 * 200);
  for (std::uint32_t i = 0; i < pixels.size(); ++i) {
    pixels[i] = i;
  }
  EXPECT_FALSE(BitmapToGim(BuildBmp32(300, 200, pixels), true, 1, false).has_value());
}

TEST(BitmapIndexing, InLinearOrderTheWhole32BitSizedArrayIsWritten) {
  const Bytes gim = Indexed(BitmapOfColours(18, 5, 90), 0);
  EXPECT_EQ(ReadU16(gim, kImage8At + 22), 0);
  EXPECT_EQ(ReadU32(gim, kImage8At + 4), 5U * 20 + 80);
  ASSERT_EQ(gim.size(), kImage8At + 80 + 5U * 80);
  Bytes rows;
  for (std::uint32_t y = 0; y < 5; ++y) {
    for (std::uint32_t x = 0; x < 18; ++x) {
      rows.push_back(static_cast<std::uint8_t>((4 - y) * 18 + x));
    }
    rows.insert(rows.end(), 62, 0);
  }
  EXPECT_EQ(Slice(gim, kImage8At + 80, 400), rows);
}

TEST(BitmapIndexing, MissingPixelsAreOfColour0) {
  // The file holds pixel 1, half of pixel 2, and nothing of pixels 3 and 4.
  Bytes bmp = BuildBmp32(4, 1, {Bgra(1, 2, 3, 4), Bgra(5, 6, 7, 8), Bgra(9, 9, 9, 9), Bgra(9, 9, 9, 9)});
  bmp.resize(54 + 6);
  const Bytes gim = Indexed(bmp);
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 80), Rgba(3, 2, 1, 4));
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 84), Rgba(0, 6, 5, 0));
  EXPECT_EQ(ReadU32(gim, kPaletteAt + 88), 0U);
  EXPECT_EQ(Slice(gim, kImage4At + 80, 5), (Bytes{0, 1, 2, 2, 0}));
}

}  // namespace
}  // namespace kelvane
