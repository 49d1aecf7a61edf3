#include <gtest/gtest.h>

#include "gim/Palette.h"
#include "support/Failures.h"
#include "support/PlainBmp.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using namespace test;
using Values = std::vector<std::uint32_t>;

// `count` different pixels, 0x01000000 the first.
Values Different(std::uint32_t count) {
  Values pixels;
  for (std::uint32_t i = 0; i < count; ++i) {
    pixels.push_back(0x01000000 + i * 0x10101);
  }
  return pixels;
}

// A palette of 256 entries with `count` of these pixels.
Values Filled(std::uint32_t count) {
  Values palette = Different(count);
  palette.resize(256);
  return palette;
}

TEST(FindOrAddColour, TheFirstColourIsStoredInEntry0) {
  for (const int start : {0, -1, -32768}) {
    Values palette(256, 7);
    Int16 count = start;
    EXPECT_EQ(FindOrAddColour(0xAABBCCDD, palette, count), 0);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(palette[0], 0xAABBCCDDU);
    EXPECT_EQ(palette[1], 7U);
  }
}

TEST(FindOrAddColour, AKnownColourGivesItsIndex) {
  Values palette = Filled(100);
  Int16 count = 100;
  EXPECT_EQ(FindOrAddColour(palette[0], palette, count), 0);
  EXPECT_EQ(FindOrAddColour(palette[99], palette, count), 99);
  EXPECT_EQ(count, 100);
  EXPECT_EQ(palette, Filled(100));
}

TEST(FindOrAddColour, OfLikeEntriesTheFirstCounts) {
  Values palette(256);
  Int16 count = 57;
  EXPECT_EQ(FindOrAddColour(0, palette, count), 0);
  EXPECT_EQ(count, 57);
}

TEST(FindOrAddColour, EntriesFromCountOnAreNotSearched) {
  Values palette = Filled(3);
  Int16 count = 2;
  EXPECT_EQ(FindOrAddColour(palette[2], palette, count), 2);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(FindOrAddColour(0, palette, count), 3);
  EXPECT_EQ(count, 4);
}

TEST(FindOrAddColour, ColoursThatDifferInAlphaOnlyAreTwo) {
  Values palette(256);
  Int16 count = 0;
  EXPECT_EQ(FindOrAddColour(Bgra(1, 2, 3, 4), palette, count), 0);
  EXPECT_EQ(FindOrAddColour(Bgra(1, 2, 3, 5), palette, count), 1);
  EXPECT_EQ(count, 2);
}

TEST(FindOrAddColour, ANewColourIsAddedBehindTheOthers) {
  Values palette = Filled(255);
  Int16 count = 255;
  EXPECT_EQ(FindOrAddColour(0x12345678, palette, count), 255);
  EXPECT_EQ(count, 256);
  EXPECT_EQ(palette[255], 0x12345678U);
  EXPECT_EQ(palette.size(), 256U);
}

TEST(FindOrAddColour, AFullPaletteGives0ForKnownColours) {
  Values palette = Filled(256);
  Int16 count = 256;
  EXPECT_EQ(FindOrAddColour(palette[9], palette, count), 0);
  EXPECT_EQ(count, 256);
  EXPECT_EQ(palette.size(), 256U);
}

TEST(FindOrAddColour, The257thColourGrowsThePaletteTo4096Entries) {
  Values palette = Filled(256);
  Int16 count = 256;
  EXPECT_EQ(FindOrAddColour(0x12345678, palette, count), 0);
  EXPECT_EQ(count, 257);
  ASSERT_EQ(palette.size(), 4096U);
  EXPECT_EQ(palette[256], 0x12345678U);
  EXPECT_EQ(Values(palette.begin(), palette.begin() + 256), Filled(256));
  // It is found from now on.
  EXPECT_EQ(FindOrAddColour(0x12345678, palette, count), 0);
  EXPECT_EQ(count, 257);
}

