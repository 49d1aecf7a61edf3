// The built-in inflate on streams made by hand: each status, each end, each way to be wrong.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <numeric>
#include <zlib.h>

#include "imaging/InflateRun.h"
#include "support/DeflateBits.h"

namespace kelvane {
namespace {

using namespace test;

// A final fixed block of the letters A, B, C.
DeflateBits Abc(std::uint8_t first = 0x78, std::uint8_t second = 0x9C) {
  DeflateBits bits(first, second);
  bits.Block(true, 1).FixedSymbol('A').FixedSymbol('B').FixedSymbol('C').FixedEnd();
  return bits;
}

TEST(InflateBuffer, AStreamWithAWrongAdler32OrNoneIsASuccess) {
  for (const Bytes& trailer : {Bytes{}, Bytes{0, 0, 0, 0}, Bytes{1, 2}}) {
    Bytes stream = Abc().Take();
    Append(stream, trailer);
    const Inflated result = Inflate(stream, 3);
    EXPECT_EQ(result.outcome, kSuccess);
    EXPECT_EQ(result.raw, (Bytes{'A', 'B', 'C'}));
  }
}

TEST(InflateBuffer, AStreamWithA2ByteHeaderOfAnyValueIsASuccess) {
  for (unsigned header = 0; header < 65536; ++header) {
    const auto first = static_cast<std::uint8_t>(header >> 8);
    const Inflated result = Inflate(Abc(first, static_cast<std::uint8_t>(header)).Take(), 3);
    ASSERT_EQ(result.outcome, kSuccess) << header;
    ASSERT_EQ(result.raw, (Bytes{'A', 'B', 'C'})) << header;
  }
}

TEST(InflateBuffer, AStoredBlockWithABadComplementIsAFailure) {
  const Bytes stream = DeflateBits().Block(true, 0).StoredLength(2, 0xFFFC).Byte('x').Byte('y').Take();
  EXPECT_EQ(Inflate(stream, 2).outcome, kBadStoredLength);
}

TEST(InflateBuffer, AStreamThatYieldsMoreThanRawLengthBytesIsAFailure) {
  const Inflated result = Inflate(Abc().Take(), 2);
  EXPECT_EQ(result.outcome, kRuntimeError);
  EXPECT_EQ(result.raw, (Bytes{'A', 'B'}));
}

TEST(InflateBuffer, AMatchThatRunsOverTheDestinationsEndIsAFailure) {
  // A, then 3 bytes from 1 back.
  const Bytes stream =
      DeflateBits().Block(true, 1).FixedSymbol('A').FixedSymbol(257).FixedDistance(0).FixedEnd().Take();
  EXPECT_EQ(Inflate(stream, 4).outcome, kSuccess);
  EXPECT_EQ(Inflate(stream, 3).outcome, kRuntimeError);
}

TEST(InflateBuffer, AStreamThatYieldsFewerBytesAndEndsCorrectlyIsASuccessAndTheRestIsAsItWas) {
  const Inflated result = Inflate(Abc().Take(), 6);
  EXPECT_EQ(result.outcome, kSuccess);
  EXPECT_EQ(result.raw, (Bytes{'A', 'B', 'C', kUntouched, kUntouched, kUntouched}));
}

TEST(InflateBuffer, TheRestStaysAsItWasBehindAMatchThatIsCopiedInWideSteps) {
  const Bytes content(3000, 'a');
  uLongf size = compressBound(content.size());
  Bytes stream(size);
  ASSERT_EQ(compress2(stream.data(), &size, content.data(), content.size(), 9), Z_OK);
  stream.resize(size);
  stream.resize(size + 64);  // so that the source's end is far
  const Inflated result = Inflate(stream, 8000);
  EXPECT_EQ(result.outcome, kSuccess);
  Bytes expected = content;
  expected.resize(8000, kUntouched);
  EXPECT_EQ(result.raw, expected);
}

TEST(InflateBuffer, ARawLengthOf0TakesAStreamWithoutBytes) {
  EXPECT_EQ(Inflate(DeflateBits().Block(true, 1).FixedEnd().Take(), 0).outcome, kSuccess);
  EXPECT_EQ(Inflate(Abc().Take(), 0).outcome, kRuntimeError);
}

TEST(InflateBuffer, OnlyRawLengthBytesOfALargerDestinationAreWritten) {
  Bytes raw(5, kUntouched);
  EXPECT_FALSE(InflateBuffer(raw, Abc().Take(), 2, false));
  EXPECT_EQ(raw, (Bytes{'A', 'B', kUntouched, kUntouched, kUntouched}));
  EXPECT_TRUE(InflateBuffer(raw, Abc().Take(), 3, false));
  EXPECT_EQ(raw, (Bytes{'A', 'B', 'C', kUntouched, kUntouched}));
}

TEST(InflateBuffer, ABlockOfType3EndsWithStatusMinus1) {
  EXPECT_EQ(Inflate(DeflateBits().Block(true, 3).Take(), 4).outcome, kBadBlock);
  // The bytes before it stand.
  const Bytes stream = DeflateBits().Block(false, 1).FixedSymbol('A').FixedEnd().Block(true, 3).Take();
  const Inflated result = Inflate(stream, 2);
  EXPECT_EQ(result.outcome, kBadBlock);
  EXPECT_EQ(result.raw, (Bytes{'A', kUntouched}));
}

TEST(InflateBuffer, StoredBlocksAreCopied) {
  DeflateBits bits;
  bits.Block(false, 0).Stored(Bytes{1, 2, 3}).Block(false, 0).Stored(Bytes{}).Block(true, 0).Stored(Bytes{4});
  const Inflated result = Inflate(bits.Take(), 4);
  EXPECT_EQ(result.outcome, kSuccess);
  EXPECT_EQ(result.raw, (Bytes{1, 2, 3, 4}));
}

TEST(InflateBuffer, AStoredBlockBehindCodesBeginsAtTheNextWholeByte) {
  // The literals before it take all numbers of bits, so that 0 to 7 bits of a byte are dropped.
  for (int literals = 0; literals < 16; ++literals) {
    DeflateBits bits;
    bits.Block(false, 1);
    Bytes expected;
    for (int i = 0; i < literals; ++i) {
      bits.FixedSymbol(200);
      expected.push_back(200);
    }
    bits.FixedEnd().Block(false, 0).Stored(Bytes{7, 8, 9}).Block(true, 1).FixedSymbol('z').FixedEnd();
    Append(expected, Bytes{7, 8, 9, 'z'});
    const Inflated result = Inflate(bits.Take(), expected.size());
    EXPECT_EQ(result.outcome, kSuccess) << literals;
    EXPECT_EQ(result.raw, expected) << literals;
  }
}

TEST(InflateBuffer, AStoredBlockWithFewerThan4BytesLeftInTheSourceEndsWithStatusMinus1) {
  const Bytes stream = DeflateBits().Block(true, 0).StoredLength(0, 0xFFFF).Take();
  EXPECT_EQ(Inflate(stream, 1).outcome, kSuccess);
  EXPECT_EQ(Inflate(ByteView(stream).first(stream.size() - 1), 1).outcome, kBadBlock);
}

TEST(InflateBuffer, AStoredBlockThatReadsPastTheSourceEndsWithStatusMinus1) {
  const Bytes stream = DeflateBits().Block(true, 0).Stored(Bytes{1, 2, 3}).Take();
  const Inflated result = Inflate(ByteView(stream).first(stream.size() - 1), 3);
  EXPECT_EQ(result.outcome, kBadBlock);
  EXPECT_EQ(result.raw, Bytes(3, kUntouched));
}

TEST(InflateBuffer, AStoredBlockThatWritesPastTheDestinationEndsWithStatusMinus1) {
  const Bytes stream = DeflateBits().Block(true, 0).Stored(Bytes{1, 2, 3}).Take();
  const Inflated result = Inflate(stream, 2);
  EXPECT_EQ(result.outcome, kBadBlock);
  EXPECT_EQ(result.raw, Bytes(2, kUntouched));
}

TEST(InflateBuffer, ASourceThatEndsInItsHeaderOrBeforeAnyBlockIsARuntimeError) {
  for (const Bytes& source : {Bytes{}, Bytes{0x78}, Bytes{0x78, 0x9C}}) {
    EXPECT_EQ(Inflate(source, 1).outcome, kRuntimeError);
  }
}

TEST(InflateBuffer, AStreamCutOffAnywhereIsAFailure) {
  Bytes content(5000);
  std::uint32_t seed = 1;
  for (std::uint8_t& byte : content) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>((seed >> 24) % 23 * ((seed >> 12) % 5));
  }
  uLongf size = compressBound(content.size());
  Bytes stream(size);
  ASSERT_EQ(compress2(stream.data(), &size, content.data(), content.size(), 9), Z_OK);
  const ByteView withoutAdler = ByteView(stream).first(size - 4);
  EXPECT_EQ(Inflate(withoutAdler, content.size()).raw, content);
  EXPECT_EQ(Inflate(withoutAdler, content.size()).outcome, kSuccess);
  for (std::size_t length = 0; length < withoutAdler.size(); ++length) {
    const Inflated result = Inflate(withoutAdler.first(length), content.size());
    ASSERT_EQ(result.outcome, kRuntimeError) << length;
    // What was decoded before is right.
    const auto wrong = std::ranges::mismatch(result.raw, content).in1;
    ASSERT_TRUE(std::all_of(wrong, result.raw.end(), [](std::uint8_t byte) { return byte == kUntouched; })) << length;
  }
}

TEST(InflateBuffer, ADistanceThatReachesBeforeTheStartIsARuntimeError) {
  const auto stream = [](unsigned distanceSymbol) {
    return DeflateBits()
        .Block(true, 1)
        .FixedSymbol('A')
        .FixedSymbol('B')
        .FixedSymbol(257)
        .FixedDistance(distanceSymbol)
        .FixedEnd()
        .Take();
  };
  EXPECT_EQ(Inflate(stream(1), 5).raw, (Bytes{'A', 'B', 'A', 'B', 'A'}));
  EXPECT_EQ(Inflate(stream(1), 5).outcome, kSuccess);
  EXPECT_EQ(Inflate(stream(2), 5).outcome, kRuntimeError);
}

TEST(InflateBuffer, ADistanceThatReachesBeforeTheStartFailsFarFromTheEndsToo) {
  DeflateBits bits;
  bits.Block(true, 1).FixedSymbol('A').FixedSymbol(257).FixedDistance(1);
  for (int i = 0; i < 1000; ++i) {
    bits.FixedSymbol('B');
  }
  EXPECT_EQ(Inflate(bits.FixedEnd().Take(), 5000).outcome, kRuntimeError);
}

TEST(InflateBuffer, TheSymbols286And287HaveNoLength) {
  for (const unsigned symbol : {286U, 287U}) {
    DeflateBits bits;
    bits.Block(true, 1).FixedSymbol('A').FixedSymbol(symbol).FixedDistance(0).FixedEnd();
    EXPECT_EQ(Inflate(bits.Take(), 1000).outcome, kRuntimeError) << symbol;
    for (int i = 0; i < 100; ++i) {
      bits.Byte(0);
    }
    EXPECT_EQ(Inflate(bits.Take(), 1000).outcome, kRuntimeError) << symbol;
  }
}

TEST(InflateBuffer, ACodeWithMoreCodesThanBitPatternsEndsWithStatus9) {
  // Three codes of 1 bit for the lengths of codes.
  std::array<std::uint8_t, 19> codeLengthLengths{};
  codeLengthLengths[0] = codeLengthLengths[1] = codeLengthLengths[2] = 1;
  EXPECT_EQ(Inflate(DeflateBits().Block(true, 2).DynamicCounts(257, 1, codeLengthLengths).Take(), 4).outcome,
            kBadTable);

  Bytes literals(257);
  literals[0] = literals[1] = literals[256] = 1;
  EXPECT_EQ(Inflate(DeflateBits().Block(true, 2).DynamicHeader(literals, Bytes{1}).Take(), 4).outcome, kBadTable);

  Bytes proper(257);
  proper[0] = proper[256] = 1;
  EXPECT_EQ(Inflate(DeflateBits().Block(true, 2).DynamicHeader(proper, Bytes{1, 1, 1}).Take(), 4).outcome, kBadTable);
}

TEST(InflateBuffer, ARepetitionOfNothingOrBeyondTheLastCodeEndsWithStatus9) {
  // Codes of 2 bits for the lengths 0 (00) and 1 (01) and for the repetitions 16 (10) and 18 (11).
  std::array<std::uint8_t, 19> codeLengthLengths{};
  codeLengthLengths[0] = codeLengthLengths[1] = codeLengthLengths[16] = codeLengthLengths[18] = 2;
  const auto header = [&] {
    DeflateBits bits;
    bits.Block(true, 2).DynamicCounts(257, 1, codeLengthLengths);
    return bits;
  };
  EXPECT_EQ(Inflate(header().Code(2, 2).Bits(0, 2).Take(), 4).outcome, kBadTable);
  // 138 and 121 zeros are 259 of 258 codes.
  EXPECT_EQ(Inflate(header().Code(3, 2).Bits(127, 7).Code(3, 2).Bits(110, 7).Take(), 4).outcome, kBadTable);
  // One code less ends the table, and its only code is missing: the next bits are none.
  EXPECT_EQ(Inflate(header().Code(3, 2).Bits(127, 7).Code(3, 2).Bits(109, 7).Bits(0, 30).Take(), 4).outcome,
            kRuntimeError);
}

TEST(InflateBuffer, BitsThatBeginNoCodeAreARuntimeErrorOnlyWhereTheyStand) {
  // A is 00, the end is 01, and 1 begins no code.
  Bytes literals(257);
  literals['A'] = literals[256] = 2;
  const auto block = [&] {
    DeflateBits bits;
    bits.Block(true, 2).DynamicHeader(literals, Bytes{0});
    return bits;
  };
  EXPECT_EQ(Inflate(block().Code(0, 2).Code(0, 2).Code(1, 2).Take(), 2).outcome, kSuccess);
  EXPECT_EQ(Inflate(block().Code(0, 2).Code(2, 2).Code(1, 2).Take(), 2).outcome, kRuntimeError);
}

TEST(InflateBuffer, ABlockWithoutDistanceCodesMayHoldLiteralsOnly) {
  Bytes literals(258);
  literals['A'] = 1;
  literals[256] = literals[257] = 2;
  const auto block = [&] {
    DeflateBits bits;
    bits.Block(true, 2).DynamicHeader(literals, Bytes{0});
    return bits;
  };
  const Inflated result = Inflate(block().Code(0, 1).Code(0, 1).Code(2, 2).Take(), 2);
  EXPECT_EQ(result.outcome, kSuccess);
  EXPECT_EQ(result.raw, (Bytes{'A', 'A'}));
  EXPECT_EQ(Inflate(block().Code(0, 1).Code(3, 2).Code(0, 1).Code(2, 2).Take(), 9).outcome, kRuntimeError);
}

// Codes of 1 to 15 bits, the last two of 15.
TEST(InflateBuffer, CodesOfAllLengthsAreRead) {
  Bytes literals(257);
  for (std::uint8_t i = 0; i < 15; ++i) {
    literals[i] = static_cast<std::uint8_t>(i + 1);
  }
  literals[256] = 15;
  const auto codes = CanonicalCodes(literals);
  DeflateBits bits;
  bits.Block(true, 2).DynamicHeader(literals, Bytes{1, 1});
  Bytes expected;
  for (int round = 0; round < 200; ++round) {
    for (std::uint8_t i = 0; i < 15; ++i) {
      bits.Code(codes[i].first, codes[i].second);
      expected.push_back(i);
    }
  }
  bits.Code(codes[256].first, codes[256].second);
  const Inflated result = Inflate(bits.Take(), expected.size());
  EXPECT_EQ(result.outcome, kSuccess);
  EXPECT_EQ(result.raw, expected);
}

TEST(InflateStream, KeepsWhatTheReaderAsksFor) {
  Bytes content(2000000);
  std::iota(content.begin(), content.end(), std::uint8_t{0});
  uLongf size = compressBound(content.size());
  Bytes compressed(size);
  ASSERT_EQ(compress2(compressed.data(), &size, content.data(), content.size(), 6), Z_OK);
  // More than the window holds, so that it must grow.
  constexpr std::size_t kPiece = 700000;
  InflateStream stream(ByteView(compressed).first(size), 0, std::ssize(content), false);
  std::size_t taken = 0;
  ByteView held = stream.Read(0);
  while (true) {
    const ByteView more = stream.Read(held.size());
    if (more.size() == held.size()) {
      break;
    }
    held = more;
    ASSERT_TRUE(std::equal(held.begin(), held.end(), content.begin() + static_cast<std::ptrdiff_t>(taken)));
    if (held.size() >= kPiece) {
      held = held.subspan(kPiece);
      taken += kPiece;
    }
  }
  EXPECT_EQ(taken + held.size(), content.size());
  EXPECT_EQ(stream.Outcome(), kSuccess);
}

TEST(InflateStream, ReadsZerosBehindTheSourceWhereThereAreSaidToBeSome) {
  // The end of a fixed block is seven zero bits.
  const Bytes stream = DeflateBits().Block(true, 1).FixedSymbol('A').FixedSymbol('B').Take();
  InflateStream without(stream, 0, 10, false);
  EXPECT_EQ(without.Read(0).size(), 2U);
  EXPECT_EQ(without.Read(0).size(), 0U);
  EXPECT_EQ(without.Outcome(), kRuntimeError);
  InflateStream with(stream, 1, 10, false);
  EXPECT_EQ(with.Read(0).size(), 2U);
  EXPECT_EQ(with.Read(0).size(), 0U);
  EXPECT_EQ(with.Outcome(), kSuccess);
}

TEST(InflateStream, AStoredBlockMayReachIntoTheZerosBehindTheSource) {
  const Bytes stream = DeflateBits().Block(true, 0).StoredLength(4, 0xFFFB).Byte(1).Byte(2).Take();
  InflateStream enough(stream, 2, 10, false);
  const ByteView run = enough.Read(0);
  EXPECT_EQ(Bytes(run.begin(), run.end()), (Bytes{1, 2, 0, 0}));
  EXPECT_TRUE(enough.Read(0).empty());
  EXPECT_EQ(enough.Outcome(), kSuccess);
  InflateStream tooFew(stream, 1, 10, false);
  EXPECT_TRUE(tooFew.Read(0).empty());
  EXPECT_EQ(tooFew.Outcome(), kBadBlock);
}

}  // namespace
}  // namespace kelvane
