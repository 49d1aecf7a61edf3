#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "container/RcoFormat.h"
#include "pages/RandomInfo.h"
#include "pages/TableBytes.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TableBytes;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kPagePointers = 0x100;
constexpr std::int32_t kAnimPointers = 0x140;
constexpr std::int32_t kLabels = 0x180;  // "alpha" at 0, "beta" at 8; 16 bytes
constexpr std::int32_t kEvents = 0x1A0;

class RandomInfoTest : public ::testing::Test {
 protected:
  RandomInfoTest() {
    bytes_.Words(rco::hdrLabelOffset, {kLabels, 16, kEvents, 20});
    bytes_.Words(rco::hdrPagePtrs, {kPagePointers, 16, kAnimPointers, 4});
    bytes_.Words(kPagePointers, {0x240, 0, 0x200, -5});
    bytes_.Words(kAnimPointers, {0x240});
    bytes_.Text(kLabels, "alpha").Text(kLabels + 8, "beta");
    bytes_.Text(kEvents, "native:/b").Text(kEvents + 12, "nat\xE9");
    bytes_.Head(0x200, 0x801, 0, 40, 0).Head(0x240, 0x801, 8, 40, 0);
  }

  RandomInfo Load() {
    mod_.cCurFile = folder_.Write("f.rco", bytes_.Content());
    return frmOther_Load(mod_);
  }

  test::TempFolder folder_;
  TableBytes bytes_;
  Mod mod_;
};

TEST_F(RandomInfoTest, ThePointersAreShownInTheFilesOrderWithBlanksForZeros) {
  const RandomInfo info = Load();
  EXPECT_TRUE(info.lstPageEnabled);
  EXPECT_THAT(info.lstPage.Lines(), ElementsAre("beta", " --- BLANK --- ", "alpha", " --- BLANK --- "));
  EXPECT_TRUE(info.lstAnimEnabled);
  EXPECT_THAT(info.lstAnim.Lines(), ElementsAre("beta"));
}

TEST_F(RandomInfoTest, TheStringsAreShownAsStoredWithoutEmptyParts) {
  const RandomInfo info = Load();
  EXPECT_THAT(info.lstLabel.Lines(), ElementsAre("alpha", "beta"));
  EXPECT_THAT(info.lstNative.Lines(), ElementsAre("native:/b", "nat\u00E9"));
}

TEST_F(RandomInfoTest, AFileWithoutAnAnimationTableShowsADisabledEmptyList) {
  for (const std::int32_t offset : {0, -1}) {
    bytes_.Words(rco::hdrAnimPtrs, {offset, 4});
    const RandomInfo info = Load();
    EXPECT_FALSE(info.lstAnimEnabled);
    EXPECT_THAT(info.lstAnim.Lines(), IsEmpty());
    EXPECT_TRUE(info.lstPageEnabled);
  }
}

TEST_F(RandomInfoTest, AStaleLabelLengthCutsTheLabelsShort) {
  bytes_.Words(rco::hdrLabelLength, {10});
  EXPECT_THAT(Load().lstLabel.Lines(), ElementsAre("alpha", "be"));
}

TEST_F(RandomInfoTest, ALengthBelow1LeavesTheListEmpty) {
  bytes_.Words(rco::hdrLabelLength, {0});
  bytes_.Words(rco::hdrEventOffset, {-1, -1});
  const RandomInfo info = Load();
  EXPECT_THAT(info.lstLabel.Lines(), IsEmpty());
  EXPECT_THAT(info.lstNative.Lines(), IsEmpty());
}

TEST_F(RandomInfoTest, AnEntryWithoutALabelReadsInFrontOfTheLabelArea) {
  bytes_.Words(0x204, {-kLabels - 1});
  EXPECT_THAT(Load().lstPage.Lines(), ElementsAre("beta", " --- BLANK --- ", "<No label>", " --- BLANK --- "));
}

TEST_F(RandomInfoTest, AnAreaThatReachesBehindTheFileEndsWithTheFile) {
  bytes_.Words(rco::hdrEventOffset, {0x10000, 0x3FFFFFFF});
  EXPECT_THAT(Load().lstNative.Lines(), IsEmpty());
}

TEST_F(RandomInfoTest, HostileFieldsEndInFailures) {
  const TableBytes good = bytes_;
  const auto failureWith = [&](std::int32_t at, std::initializer_list<std::int64_t> words) {
    bytes_ = good;
    bytes_.Words(at, words);
    return NumberOf([&] { Load(); });
  };
  EXPECT_EQ(failureWith(rco::hdrPagePtrs, {kPagePointers, -4}), 9);
  EXPECT_EQ(failureWith(rco::hdrPagePtrs, {kPagePointers, 0x7FFFFFFF}), 7);
  EXPECT_EQ(failureWith(rco::hdrPagePtrs, {kPagePointers, 0x3FFFFFFC}), 6);  // more lines than 16 bits count
  EXPECT_EQ(failureWith(kPagePointers, {0x7FFFFFFF}), 6);
  EXPECT_EQ(failureWith(rco::hdrEventOffset, {-5, 4}), 5);
  EXPECT_EQ(failureWith(rco::hdrEventOffset, {kEvents, 0x7FFFFFFF}), 7);
}

TEST_F(RandomInfoTest, ReadStringAreaClearsTheListFirst) {
  RcoFile file(folder_.Write("g.rco", bytes_.Content()));
  ListLines list;
  list.Add("old");
  ReadStringArea(file, list, kLabels, 16);
  EXPECT_THAT(list.Lines(), ElementsAre("alpha", "beta"));
  ReadStringArea(file, list, kLabels, 0);
  EXPECT_THAT(list.Lines(), IsEmpty());
}

}  // namespace
}  // namespace kelvane