TEST(FindOrAddColour, Between257And4095ColoursAreStored) {
  Values palette(4096);
  Int16 count = 4095;
  EXPECT_EQ(FindOrAddColour(0x12345678, palette, count), 0);
  EXPECT_EQ(count, 4096);
  EXPECT_EQ(palette[4095], 0x12345678U);
}

TEST(FindOrAddColour, From4096OnNothingIsStoredButTheCountGoesOn) {
  Values palette(4096);
  Int16 count = 4096;
  EXPECT_EQ(FindOrAddColour(0x12345678, palette, count), 0);
  EXPECT_EQ(count, 4097);
  EXPECT_EQ(palette, Values(4096));
  EXPECT_EQ(FindOrAddColour(0x12345678, palette, count), 0);
  EXPECT_EQ(count, 4098);
}

TEST(FindOrAddColour, ACountAbove32767IsFailure6) {
  Values palette(4096);
  Int16 count = 32767;
  EXPECT_EQ(FindOrAddColour(0, palette, count), 0);
  EXPECT_EQ(NumberOf([&] { FindOrAddColour(0x12345678, palette, count); }), 6);
  EXPECT_EQ(count, 32767);
}

TEST(FindOrAddColour, ACountFromAnEarlierBitmapGoesOnOverANewPalette) {
  // 300 colours before, and a new palette of 256 entries that are all 0.
  Values palette(256);
  Int16 count = 300;
  EXPECT_EQ(FindOrAddColour(0, palette, count), 0);
  EXPECT_EQ(count, 300);
  EXPECT_EQ(palette.size(), 256U);
  EXPECT_EQ(FindOrAddColour(5, palette, count), 0);
  EXPECT_EQ(count, 301);
  ASSERT_EQ(palette.size(), 4096U);
  EXPECT_EQ(palette[300], 5U);
}

// The count of a 32-bit bitmap of one row, from `colours` on.
int Counted(const Values& pixels, int colours = 0) {
  Int16 count = colours;
  EXPECT_TRUE(CountBitmapColours(BuildBmp32(static_cast<int>(pixels.size()), 1, pixels), count));
  return count.Int();
}

TEST(CountBitmapColours, CountsExactlyUpTo256) {
  EXPECT_EQ(Counted({5}), 1);
  EXPECT_EQ(Counted({5, 6, 5, 5, 7, 6}), 3);
  EXPECT_EQ(Counted({0, 0, 0}), 1);
  EXPECT_EQ(Counted(Different(255)), 255);
  EXPECT_EQ(Counted(Different(256)), 256);
}

TEST(CountBitmapColours, EndsAt257AsSoonAsThereAreMore) {
  EXPECT_EQ(Counted(Different(257)), 257);
  EXPECT_EQ(Counted(Different(20000)), 257);
}

TEST(CountBitmapColours, LikeColoursOfDifferentAlphaAreTwo) {
  EXPECT_EQ(Counted({Bgra(1, 2, 3, 0), Bgra(1, 2, 3, 255)}), 2);
}

TEST(CountBitmapColours, GoesThroughAllPixelsOfALargeBitmap) {
  Values pixels(200 * 100, 9);
  pixels.back() = 10;
  pixels[8192] = 11;
  pixels[8191] = 12;
  Int16 count = 0;
  EXPECT_TRUE(CountBitmapColours(BuildBmp32(200, 100, pixels), count));
  EXPECT_EQ(count, 4);
}

TEST(CountBitmapColours, GoesOnFromTheCountOfTheBitmapBefore) {
  // The palette is new and its entries are 0, so that colour 0 counts as known and every other one as new.
  EXPECT_EQ(Counted({5, 6, 0}, 57), 59);
  EXPECT_EQ(Counted({0, 0, 0}, 57), 57);
  EXPECT_EQ(Counted(Different(300), 57), 257);
  // Above 256 the first pixel ends it.
  EXPECT_EQ(Counted({5, 6, 7}, 257), 258);
  EXPECT_EQ(Counted({0, 6, 7}, 257), 257);
  EXPECT_EQ(Counted({5, 6, 7}, 4096), 4097);
}

