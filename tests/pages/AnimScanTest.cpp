#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pages/ScanFixture.h"

namespace kelvane {
namespace {

using test::EntryScan;
using test::FillPointers;
using test::kEnd;
using test::NumberOf;
using ::testing::ElementsAre;

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

TEST_F(AnimScan, ANegativeSizeIsNoneTooAndGivesWayToTheDistanceToTheNext) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2).Head(0x228, 0x902, -1, -3, 0, 60, 50).Head(0x264, 0x902, -1, -3, 0, 44);
  Scan(false);
  EXPECT_THAT(Sizes(), ElementsAre(40, 60, 44));
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

TEST_F(AnimScan, WhatNestedOperationsTakeIsNotTakenFromTheirParentsSiblings) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2)
      .Head(0x228, 0x902, -1, 44, 3, 400)
      .Head(0x254, 0x903, -1, 48, 0)
      .Head(0x284, 0x903, -1, 52, 0)
      .Head(0x2B8, 0x903, -1, 0, 0)  // 400 - (40 + 44 + 48 + 52) = 216 bytes
      .Head(0x2B8 + 216, 0x906, -1, 0, 0);
  Scan(false, 0x400);
  EXPECT_EQ(Lines().size(), 6U);
  // The last operation takes what its animation has left: 512 - (40 + 44).
  EXPECT_EQ(document_.animRecs[2], (EntryRec{-1, 428, 0x2B8 + 216, 0x906, 1}));
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

TEST_F(AnimScan, AnAnimationWithoutASizeReachesToTheEndBoundIfItIsTheLast) {
  Anims({0x200, 0x240});
  bytes_.Head(0x200, 0x901, 0, 0, 0).Head(0x240, 0x901, 4, 0, 0);
  Scan(false, 0x2C8);
  EXPECT_THAT(Sizes(), ElementsAre(0x40, 0x88));
}

TEST_F(AnimScan, AnAnimationWithANegativeLabelShowsItsRowNumberWithTheOperationsCounted) {
  Anims({0x200, 0x300});
  bytes_.Head(0x200, 0x901, -1, 40, 2)
      .Head(0x228, 0x902, -1, 44, 0)
      .Head(0x254, 0x902, -1, 44, 0)
      .Head(0x300, 0x901, -1, 40, 0);
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("项目 #0", "   [0x902] 设置对象坐标", "   [0x902] 设置对象坐标", "项目 #3"));
}

TEST_F(AnimScan, ADistanceBelow1IsNoLengthUntilThereIsNoOther) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 0x100, 2)
      .Head(0x300, 0x902, -1, -3, 0, -0x90, -0x50)
      .Head(0x300 - 0x90, 0x903, -1, 0, 0);
  Scan(false, 0x400);
  // -3 gives way to the distance to the next, that to the one to the previous, which is what counts as used, and that
  // again to the one to the next. The last one takes the rest: 0x200 - (40 - 0x50).
  EXPECT_THAT(Sizes(), ElementsAre(0x100, -0x90, 552));
}

TEST_F(AnimScan, ANestedOperationStartsWithoutANameAndItsOwnNameStaysThere) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2)
      .Head(0x228, 0x902, -1, 44, 2, 132)
      .Head(0x254, 0x904, -1, 44, 0)
      .Head(0x280, 0x908, -1, 44, 0)
      .Head(0x2AC, 0x904, -1, 44, 0);
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x902] 设置对象坐标", "      [0x904] ", "      [0x908] 触发事件",
                                   "   [0x904] 设置对象坐标"));
}

TEST_F(AnimScan, RecordsOfOperationsNestedBelowTheLastOneFallAway) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 1).Head(0x228, 0x902, -1, 44, 1, 88).Head(0x254, 0x903, -1, 44, 0);
  Scan(false);
  EXPECT_EQ(Lines().size(), 3U);
  EXPECT_THAT(document_.animRecs, ElementsAre(EntryRec{0, 40, 0x200, 0x901, 0}, EntryRec{-1, 44, 0x228, 0x902, 1}));
}

TEST_F(AnimScan, TheNextAnimationOverwritesRecordsOfNestedOperations) {
  Anims({0x200, 0x300});
  bytes_.Head(0x200, 0x901, 0, 40, 1)
      .Head(0x228, 0x902, -1, 44, 1, 88)  // row 1, record 1
      .Head(0x254, 0x903, -1, 48, 0)      // row 2, nested: record 3
      .Head(0x300, 0x901, 4, 40, 1)       // row 3, record 2
      .Head(0x328, 0x907, -1, 44, 0);     // row 4, record 3
  Scan(false);
  EXPECT_EQ(Lines().size(), 5U);
  EXPECT_THAT(document_.animRecs, ElementsAre(EntryRec{0, 40, 0x200, 0x901, 0}, EntryRec{-1, 44, 0x228, 0x902, 1},
                                              EntryRec{4, 40, 0x300, 0x901, 0}, EntryRec{-1, 44, 0x328, 0x907, 1}));
}

TEST_F(AnimScan, AnAnimationWithinTheOperationsOfAnotherIsListedTwice) {
  Anims({0x200, 0x228});
  bytes_.Head(0x200, 0x901, 0, 40, 1).Head(0x228, 0x908, 4, 44, 0);
  Scan(false);
  EXPECT_THAT(Lines(), ElementsAre("one @ 0x200", "   [0x908] 触发事件", "two @ 0x228"));
}

TEST_F(AnimScan, AnAnimationThatIsItsOwnOperationEndsAtTheRecords) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 0, 1);
  EXPECT_EQ(FailureOfScan(0x200), 9);  // of no length, so that its operation is read from its own place
  EXPECT_EQ(Lines()[2], "      [0x901] ");
}

TEST_F(AnimScan, SizesThatAddUpBeyond32BitsAreFailure6) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2).Head(0x228, 0x902, -1, 0x7FFFFFF0, 0);
  EXPECT_EQ(FailureOfScan(), 6);
  EXPECT_EQ(document_.animRecs[1], (EntryRec{-1, 0x7FFFFFF0, 0x228, 0x902, 1}));
}

TEST_F(AnimScan, AFailureLeavesRecordsOfNestedOperationsTwoPlacesOn) {
  Anims({0x200});
  bytes_.Head(0x200, 0x901, 0, 40, 2)
      .Head(0x228, 0x902, -1, 44, 1, 88)
      .Head(0x254, 0x903, -1, 44, 0)
      .Head(0x280, 0x904, -1, -4000, 0, -4000, -4000);
  EXPECT_EQ(FailureOfScan(0x200 - 4000), 5);
  EXPECT_EQ(document_.animRecs[1].recPos, 0x228);
  EXPECT_EQ(document_.animRecs[2].recPos, 0x280);
  EXPECT_EQ(document_.animRecs[3], (EntryRec{-1, 44, 0x254, 0x903, 2}));
}

}  // namespace
}  // namespace kelvane
