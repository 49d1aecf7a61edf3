#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>

#include "container/RcoFormat.h"
#include "pages/EntryScan.h"
#include "pages/TableBytes.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TableBytes;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kPointers = 0x100;
constexpr std::int32_t kLabels = 0x40;
constexpr std::int32_t kEnd = 0x1000;

// Labels "one" at 0, "two" at 4, "three" at 8.
class EntryScan : public ::testing::Test {
 protected:
  EntryScan() {
    bytes_.Text(kLabels, "one").Text(kLabels + 4, "two").Text(kLabels + 8, "three");
    document_.labelBase = kLabels;
  }

  // Points the table's pair of the header to kPointers and writes the pointers there.
  void Pointers(bool isPageTable, std::initializer_list<std::int64_t> pointers) {
    bytes_.Words(PairAt(isPageTable), {kPointers, static_cast<std::int64_t>(pointers.size()) * 4});
    bytes_.Words(kPointers, pointers);
  }

  void Scan(bool isPageTable, std::int32_t endBound = kEnd, bool expert = false) {
    RcoFile file(folder_.Write("f.rco", bytes_.Content()));
    file.Seek(PairAt(isPageTable));
    ScanEntryTable(file, endBound, document_, isPageTable, expert);
  }

  static std::int32_t PairAt(bool isPageTable) { return isPageTable ? rco::hdrPagePtrs : rco::hdrAnimPtrs; }

  test::TempFolder folder_;
  TableBytes bytes_;
  RcoDocument document_;
};

class PageScan : public EntryScan {
 protected:
  void Pages(std::initializer_list<std::int64_t> pointers) { Pointers(true, pointers); }
  int FailureOfScan(std::int32_t endBound = kEnd) {
    return NumberOf([&] { Scan(true, endBound); });
  }
  const std::vector<std::string>& Lines() { return document_.lstPage.Lines(); }
};

class AnimScan : public EntryScan {
 protected:
  void Anims(std::initializer_list<std::int64_t> pointers) { Pointers(false, pointers); }
  int FailureOfScan(std::int32_t endBound = kEnd) {
    return NumberOf([&] { Scan(false, endBound); });
  }
  const std::vector<std::string>& Lines() { return document_.lstAnim.Lines(); }
  std::vector<std::int32_t> Sizes() const {
    std::vector<std::int32_t> sizes;
    for (const EntryRec& record : document_.animRecs) {
      sizes.push_back(record.recSize);
    }
    return sizes;
  }
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

// `count` pointers to the entry at `position`.
void FillPointers(TableBytes& bytes, std::int32_t pairAt, std::int32_t count, std::int32_t position) {
  bytes.Words(pairAt, {kPointers, std::int64_t{count} * 4}).Reach(kPointers + count * 4);
  for (std::int32_t i = 0; i < count; ++i) {
    bytes.Words(kPointers + i * 4, {position});
  }
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

// --- animations

TEST_F(AnimScan, OperationsStandBehindTheirAnimationAndTheCountIsThatOfThePointers) {
  Anims({0x300, 0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2)
      .Head(0x228, 0x902, -1, 48, 0)
      .Head(0x258, 0x907, -1, 44, 0)
      .Head(0x300, 0x901, 4, 40, 0);
  Scan(false);
  EXPECT_EQ(document_.animCount.Int(), 2);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x902] 设置对象坐标", "   [0x907] 延迟", "two @ 0x300"));
  EXPECT_THAT(document_.animRecs, ElementsAre(EntryRec{0, 40, 0x200, 0x901, 0}, EntryRec{-1, 48, 0x228, 0x902, 1},
                                              EntryRec{-1, 44, 0x258, 0x907, 1}, EntryRec{4, 40, 0x300, 0x901, 0}));
}

TEST_F(AnimScan, EveryOperationTypeHasItsName) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 6);
  const std::int32_t types[] = {0x902, 0x903, 0x905, 0x906, 0x907, 0x908};
  for (std::int32_t i = 0; i < 6; ++i) {
    bytes_.Head(0x228 + i * 44, types[i], -1, 44, 0);
  }
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x902] 设置对象坐标", "   [0x903] 设置对象颜色",
                                   "   [0x905] 设置对象比例", "   [0x906] 设置对象透明度", "   [0x907] 延迟",
                                   "   [0x908] 触发事件"));
}

