#include <gtest/gtest.h>

#include "gim/RowExpander.h"
#include "support/GuardedBytes.h"

namespace kelvane {
namespace {

using Values = std::vector<std::uint32_t>;

constexpr std::uint8_t kUntouched = 0xEE;

Values Colours(std::size_t count) {
  Values colours;
  for (std::size_t i = 0; i < count; ++i) {
    colours.push_back(static_cast<std::uint32_t>(i) * 0x01234567U + 0x89ABCDEFU);
  }
  return colours;
}

Bytes Row(std::size_t count) {
  Bytes row;
  for (std::size_t i = 0; i < count; ++i) {
    row.push_back(static_cast<std::uint8_t>(i * 37 + i / 7));
  }
  return row;
}

// Expands rows of all lengths up to 200 bytes; `colourOf` tells pixel `x` of a row.
template <class ColourOf>
void ExpectRows(int bits, const WideLookup* wide, ColourOf colourOf) {
  const Values palette = Colours(bits == 4 ? 16 : 256);
  const std::size_t pixelsOfByte = bits == 4 ? 2 : 1;
  RowExpander expander(palette, bits, wide);
  for (std::size_t count = 0; count <= 200; ++count) {
    const Bytes row = Row(count);
    Bytes expected(count * pixelsOfByte * 4 + 9, kUntouched);
    for (std::size_t x = 0; x < count * pixelsOfByte; ++x) {
      WriteU32(expected, static_cast<std::int64_t>(x) * 4, palette[colourOf(row, x)]);
    }
    Bytes target(expected.size(), kUntouched);
    expander.Expand(row, target.data());
    ASSERT_EQ(target, expected) << count;
  }
}

// The same with row and target at places of every alignment, both right in front of memory that can't be touched.
template <class ColourOf>
void ExpectRowsAtTheEndOfMemory(int bits, const WideLookup* wide, ColourOf colourOf) {
  const Values palette = Colours(bits == 4 ? 16 : 256);
  const std::size_t pixelBytes = bits == 4 ? 8 : 4;
  RowExpander expander(palette, bits, wide);
  for (std::size_t count = 0; count <= 200; ++count) {
    const Bytes row = Row(count);
    Bytes expected(1 + count * pixelBytes, kUntouched);
    for (std::size_t x = 0; x < count * pixelBytes / 4; ++x) {
      WriteU32(expected, 1 + static_cast<std::int64_t>(x) * 4, palette[colourOf(row, x)]);
    }
    const test::GuardedBytes guardedRow(row);
    test::GuardedBytes target(Bytes(expected.size(), kUntouched));
    expander.Expand(guardedRow.View(), target.data() + 1);
    ASSERT_EQ(Bytes(target.View().begin(), target.View().end()), expected) << count;
  }
}

std::size_t ColourOfByte(const Bytes& row, std::size_t x) {
  return row[x];
}

std::size_t ColourOfHalf(const Bytes& row, std::size_t x) {
  const std::size_t byte = row[x / 2];
  return x % 2 == 0 ? byte % 16 : byte / 16;
}

// With and without what the processor has for it.
const WideLookup* const kWays[] = {nullptr, BestWideLookup()};

TEST(RowExpander, AByteIsOnePixelAt8Bits) {
  for (const WideLookup* wide : kWays) {
    ExpectRows(8, wide, ColourOfByte);
  }
}

TEST(RowExpander, TheLowerHalfOfAByteIsTheLeftPixelAt4Bits) {
  for (const WideLookup* wide : kWays) {
    ExpectRows(4, wide, ColourOfHalf);
  }
}

TEST(RowExpander, NothingBehindARowOrItsColoursIsTouched) {
  for (const WideLookup* wide : kWays) {
    ExpectRowsAtTheEndOfMemory(8, wide, ColourOfByte);
    ExpectRowsAtTheEndOfMemory(4, wide, ColourOfHalf);
  }
}

}  // namespace
}  // namespace kelvane
