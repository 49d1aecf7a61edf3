#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <utility>

#include "pages/ScanFixture.h"

namespace kelvane {
namespace {

using test::EntryScan;
using test::FillPointers;
using test::kEnd;
using test::kLabels;
using test::kPointers;
using test::NumberOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PageScan : public EntryScan {
 protected:
  void Pages(std::initializer_list<std::int64_t> pointers) { Pointers(true, pointers); }
  int FailureOfScan(std::int32_t endBound = kEnd) {
    return NumberOf([&] { Scan(true, endBound); });
  }
  const std::vector<std::string>& Lines() { return document_.lstPage.Lines(); }
};

// --- the pointer table

TEST_F(PageScan, AnOffsetBelow1ErasesRecordsAndCountAndStops) {
  bytes_.Words(rco::hdrPagePtrs, {0, 8});
  document_.pageCount = 3;
  document_.pageRecs.resize(3);
  Scan(true);
  EXPECT_EQ(document_.pageCount.Int(), 0);
  EXPECT_THAT(document_.pageRecs, IsEmpty());
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(PageScan, ATableOfNoPointersIsWalkedWithoutHarm) {
  bytes_.Words(rco::hdrPagePtrs, {kPointers, 0});
  Scan(true);
  EXPECT_EQ(document_.pageCount.Int(), 0);
  EXPECT_THAT(document_.pageRecs, IsEmpty());
}

TEST_F(PageScan, ATableOfZerosOnlyHasNoEntries) {
  Pages({0, 0, 0});
  Scan(true);
  EXPECT_EQ(document_.pageCount.Int(), 0);
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(PageScan, ANegativeLengthIsFailure9) {
  bytes_.Words(rco::hdrPagePtrs, {kPointers, -4});
  EXPECT_EQ(FailureOfScan(), 9);
}

TEST_F(PageScan, ALengthThatNoMemoryHoldsIsFailure7) {
  bytes_.Words(rco::hdrPagePtrs, {kPointers, 0x7FFFFFFC});
  EXPECT_EQ(FailureOfScan(), 7);
}

TEST_F(PageScan, PointersBehindTheEndOfTheFileAreZeros) {
  bytes_.Head(0x80, 0x801, 0, 44, 0).Words(kPointers, {0x80}).Words(rco::hdrPagePtrs, {kPointers, 0x3FFFFFFC});
  Scan(true);
  EXPECT_EQ(document_.pageCount.Int(), 1);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x80"));
}

TEST_F(PageScan, ANegativePointerIsFailure5WhenItsTurnComes) {
  Pages({-8, 0x200});
  bytes_.Head(0x200, 0x801, 0, 44, 0);
  EXPECT_EQ(FailureOfScan(), 5);
  EXPECT_EQ(document_.pageCount.Int(), 2);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200"));
}

TEST_F(PageScan, ThePointersMayBeInAnyOrderWithZerosInsideAndTheListShowsFileOrder) {
  Pages({0x300, 0, 0x200, 0, 0x280});
  bytes_.Head(0x200, 0x801, 0, 44, 0).Head(0x280, 0x801, 4, 44, 0).Head(0x300, 0x801, 8, 44, 0);
  Scan(true);
  EXPECT_EQ(document_.pageCount.Int(), 3);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "two @ 0x280", "three @ 0x300"));
}

// The told procedure, pair by pair.
void ExchangeSort(std::vector<std::int32_t>& items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    for (std::size_t j = i; j < items.size(); ++j) {
      if (!((items[i] <= items[j] && items[i] > 0) || items[j] < 1)) {
        std::swap(items[i], items[j]);
      }
    }
  }
}

TEST(SortEntryPointers, IsAscendingWithZeroAndNegativeItemsBehindThePositiveOnes) {
  std::vector<std::int32_t> items = {5, 0, -3, 2, 9, 2};
  SortEntryPointers(items);
  EXPECT_THAT(std::vector<std::int32_t>(items.begin(), items.begin() + 4), ElementsAre(2, 2, 5, 9));
  // Worked by hand: pass 1 puts 2 in front of the zero, pass 2 moves the -3 behind it.
  EXPECT_THAT(std::vector<std::int32_t>(items.begin() + 4, items.end()), ElementsAre(-3, 0));
}

TEST(SortEntryPointers, GivesWhatTheExchangeSortGivesOnRandomData) {
  std::mt19937 random(20240);
  for (int round = 0; round < 20000; ++round) {
    std::vector<std::int32_t> items(random() % 24);
    const int spread = round % 2 == 0 ? 7 : 1000000;
    for (std::int32_t& item : items) {
      item = static_cast<std::int32_t>(random() % static_cast<unsigned>(spread)) - spread / 2;
    }
    std::vector<std::int32_t> expected = items;
    ExchangeSort(expected);
    SortEntryPointers(items);
    ASSERT_EQ(items, expected);
  }
}

// --- pages

TEST_F(PageScan, ReadsTheFieldsOfTheHead) {
  Pages({0x200});
  bytes_.Head(0x200, 0x80D, 4, 96, 0, 7, 8);
  Scan(true);
  EXPECT_THAT(document_.pageRecs, ElementsAre(EntryRec{4, 96, 0x200, 0x80D, 0}));
  EXPECT_THAT(Lines(), ElementsAre("two @ 0x200"));
}

TEST_F(PageScan, TheTreeComesFromFileOrderAndTheCountsOfChildrenAlone) {
  Pages({0x200, 0x240, 0x280, 0x2C0, 0x300, 0x340});
  bytes_.Head(0x200, 0x801, 0, 64, 2)
      .Head(0x240, 0x812, 0, 64, 1)
      .Head(0x280, 0x80D, 0, 64, 0)
      .Head(0x2C0, 0x80D, 0, 64, 0)
      .Head(0x300, 0x801, 0, 64, 1)
      .Head(0x340, 0x819, 0, 64, 0);
  Scan(true);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   one @ 0x240", "      one @ 0x280", "   one @ 0x2C0",
                                   "one @ 0x300", "   one @ 0x340"));
  std::vector<std::int32_t> depths;
  for (const EntryRec& record : document_.pageRecs) {
    depths.push_back(record.recDepth);
  }
  EXPECT_THAT(depths, ElementsAre(0, 1, 2, 1, 0, 1));
}

