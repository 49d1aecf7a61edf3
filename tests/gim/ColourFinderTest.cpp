#include <gtest/gtest.h>
#include <random>

#include "gim/ColourFinder.h"

namespace kelvane {
namespace {

using Values = std::vector<std::uint32_t>;

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

TEST(ColourFinder, GivesAnIndexForEveryPixelUntilThereAreTooManyColours) {
  std::mt19937 random(8);
  for (const std::uint32_t colours : {3U, 255U, 256U, 257U, 5000U}) {
    for (const int most : {255, 256}) {
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
      ColourFinder finder(palette, count);
      EXPECT_EQ(finder.FindOrAddAll(bytes, most, indexes), expected.size() == pixels.size() && expectedCount <= most);
      EXPECT_EQ(count, expectedCount);
      EXPECT_EQ(palette, expectedPalette);
      if (expectedCount < 256) {
        EXPECT_EQ(indexes, expected);
      }
    }
  }
}

TEST(ColourFinder, FindsColoursThatAllBelongToOneBucket) {
  // Multiples of the inverse of 0x9E3779B1: the upper bits of their products with it are all 0.
  Bytes bytes(2 * 255 * 4);
  Bytes expected;
  for (std::uint32_t i = 0; i < 2 * 255; ++i) {
    WriteU32(bytes, std::int64_t{i} * 4, i % 255 * 0x0E8B2F51U);
    expected.push_back(static_cast<std::uint8_t>(i % 255));
  }
  Values palette(256);
  Int16 count = 0;
  Bytes indexes(2 * 255);
  EXPECT_TRUE(ColourFinder(palette, count).FindOrAddAll(bytes, 255, indexes));
  EXPECT_EQ(count, 255);
  EXPECT_EQ(indexes, expected);
}

}  // namespace
}  // namespace kelvane
