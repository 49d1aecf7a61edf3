// Bitmaps that can't be converted, and the conversion from file to file.
#include <gtest/gtest.h>

#include "common/Files.h"
#include "gim/BitmapToGim.h"
#include "support/Failures.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using namespace test;
using Values = std::vector<std::uint32_t>;

const Bytes kBitmap = BuildBmp32(1, 1, {Bgra(3, 2, 1, 4)});
const Bytes kGim = BuildRgbaGim(1, 1, {Rgba(1, 2, 3, 4)});
const Bytes kOld(500, 0x77);

// A bitmap of these fields and no pixels.
Bytes BitmapOfFields(int width, int height, int bits) {
  return BuildBmp({.width = width, .height = height, .bits = bits});
}

std::optional<Bytes> Converted(const Bytes& bmp, Int16 pixelOrder = 1, bool convert32 = false) {
  return BitmapToGim(bmp, convert32, pixelOrder, false);
}

int FailureOf(const Bytes& bmp, Int16 pixelOrder = 1, bool convert32 = false) {
  return NumberOf([&] { (void)Converted(bmp, pixelOrder, convert32); });
}

TEST(BitmapToGimFailure, OtherDepthsAreFalse) {
  for (const int bits : {1, 2, 16, 24, 64}) {
    EXPECT_FALSE(Converted(BitmapOfFields(4, 4, bits)).has_value()) << bits;
    EXPECT_FALSE(Converted(BitmapOfFields(4, 4, bits), 0, true).has_value()) << bits;
  }
}

TEST(BitmapToGimFailure, TheDepthIsLookedAtBeforeTheArraysAreSized) {
  EXPECT_FALSE(Converted(BitmapOfFields(4, -4, 24)).has_value());
  EXPECT_FALSE(Converted(BitmapOfFields(0, 0, 24)).has_value());
}

TEST(BitmapToGimFailure, ThePaddingIsWorkedOutBeforeTheDepthIsLookedAt) {
  EXPECT_EQ(FailureOf(BitmapOfFields(32768, 4, 24)), 6);
  EXPECT_EQ(FailureOf(BitmapOfFields(4, 4, 0)), 11);
  EXPECT_EQ(FailureOf(BitmapOfFields(4, 4, -8)), 5);
  EXPECT_EQ(FailureOf({}), 11);
}

TEST(BitmapToGimFailure, WidthOrHeightOver32767IsFailure6) {
  for (const int bits : {4, 8, 32}) {
    EXPECT_EQ(FailureOf(BitmapOfFields(32768, 1, bits)), 6);
    EXPECT_EQ(FailureOf(BitmapOfFields(1 << 20, 1, bits)), 6);
    EXPECT_EQ(FailureOf(BitmapOfFields(8, 32768, bits)), 6);
    EXPECT_EQ(FailureOf(BitmapOfFields(8, 70000, bits)), 6);
    EXPECT_EQ(FailureOf(BitmapOfFields(-32769, 1, bits)), 6);
  }
}

TEST(BitmapToGimFailure, PaddingOver32767IsFailure6) {
  EXPECT_EQ(FailureOf(BitmapOfFields(32753, 1, 8)), 6);
  EXPECT_TRUE(Converted(BitmapOfFields(32752, 1, 8)).has_value());
  EXPECT_EQ(FailureOf(BitmapOfFields(16, 32761, 8)), 6);
  EXPECT_TRUE(Converted(BitmapOfFields(16, 32760, 8)).has_value());
  EXPECT_TRUE(Converted(BitmapOfFields(16, 32767, 8), 0).has_value());
}

TEST(BitmapToGimFailure, ATopDownBitmapIsFailure9) {
  for (const int bits : {4, 8, 32}) {
    for (const int height : {-1, -7, -8, -30, -32768}) {
      EXPECT_EQ(FailureOf(BitmapOfFields(16, height, bits), 1), 9);
      EXPECT_EQ(FailureOf(BitmapOfFields(16, height, bits), 0), 9);
    }
    EXPECT_EQ(FailureOf(BitmapOfFields(-16, -30, bits), 1), 9);
  }
  EXPECT_EQ(FailureOf(BitmapOfFields(16, -30, 32), 1, true), 9);
}

