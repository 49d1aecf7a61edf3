#include <algorithm>
#include <gtest/gtest.h>

#include "imaging/Fakes.h"
#include "imaging/cICOparser.h"
#include "support/Failures.h"
#include "support/IcoBuilder.h"
#include "support/PngBuilder.h"

namespace kelvane {
namespace {

using test::BuildIco;
using test::BuildIcoBitmap;
using test::IcoBitmap;
using test::IcoImage;
using test::IcoSpec;
using test::PixelsOf;
using test::PlainIcoImage;

// Where the header of the first image lies in a file of that many images.
constexpr std::int64_t HeaderAt(std::int64_t images) {
  return 6 + 16 * images;
}

bool Load(c32bppDIB& image, Bytes& file, std::int32_t iconCx = 0, std::int32_t iconCy = 0) {
  return cICOparser().LoadStream(file, iconCx, iconCy, image, 0, static_cast<std::int32_t>(file.size()));
}

// Whether a file loads.
bool Loads(const IcoSpec& spec) {
  Bytes file = BuildIco(spec);
  c32bppDIB image;
  return Load(image, file);
}

// The first pixel, blue green red alpha, of what is chosen among the images; empty where nothing is.
Bytes Chosen(const std::vector<IcoImage>& images, std::int32_t iconCx = 0, std::int32_t iconCy = 0) {
  Bytes file = BuildIco({.images = images});
  c32bppDIB image;
  return Load(image, file, iconCx, iconCy) ? PixelsOf(image.Pixels().first(4)) : Bytes();
}

// An image of 32 bits whose pixels are all blue green red 7 7 `red`.
IcoImage Marked(std::int32_t side, std::uint8_t red, std::uint16_t bitCount = 32) {
  return PlainIcoImage(side, bitCount, 7, 7, red);
}

Bytes Mark(std::uint8_t red) {
  return {7, 7, red, 255};
}

IcoImage Png(std::int32_t width, std::int32_t height, std::uint8_t bitDepth = 8, std::uint8_t colourType = 6) {
  test::PngImage png;
  png.width = width;
  png.height = height;
  png.bitDepth = bitDepth;
  png.colourType = colourType;
  png.samples.assign(static_cast<std::size_t>(width * height * test::PngChannels(colourType)),
                     static_cast<std::uint16_t>((1U << bitDepth) - 1));
  if (colourType == 3) {
    png.palette = Bytes(std::size_t{3} << bitDepth, 99);
  }
  return {.width = static_cast<std::uint8_t>(width),
          .height = static_cast<std::uint8_t>(height),
          .bitCount = 32,
          .data = test::BuildPng(png)};
}

TEST(cICOparser, IdType3IsNotAnIcon) {
  EXPECT_TRUE(Loads({.type = 1, .images = {Marked(16, 1)}}));
  EXPECT_TRUE(Loads({.type = 2, .images = {Marked(16, 1)}}));
  EXPECT_FALSE(Loads({.type = 3, .images = {Marked(16, 1)}}));
  EXPECT_FALSE(Loads({.type = 0, .images = {Marked(16, 1)}}));
}

TEST(cICOparser, IdCount0IsNotAnIcon) {
  EXPECT_FALSE(Loads({.images = {Marked(16, 1)}, .count = 0}));
}

TEST(cICOparser, AReservedWordOtherThan0IsNotAnIcon) {
  EXPECT_FALSE(Loads({.reserved = 1, .images = {Marked(16, 1)}}));
}

TEST(cICOparser, ImageSizesThatExceedTheStreamByOneByteAreNotAnIcon) {
  IcoImage image = Marked(16, 1);
  const auto size = static_cast<std::int32_t>(image.data.size());
  image.bytesInRes = size + 1;
  EXPECT_FALSE(Loads({.images = {image}}));
  image.bytesInRes = size;
  EXPECT_TRUE(Loads({.images = {image}}));
  // The sum counts, not each size.
  image.bytesInRes = size / 2 + 1;
  IcoImage other = Marked(16, 1);
  other.bytesInRes = size + size / 2;
  EXPECT_FALSE(Loads({.images = {image, other}}));
}

TEST(cICOparser, ADirectoryThatDoesNotFitIsNotAnIcon) {
  EXPECT_FALSE(Loads({.images = {}, .count = 1}));
  EXPECT_FALSE(Loads({.images = {Marked(16, 1)}, .count = 500}));
  Bytes file = BuildIco({.images = {Marked(16, 1)}});
  for (std::size_t length = 0; length < file.size(); ++length) {
    Bytes shorter(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
    c32bppDIB image;
    EXPECT_FALSE(Load(image, shorter)) << length;
    EXPECT_EQ(image.handle(), nullptr) << length;
  }
}

TEST(cICOparser, Of16And32AskedFor0The32IsChosen) {
  EXPECT_EQ(Chosen({Marked(16, 1), Marked(32, 2)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 2), Marked(16, 1)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 2), Marked(16, 1)}, -5, 0), Mark(2));
}

TEST(cICOparser, OfTwoImagesOfASizeTheDeeperIsChosen) {
  EXPECT_EQ(Chosen({Marked(32, 1, 8), Marked(32, 2, 32)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 2, 32), Marked(32, 1, 8)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 1, 4), Marked(32, 2, 24), Marked(32, 3, 8)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 1, 1), Marked(32, 2, 4)}), Mark(2));
}

