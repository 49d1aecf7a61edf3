// From a chosen icon image to pixels: its header, its depth, its masks, and what can't be expanded.
#include <algorithm>
#include <gtest/gtest.h>

#include "imaging/IcoLoad.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using namespace test;

TEST(cICOparser, TheChosenImagesHeaderIsRepairedInTheCallersBytes) {
  IcoImage image = PlainIcoImage(16, 8, 1, 2, 3);
  WriteI32(image.data, 20, 1111);
  WriteI32(image.data, 24, 2222);
  WriteI32(image.data, 28, 3333);
  WriteI32(image.data, 32, 4444);
  WriteI32(image.data, 36, 5555);
  Bytes file = BuildIco({.images = {PlainIcoImage(8, 8, 1, 2, 3), image}});
  Bytes expected = file;
  const auto at = static_cast<std::int64_t>(file.size() - image.data.size());
  WriteI32(expected, at + 8, 16);  // the doubled height
  WriteI32(expected, at + 20, 0);  // size of image
  WriteI32(expected, at + 24, 0);  // pixels per metre
  WriteI32(expected, at + 28, 0);
  WriteI32(expected, at + 32, 256);  // colours: all the room that masks and header leave, by 4
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(file, expected);
}

TEST(cICOparser, ImagesWithoutAPaletteUseNoColours) {
  for (const std::uint16_t bitCount : std::initializer_list<std::uint16_t>{16, 24, 32}) {
    IcoImage image = Marked(16, 1, bitCount);
    WriteI32(image.data, 32, 4444);
    Bytes file = BuildIco({.images = {image}});
    c32bppDIB loaded;
    ASSERT_TRUE(Load(loaded, file));
    EXPECT_EQ(ReadI32(file, HeaderAt(1) + 32), 0);
  }
}

// An image of 8 by 8 of the given depth whose bottom row is `row`, the others zero, with a mask that is clear.
IcoImage Square(std::uint16_t bitCount, const Bytes& palette, const Bytes& row) {
  IcoBitmap bitmap{.width = 8, .height = 8, .bitCount = bitCount, .palette = palette, .xorBits = row};
  bitmap.xorBits.resize(bitCount * 8U / 8 * 8 < 32 ? 32 : bitCount * 8U / 8 * 8);
  bitmap.andMask.resize(32);
  return {.width = 8, .height = 8, .bitCount = bitCount, .data = BuildIcoBitmap(bitmap)};
}

// The bottom row of what loads.
Bytes BottomRow(const IcoImage& image) {
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  return Load(loaded, file) ? PixelsOf(loaded.Pixels().first(32)) : Bytes();
}

TEST(cICOparser, EveryDepthGivesTheImagesColours) {
  Bytes palette(1024);
  for (std::size_t i = 0; i < 256; ++i) {
    palette[4 * i] = static_cast<std::uint8_t>(i);
    palette[4 * i + 1] = static_cast<std::uint8_t>(i + 1);
    palette[4 * i + 2] = static_cast<std::uint8_t>(255 - i);
    palette[4 * i + 3] = 77;  // counts for nothing
  }
  const Bytes two(palette.begin(), palette.begin() + 8);
  const Bytes sixteen(palette.begin(), palette.begin() + 64);
  // Indexes 0 1 1 0 0 0 0 1.
  EXPECT_EQ(BottomRow(Square(1, two, {0b01100001})),
            (Bytes{0, 1, 255, 255, 1, 2, 254, 255, 1, 2, 254, 255, 0, 1, 255, 255,
                   0, 1, 255, 255, 0, 1, 255, 255, 0, 1, 255, 255, 1, 2, 254, 255}));
  EXPECT_EQ(BottomRow(Square(4, sixteen, {0x01, 0x23, 0xFE, 0x00})),
            (Bytes{0,  1,  255, 255, 1,  2,  254, 255, 2, 3, 253, 255, 3, 4, 252, 255,
                   15, 16, 240, 255, 14, 15, 241, 255, 0, 1, 255, 255, 0, 1, 255, 255}));
  EXPECT_EQ(BottomRow(Square(8, palette, {0, 255, 128, 1, 2, 3, 4, 5})),
            (Bytes{0, 1, 255, 255, 255, 0, 0,   255, 128, 129, 127, 255, 1, 2, 254, 255,
                   2, 3, 253, 255, 3,   4, 252, 255, 4,   5,   251, 255, 5, 6, 250, 255}));
  // 5 bits each: full blue, full green, full red, 1 of each, 16 of each (16 x 8 + 16 / 4).
  EXPECT_EQ(
      BottomRow(Square(16, {}, {0x1F, 0x00, 0xE0, 0x03, 0x00, 0x7C, 0x21, 0x04, 0x10, 0x42, 0x00, 0x80, 0, 0, 0, 0})),
      (Bytes{255, 0,   0,   255, 0, 255, 0, 255, 0, 0, 255, 255, 8, 8, 8, 255,
             132, 132, 132, 255, 0, 0,   0, 255, 0, 0, 0,   255, 0, 0, 0, 255}));
  EXPECT_EQ(BottomRow(Square(24, {}, {1, 2, 3, 4, 5, 6, 7, 8, 9})),
            (Bytes{1, 2, 3, 255, 4, 5, 6, 255, 7, 8, 9, 255, 0, 0, 0, 255,
                   0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255}));
}

