#include <gtest/gtest.h>
#include <random>

#include "container/GapBuffer.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::NumberOf;

TEST(GapBuffer, SplicesAnywhere) {
  GapBuffer buffer(Bytes{0, 1, 2, 3, 4, 5});
  buffer.Splice(4, 1, Bytes{40, 41, 42});
  buffer.Splice(1, 2, Bytes{});
  EXPECT_EQ(buffer.Size(), 6);
  EXPECT_EQ(buffer.Whole(), (Bytes{0, 3, 40, 41, 42, 5}));
}

TEST(GapBuffer, ReadsAndWritesAcrossTheGap) {
  GapBuffer buffer(Bytes{0, 1, 2, 3, 4, 5});
  buffer.Splice(3, 1, Bytes{});
  Bytes read(4);
  buffer.Read(1, read);
  EXPECT_EQ(read, (Bytes{1, 2, 4, 5}));
  buffer.Write(2, Bytes{7, 8});
  EXPECT_EQ(buffer.Parts()[0].size(), 3U);
  EXPECT_EQ(buffer.Whole(), (Bytes{0, 1, 7, 8, 5}));
}

TEST(GapBuffer, GrowsWithZeros) {
  GapBuffer buffer(Bytes{9});
  buffer.Splice(0, 0, Bytes{8});
  buffer.Grow(4);
  EXPECT_EQ(buffer.Whole(), (Bytes{8, 9, 0, 0}));
}

TEST(GapBuffer, ARangeOutsideIsFailure9) {
  GapBuffer buffer(Bytes(4));
  Bytes two(2);
  EXPECT_EQ(NumberOf([&] { buffer.Read(3, two); }), 9);
  EXPECT_EQ(NumberOf([&] { buffer.Write(-1, two); }), 9);
  EXPECT_EQ(NumberOf([&] { buffer.Splice(5, 0, two); }), 9);
  EXPECT_EQ(NumberOf([&] { buffer.Splice(3, 2, two); }), 9);
}

TEST(GapBuffer, ALookShowsARangeInOnePieceAndNothingAcrossTheGapOrOutside) {
  GapBuffer buffer(Bytes{1, 2, 3, 4, 5, 6});
  buffer.Splice(3, 1, Bytes{7});  // the gap lies behind the 7
  const auto look = [&](std::int64_t position, std::int64_t length) {
    const ByteView seen = buffer.Look(position, length);
    return Bytes(seen.begin(), seen.end());
  };
  EXPECT_EQ(look(0, 4), (Bytes{1, 2, 3, 7}));
  EXPECT_EQ(look(1, 2), (Bytes{2, 3}));
  EXPECT_EQ(look(4, 2), (Bytes{5, 6}));
  EXPECT_EQ(look(3, 2), Bytes());
  EXPECT_EQ(look(0, 6), Bytes());
  EXPECT_EQ(look(5, 2), Bytes());
  EXPECT_EQ(look(-1, 2), Bytes());
  EXPECT_EQ(look(7, 0), Bytes());
  EXPECT_EQ(look(2, -1), Bytes());
}

TEST(GapBuffer, BehavesAsAnArrayUnderRandomChanges) {
  std::mt19937 random(7);
  Bytes plain(50);
  GapBuffer buffer(plain);
  for (int step = 0; step < 2000; ++step) {
    const auto at = static_cast<std::ptrdiff_t>(random() % (plain.size() + 1));
    const auto removed = static_cast<std::ptrdiff_t>(random() % (plain.size() - static_cast<std::size_t>(at) + 1) % 9);
    Bytes inserted(random() % 10);
    for (std::uint8_t& byte : inserted) {
      byte = static_cast<std::uint8_t>(random());
    }
    buffer.Splice(at, removed, inserted);
    plain.erase(plain.begin() + at, plain.begin() + at + removed);
    plain.insert(plain.begin() + at, inserted.begin(), inserted.end());
    ASSERT_EQ(buffer.Size(), static_cast<std::int64_t>(plain.size()));
    Bytes read(plain.size());
    buffer.Read(0, read);
    ASSERT_EQ(read, plain);
  }
  EXPECT_EQ(buffer.Whole(), plain);
}

}  // namespace
}  // namespace kelvane