TEST_F(PageScan, TheWalkUpPassesSeveralLevelsAndEndsAtDepth0) {
  Pages({0x200, 0x240, 0x280, 0x2C0, 0x300});
  bytes_.Head(0x200, 0x801, 0, 64, 1)
      .Head(0x240, 0x812, 0, 64, 1)
      .Head(0x280, 0x812, 0, 64, 1)
      .Head(0x2C0, 0x80D, 0, 64, 0)
      .Head(0x300, 0x801, 0, 64, 0);
  Scan(true);
  EXPECT_EQ(document_.pageRecs[3].recDepth, 3);
  EXPECT_EQ(document_.pageRecs[4].recDepth, 0);
}

// The depths of entries with those counts of children by the told steps; without those behind depth 7, which ends it.
std::vector<std::int32_t> ToldDepths(const std::vector<std::int32_t>& children) {
  std::vector<std::int64_t> counters(8);
  counters[0] = static_cast<std::int64_t>(children.size()) + 1;
  int depth = 0;
  std::vector<std::int32_t> depths;
  for (const std::int32_t count : children) {
    depths.push_back(depth);
    if (depth == 7) {
      break;
    }
    const auto at = static_cast<std::size_t>(depth);
    counters[at + 1] = count;
    --counters[at];
    if (counters[at + 1] > 0) {
      ++depth;
    } else if (counters[at] == 0) {
      while (depth >= 0 && counters[static_cast<std::size_t>(depth)] <= 0) {
        --depth;
      }
    }
  }
  return depths;
}