TEST(BitmapToGimFailure, ABitmapOfNoPixelsIsFailure9) {
  for (const int bits : {4, 8, 32}) {
    EXPECT_EQ(FailureOf(BitmapOfFields(0, 8, bits)), 9);
    EXPECT_EQ(FailureOf(BitmapOfFields(8, 0, bits)), 9);
    EXPECT_EQ(FailureOf(BitmapOfFields(-8, 8, bits)), 9);
  }
}

TEST(BitmapToGimFailure, A4BitBitmapOfWidth1IsFailure9) {
  EXPECT_EQ(FailureOf(BitmapOfFields(1, 8, 4)), 9);
}

TEST(BitmapToGimFailure, A32BitPaddedWidthAbove8192IsFailure6) {
  EXPECT_TRUE(Converted(BitmapOfFields(8192, 1, 32)).has_value());
  EXPECT_TRUE(Converted(BitmapOfFields(8189, 1, 32)).has_value());
  EXPECT_EQ(FailureOf(BitmapOfFields(8193, 1, 32)), 6);
  // Indexing doesn't walk the rows by bytes.
  EXPECT_TRUE(Converted(BitmapOfFields(8193, 1, 32), 1, true).has_value());
}

TEST(BitmapToGimFailure, PixelsBeyondMemoryAreFailure7) {
  EXPECT_EQ(FailureOf(BitmapOfFields(32764, 32760, 32), 1, true), 7);
}

TEST(BitmapToGimFailure, ACompressedBitmapIsTakenAsItIs) {
  Bytes bmp = BuildBmp8(4, 1, {1, 2, 3, 4}, Values(256, Bgra(1, 2, 3, 4)));
  WriteU32(bmp, 30, 1);  // biCompression: runs
  EXPECT_EQ(Converted(bmp), BuildIndexedGim(4, 1, 8, {1, 2, 3, 4}, Values(256, Rgba(3, 2, 1, 4))));
}

TEST(BitmapToGimFile, WritesTheGim) {
  const TempFolder folder;
  EXPECT_TRUE(BitmapToGim(folder.Write("a.bmp", kBitmap), folder / "a.gim", false, 1, false));
  EXPECT_EQ(ReadWholeFile(folder / "a.gim"), kGim);
}

TEST(BitmapToGimFile, NothingOfALongerFileThatWasThereStays) {
  const TempFolder folder;
  const auto destination = folder.Write("a.gim", kOld);
  EXPECT_TRUE(BitmapToGim(folder.Write("a.bmp", kBitmap), destination, false, 1, false));
  EXPECT_EQ(ReadWholeFile(destination), kGim);
}

TEST(BitmapToGimFile, FalseLeavesTheDestinationUntouched) {
  const TempFolder folder;
  const auto destination = folder.Write("a.gim", kOld);
  EXPECT_FALSE(BitmapToGim(folder.Write("a.bmp", BitmapOfFields(4, 4, 24)), destination, false, 1, false));
  EXPECT_EQ(ReadWholeFile(destination), kOld);
}

TEST(BitmapToGimFile, AFailureTravelsToTheCallerAndLeavesTheDestinationUntouched) {
  const TempFolder folder;
  const auto destination = folder.Write("a.gim", kOld);
  const auto source = folder.Write("a.bmp", BitmapOfFields(4, -4, 8));
  EXPECT_EQ(NumberOf([&] { BitmapToGim(source, destination, false, 1, false); }), 9);
  EXPECT_EQ(NumberOf([&] { BitmapToGim(folder / "none.bmp", destination, false, 1, false); }), 53);
  EXPECT_EQ(ReadWholeFile(destination), kOld);
}

TEST(BitmapToGimFile, ADestinationThatCannotBeMadeIsAFailure) {
  const TempFolder folder;
  const auto source = folder.Write("a.bmp", kBitmap);
  EXPECT_EQ(NumberOf([&] { BitmapToGim(source, folder / "none/a.gim", false, 1, false); }), 76);
  EXPECT_EQ(NumberOf([&] { BitmapToGim(source, folder.Path(), false, 1, false); }), 75);
}

}  // namespace
}  // namespace kelvane