TEST(cICOparser, TheAlphaOfA32BitImageFollowsTheTable) {
  // Alpha 0, 255, 1 to 254: 200 x 128 / 255 is 100.39, 10 x 128 / 255 is 5.02, 255 x 1 / 255 is 1, 254 x 1 / 255 is
  // 0.996.
  const Bytes source = {9, 9, 9, 0, 9, 8, 7, 255, 200, 10, 10, 128, 255, 254, 0, 1, 255, 255, 255, 254};
  Bytes expected = {0, 0, 0, 0, 9, 8, 7, 255, 100, 5, 5, 128, 1, 0, 0, 1, 254, 254, 254, 254};
  expected.resize(32);
  IcoImage image = Square(32, {}, source);
  EXPECT_EQ(BottomRow(image), expected);
  // The mask is not consulted.
  std::fill(image.data.end() - 32, image.data.end(), std::uint8_t{0xFF});
  EXPECT_EQ(BottomRow(image), expected);
}

TEST(cICOparser, A32BitIconWithAlpha0ThroughoutIsAllZeroWithAlpha) {
  IcoImage image = PlainIcoImage(16, 32, 50, 60, 70, 0);
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_TRUE(loaded.Alpha());
  EXPECT_EQ(loaded.ImageType(), ImageKind::IconWithAlpha);
  EXPECT_EQ(PixelsOf(loaded.Pixels()), Bytes(1024));
}

