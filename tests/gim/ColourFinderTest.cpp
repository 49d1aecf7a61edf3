#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "gim/ColourFinder.h"
#include "support/GuardedBytes.h"

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
  constexpr std::size_t kPixels = std::size_t{2} * 255;
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

// `count` pixels whose colours take turns, `ahead` bytes in front of memory that can't be touched, with the indexes
// right in front of such memory. The last pixel is of a colour of its own if `newAtEnd`.
void ExpectTurns(std::size_t count, std::size_t colours, std::size_t ahead, bool newAtEnd, const WideLookup* wide) {
  Bytes pixels(count * 4 + ahead);
  Bytes expected(count);
  for (std::size_t i = 0; i < count; ++i) {
    const bool isNew = newAtEnd && i + 1 == count;
    expected[i] = static_cast<std::uint8_t>(isNew ? std::min(i, colours) : i % colours);
    WriteU32(pixels, static_cast<std::int64_t>(i) * 4, 0x80C0E0F1U + expected[i] * 0x01020305U);
  }
  Values palette(256);
  Int16 found = 0;
  const test::GuardedBytes guarded(pixels);
  test::GuardedBytes indexes{Bytes(count)};
  EXPECT_TRUE(
      ColourFinder(palette, found, wide).FindOrAddAll(guarded.View().first(count * 4), 255, {indexes.data(), count}));
  EXPECT_EQ(found, static_cast<std::int64_t>(std::min(count, colours + (newAtEnd ? 1 : 0))));
  EXPECT_EQ(Bytes(indexes.View().begin(), indexes.View().end()), expected);
}

TEST(ColourFinder, ARestOfAnyLengthAtAnyPlaceIsIndexedAndNothingBehindItIsTouched) {
  for (const std::size_t count : {1U,   15U,  16U,  17U,  63U,  64U,   65U,   255U,  256U,  257U,  271U, 272U,
                                  512U, 767U, 768U, 769U, 784U, 1023U, 1024U, 1025U, 1280U, 1281U, 2000U}) {
    for (const std::size_t colours : {1U, 3U, 200U}) {
      for (const std::size_t ahead : {0U, 1U, 2U, 3U}) {
        SCOPED_TRACE(testing::Message() << count << " pixels of " << colours << " colours, " << ahead << " ahead");
        for (const WideLookup* wide : kWays) {
          ExpectTurns(count, colours, ahead, false, wide);
          ExpectTurns(count, colours, ahead, true, wide);
        }
      }
    }
  }
}

}  // namespace
}  // namespace kelvane