TEST(CountBitmapColours, ACountAbove256EndsAtTheFirstPixelWhateverFollows) {
  Values pixels(100);
  pixels.back() = 5;
  EXPECT_EQ(Counted(pixels, 257), 257);
  EXPECT_EQ(Counted(pixels, 256), 257);
}

TEST(CountBitmapColours, PalettedBitmapsNeedNoCount) {
  for (const int bits : {4, 8}) {
    Int16 count = 12;
    EXPECT_TRUE(CountBitmapColours(BuildBmp({.width = 1, .height = 1, .bits = bits, .rows = {{1}}}), count));
    EXPECT_EQ(count, 12);
  }
}

TEST(CountBitmapColours, OtherDepthsAreFalse) {
  for (const int bits : {0, 1, 16, 24, 33, -1}) {
    Int16 count = 12;
    EXPECT_FALSE(CountBitmapColours(BuildBmp({.width = 1, .height = 1, .bits = bits, .rows = {{1}}}), count));
    EXPECT_EQ(count, 12);
  }
  Int16 count = 0;
  EXPECT_FALSE(CountBitmapColours(Bytes{}, count));
}

TEST(CountBitmapColours, HonoursTheOffsetOfThePixels) {
  const PlainBmp bmp = {.width = 2, .height = 1, .rows = {{1, 0, 0, 0, 1, 0, 0, 0}}, .gap = {9, 9, 9, 9, 9, 9, 9}};
  Int16 count = 0;
  EXPECT_TRUE(CountBitmapColours(BuildBmp(bmp), count));
  EXPECT_EQ(count, 1);
}

TEST(CountBitmapColours, ANegativeOffsetIsFailure5) {
  Bytes bmp = BuildBmp32(1, 1, {5});
  WriteI32(bmp, 10, -1);
  Int16 count = 0;
  EXPECT_EQ(NumberOf([&] { CountBitmapColours(bmp, count); }), 5);
}

TEST(CountBitmapColours, MissingPixelsAreOfColour0) {
  Bytes bmp = BuildBmp32(2, 2, {1, 2, 3, 4});
  bmp.resize(bmp.size() - 4);
  Int16 count = 0;
  EXPECT_TRUE(CountBitmapColours(bmp, count));
  EXPECT_EQ(count, 4);
  // Of the third pixel in the file, 1, the byte that isn't 0 is there.
  bmp.resize(bmp.size() - 3);
  count = 0;
  EXPECT_TRUE(CountBitmapColours(bmp, count));
  EXPECT_EQ(count, 4);
  // And the offset may lie behind the end.
  WriteI32(bmp, 10, 1 << 30);
  count = 0;
  EXPECT_TRUE(CountBitmapColours(bmp, count));
  EXPECT_EQ(count, 1);
}

TEST(CountBitmapColours, AHugeSizeOverFewPixelsEndsAtOnce) {
  Bytes bmp = BuildBmp32(2, 1, {1, 2});
  WriteI32(bmp, 18, 0x7FFF);
  WriteI32(bmp, 22, 0xFFFF);
  Int16 count = 0;
  EXPECT_TRUE(CountBitmapColours(bmp, count));
  EXPECT_EQ(count, 3);
}

TEST(CountBitmapColours, MorePixelsThan32BitsCountAreFailure6) {
  Bytes bmp = BuildBmp32(2, 1, {1, 2});
  WriteI32(bmp, 18, 0x10000);
  WriteI32(bmp, 22, 0x8000);
  Int16 count = 0;
  EXPECT_EQ(NumberOf([&] { CountBitmapColours(bmp, count); }), 6);
}

TEST(CountBitmapColours, ATopDownBitmapHasNoPixelsToCount) {
  Bytes bmp = BuildBmp32(2, 1, {1, 2});
  WriteI32(bmp, 22, -1);
  Int16 count = 0;
  EXPECT_TRUE(CountBitmapColours(bmp, count));
  EXPECT_EQ(count, 0);
}

