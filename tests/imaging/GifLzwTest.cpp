#include <gtest/gtest.h>

#include "imaging/GifLzw.h"
#include "support/Failures.h"
#include "support/GifBuilder.h"

namespace kelvane {
namespace {

using test::GifCodeWriter;
using test::GifLzwEncode;
using test::GifSubBlocks;

// The first `count` indexes; empty where they can't be read.
Bytes Decode(std::int32_t codeSize, const Bytes& subBlocks, std::size_t count) {
  GifLzw lzw(codeSize, subBlocks);
  Bytes indexes(count);
  return lzw.Read(indexes) ? indexes : Bytes();
}

// Codes of `bits` bits each, as sub-blocks.
Bytes Codes(std::uint32_t bits, const std::vector<std::uint32_t>& codes) {
  GifCodeWriter writer(bits);
  for (const std::uint32_t code : codes) {
    writer.Write(code);
  }
  return GifSubBlocks(writer.Written());
}

// Indexes below `colours` that repeat at many lengths.
Bytes Drawn(std::size_t count, std::uint32_t colours) {
  Bytes indexes(count);
  std::uint32_t state = 1;
  std::uint32_t run = 0;
  std::uint8_t index = 0;
  for (std::uint8_t& next : indexes) {
    if (run == 0) {
      state = state * 1664525 + 1013904223;
      run = (state >> 20) % 40 + 1;
      index = static_cast<std::uint8_t>((state >> 10) % colours);
    }
    next = index;
    --run;
  }
  return indexes;
}

Bytes Noise(std::size_t count, std::uint32_t colours) {
  Bytes indexes(count);
  std::uint32_t state = 7;
  for (std::uint8_t& next : indexes) {
    state = state * 1664525 + 1013904223;
    next = static_cast<std::uint8_t>((state >> 16) % colours);
  }
  return indexes;
}

TEST(GifLzw, HandWorkedCodesOfThreeBits) {
  // Clear is 4, the end 5, the first string given out 6: it is 1 2. With 7 given out too the end code has four bits.
  // From the right: 100, 001, 010, 110, 0101.
  const Bytes data = {0x8C, 0x5C};
  EXPECT_EQ(Decode(2, GifSubBlocks(data), 4), (Bytes{1, 2, 1, 2}));
}

TEST(GifLzw, ACodeMayStandForTheStringThatItEnds) {
  // 6 isn't known yet when it comes: it is the previous string, 1, and its own first index.
  EXPECT_EQ(Decode(2, Codes(3, {4, 1, 6, 5}), 3), (Bytes{1, 1, 1}));
}

TEST(GifLzw, TheFirstClearCodeMayBeMissing) {
  EXPECT_EQ(Decode(2, Codes(3, {1, 2, 3}), 3), (Bytes{1, 2, 3}));
}

TEST(GifLzw, RowsAreReadOneAfterTheOther) {
  const Bytes indexes = Drawn(5000, 4);
  GifLzw lzw(2, GifSubBlocks(GifLzwEncode(2, indexes)));
  for (std::size_t at = 0; at < indexes.size(); at += 50) {
    Bytes row(50);
    ASSERT_TRUE(lzw.Read(row));
    ASSERT_EQ(row, Bytes(indexes.begin() + static_cast<std::ptrdiff_t>(at),
                         indexes.begin() + static_cast<std::ptrdiff_t>(at) + 50));
  }
  Bytes more(1);
  EXPECT_FALSE(lzw.Read(more));
}

TEST(GifLzw, AllCodeSizesComeThrough) {
  for (std::uint8_t codeSize = 2; codeSize <= 8; ++codeSize) {
    const std::uint32_t colours = 1U << codeSize;
    for (const Bytes& indexes : {Drawn(70000, colours), Noise(70000, colours), Bytes(100000), Bytes(1, 1)}) {
      for (const bool clearWhenFull : {true, false}) {
        const Bytes lzw = GifLzwEncode(codeSize, indexes, {.clearWhenFull = clearWhenFull});
        EXPECT_EQ(Decode(codeSize, GifSubBlocks(lzw), indexes.size()), indexes)
            << int{codeSize} << ' ' << indexes.size() << ' ' << clearWhenFull;
      }
    }
  }
}

TEST(GifLzw, BlocksMayBeOfAnyLength) {
  const Bytes indexes = Drawn(3000, 16);
  const Bytes lzw = GifLzwEncode(4, indexes);
  for (const std::size_t most : {1U, 2U, 3U, 7U, 254U}) {
    EXPECT_EQ(Decode(4, GifSubBlocks(lzw, most), indexes.size()), indexes) << most;
  }
}

TEST(GifLzw, TheEndCodeMayBeMissing) {
  const Bytes indexes = Drawn(3000, 16);
  EXPECT_EQ(Decode(4, GifSubBlocks(GifLzwEncode(4, indexes, {.endCode = false})), indexes.size()), indexes);
}

TEST(GifLzw, WhatFollowsTheLastIndexIsNotLookedAt) {
  // 7 is no code that was given out; after the wanted indexes it does no harm.
  EXPECT_EQ(Decode(2, Codes(3, {4, 1, 2, 7}), 2), (Bytes{1, 2}));
}

TEST(GifLzw, DataThatEndsTooEarlyIsBroken) {
  EXPECT_EQ(Decode(2, Codes(3, {4, 1, 2, 5}), 3), Bytes());
  // Nine bits of codes; the last byte's other bits are two codes 0.
  EXPECT_EQ(Decode(2, Codes(3, {4, 1, 2}), 4), (Bytes{1, 2, 0, 0}));
  EXPECT_EQ(Decode(2, Codes(3, {4, 1, 2}), 5), Bytes());
  EXPECT_EQ(Decode(2, {0}, 1), Bytes());
  EXPECT_EQ(Decode(2, {}, 1), Bytes());
  EXPECT_EQ(Decode(2, {1}, 1), Bytes());
}

TEST(GifLzw, ACodeThatWasNotGivenOutIsBroken) {
  EXPECT_EQ(Decode(2, Codes(3, {4, 1, 7, 1, 1, 1}), 4), Bytes());
  // Straight after a clear code only single indexes are known.
  EXPECT_EQ(Decode(2, Codes(3, {4, 6, 1, 1}), 2), Bytes());
  EXPECT_EQ(Decode(2, Codes(3, {4, 1, 2, 4, 6, 1}), 4), Bytes());
}

TEST(GifLzw, CodeSizesThatGifDoesNotHaveFail) {
  for (const std::int32_t codeSize : {0, 1, 9, 12, 255}) {
    EXPECT_EQ(test::NumberOf([=] { GifLzw(codeSize, Bytes{0}); }), 5) << codeSize;
  }
}

}  // namespace
}  // namespace kelvane