TEST_F(PageScan, GivesTheDepthsOfTheToldStepsOnRandomCounts) {
  constexpr std::int32_t kEntries = 40;
  constexpr std::int32_t kCounts[] = {-2147483647 - 1, -1, 0, 0, 0, 1, 1, 2, 3, 0x7FFFFFFF};
  std::mt19937 random(77);
  int deep = 0;
  for (int round = 0; round < 300; ++round) {
    std::vector<std::int32_t> children;
    bytes_.Words(rco::hdrPagePtrs, {kPointers, std::int64_t{kEntries} * 4});
    for (std::int32_t i = 0; i < kEntries; ++i) {
      children.push_back(kCounts[random() % (round % 2 == 0 ? 10 : 8)]);
      bytes_.Words(kPointers + i * 4, {0x200 + i * 40}).Head(0x200 + i * 40, 0x801, 0, 40, children.back());
    }
    const std::vector<std::int32_t> expected = ToldDepths(children);
    document_ = RcoDocument();
    document_.labelBase = kLabels;
    ASSERT_EQ(FailureOfScan(), expected.back() == 7 ? 9 : 0);
    ASSERT_EQ(Lines().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(document_.pageRecs[i].recDepth, expected[i]) << "round " << round << ", entry " << i;
    }
    deep += expected.back() == 7 ? 1 : 0;
  }
  EXPECT_GT(deep, 10);
  EXPECT_LT(deep, 290);
}

TEST_F(PageScan, ANegativeCountOfChildrenCountsAsNone) {
  Pages({0x200, 0x240});
  bytes_.Head(0x200, 0x801, 0, 64, -5).Head(0x240, 0x801, 0, 64, 0);
  Scan(true);
  EXPECT_EQ(document_.pageRecs[1].recDepth, 0);
}

TEST_F(PageScan, AnEntryOfSize0EndsAtTheNextPointerAndTheLastOneAtTheEndBound) {
  Pages({0x200, 0x250});
  bytes_.Head(0x200, 0x801, 0, 0, 0).Head(0x250, 0x801, 0, 0, 0);
  Scan(true, 0x2C4);
  EXPECT_EQ(document_.pageRecs[0].recSize, 0x50);
  EXPECT_EQ(document_.pageRecs[1].recSize, 0x74);
}

TEST_F(PageScan, ANegativeSizeStays) {
  Pages({0x200});
  bytes_.Head(0x200, 0x801, 0, -1, 0);
  Scan(true);
  EXPECT_EQ(document_.pageRecs[0].recSize, -1);
}

TEST_F(PageScan, ANegativeLabelShowsAsItemAndRowNumberAndALabelOf0IsAValidName) {
  Pages({0x200, 0x240, 0x280});
  bytes_.Head(0x200, 0x801, 0, 64, 1).Head(0x240, 0x812, -1, 64, 0).Head(0x280, 0x801, -2147483648LL, 64, 0);
  Scan(true);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   项目 #1", "项目 #2"));
  EXPECT_EQ(document_.pageRecs[1].recLabel, -1);
}

TEST_F(PageScan, ExpertModeAddsTheTypeBehindNamesAndItemNumbers) {
  Pages({0x2AC, 0x300});
  bytes_.Head(0x2AC, 0x80D, 8, 64, 0).Head(0x300, 0x819, -1, 64, 0);
  Scan(true, kEnd, true);
  EXPECT_THAT(Lines(), ElementsAre("three @ 0x2AC [0x80D]", "项目 #1 [0x819]"));
}

TEST_F(PageScan, ALabelBeyond32BitsIsFailure6) {
  Pages({0x200});
  bytes_.Head(0x200, 0x801, 0x7FFFFFFF, 64, 0);
  EXPECT_EQ(FailureOfScan(), 6);
}

TEST_F(PageScan, DepthsFrom0To6AreWalkedAndAnEntryAtDepth7IsFailure9) {
  Pages({0x200, 0x240, 0x280, 0x2C0, 0x300, 0x340, 0x380, 0x3C0});
  for (std::int32_t depth = 0; depth < 8; ++depth) {
    bytes_.Head(0x200 + depth * 0x40, 0x812, 0, 64, depth < 6 ? 1 : 0);
  }
  Scan(true);
  EXPECT_EQ(document_.pageRecs[6].recDepth, 6);
  EXPECT_EQ(document_.pageRecs[7].recDepth, 0);

  document_ = RcoDocument();
  document_.labelBase = kLabels;
  bytes_.Head(0x200 + 6 * 0x40, 0x812, 0, 64, 1);
  EXPECT_EQ(FailureOfScan(), 9);
  // What came before the failure is there: the line, and the record up to the field that had no place.
  EXPECT_EQ(Lines().size(), 8U);
  EXPECT_EQ(document_.pageCount.Int(), 8);
  EXPECT_EQ(document_.pageRecs[7], (EntryRec{0, 64, 0x3C0, 0x812, 7}));
}

