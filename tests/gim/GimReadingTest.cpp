// Which blocks of a GIM file are found, and where.
#include <gtest/gtest.h>

#include "gim/ExpectedBitmap.h"
#include "gim/GimToBitmap.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

using namespace test;

// A 2x1 image of two colours, and what it becomes.
const GimImageBlock kImage = {.width = 2, .height = 1, .bits = 8, .pixels = {1, 0}};
const GimPaletteBlock kPalette = {.colours = {Rgba(1, 2, 3, 4), Rgba(5, 6, 7, 8)}};
const Bytes kBitmap = Joined({Header32(2, 1), {7, 6, 5, 8, 3, 2, 1, 4}});

constexpr std::size_t kFirstBlock = 48;

Bytes Converted(const Bytes& gim) {
  const GimConversion conversion = GimToBitmap(gim, true);
  EXPECT_TRUE(conversion.ok);
  return conversion.written.value_or(Bytes{});
}

void ExpectUntouched(const Bytes& gim) {
  const GimConversion conversion = GimToBitmap(gim, true);
  EXPECT_FALSE(conversion.ok);
  EXPECT_FALSE(conversion.written.has_value());
}

TEST(GimReading, AFileWithoutTheFirstFourBytesOfTheSignatureIsNotAccepted) {
  Bytes gim = GimBuilder().Palette(kPalette).Image(kImage).Build();
  for (std::size_t i = 0; i < 4; ++i) {
    Bytes wrong = gim;
    wrong[i] ^= 0x20;
    ExpectUntouched(wrong);
  }
}

TEST(GimReading, EachOfTheFirst12BytesCounts) {
  const Bytes gim = GimBuilder().Palette(kPalette).Image(kImage).Build();
  for (std::size_t i = 4; i < 12; ++i) {
    Bytes wrong = gim;
    ++wrong[i];
    ExpectUntouched(wrong);
  }
}

TEST(GimReading, Bytes12To47AreIgnored) {
  Bytes gim = GimBuilder().Palette(kPalette).Image(kImage).Build();
  std::fill(gim.begin() + 12, gim.begin() + kFirstBlock, std::uint8_t{0xFF});
  EXPECT_EQ(Converted(gim), kBitmap);
}

TEST(GimReading, AnEmptyFileAndOneOfHalfASignatureAreNotAccepted) {
  ExpectUntouched({});
  ExpectUntouched({'M', 'I', 'G', '.', '0', '0'});
}

TEST(GimReading, APaletteBlockBehindTheImageBlockWorksTheSame) {
  EXPECT_EQ(Converted(GimBuilder().Image(kImage).Palette(kPalette).Build()), kBitmap);
}

TEST(GimReading, FieldsThatAreNotReadDoNotCount) {
  Bytes gim = GimBuilder().Palette(kPalette).Image(kImage).Build();
  const std::size_t image = kFirstBlock + 80 + 8;
  for (const std::size_t block : {kFirstBlock, image}) {
    for (const auto& [from, to] : std::vector<std::pair<std::size_t, std::size_t>>{
             {2, 4}, {8, 22}, {32, 40}, {44, 80}}) {  // flags, next to format, heightAlign to reserved, the rest
      std::fill(gim.begin() + static_cast<std::ptrdiff_t>(block + from),
                gim.begin() + static_cast<std::ptrdiff_t>(block + to), std::uint8_t{0x5A});
    }
  }
  // Beside these the palette's order, height and pitch.
  WriteU16(gim, kFirstBlock + 22, 1);
  WriteU16(gim, kFirstBlock + 26, 99);
  WriteU16(gim, kFirstBlock + 30, 0);
  EXPECT_EQ(Converted(gim), kBitmap);
}

TEST(GimReading, PixelStartMovesTheData) {
  for (const int pixelStart : {36, 44, 49, 64, 1000}) {
    GimImageBlock image = kImage;
    image.pixelStart = pixelStart;
    GimPaletteBlock palette = kPalette;
    palette.pixelStart = pixelStart;
    EXPECT_EQ(Converted(GimBuilder().Palette(palette).Image(image).Build()), kBitmap) << pixelStart;
    EXPECT_EQ(Converted(GimBuilder().Image(image).Palette(palette).Build()), kBitmap) << pixelStart;
  }
}

TEST(GimReading, WhatIsLeftOfABlockIsSkippedByItsSize) {
  GimImageBlock image = kImage;
  image.behind = Bytes(33, 0xEE);
  GimPaletteBlock palette = kPalette;
  palette.behind = Bytes(7, 0xEE);
  EXPECT_EQ(Converted(GimBuilder().Palette(palette).Image(image).Build()), kBitmap);
  EXPECT_EQ(Converted(GimBuilder().Image(image).Palette(palette).Build()), kBitmap);
}