TEST(CountBitmapColours, A24BitBitmapIsToldUnlessQuiet) {
  const TempFolder folder;
  const auto path = folder.Write("a.bmp", BuildBmp({.width = 1, .height = 1, .bits = 24, .rows = {{1, 2, 3}}}));
  ScriptedPrompts prompts;
  Int16 count = 0;
  EXPECT_FALSE(CountBitmapColours(path, count, true, prompts));
  prompts.ExpectTell("The colour depth MUST be 4, 8 or 32 bit!", Icon::Exclamation);
  EXPECT_FALSE(CountBitmapColours(path, count, false, prompts));
  EXPECT_EQ(count, 0);
}

TEST(CountBitmapColours, CountsAFile) {
  const TempFolder folder;
  ScriptedPrompts prompts;
  Int16 count = 0;
  EXPECT_TRUE(CountBitmapColours(folder.Write("32.bmp", BuildBmp32(3, 1, {1, 2, 1})), count, false, prompts));
  EXPECT_EQ(count, 2);
  EXPECT_TRUE(CountBitmapColours(folder.Write("8.bmp", BuildBmp8(1, 1, {0}, Values(256))), count, false, prompts));
  EXPECT_EQ(count, 2);
  EXPECT_EQ(NumberOf([&] { CountBitmapColours(folder / "none.bmp", count, false, prompts); }), 53);
}

struct Choice {
  int colours;
  int width;
  int height;
  int mode;
  bool palette;
};

class ShouldUsePaletteTable : public testing::TestWithParam<Choice> {};

TEST_P(ShouldUsePaletteTable, FollowsModeCountAndSize) {
  const Choice& choice = GetParam();
  const TempFolder folder;
  const auto path = folder.Write("a.bmp", BuildBmp({.width = choice.width, .height = choice.height}));
  EXPECT_EQ(ShouldUsePalette(choice.colours, path, choice.mode), choice.palette);
}

INSTANTIATE_TEST_SUITE_P(Mode0, ShouldUsePaletteTable,
                         testing::Values(Choice{0, 1, 1, 0, true}, Choice{1, 1, 1, 0, true}, Choice{256, 1, 1, 0, true},
                                         Choice{257, 100, 100, 0, false}));
INSTANTIATE_TEST_SUITE_P(Mode1, ShouldUsePaletteTable,
                         testing::Values(Choice{3, 6, 6, 1, false}, Choice{3, 6, 7, 1, true},
                                         Choice{16, 37, 1, 1, true}, Choice{16, 36, 1, 1, false},
                                         Choice{17, 37, 1, 1, false}, Choice{17, 20, 20, 1, true},
                                         Choice{17, 16, 16, 1, false}, Choice{17, 276, 1, 1, false},
                                         Choice{17, 277, 1, 1, true}, Choice{256, 480, 272, 1, true},
                                         Choice{257, 480, 272, 1, false}, Choice{0, 37, 1, 1, true},
                                         Choice{3, -100, 100, 1, false}, Choice{3, 100, -100, 1, false}));
INSTANTIATE_TEST_SUITE_P(Mode2AndOthers, ShouldUsePaletteTable,
                         testing::Values(Choice{3, 100, 100, 2, false}, Choice{0, 100, 100, 2, false},
                                         Choice{3, 100, 100, 3, false}, Choice{3, 100, 100, -1, false}));

TEST(ShouldUsePalette, ReadsTheFileInMode1Only) {
  const TempFolder folder;
  EXPECT_TRUE(ShouldUsePalette(256, folder / "none.bmp", 0));
  EXPECT_FALSE(ShouldUsePalette(256, folder / "none.bmp", 2));
  EXPECT_FALSE(ShouldUsePalette(257, folder / "none.bmp", 1));
  EXPECT_EQ(NumberOf([&] { (void)ShouldUsePalette(256, folder / "none.bmp", 1); }), 53);
}

TEST(ShouldUsePalette, MorePixelsThan32BitsCountAreFailure6) {
  EXPECT_EQ(NumberOf([] { (void)ShouldUsePalette(3, BitmapHeader{.biWidth = 1 << 20, .biHeight = 1 << 20}, 1); }), 6);
}

}  // namespace
}  // namespace kelvane