TEST_F(PageScan, ATableOf32767LinesIsWalked) {
  FillPointers(bytes_, rco::hdrPagePtrs, 32767, 0xB0);
  bytes_.Head(0xB0, 0x801, 0, 64, 0);
  Scan(true);
  EXPECT_EQ(document_.pageCount.Int(), 32767);
  EXPECT_EQ(Lines().size(), 32767U);
}

TEST_F(PageScan, ATableOf32768LinesOverflows) {
  FillPointers(bytes_, rco::hdrPagePtrs, 32768, 0xB0);
  bytes_.Head(0xB0, 0x801, 0, 64, 0);
  EXPECT_EQ(FailureOfScan(), 6);
  EXPECT_EQ(document_.pageCount.Int(), 0);
}

// --- hostile tables

TEST_F(PageScan, ATableBehindTheEndOfTheFileHasNoEntries) {
  bytes_.Words(rco::hdrPagePtrs, {0x100000, 64});
  Scan(true);
  EXPECT_EQ(document_.pageCount.Int(), 0);
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(PageScan, OnlyWholePointersCount) {
  Pages({0x200, 0x240});
  bytes_.Words(rco::hdrPagePtrs, {kPointers, 7}).Head(0x200, 0x801, 0, 64, 0).Head(0x240, 0x801, 4, 64, 0);
  Scan(true);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200"));
}

TEST_F(PageScan, AWildCountOfChildrenLeavesAllThatFollowsOneLevelDown) {
  Pages({0x200, 0x240, 0x280});
  bytes_.Head(0x200, 0x801, 0, 64, 0x7FFFFFFF).Head(0x240, 0x801, 4, 64, 0).Head(0x280, 0x801, 8, 64, 0);
  Scan(true);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   two @ 0x240", "   three @ 0x280"));
}

TEST_F(PageScan, RepeatedAndOverlappingPointersAreALineEach) {
  Pages({0x214, 0x200, 0x200});
  // At 0x214 the entry's head begins with the first one's distances: all zeros.
  bytes_.Head(0x200, 0x801, 4, 0, 0);
  Scan(true);
  EXPECT_THAT(Lines(), ElementsAre("two @ 0x200", "two @ 0x200", "one @ 0x214"));
  EXPECT_THAT(document_.pageRecs, ElementsAre(EntryRec{4, 0, 0x200, 0x801, 0}, EntryRec{4, 0x14, 0x200, 0x801, 0},
                                              EntryRec{0, kEnd - 0x214, 0x214, 0, 0}));
}

TEST_F(PageScan, AnEndBoundInFrontOfTheLastEntryGivesANegativeLength) {
  Pages({0x200});
  bytes_.Head(0x200, 0x801, 0, 0, 0);
  Scan(true, 0x180);
  EXPECT_EQ(document_.pageRecs[0].recSize, -0x80);
}

TEST_F(PageScan, ALengthBeyond32BitsIsFailure6) {
  Pages({0x200});
  bytes_.Head(0x200, 0x801, 0, 0, 0);
  EXPECT_EQ(FailureOfScan(std::numeric_limits<std::int32_t>::min()), 6);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200"));
}

TEST_F(PageScan, ANameInFrontOfTheFileIsNoLabel) {
  Pages({0x200});
  bytes_.Head(0x200, 0x801, 4, 64, 0);
  document_.labelBase = -5;
  Scan(true);
  EXPECT_THAT(Lines(), ElementsAre("<No label> @ 0x200"));
}

TEST_F(PageScan, ANameWithoutAnEndIsToldAsSuch) {
  Pages({0x200});
  bytes_.Head(0x200, 0x801, 0x400, 64, 0).Text(kLabels + 0x400, std::string(255, 'x'));
  Scan(true);
  EXPECT_THAT(Lines(), ElementsAre("<Error retrieving label> @ 0x200"));
}

}  // namespace
}  // namespace kelvane