TEST(GimReading, ABlockSizeThatIsTooSmallLeadsBack) {
  // The palette block claims to end where it begins: it is read again as the second block, and no image is found.
  Bytes gim = GimBuilder().Palette(kPalette).Image(kImage).Build();
  WriteU32(gim, kFirstBlock + 4, 0);
  const GimConversion conversion = GimToBitmap(gim, true);
  EXPECT_FALSE(conversion.ok);
  EXPECT_EQ(conversion.written, Header32(0, 0));
}

TEST(GimReading, AnotherBlockCountsAsOneOfTheTwo) {
  // Other, palette: the image is the third block and isn't looked at.
  const Bytes gim = GimBuilder().Other(0xFF).Palette(kPalette).Image(kImage).Build();
  const GimConversion conversion = GimToBitmap(gim, true);
  EXPECT_FALSE(conversion.ok);
  EXPECT_EQ(conversion.written, Header32(0, 0));
}

TEST(GimReading, AnotherBlockIsPassedOverByItsHeadAlone) {
  const GimImageBlock direct = {.width = 1, .height = 1, .pixels = {Rgba(9, 8, 7, 6)}};
  const Bytes bitmap = Joined({Header32(1, 1), {7, 8, 9, 6}});
  EXPECT_EQ(Converted(GimBuilder().Other(0xFF).Image(direct).Build()), bitmap);
  EXPECT_EQ(Converted(GimBuilder().Image(direct).Other(0xFF, Bytes(64, 1)).Build()), bitmap);
  // Its content is taken for the next block, so an image behind it isn't found.
  EXPECT_FALSE(GimToBitmap(GimBuilder().Other(0xFF, Bytes(64, 1)).Image(direct).Build(), true).ok);
}

TEST(GimReading, PixelStartOfAnotherBlockMovesOnToo) {
  const GimImageBlock direct = {.width = 1, .height = 1, .pixels = {Rgba(9, 8, 7, 6)}};
  Bytes gim = GimBuilder().Other(0xFF, Bytes(16, 1)).Image(direct).Build();
  WriteU32(gim, kFirstBlock + 40, 64);
  EXPECT_EQ(Converted(gim), Joined({Header32(1, 1), {7, 8, 9, 6}}));
}

TEST(GimReading, ASecondBlockIsTakenIfTwoBytesRemain) {
  // 05 00 begins a palette block of 0 bits, which makes the file invalid; a single byte is no block.
  ExpectUntouched(GimBuilder().Image(kImage).Raw({5, 0}).Build());
  const GimImageBlock direct = {.width = 1, .height = 1, .pixels = {0}};
  EXPECT_EQ(Converted(GimBuilder().Image(direct).Raw({5}).Build()), Joined({Header32(1, 1), {0, 0, 0, 0}}));
}

TEST(GimReading, AThirdBlockIsNotLookedAt) {
  const Bytes rest = {5, 0};
  EXPECT_EQ(Converted(GimBuilder().Palette(kPalette).Image(kImage).Raw(rest).Build()), kBitmap);
}

TEST(GimReading, OfTwoImageBlocksTheSecondCounts) {
  const GimImageBlock first = {.width = 40, .height = 9, .pixels = std::vector<std::uint32_t>(360, 1)};
  const GimImageBlock second = {.width = 1, .height = 1, .pixels = {Rgba(9, 8, 7, 6)}};
  EXPECT_EQ(Converted(GimBuilder().Image(first).Image(second).Build()), Joined({Header32(1, 1), {7, 8, 9, 6}}));
}

TEST(GimReading, SeekingInFrontOfTheFileIsFalse) {
  for (const std::int32_t pixelStart : {-200, INT32_MIN, INT32_MIN + 48}) {
    Bytes gim = GimBuilder().Palette(kPalette).Image(kImage).Build();
    WriteI32(gim, kFirstBlock + 40, pixelStart);
    ExpectUntouched(gim);
  }
  Bytes gim = GimBuilder().Image(kImage).Palette(kPalette).Build();
  WriteI32(gim, kFirstBlock + 4, -1000);  // blockSize
  ExpectUntouched(gim);
}

TEST(GimReading, SeekingBehindTheFileEndsIt) {
  // The block's size leads far behind: there is no second block, so no palette.
  Bytes gim = GimBuilder().Image(kImage).Palette(kPalette).Build();
  WriteI32(gim, kFirstBlock + 4, 1 << 30);
  const GimConversion conversion = GimToBitmap(gim, true);
  EXPECT_FALSE(conversion.ok);
  EXPECT_EQ(conversion.written, Header32(2, 1));
}

}  // namespace
}  // namespace kelvane