TEST_F(AnimScan, TheFirstOperationOfType904ShowsAnEmptyNameAndALaterOneTheLastNamedSibling) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 4)
      .Head(0x228, 0x904, -1, 44, 0)
      .Head(0x254, 0x903, -1, 44, 0)
      .Head(0x280, 0x904, -1, 44, 0)
      .Head(0x2AC, 0x904, -1, 44, 0);
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x904] ", "   [0x903] 设置对象颜色", "   [0x904] 设置对象颜色",
                                   "   [0x904] 设置对象颜色"));
}

TEST_F(AnimScan, AnyTypeOutsideTheTableShowsTheLastNamedSiblingToo) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 3)
      .Head(0x228, 0x1F, -1, 44, 0)
      .Head(0x254, 0x908, -1, 44, 0)
      .Head(0x280, -1, -1, 44, 0);
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x1F] ", "   [0x908] 触发事件", "   [0xFFFFFFFF] 触发事件"));
}

TEST_F(AnimScan, TheNameOfASiblingIsForgottenInTheNextAnimation) {
  Anims({0x200, 0x300});
  bytes_.Head(0x200, 0x901, 0, 40, 1)
      .Head(0x228, 0x908, -1, 44, 0)
      .Head(0x300, 0x901, 4, 40, 1)
      .Head(0x328, 0x904, -1, 44, 0);
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x908] 触发事件", "two @ 0x300", "   [0x904] "));
}

TEST_F(AnimScan, ExpertModeLeavesOperationsAlone) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 1).Head(0x228, 0x908, -1, 44, 0);
  Scan(false, kEnd, true);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200 [0x901]", "   [0x908] 触发事件"));
}

// Lengths of operations that have none of their own.

TEST_F(AnimScan, AnOperationWithoutASizeTakesTheDistanceToTheNext) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2).Head(0x228, 0x902, -1, 0, 0, 60).Head(0x264, 0x902, -1, 44, 0);
  Scan(false);
  EXPECT_THAT(Sizes(), ElementsAre(40, 60, 44));
  EXPECT_EQ(document_.animRecs[2].recPos, 0x264);
}

TEST_F(AnimScan, ALastOperationWithoutSizeAndDistanceTakesTheRestOfItsAnimation) {
  Anims({0x200, 0x2A0});
  bytes_.Head(0x200, 0x901, 0, 40, 2)
      .Head(0x228, 0x902, -1, 44, 0)
      .Head(0x254, 0x902, -1, 0, 0)
      .Head(0x2A0, 0x901, 0, 40, 1)
      .Head(0x2C8, 0x902, -1, -7, 0);
  Scan(false, 0x300);
  // 0x2A0 - 0x200 = 160 bytes, of which 40 are the animation's head and 44 the first operation; in the last animation
  // 0x300 - 0x2A0 = 96 bytes less 40.
  EXPECT_THAT(Sizes(), ElementsAre(40, 44, 76, 40, 56));
}

TEST_F(AnimScan, AnotherOperationWithoutSizeAndDistanceTakesTheDistanceToThePrevious) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2).Head(0x228, 0x902, -1, 0, 0, 0, 52).Head(0x25C, 0x902, -1, 0, 0);
  Scan(false, 0x300);
  // The last one: 256 - (40 + 52).
  EXPECT_THAT(Sizes(), ElementsAre(40, 52, 164));
}

TEST_F(AnimScan, ALastOperationWhoseAnimationHasNoRestTakesTheDistanceToTheNextAfterAll) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 1).Head(0x228, 0x902, -1, 0, 0, 0);
  Scan(false, 0x228);
  EXPECT_THAT(Sizes(), ElementsAre(40, 0));
}

TEST_F(AnimScan, AnAnimationOfSize0ReachesToTheNextPointerAndItsOperationsAreReadFromThere) {
  Anims({0x200, 0x240});
  bytes_.Head(0x200, 0x901, 0, 0, 1).Head(0x240, 0x908, 4, 40, 0);
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x908] 触发事件", "two @ 0x240"));
}

TEST_F(AnimScan, ANegativeChildCountReadsNoChild) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, -2147483648LL);
  Scan(false);
  EXPECT_THAT(Sizes(), ElementsAre(40));
}

// Nested operations: the copy of the record index.

