#include <gtest/gtest.h>
#include <random>

#include "gim/ColourFinder.h"

namespace kelvane {
namespace {

using Values = std::vector<std::uint32_t>;

// With and without what the processor has for it.
const WideLookup* const kWays[] = {nullptr, BestWideLookup()};

TEST(ColourFinder, GivesTheResultsOfFindOrAddColour) {
  std::mt19937 random(7);
  for (const int start : {0, 1, 57, 255, 256, 257, 300, 4095, 5000}) {
    for (const std::uint32_t colours : {3U, 40U, 256U, 300U, 5000U}) {
      Values palette(256);
      Values expectedPalette(256);
      Int16 count = start;
      Int16 expectedCount = start;
      ColourFinder finder(palette, count);
      for (int i = 0; i < 3000; ++i) {
        // Multiples of 2^22 and 2^10 crowd together in a table of 2^10 slots.
        const std::uint32_t colour = static_cast<std::uint32_t>(random()) % colours *
                                     (i % 3 == 0   ? 1U << 22
                                      : i % 3 == 1 ? 1U << 10
                                                   : 1U);
        ASSERT_EQ(finder.FindOrAdd(colour), FindOrAddColour(colour, expectedPalette, expectedCount));
        ASSERT_EQ(count, expectedCount);
      }
      EXPECT_EQ(palette, expectedPalette);
    }
  }
}

// Pixels of so many colours in any order, and what comes of them.
void ExpectIndexes(std::uint32_t colours, int most, const WideLookup* wide) {
  std::mt19937 random(8);
  // As many pixels as leave a rest in every way of taking them together.
  Values pixels;
  for (int i = 0; i < 3001; ++i) {
    pixels.push_back(static_cast<std::uint32_t>(random()) % colours * 0x400401U);
  }
  Values expectedPalette(256);
  Int16 expectedCount = 0;
  Bytes expected;
  for (const std::uint32_t pixel : pixels) {
    expected.push_back(static_cast<std::uint8_t>(FindOrAddColour(pixel, expectedPalette, expectedCount).Int()));
    if (expectedCount > most) {
      break;
    }
  }
  Bytes bytes(pixels.size() * 4);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    WriteU32(bytes, static_cast<std::int64_t>(i) * 4, pixels[i]);
  }
  Values palette(256);
  Int16 count = 0;
  Bytes indexes(pixels.size());
  ColourFinder finder(palette, count, wide);
  EXPECT_EQ(finder.FindOrAddAll(bytes, most, indexes), expected.size() == pixels.size() && expectedCount <= most);
  EXPECT_EQ(count, expectedCount);
  EXPECT_EQ(palette, expectedPalette);
  if (expectedCount < 256) {
    EXPECT_EQ(indexes, expected);
  }
}

TEST(ColourFinder, GivesAnIndexForEveryPixelUntilThereAreTooManyColours) {
  for (const std::uint32_t colours : {3U, 255U, 256U, 257U, 5000U}) {
    for (const WideLookup* wide : kWays) {
      ExpectIndexes(colours, 255, wide);
      ExpectIndexes(colours, 256, wide);
    }
  }
}

TEST(ColourFinder, FindsColoursThatAllBelongToOneBucket) {
  // Multiples of the inverse of 0x9E3779B1: the upper bits of their products with it are all 0.
  constexpr std::size_t kPixels = 2 * 255;
  Bytes bytes(kPixels * 4);
  Bytes expected;
  for (std::uint32_t i = 0; i < kPixels; ++i) {
    WriteU32(bytes, std::int64_t{i} * 4, i % 255 * 0x0E8B2F51U);
    expected.push_back(static_cast<std::uint8_t>(i % 255));
  }
  for (const WideLookup* wide : kWays) {
    Values palette(256);
    Int16 count = 0;
    Bytes indexes(kPixels);
    EXPECT_TRUE(ColourFinder(palette, count, wide).FindOrAddAll(bytes, 255, indexes));
    EXPECT_EQ(count, 255);
    EXPECT_EQ(indexes, expected);
  }
}

TEST(ColourFinder, AColourThatComesLateIsFoundAmongKnownOnes) {
  // Two colours for long, and a third at one place after the other.
  for (std::size_t at = 300; at < 900; at += 7) {
    Bytes bytes(std::size_t{4} * 900);
    Bytes expected(900);
    for (std::size_t i = 0; i < 900; ++i) {
      expected[i] = i == at ? 2 : i % 2;
      WriteU32(bytes, static_cast<std::int64_t>(i) * 4, i == at ? 0x12345678U : i % 2 == 0 ? 7U : 0xFF000007U);
    }
    for (const WideLookup* wide : kWays) {
      Values palette(256);
      Int16 count = 0;
      Bytes indexes(900);
      EXPECT_TRUE(ColourFinder(palette, count, wide).FindOrAddAll(bytes, 255, indexes));
      EXPECT_EQ(count, 3);
      ASSERT_EQ(indexes, expected) << at;
    }
  }
}

}  // namespace
}  // namespace kelvane
