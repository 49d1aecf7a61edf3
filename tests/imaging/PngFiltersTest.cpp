// Undoing filters, byte by byte as the PNG standard defines them.
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>

#include "common/Bytes.h"
#include "imaging/PngFilters.h"
#include "support/GuardedBytes.h"

namespace kelvane {
namespace {

using test::GuardedBytes;

constexpr std::int32_t kSteps[] = {1, 2, 3, 4, 6, 8};

Bytes Noise(std::size_t count, std::uint32_t seed) {
  Bytes bytes(count);
  for (std::uint8_t& byte : bytes) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(seed >> 24);
  }
  return bytes;
}

// Undoes a filter of a row of `length` bytes; the rows get the slack that the filters may touch, and not a byte more.
Bytes Undo(UnfilterRow unfilter, Bytes raw, Bytes above) {
  const std::size_t length = raw.size();
  raw.resize(length + kPngRowSlack, 0x55);
  above.resize(length + kPngRowSlack, 0xAA);
  const GuardedBytes guardedRaw(raw);
  const GuardedBytes guardedAbove(above);
  GuardedBytes row(Bytes(length + kPngRowSlack));
  unfilter(guardedRaw.data(), guardedAbove.data(), row.data(), length);
  const ByteView undone = row.View().first(length);
  return Bytes(undone.begin(), undone.end());
}

int StandardPaeth(int left, int above, int aboveLeft) {
  const int estimate = left + above - aboveLeft;
  const int toLeft = std::abs(estimate - left);
  const int toAbove = std::abs(estimate - above);
  const int toAboveLeft = std::abs(estimate - aboveLeft);
  if (toLeft <= toAbove && toLeft <= toAboveLeft) {
    return left;
  }
  return toAbove <= toAboveLeft ? above : aboveLeft;
}

TEST(PaethPredictor, IsTheStandardsForEveryTriple) {
  int wrong = 0;
  for (int left = 0; left < 256; ++left) {
    for (int above = 0; above < 256; ++above) {
      for (int aboveLeft = 0; aboveLeft < 256; ++aboveLeft) {
        wrong += PaethPredictor(static_cast<std::uint8_t>(left), static_cast<std::uint8_t>(above),
                                static_cast<std::uint8_t>(aboveLeft)) != StandardPaeth(left, above, aboveLeft);
      }
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST(PaethPredictor, BreaksTiesInFavourOfLeftThenAbove) {
  // Estimate 15, as far from 10 as from 20.
  EXPECT_EQ(PaethPredictor(10, 20, 15), 15);
  EXPECT_EQ(PaethPredictor(10, 10, 10), 10);
  // Estimate 2: 1 from left and 1 from above-left.
  EXPECT_EQ(PaethPredictor(3, 0, 1), 3);
  // Estimate 2: 1 from above and 1 from above-left.
  EXPECT_EQ(PaethPredictor(0, 3, 1), 3);
}

TEST(Unfilter, SubAddsThePixelToTheLeft) {
  for (const auto& filters : {PngFiltersFor(3), PortablePngFiltersFor(3)}) {
    EXPECT_EQ(Undo(filters.sub, {1, 2, 3, 250, 10, 20, 1, 1, 1}, Bytes(9, 99)),
              (Bytes{1, 2, 3, 251, 12, 23, 252, 13, 24}));
    EXPECT_EQ(Undo(filters.sub, {200, 0, 0, 100, 0, 0}, Bytes(6)), (Bytes{200, 0, 0, 44, 0, 0}));
  }
}

TEST(Unfilter, UpAddsTheByteAbove) {
  for (const auto& filters : {PngFiltersFor(4), PortablePngFiltersFor(4)}) {
    EXPECT_EQ(Undo(filters.up, {1, 2, 3, 4, 255}, {10, 20, 30, 40, 2}), (Bytes{11, 22, 33, 44, 1}));
  }
}

TEST(Unfilter, UpOnAFirstRowDoesNothing) {
  for (const auto& filters : {PngFiltersFor(4), PortablePngFiltersFor(4)}) {
    EXPECT_EQ(Undo(filters.up, {1, 2, 3, 4, 255}, Bytes(5)), (Bytes{1, 2, 3, 4, 255}));
  }
}

TEST(Unfilter, AverageAddsHalfTheSumOfLeftAndAboveTruncated) {
  for (const auto& filters : {PngFiltersFor(1), PortablePngFiltersFor(1), PngFiltersFor(2), PortablePngFiltersFor(2)}) {
    // With one pixel of at most 2 bytes there is nothing to the left.
    EXPECT_EQ(Undo(filters.average, {10}, {5}), (Bytes{12}));
  }
  for (const auto& filters : {PngFiltersFor(4), PortablePngFiltersFor(4)}) {
    // 1 + 255 / 2 = 128; then 2 + (128 + 250) / 2 = 191, where the sum is above 255.
    EXPECT_EQ(Undo(filters.average, {1, 0, 0, 0, 2, 0, 0, 0}, {255, 0, 0, 0, 250, 1, 0, 0}),
              (Bytes{128, 0, 0, 0, 191, 0, 0, 0}));
  }
}

TEST(Unfilter, PaethTakesTheByteAboveForTheFirstPixelAndTheOneToTheLeftInAFirstRow) {
  for (const auto& filters : {PngFiltersFor(3), PortablePngFiltersFor(3)}) {
    EXPECT_EQ(Undo(filters.paeth, {1, 2, 3}, {10, 20, 30}), (Bytes{11, 22, 33}));
    EXPECT_EQ(Undo(filters.paeth, {1, 2, 3, 4, 5, 6}, Bytes(6)), (Bytes{1, 2, 3, 5, 7, 9}));
  }
}

TEST(Unfilter, PaethPredictsAllMannerOfTriplesAsTheStandardDoes) {
  // Rows of two pixels: the first gives left and above-left, the second is predicted from all three.
  for (const std::int32_t step : kSteps) {
    const auto width = static_cast<std::size_t>(step);
    for (const UnfilterRow paeth : {PngFiltersFor(step).paeth, PortablePngFiltersFor(step).paeth}) {
      int wrong = 0;
      for (int left = 0; left < 256; left += 3) {
        for (int above = 0; above < 256; above += 3) {
          // As many above-lefts at a time as there are bytes in a pixel.
          for (int first = 0; first < 256; first += step) {
            std::array<std::uint8_t, 16 + kPngRowSlack> raw{};
            std::array<std::uint8_t, 16 + kPngRowSlack> aboveRow{};
            std::array<std::uint8_t, 16 + kPngRowSlack> row{};
            for (std::size_t i = 0; i < width; ++i) {
              aboveRow[i] = static_cast<std::uint8_t>(first + static_cast<int>(i));
              raw[i] = static_cast<std::uint8_t>(left - aboveRow[i]);
              aboveRow[width + i] = static_cast<std::uint8_t>(above);
            }
            paeth(raw.data(), aboveRow.data(), row.data(), 2 * width);
            for (std::size_t i = 0; i < width; ++i) {
              wrong += row[i] != left || row[width + i] != StandardPaeth(left, above, aboveRow[i]);
            }
          }
        }
      }
      EXPECT_EQ(wrong, 0) << step;
    }
  }
}

TEST(Unfilter, TheProcessorsOwnInstructionsGiveTheSameAsPortableOnes) {
  for (const std::int32_t step : kSteps) {
    const PngFilters best = PngFiltersFor(step);
    const PngFilters portable = PortablePngFiltersFor(step);
    for (std::uint32_t pixels = 1; pixels < 70; ++pixels) {
      const std::size_t length = pixels * static_cast<std::size_t>(step);
      const Bytes raw = Noise(length, pixels);
      const Bytes above = Noise(length, pixels + 1000);
      EXPECT_EQ(Undo(best.sub, raw, above), Undo(portable.sub, raw, above)) << step << ' ' << pixels;
      EXPECT_EQ(Undo(best.up, raw, above), Undo(portable.up, raw, above)) << step << ' ' << pixels;
      EXPECT_EQ(Undo(best.average, raw, above), Undo(portable.average, raw, above)) << step << ' ' << pixels;
      EXPECT_EQ(Undo(best.paeth, raw, above), Undo(portable.paeth, raw, above)) << step << ' ' << pixels;
    }
  }
}

}  // namespace
}  // namespace kelvane
