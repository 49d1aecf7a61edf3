// What follows from a PNG's header: sizes, passes, samples and palettes.
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>

#include "imaging/PngFields.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::NumberOf;

using Values = std::initializer_list<std::uint8_t>;

PngFields Header(std::int32_t width, std::int32_t height, std::uint8_t bitDepth, std::uint8_t colourType,
                 std::uint8_t interlaceMethod = 0) {
  PngFields fields;
  fields.pngWidth = width;
  fields.pngHeight = height;
  fields.bitDepth = bitDepth;
  fields.colourType = colourType;
  fields.interlaceMethod = interlaceMethod;
  return fields;
}

TEST(GetBitParameters, FollowsTheColourTypeAndDepth) {
  const struct {
    std::uint8_t colourType, bitDepth;
    std::int32_t sourceBits, sourceStep;
  } rows[] = {
      {6, 8, 32, 4}, {6, 16, 64, 8}, {4, 8, 16, 2}, {4, 16, 32, 4}, {2, 8, 24, 3},  {2, 16, 48, 6},
      {0, 1, 1, 1},  {0, 2, 2, 1},   {0, 4, 4, 1},  {0, 8, 8, 1},   {0, 16, 16, 2}, {3, 1, 1, 1},
      {3, 2, 2, 1},  {3, 4, 4, 1},   {3, 8, 8, 1},  {3, 16, 16, 1},
  };
  for (const auto& row : rows) {
    const PngBitParameters bits = GetBitParameters(Header(1, 1, row.bitDepth, row.colourType));
    EXPECT_EQ(bits.sourceBits, row.sourceBits) << int{row.colourType} << ' ' << int{row.bitDepth};
    EXPECT_EQ(bits.sourceStep, row.sourceStep) << int{row.colourType} << ' ' << int{row.bitDepth};
  }
}

TEST(RowBytesFor, FillsUpTheLastByte) {
  EXPECT_EQ(RowBytesFor(0, 1), 0);
  EXPECT_EQ(RowBytesFor(1, 1), 1);
  EXPECT_EQ(RowBytesFor(8, 1), 1);
  EXPECT_EQ(RowBytesFor(9, 1), 2);
  EXPECT_EQ(RowBytesFor(3, 4), 2);
  EXPECT_EQ(RowBytesFor(3, 24), 9);
  EXPECT_EQ(RowBytesFor(1 << 24, 64), 1 << 27);
}

TEST(RowBytesFor, FailsWhereTheBitsDontFitIn32Bits) {
  EXPECT_EQ(NumberOf([] { (void)RowBytesFor(std::numeric_limits<std::int32_t>::max(), 8); }), 6);
  EXPECT_EQ(NumberOf([] { (void)RowBytesFor(1 << 25, 64); }), 6);
}

TEST(SizeOfPass, DealsAnImageOf8By8OutAsTheStandardDraws) {
  const PngFields fields = Header(8, 8, 8, 0);
  const PngPassSize expected[] = {{1, 1}, {1, 1}, {2, 1}, {2, 2}, {4, 2}, {4, 4}, {8, 4}, {8, 8}};
  for (std::size_t i = 0; i < 8; ++i) {
    const PngPassSize size = SizeOfPass(fields, kPngPasses[i]);
    EXPECT_EQ(size.width, expected[i].width) << i;
    EXPECT_EQ(size.height, expected[i].height) << i;
  }
}

TEST(SizeOfPass, IsZeroWhereAPassHasNoPixels) {
  const PngFields fields = Header(2, 2, 8, 0);
  const PngPassSize expected[] = {{1, 1}, {0, 1}, {1, 0}, {0, 1}, {1, 0}, {1, 1}, {2, 1}};
  for (std::size_t i = 0; i < 7; ++i) {
    const PngPassSize size = SizeOfPass(fields, kPngPasses[i]);
    EXPECT_EQ(size.width, expected[i].width) << i;
    EXPECT_EQ(size.height, expected[i].height) << i;
  }
}

TEST(CalculateRawSize, CountsRowsAndTheirFilterBytes) {
  EXPECT_EQ(CalculateRawSize(Header(10, 4, 8, 2)), 31 * 4);
  EXPECT_EQ(CalculateRawSize(Header(10, 4, 1, 3)), 3 * 4);
}

TEST(CalculateRawSize, CountsThePassesOfAnInterlacedImage) {
  // Passes of 1x1, 1x1, 2x1, 2x2, 4x2, 4x4 and 8x4 pixels.
  EXPECT_EQ(CalculateRawSize(Header(8, 8, 8, 0, 1)), 2 + 2 + 3 + 2 * 3 + 2 * 5 + 4 * 5 + 4 * 9);
}

