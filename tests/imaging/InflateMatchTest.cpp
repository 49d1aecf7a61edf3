// The built-in inflate's matches: every length and distance, long ones, and streams by zlib.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <zlib.h>

#include "imaging/InflateRun.h"
#include "support/DeflateBits.h"

namespace kelvane {
namespace {

using namespace test;

// What each length and distance symbol means, as the standard lists them.
constexpr std::array<unsigned, 29> kLengths = {3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                               31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
constexpr std::array<unsigned, 29> kLengthBits = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                                  2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
constexpr std::array<unsigned, 32> kDistances = {1,    2,    3,    4,    5,    7,     9,     13,    17,    25,   33,
                                                 49,   65,   97,   129,  193,  257,   385,   513,   769,   1025, 1537,
                                                 2049, 3073, 4097, 6145, 8193, 12289, 16385, 24577, 32769, 49153};
constexpr std::array<unsigned, 32> kDistanceBits = {0, 0, 0, 0, 1, 1, 2,  2,  3,  3,  4,  4,  5,  5,  6,  6,
                                                    7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13, 14, 14};

// Bytes among which no distance gives the same as another.
Bytes UnlikeBytes(std::size_t count) {
  Bytes bytes(count);
  std::uint32_t seed = 7;
  for (std::uint8_t& byte : bytes) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(seed >> 24);
  }
  return bytes;
}

// `content` in stored blocks, then a match, then some literals.
Bytes StreamWithMatch(const Bytes& content, unsigned lengthSymbol, unsigned lengthExtra, unsigned distanceSymbol,
                      unsigned distanceExtra) {
  DeflateBits bits;
  for (std::size_t from = 0; from < content.size(); from += 65535) {
    bits.Block(false, 0).Stored(ByteView(content).subspan(from, std::min<std::size_t>(65535, content.size() - from)));
  }
  bits.Block(true, 1).FixedSymbol(257 + lengthSymbol).Bits(lengthExtra, kLengthBits[lengthSymbol]);
  bits.FixedDistance(distanceSymbol).Bits(distanceExtra, kDistanceBits[distanceSymbol]);
  for (int i = 0; i < 40; ++i) {
    bits.FixedSymbol('!');
  }
  return bits.FixedEnd().Take();
}

// Both where the ends are near and where they are far.
void ExpectMatch(const Bytes& content, const Bytes& stream, unsigned length, unsigned distance) {
  Bytes expected = content;
  for (unsigned i = 0; i < length; ++i) {
    expected.push_back(expected[expected.size() - distance]);
  }
  expected.insert(expected.end(), 40, '!');
  const Inflated near = Inflate(stream, expected.size());
  ASSERT_EQ(near.outcome, kSuccess) << length << ' ' << distance;
  ASSERT_TRUE(near.raw == expected) << length << ' ' << distance;
  const Inflated far = Inflate(stream, expected.size() + 1000);
  ASSERT_EQ(far.outcome, kSuccess) << length << ' ' << distance;
  expected.resize(expected.size() + 1000, kUntouched);
  ASSERT_TRUE(far.raw == expected) << length << ' ' << distance;
}

TEST(InflateBuffer, EveryLengthWithEverySmallDistanceRepeatsAsItShould) {
  const Bytes content = UnlikeBytes(70);
  for (unsigned symbol = 0; symbol < 29; ++symbol) {
    for (unsigned extra = 0; extra < 1U << kLengthBits[symbol]; ++extra) {
      for (unsigned distanceSymbol = 0; distanceSymbol < 12; ++distanceSymbol) {
        const unsigned distanceExtra = (1U << kDistanceBits[distanceSymbol]) - 1;
        ExpectMatch(content, StreamWithMatch(content, symbol, extra, distanceSymbol, distanceExtra),
                    kLengths[symbol] + extra, kDistances[distanceSymbol] + distanceExtra);
      }
    }
  }
}

// The last two, of 32769 and 49153 and 14 bits more, stand in no standard stream.
TEST(InflateBuffer, All32DistanceEntriesReachAsFarAsTheySay) {
  const Bytes content = UnlikeBytes(70000);
  for (unsigned symbol = 0; symbol < 32; ++symbol) {
    for (const unsigned extra : {0U, (1U << kDistanceBits[symbol]) - 1}) {
      ExpectMatch(content, StreamWithMatch(content, 6, 0, symbol, extra), 9, kDistances[symbol] + extra);
    }
  }
}

TEST(InflateBuffer, ADynamicBlockMayGiveAllOf288LiteralAnd32DistanceCodes) {
  Bytes literals(288, 9);
  std::fill(literals.begin(), literals.begin() + 224, std::uint8_t{8});
  const Bytes distances(32, 5);
  const auto codes = CanonicalCodes(literals);
  const Bytes content = UnlikeBytes(65535);
  DeflateBits bits;
  bits.Block(false, 0).Stored(content).Block(true, 2).DynamicHeader(literals, distances);
  bits.Code(codes[260].first, codes[260].second).Code(31, 5).Bits(65535 - 49153, 14);
  bits.Code(codes[256].first, codes[256].second);
  Bytes expected = content;
  expected.insert(expected.end(), content.begin(), content.begin() + 6);
  const Inflated result = Inflate(bits.Take(), expected.size());
  EXPECT_EQ(result.outcome, kSuccess);
  EXPECT_EQ(result.raw, expected);
}

TEST(InflateBuffer, WithAllow64KALengthOf258IsFollowedBy16BitsWithTheLengthLess3) {
  const auto stream = [](unsigned symbol, unsigned extra, unsigned extraBits) {
    return DeflateBits()
        .Block(true, 1)
        .FixedSymbol('A')
        .FixedSymbol(symbol)
        .Bits(extra, extraBits)
        .Bits(39997, 16)
        .FixedDistance(0)
        .FixedEnd()
        .Take();
  };
  // 258 is said by the symbol 285 and by 284 with 31.
  for (const Bytes& bytes : {stream(285, 0, 0), stream(284, 31, 5)}) {
    const Inflated result = Inflate(bytes, 40001, true);
    EXPECT_EQ(result.outcome, kSuccess);
    EXPECT_EQ(result.raw, Bytes(40001, 'A'));
    EXPECT_EQ(Inflate(bytes, 40000, true).outcome, kRuntimeError);
  }
  // Other lengths are as ever.
  const Bytes other = DeflateBits().Block(true, 1).FixedSymbol('A').FixedSymbol(257).FixedDistance(0).FixedEnd().Take();
  EXPECT_EQ(Inflate(other, 4, true).raw, Bytes(4, 'A'));
}

TEST(InflateBuffer, WithAllow64KTheLengthsBitsMustBeThere) {
  const Bytes stream = DeflateBits().Block(true, 1).FixedSymbol('A').FixedSymbol(285).Take();
  EXPECT_EQ(Inflate(stream, 400, true).outcome, kRuntimeError);
}

// Streams by zlib, whose own inflate is known to bring the content back.
TEST(InflateBuffer, EqualsTheContentOfStreamsOfEveryLevelAndStrategy) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{300}, std::size_t{65536},
                                 std::size_t{300000}, std::size_t{1500000}}) {
    Bytes content(size);
    std::uint32_t seed = static_cast<std::uint32_t>(size);
    for (std::size_t i = 0; i < size; ++i) {
      seed = seed * 1664525 + 1013904223;
      // Runs, far repetitions and noise take turns.
      const std::size_t kind = i / 4096 % 4;
      content[i] = kind == 0                 ? static_cast<std::uint8_t>(seed >> 24)
                   : kind == 1               ? static_cast<std::uint8_t>((seed >> 28) * (seed >> 30))
                   : kind == 2 && i >= 30000 ? content[i - 30000]
                                             : static_cast<std::uint8_t>(i / 3000);
    }
    for (const int level : {0, 1, 6, 9}) {
      for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FILTERED, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED}) {
        z_stream z{};
        ASSERT_EQ(deflateInit2(&z, level, Z_DEFLATED, 15, 8, strategy), Z_OK);
        Bytes stream(deflateBound(&z, size));
        z.next_in = content.data();
        z.avail_in = static_cast<uInt>(size);
        z.next_out = stream.data();
        z.avail_out = static_cast<uInt>(stream.size());
        ASSERT_EQ(deflate(&z, Z_FINISH), Z_STREAM_END);
        stream.resize(z.total_out);
        deflateEnd(&z);
        const Inflated result = Inflate(stream, size);
        ASSERT_EQ(result.outcome, kSuccess) << size << ' ' << level << ' ' << strategy;
        ASSERT_TRUE(result.raw == content) << size << ' ' << level << ' ' << strategy;
      }
    }
  }
}

}  // namespace
}  // namespace kelvane