TEST(cICOparser, OfTwoIdenticalEntriesTheLaterIsChosen) {
  EXPECT_EQ(Chosen({Marked(32, 1), Marked(32, 2)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(16, 1), Marked(16, 2), Marked(16, 3)}), Mark(3));
}

TEST(cICOparser, AskedFor24Between16And32The16IsChosen) {
  EXPECT_EQ(Chosen({Marked(16, 1), Marked(32, 2)}, 24, 24), Mark(1));
  EXPECT_EQ(Chosen({Marked(32, 2), Marked(16, 1)}, 24, 24), Mark(1));
}

TEST(cICOparser, OfEqualDistancesTheBiggerIsChosen) {
  // 29 x 10 is 290 pixels: 34 more than 16 x 16 and 34 less than 18 x 18.
  EXPECT_EQ(Chosen({Marked(16, 1), Marked(18, 2)}, 29, 10), Mark(2));
  EXPECT_EQ(Chosen({Marked(18, 2), Marked(16, 1)}, 29, 10), Mark(2));
}

TEST(cICOparser, APerfectScoreEndsTheSearchByCoincidence) {
  // Wanted are 2 x 25,036 = 50,072 pixels, so 50,072.32 ends the search; 12 x 12 at 32 bits scores 100,000 less 49,928
  // and 0.32, which is just that.
  EXPECT_EQ(Chosen({Marked(32, 1), Marked(12, 2)}, 2, 25036), Mark(2));
  // Without the coincidence the bigger image is nearer.
  EXPECT_EQ(Chosen({Marked(32, 1), Marked(12, 2)}, 2, 25037), Mark(1));
}

TEST(cICOparser, AWantedSizeThatOverflowsFails) {
  Bytes file = BuildIco({.images = {Marked(16, 1), Marked(32, 2)}});
  c32bppDIB image;
  EXPECT_EQ(test::NumberOf([&] { (void)Load(image, file, 65536, 65536); }), 6);
  // One entry needs no choice.
  EXPECT_EQ(Chosen({Marked(16, 1)}, 65536, 65536), Mark(1));
}

TEST(cICOparser, AnEntryWithoutDepthIsPassedOver) {
  IcoImage without = Marked(32, 1);
  without.bitCount = 0;
  WriteU16(without.data, 14, 0);
  EXPECT_EQ(Chosen({without, Marked(16, 2)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(16, 2), without}), Mark(2));
  EXPECT_EQ(Chosen({without}), Bytes());
  EXPECT_EQ(Chosen({without, without}), Bytes());
}

TEST(cICOparser, ADepthOf33OrMoreScores0) {
  IcoImage deep = Marked(32, 1);
  WriteU16(deep.data, 14, 33);
  EXPECT_EQ(Chosen({deep, Marked(16, 2)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(16, 2), deep}), Mark(2));
  EXPECT_EQ(Chosen({deep, deep}), Bytes());
}

TEST(cICOparser, TheDirectoryTakesTheDepthFromTheImage) {
  // The directory says 1 bit and 32 bits; the images have it the other way round.
  IcoImage deep = Marked(32, 1, 32);
  deep.bitCount = 1;
  IcoImage flat = Marked(32, 2, 1);
  flat.bitCount = 32;
  EXPECT_EQ(Chosen({deep, flat}), Mark(1));
}

TEST(cICOparser, AnImageWithoutDepthTakesItFromTheDirectoryInTheCallersBytes) {
  IcoImage image = Marked(16, 1);
  WriteU16(image.data, 14, 0);
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(PixelsOf(loaded.Pixels().first(4)), Mark(1));
  EXPECT_EQ(ReadU16(file, HeaderAt(1) + 14), 32);
}

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
  EXPECT_EQ(PixelsOf(loaded.Pixels()), Bytes(16 * 16 * 4));
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
    std::uint8_t* mask = image.data.data() + image.data.size() - 40 * 8;
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
  bitmap.xorBits.assign(8 * 12, 9);
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