TEST(CalculateRawSize, CountsAByteForEachRowOfAPassWithoutColumns) {
  // 2 by 2: passes 1, 6 and 7 have pixels; passes 2 and 4 have a row each without columns.
  EXPECT_EQ(CalculateRawSize(Header(2, 2, 8, 6, 1)), 5 + 5 + 9 + 1 + 1);
}

TEST(CalculateRawSize, FailsBeyond32Bits) {
  EXPECT_EQ(NumberOf([] { (void)CalculateRawSize(Header(20000, 20000, 16, 6)); }), 6);
  EXPECT_EQ(NumberOf([] { (void)CalculateRawSize(Header(20000, 20000, 16, 6, 1)); }), 6);
}

TEST(UnpackSample, CutsASampleOutOfAByteAndLooksItsColourUp) {
  PngFields fields = Header(1, 1, 2, 3);
  fields.palette = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  const PngSample sample = UnpackSample(fields, 4, 0b00100000);
  EXPECT_EQ(sample.index, 2);
  EXPECT_EQ(sample.colour, (std::array<std::uint8_t, 3>{7, 8, 9}));
  EXPECT_EQ(UnpackSample(fields, 6, 0b01000000).index, 1);
  EXPECT_EQ(UnpackSample(fields, 0, 0b11111101).index, 1);
}

TEST(UnpackSample, FailsWhereAnIndexLeavesTheTablesOrThePalette) {
  PngFields fields = Header(1, 1, 4, 3);
  fields.palette = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(UnpackSample(fields, 0, 1).index, 1);
  EXPECT_EQ(NumberOf([&] { (void)UnpackSample(fields, 0, 2); }), 9);
  EXPECT_EQ(NumberOf([&] { (void)UnpackSample(fields, 9, 0); }), 9);
  EXPECT_EQ(NumberOf([&] { (void)UnpackSample(fields, -1, 0); }), 9);
  fields.bitDepth = 16;
  EXPECT_EQ(NumberOf([&] { (void)UnpackSample(fields, 0, 0); }), 9);
  fields.bitDepth = 8;
  fields.palette.clear();
  EXPECT_EQ(NumberOf([&] { (void)UnpackSample(fields, 0, 0); }), 9);
}

TEST(BuildDefaultPalette, GivesGreyScalesInEvenSteps) {
  const struct {
    std::uint8_t bitDepth;
    std::uint8_t step;
    std::size_t count;
  } rows[] = {{1, 255, 2}, {2, 85, 4}, {4, 17, 16}, {8, 1, 256}};
  for (const auto& row : rows) {
    PngFields fields = Header(1, 1, row.bitDepth, 0);
    BuildDefaultPalette(fields);
    ASSERT_EQ(fields.palette.size(), 768U);
    for (std::size_t i = 0; i < 768; ++i) {
      EXPECT_EQ(fields.palette[i], i / 3 < row.count ? i / 3 * row.step : 0) << int{row.bitDepth} << ' ' << i;
    }
  }
}

TEST(BuildDefaultPalette, LeavesGreyOf16BitsBlackAndFails) {
  PngFields fields = Header(1, 1, 16, 0);
  EXPECT_EQ(NumberOf([&] { BuildDefaultPalette(fields); }), 9);
  EXPECT_EQ(fields.palette, Bytes(768));
}

TEST(BuildDefaultPalette, GivesA1BitPaletteImageCyanAndRed) {
  PngFields fields = Header(1, 1, 1, 3);
  BuildDefaultPalette(fields);
  Bytes expected(768);
  expected[4] = expected[5] = expected[6] = 255;
  EXPECT_EQ(fields.palette, expected);
}

TEST(BuildDefaultPalette, LeavesOtherPaletteImagesBlack) {
  for (const std::uint8_t bitDepth : Values{2, 4, 8, 16}) {
    PngFields fields = Header(1, 1, bitDepth, 3);
    BuildDefaultPalette(fields);
    EXPECT_EQ(fields.palette, Bytes(768));
  }
}

TEST(BuildDefaultPalette, DoesNothingForColoursAndWhereThereIsAPalette) {
  for (const std::uint8_t colourType : Values{2, 4, 6}) {
    PngFields fields = Header(1, 1, 8, colourType);
    BuildDefaultPalette(fields);
    EXPECT_TRUE(fields.palette.empty());
  }
  for (const std::uint8_t colourType : Values{0, 3}) {
    PngFields fields = Header(1, 1, 8, colourType);
    fields.palette = {1, 2, 3};
    BuildDefaultPalette(fields);
    EXPECT_EQ(fields.palette, (Bytes{1, 2, 3}));
  }
}

}  // namespace
}  // namespace kelvane