TEST_F(AnimScan, RecordsOfNestedOperationsAreOverwrittenByTheSiblingsThatFollow) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 3)
      .Head(0x228, 0x902, -1, 44, 2, 100)  // row 1, record 1
      .Head(0x254, 0x903, -1, 48, 0)       // row 2, nested: record 3
      .Head(0x284, 0x905, -1, 52, 0)       // row 3, nested: record 4
      .Head(0x2B8, 0x906, -1, 56, 0)       // row 4, record 2
      .Head(0x2F0, 0x907, -1, 60, 0);      // row 5, record 3
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x902] 设置对象坐标", "      [0x903] 设置对象颜色",
                                   "      [0x905] 设置对象比例", "   [0x906] 设置对象透明度", "   [0x907] 延迟"));
  EXPECT_THAT(document_.animRecs, ElementsAre(EntryRec{0, 40, 0x200, 0x901, 0}, EntryRec{-1, 44, 0x228, 0x902, 1},
                                              EntryRec{-1, 56, 0x2B8, 0x906, 1}, EntryRec{-1, 60, 0x2F0, 0x907, 1}));
}

TEST_F(AnimScan, ANestedLastOperationTakesTheRestOfTheDistanceThatItsParentTells) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2)
      .Head(0x228, 0x902, -1, 44, 1, 200)
      .Head(0x254, 0x903, -1, 0, 0)
      .Head(0x254 + 116, 0x906, -1, 44, 0);
  Scan(false);
  // 200 told by the parent, less 40 for the animation's head and 44 for the parent itself: so the sibling is found
  // 116 bytes behind the nested operation.
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x902] 设置对象坐标", "      [0x903] 设置对象颜色",
                                   "   [0x906] 设置对象透明度"));
}

// Hostile tables end in the told failure.

TEST_F(AnimScan, ATableOf4096RecordsIsWalkedAndOneMoreIsFailure9) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 4095);
  Scan(false);  // the operations are read from zeros, each at the place of the one before it
  EXPECT_EQ(document_.animRecs.size(), 4096U);

  bytes_.Head(0x200, 0x901, 0, 40, 4096);
  document_.lstAnim.Clear();
  EXPECT_EQ(FailureOfScan(), 9);
  EXPECT_EQ(Lines().size(), 4096U);
}

TEST_F(AnimScan, MoreThan4096AnimationsAreFailure9) {
  FillPointers(bytes_, rco::hdrAnimPtrs, 4097, 0xB0);
  bytes_.Head(0xB0, 0x901, 0, 40, 0);
  EXPECT_EQ(FailureOfScan(), 9);
  EXPECT_EQ(document_.animCount.Int(), 4097);
}

TEST_F(AnimScan, TheGreatestChildCountWithEntriesOfNoLengthEndsAtTheRecords) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 0x7FFFFFFF).Head(0x228, 0x902, -1, 0, 0);
  EXPECT_EQ(FailureOfScan(), 9);
}

TEST_F(AnimScan, AnOperationThatIsItsOwnChildEndsAtTheRecords) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2).Head(0x228, 0x902, -1, 0, 2);
  EXPECT_EQ(FailureOfScan(), 9);
}

TEST_F(AnimScan, NestedCountsThatMultiplyEndAt32767Lines) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 1);
  // 12 operations, each below the one before it, all of which count 3000 children: behind the end of the file every
  // level finds 3000 empty operations.
  for (std::int32_t level = 0; level < 12; ++level) {
    bytes_.Head(0x228 + level * 40, 0x902, -1, 40, 3000);
  }
  EXPECT_EQ(FailureOfScan(), 6);
  EXPECT_EQ(Lines().size(), 32767U);
}

TEST_F(AnimScan, APositionBeyond32BitsIsFailure6) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 0x7FFFFFFF, 0);
  EXPECT_EQ(FailureOfScan(), 6);
}

TEST_F(AnimScan, AnOperationThatLeadsInFrontOfTheFileIsFailure5) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2).Head(0x228, 0x902, -1, -4000, 0, -4000, -4000);
  EXPECT_EQ(FailureOfScan(), 5);
}

TEST_F(AnimScan, AFailureLeavesThe4096RecordsAsTheyWereFilled) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2).Head(0x228, 0x902, -1, -4000, 0, -4000, -4000);
  EXPECT_EQ(FailureOfScan(), 5);
  EXPECT_EQ(document_.animRecs.size(), 4096U);
  EXPECT_EQ(document_.animRecs[0].recPos, 0x200);
  EXPECT_EQ(document_.animRecs[1].recPos, 0x228);
  EXPECT_EQ(document_.animRecs[2], EntryRec());
}

}  // namespace
}  // namespace kelvane