TEST(cICOparser, An8BitIconWithAMaskOfZerosIsWithoutAlpha) {
  Bytes file = BuildIco({.images = {PlainIcoImage(16, 8, 50, 60, 70)}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_FALSE(loaded.Alpha());
  EXPECT_EQ(loaded.ImageType(), ImageKind::Icon);
  for (std::size_t i = 0; i < loaded.Pixels().size(); i += 4) {
    ASSERT_EQ(PixelsOf(loaded.Pixels().subspan(i, 4)), (Bytes{50, 60, 70, 255})) << i;
  }
}

TEST(cICOparser, WhereAMaskBitIsSetThePixelIsAllZero) {
  for (const std::uint16_t bitCount : std::initializer_list<std::uint16_t>{1, 4, 8, 16, 24}) {
    // 40 pixels a row: the mask's rows have 5 bytes and 3 of padding. Set: x 0 and 9 in the bottom row, 39 in the top
    // one.
    IcoImage image = PlainIcoImage(40, bitCount, 50, 60, 70);
    std::uint8_t* mask = image.data.data() + image.data.size() - 320;
    mask[0] = 0x80;
    mask[1] = 0x40;
    mask[39 * 8 + 4] = 0x01;
    mask[7] = 0xFF;
    Bytes file = BuildIco({.images = {image}});
    c32bppDIB loaded;
    ASSERT_TRUE(Load(loaded, file));
    EXPECT_TRUE(loaded.Alpha());
    EXPECT_EQ(loaded.ImageType(), ImageKind::Icon);
    std::vector<std::size_t> transparent;
    for (std::size_t pixel = 0; pixel < 1600; ++pixel) {
      const Bytes bytes = PixelsOf(loaded.Pixels().subspan(4 * pixel, 4));
      if (bytes == Bytes(4)) {
        transparent.push_back(pixel);
      } else {
        ASSERT_EQ(bytes[3], 255) << pixel;
      }
    }
    EXPECT_EQ(transparent, (std::vector<std::size_t>{0, 9, 1599})) << bitCount;
  }
}

TEST(cICOparser, CursorsHaveTheirOwnKinds) {
  // The hot spot stands where icons have planes and depth.
  for (const std::uint16_t bitCount : std::initializer_list<std::uint16_t>{8, 32}) {
    IcoImage image = PlainIcoImage(16, bitCount, 50, 60, 70);
    image.planes = 255;
    image.bitCount = 7;
    Bytes file = BuildIco({.type = 2, .images = {image}});
    c32bppDIB loaded;
    ASSERT_TRUE(Load(loaded, file));
    EXPECT_EQ(loaded.ImageType(), bitCount == 32 ? ImageKind::CursorWithAlpha : ImageKind::Cursor);
    EXPECT_EQ(loaded.Alpha(), bitCount == 32);
    EXPECT_EQ(PixelsOf(loaded.Pixels().first(4)), (Bytes{50, 60, 70, 255}));
  }
}

TEST(cICOparser, AnIconThatIsNotSquareLoadsAsASquareOfItsHeight) {
  // 16 wide and 8 high, 24 bits; each row has red 0, 1, 2 and so on.
  IcoBitmap bitmap{.width = 16, .height = 8, .bitCount = 24};
  for (int y = 0; y < 8; ++y) {
    for (std::uint8_t x = 0; x < 16; ++x) {
      Append(bitmap.xorBits, Bytes{0, 0, x});
    }
  }
  bitmap.andMask.resize(32);
  Bytes file = BuildIco({.images = {{.width = 16, .height = 8, .bitCount = 24, .data = BuildIcoBitmap(bitmap)}}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(loaded.Width(), 8);
  EXPECT_EQ(loaded.Height(), 8);
  for (std::size_t pixel = 0; pixel < 64; ++pixel) {
    EXPECT_EQ(loaded.Pixels()[4 * pixel + 2], pixel % 8);
  }
}

TEST(cICOparser, AnIconNarrowerThanHighLeavesTheRestOfItsRowsEmpty) {
  IcoBitmap bitmap{.width = 4, .height = 8, .bitCount = 24};
  bitmap.xorBits.assign(96, 9);
  bitmap.andMask.resize(32);
  Bytes file = BuildIco({.images = {{.width = 4, .height = 8, .bitCount = 24, .data = BuildIcoBitmap(bitmap)}}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(loaded.Width(), 8);
  EXPECT_EQ(PixelsOf(loaded.Pixels().first(32)), (Bytes{9, 9, 9, 255, 9, 9, 9, 255, 9, 9, 9, 255, 9, 9, 9, 255,
                                                        0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255}));
}

TEST(cICOparser, AShortPaletteShiftsThePixels) {
  // Two of sixteen colours; the bits are looked for 56 bytes too late.
  IcoBitmap bitmap{.width = 8, .height = 8, .bitCount = 4, .palette = {1, 1, 1, 0, 2, 2, 2, 0}};
  bitmap.xorBits.assign(32, 0x11);
  bitmap.andMask.resize(32);
  IcoImage image{.width = 8, .height = 8, .bitCount = 4, .data = BuildIcoBitmap(bitmap)};
  Bytes file = BuildIco({.images = {image}});
  file.resize(file.size() + 56);
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(ReadI32(file, HeaderAt(1) + 32), 2);
  // What lies there is the mask's last bytes and what follows: index 0.
  EXPECT_EQ(PixelsOf(loaded.Pixels().first(4)), (Bytes{1, 1, 1, 255}));
}

TEST(cICOparser, TheMaskIsFoundFromTheImagesEnd) {
  // Between the bits and the mask of 64 bytes stand some that would make pixels transparent.
  IcoImage image = PlainIcoImage(16, 24, 50, 60, 70);
  image.data.insert(image.data.end() - 64, 12, std::uint8_t{0xFF});
  image.data[image.data.size() - 64] = 0x01;
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_TRUE(loaded.Alpha());
  for (std::size_t pixel = 0; pixel < 256; ++pixel) {
    const Bytes expected = pixel == 7 ? Bytes(4) : Bytes{50, 60, 70, 255};
    ASSERT_EQ(PixelsOf(loaded.Pixels().subspan(4 * pixel, 4)), expected) << pixel;
  }
}

TEST(cICOparser, ABitmapOf256PixelsCountsItsMaskByTheZerosOfTheDirectoryAndLooksForItBehindItsEnd) {
  const IcoImage image = PlainIcoImage(256, 24, 50, 60, 70);
  EXPECT_EQ(image.width, 0);
  EXPECT_EQ(image.height, 0);
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  EXPECT_EQ(NumberOf([&] { (void)Load(loaded, file); }), 9);
  EXPECT_EQ(loaded.Width(), 256);
  // With 256 rows of 32 bytes behind it these are the mask.
  file = BuildIco({.images = {image}});
  Bytes mask(8192);
  mask[32] = 0x80;
  Append(file, mask);
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_TRUE(loaded.Alpha());
  EXPECT_EQ(PixelsOf(loaded.Pixels().first(4)), (Bytes{50, 60, 70, 255}));
  EXPECT_EQ(PixelsOf(loaded.Pixels().subspan(1024, 8)), (Bytes{0, 0, 0, 0, 50, 60, 70, 255}));
}

TEST(cICOparser, ABitmapOf256PixelsAt32BitsNeedsNoMask) {
  Bytes file = BuildIco({.images = {PlainIcoImage(256, 32, 200, 100, 50, 128)}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(loaded.Width(), 256);
  EXPECT_EQ(loaded.Height(), 256);
  EXPECT_EQ(PixelsOf(loaded.Pixels().last(4)), (Bytes{100, 50, 25, 128}));
}

// Loads what begins well and can't be expanded; the host then keeps a bitmap of zeros.
void ExpectZeroBitmap(const IcoImage& image) {
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  EXPECT_FALSE(Load(loaded, file));
  EXPECT_NE(loaded.handle(), nullptr);
  EXPECT_EQ(loaded.Width(), 16);
  EXPECT_EQ(PixelsOf(loaded.Pixels()), Bytes(1024));
}

TEST(cICOparser, BitsThatCannotBeExpandedLeaveTheHostABitmapOfZeros) {
  IcoImage odd = Marked(16, 1);
  WriteU16(odd.data, 14, 7);
  ExpectZeroBitmap(odd);
  IcoImage compressed = Marked(16, 1);
  WriteI32(compressed.data, 16, 1);
  ExpectZeroBitmap(compressed);
  IcoImage withoutWidth = Marked(16, 1);
  WriteI32(withoutWidth.data, 4, 0);
  ExpectZeroBitmap(withoutWidth);
  IcoImage wide = Marked(16, 1);
  WriteI32(wide.data, 4, INT32_MAX);
  ExpectZeroBitmap(wide);
  IcoImage smallHeader = Marked(16, 1);
  WriteI32(smallHeader.data, 0, 12);
  ExpectZeroBitmap(smallHeader);
  IcoImage cut = Marked(16, 1);
  cut.data.resize(cut.data.size() - 65);  // the mask's 64 bytes and one of the bits
  ExpectZeroBitmap(cut);
}

TEST(cICOparser, AMaskOutsideTheStreamFails) {
  IcoImage image = PlainIcoImage(16, 24, 1, 2, 3);
  // The mask has 64 bytes and is found from the image's end. With no bytes told it would begin before the file.
  image.bytesInRes = 0;
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  EXPECT_EQ(NumberOf([&] { (void)Load(loaded, file); }), 9);
}

}  // namespace
}  // namespace kelvane