TEST(cICOparser, APngEntryIsReadByThePngParser) {
  Bytes file = BuildIco({.images = {Png(16, 16)}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(loaded.ImageType(), ImageKind::Png);
  EXPECT_TRUE(loaded.Alpha());
  EXPECT_EQ(loaded.Width(), 16);
  EXPECT_EQ(PixelsOf(loaded.Pixels()), Bytes(16 * 16 * 4, 255));
}

TEST(cICOparser, A256By256PngEntryIsAccepted) {
  Bytes file = BuildIco({.images = {Png(256, 256)}});
  EXPECT_EQ(file[6], 0);
  EXPECT_EQ(file[7], 0);
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(loaded.Width(), 256);
  EXPECT_EQ(loaded.Height(), 256);
  // Its height counts as 256: wanted that large, it is nearer than 128 by 128.
  EXPECT_EQ(Chosen({Png(256, 256), Marked(128, 1)}, 256, 256), Bytes(4, 255));
  EXPECT_EQ(Chosen({Png(256, 256), Marked(128, 1)}, 128, 128), Mark(1));
}

TEST(cICOparser, APngTakesItsSizeFromItsHeader) {
  IcoImage png = Png(32, 32);
  png.width = 1;
  png.height = 1;
  EXPECT_EQ(Chosen({png, Marked(16, 1)}), Bytes(4, 255));
}

TEST(cICOparser, APngOfASizeThatADirectoryCannotTellRefusesTheFile) {
  for (const auto& [width, height] : {std::pair{257, 16}, {16, 257}, {512, 512}}) {
    IcoImage png = Png(16, 16);
    png.data = Png(width, height).data;
    EXPECT_EQ(Chosen({Marked(32, 1), png}), Bytes()) << width;
  }
}

TEST(cICOparser, ThePngsDepthCountsAsItWillBeRead) {
  // Beside a bitmap of 8 bits and the same size, the later one unless it is deeper.
  const struct {
    std::uint8_t bitDepth;
    std::uint8_t colourType;
    bool deeper;
  } rows[] = {{16, 0, true}, {16, 2, true}, {8, 6, true},  {8, 4, true},
              {8, 2, true},  {8, 3, false}, {8, 0, false}, {4, 3, false}};
  for (const auto& row : rows) {
    const Bytes chosen = Chosen({Png(32, 32, row.bitDepth, row.colourType), Marked(32, 1, 8)});
    EXPECT_EQ(chosen != Mark(1), row.deeper) << int{row.bitDepth} << ' ' << int{row.colourType};
  }
  // 24 bits and no more for colour type 2 of 8 bits; 32 for 16 bits.
  EXPECT_EQ(Chosen({Png(32, 32, 8, 2), Marked(32, 1, 24)}), Mark(1));
  EXPECT_EQ(Chosen({Png(32, 32, 16, 2), Marked(32, 1, 24)}), Bytes(4, 255));
}

TEST(cICOparser, APngWhoseEntryHasNoDepthRefusesTheFile) {
  IcoImage png = Png(16, 16);
  png.bitCount = 0;
  EXPECT_EQ(Chosen({Marked(32, 1), png}), Bytes());
}

TEST(cICOparser, OneBrokenPngRefusesTheWholeFile) {
  for (const std::size_t broken : {std::size_t{0}, std::size_t{7}, std::size_t{12}}) {
    IcoImage png = Png(16, 16);
    png.data[broken] ^= 1;
    EXPECT_EQ(Chosen({png, Marked(32, 1)}), Bytes()) << broken;
    EXPECT_EQ(Chosen({Marked(32, 1), png}), Bytes()) << broken;
  }
  IcoImage noDepth = Png(16, 16);
  noDepth.data[24] = 0;
  EXPECT_EQ(Chosen({noDepth, Marked(32, 1)}), Bytes());
}

TEST(cICOparser, AnOffsetOutsideTheStreamFails) {
  for (const std::int32_t offset : {1 << 20, -1, INT32_MAX, INT32_MIN}) {
    IcoImage image = Marked(16, 1);
    image.imageOffset = offset;
    Bytes file = BuildIco({.images = {image}});
    c32bppDIB loaded;
    const int failure = test::NumberOf([&] { (void)Load(loaded, file); });
    EXPECT_TRUE(failure == 6 || failure == 9) << offset;
  }
}

TEST(cICOparser, SizesThatOverflowFail) {
  IcoImage image = Marked(16, 1);
  image.bytesInRes = INT32_MAX;
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  EXPECT_EQ(test::NumberOf([&] { (void)Load(loaded, file); }), 6);
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
  EXPECT_EQ(test::NumberOf([&] { (void)Load(loaded, file); }), 9);
}

TEST(cICOparser, ThePlaceInTheArrayPlaysNoPart) {
  Bytes file = BuildIco({.images = {Marked(16, 1)}});
  c32bppDIB loaded;
  EXPECT_TRUE(cICOparser().LoadStream(file, 0, 0, loaded, 1000, static_cast<std::int32_t>(file.size())));
  EXPECT_EQ(test::NumberOf([&] {
              (void)cICOparser().LoadStream(file, 0, 0, loaded, 0, static_cast<std::int32_t>(file.size()) + 1);
            }),
            9);
}

}  // namespace
}  // namespace kelvane
