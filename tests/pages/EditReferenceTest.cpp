#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <utility>

#include "pages/EditFixture.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::Editing;
using test::kBody;
using test::kEntry;
using test::kEvents;
using test::NumberOf;
using test::Resource;
using test::Strings;
using ::testing::ElementsAre;

// --- references by number

TEST_F(Editing, APairOfType40CWithValue12OpensTheFieldWith00000012AndItsTypeStays) {
  Show({0x40C, 0x12, 7}, 0);
  prompts_.ExpectEditVal("00000012", "00000034");
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 5);
  // The value is written and the date recorded before the row's text fails.
  ExpectOnlyChange(1, 0x34);
  EXPECT_THAT(Rows(), ElementsAre("[0x40C] 0x00000012", "0x00000007"));
  EXPECT_EQ(SelectedRow(), 0);
}

TEST_F(Editing, ACancelledPairByNumberLeavesTheFileAlone) {
  Show({0x404, -1, 7}, 0);
  prompts_.ExpectEditVal("FFFFFFFF", std::nullopt);
  ChangePage();
  ExpectUntouched();
}

// --- references by list

TEST_F(Editing, ATextIsChosenByItem) {
  Show({0x401, 1, 7}, 0);
  prompts_.ExpectEditList({"alpha", "beta", "gamma"}, 1, 2);
  ChangePage();
  ExpectOnlyChange(1, 2);
  EXPECT_THAT(Rows(), ElementsAre("[text] gamma", "0x00000007"));
  EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(Editing, ATextReferenceAboveTextCountOpensTheListWithoutASelection) {
  for (const std::int32_t value : {3, 4, 1000}) {
    Show({0x401, value, 7}, 0);
    prompts_.ExpectEditList({"alpha", "beta", "gamma"}, -1, std::nullopt);
    ChangePage();
  }
  ExpectUntouched();
}

TEST_F(Editing, ANegativeTextReferenceOpensTheListWithoutASelection) {
  for (const std::int32_t value : {-1, -7}) {
    Show({0x401, value, 7}, 0);
    prompts_.ExpectEditList({"alpha", "beta", "gamma"}, -1, std::nullopt);
    ChangePage();
  }
  ExpectUntouched();
}

TEST_F(Editing, OkInTheListWithoutASelectionIsFailure9AndLeavesTheFileAlone) {
  Show({0x401, 3, 7}, 0);
  prompts_.ExpectEditList({"alpha", "beta", "gamma"}, -1, -1);
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 9);
  ExpectUntouched();
}

TEST_F(Editing, AnEventIsChosenByItsOffsetInTheArea) {
  Show({0x400, 8, 7}, 0);
  prompts_.ExpectEditList({"first", "second", "third"}, 1, 2);
  ChangePage();
  // "first" and its NULs take 8 bytes, as do "second" and its own.
  ExpectOnlyChange(1, 16);
  EXPECT_THAT(Rows(), ElementsAre("[event] third", "0x00000007"));
}

TEST_F(Editing, AnEventInsideAStringSelectsNone) {
  Show({0x400, 9, 7}, 0);
  prompts_.ExpectEditList({"first", "second", "third"}, -1, std::nullopt);
  ChangePage();
}

TEST_F(Editing, TheLastEventNeedsNoNul) {
  bytes_.Words(rco::hdrEventLength, {11});
  Show({0x400, 8, 7}, 0);
  prompts_.ExpectEditList({"first", "sec"}, 1, std::nullopt);
  ChangePage();
}

TEST_F(Editing, MoreEventsThanAQuarterOfTheirBytesAreFailure9) {
  bytes_.Text(kEvents, "a").Text(kEvents + 2, "b").Text(kEvents + 4, "c").Words(rco::hdrEventLength, {8});
  Show({0x400, 0, 7}, 0);
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 9);
  ExpectUntouched();
}

TEST_F(Editing, AnEventAreaWithoutBytesIsFailure9AndAnImpossibleOneFailure7) {
  for (const auto& [length, failure] : {std::pair{0, 9}, {-1, 9}, {0x7FFFFFFF, 7}}) {
    bytes_.Words(rco::hdrEventLength, {length});
    Show({0x400, 0, 7}, 0);
    EXPECT_EQ(NumberOf([&] { ChangePage(); }), failure);
  }
}

TEST_F(Editing, AnEventAreaThatReachesBehindTheFileEndsWithTheFile) {
  bytes_.Words(rco::hdrEventLength, {0x3FFFFFFF});
  Show({0x400, 8, 0}, 0);
  // The area runs on through the entry: 0x400, 8 and the other bytes behind "third" that aren't NUL.
  prompts_.ExpectEditList({"first", "second", "third", "\x04", "\x08"}, 1, std::nullopt);
  ChangePage();
}

class EditingResources : public Editing {
 protected:
  void Resources(std::vector<GenRsc> records) {
    document_.genCount = static_cast<std::int64_t>(records.size());
    document_.genRsc = std::move(records);
  }
};

TEST_F(EditingResources, AnImageIsWrittenAsAnOffsetOfTheFixedLayout) {
  Resources({Resource(1, 0, 0x900), Resource(1, 8, 0xA00), Resource(1, 16, 0xB00), Resource(2, 0, 0xC00)});
  Show({0x402, 300, 7}, 0);  // 244 + 56
  prompts_.ExpectEditList({"alpha", "beta", "gamma"}, 1, 2);
  ChangePage();
  ExpectOnlyChange(1, 2 * 56 + 244);  // and not 0xB00 - 4
  EXPECT_THAT(Rows(), ElementsAre("[image] gamma", "0x00000007"));
}

TEST_F(EditingResources, TheImagesEndAtTheFirstRecordOfAnotherKind) {
  Resources({Resource(1, 0, 0), Resource(2, 8, 0), Resource(1, 16, 0)});
  Show({0x402, 244, 7}, 0);
  prompts_.ExpectEditList({"alpha"}, 0, std::nullopt);
  ChangePage();
}

TEST_F(EditingResources, AnImageThatDoesNotFitTheFixedLayoutSelectsAWrongRowOrNone) {
  Resources({Resource(1, 0, 0), Resource(1, 8, 0), Resource(1, 16, 0), Resource(3, 0, 0)});
  const std::pair<std::int32_t, int> kCases[] = {
      {244, 0},           {271, 0},                    // 27 / 56 = 0.48
      {272, 0},                                        // 0.5: to the even row
      {273, 1},           {328, 2},                    // 1.5: to the even row
      {217, 0},           {216, 0},                    // -0.48 and -0.5
      {215, -1},          {0, -1},          {-1, -1},  // rows in front of the list
      {244 + 3 * 56, -1},                              // row 3 is below genCount, but no image
      {244 + 4 * 56, -1}, {0x7FFFFFFF, -1}, {std::numeric_limits<std::int32_t>::min(), -1}};
  for (const auto& [value, row] : kCases) {
    SCOPED_TRACE(value);
    Show({0x402, value, 7}, 0);
    prompts_.ExpectEditList({"alpha", "beta", "gamma"}, row, std::nullopt);
    ChangePage();
  }
  ExpectUntouched();
}

TEST_F(EditingResources, The582ndImageOverflows) {
  Resources(std::vector<GenRsc>(581, Resource(1, 0, 0)));
  Show({0x402, 244, 7}, 0);
  prompts_.ExpectEditList(Strings(581, "alpha"), 0, 580);
  ChangePage();
  ExpectOnlyChange(1, 580 * 56 + 244);

  Resources(std::vector<GenRsc>(582, Resource(1, 0, 0)));
  document_.lstPageData.Select(0);
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 6);
}

TEST_F(EditingResources, TheModelsOfAFileWithoutOtherResourcesAreChosenByTheirEntries) {
  Resources({Resource(3, 0, 0x904), Resource(3, 8, 0xA04)});
  Show({0x403, 0xA00, 7}, 0);
  prompts_.ExpectEditList({"alpha", "beta"}, 1, 0);
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 5);
  ExpectOnlyChange(1, 0x900);
  EXPECT_EQ(Rows().front(), "[model] alpha");  // as before: behind the end of the file all labels are the first
}

TEST_F(EditingResources, TheValueOfAModelStandsByItsIndexAmongAllResources) {
  Resources({Resource(1, 0, 0x904), Resource(2, 0, 0xA04), Resource(3, 8, 0xB04), Resource(3, 16, 0xC04)});
  Show({0x403, 0xC00, 7}, 0);
  prompts_.ExpectEditList({"beta", "gamma"}, 1, 1);
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 5);
  ExpectOnlyChange(1, 0);  // value 1 belongs to the sound, which has none
}

TEST_F(EditingResources, TheValueOfAnotherModelMayStandInARow) {
  Resources({Resource(1, 0, 0x904), Resource(3, 8, 0xB04), Resource(3, 16, 0xC04)});
  Show({0x403, 0, 7}, 0);
  prompts_.ExpectEditList({"beta", "gamma"}, -1, 1);
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 5);
  ExpectOnlyChange(1, 0xB00);  // that of "beta"
}

TEST_F(Editing, AnAnimationIsChosenByItsPlaceAndOperationsStayOut) {
  Show({0x408, 0xA00, 7}, 0);
  document_.animRecs = {
      {8, 40, 0x900, 0x901, 0}, {-1, 44, 0x928, 0x902, 1}, {16, 40, 0xA00, 0x901, 0}, {0, 40, 0xB00, 0x901, 0}};
  document_.animCount = 3;
  prompts_.ExpectEditList({"beta", "gamma"}, 1, 0);  // a label of 0 stays out too
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 5);
  ExpectOnlyChange(1, 0x900);
}

TEST_F(Editing, MoreLabelledAnimationRecordsThanAnimationsAreFailure9) {
  Show({0x408, 0, 7}, 0);
  document_.animRecs = {{8, 40, 0x900, 0x901, 0}, {16, 44, 0x928, 0x902, 1}};
  document_.animCount = 1;
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 9);
  ExpectUntouched();
}

TEST_F(Editing, APageIsChosenByItsPlace) {
  Show({0x409, 0xA00, 7}, 0);
  document_.pageRecs.push_back({16, 40, 0xA00, 0x801, 0});
  document_.pageRecs.push_back({-0x1000, 40, 0xB00, 0x801, 0});
  document_.pageCount = 3;
  prompts_.ExpectEditList({"alpha", "gamma", "<No label>"}, 1, 0);
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 5);
  ExpectOnlyChange(1, kEntry);
  EXPECT_EQ(SelectedRow(), 0);
}

TEST_F(Editing, APagePairOfType407KeepsItsTypeInTheFile) {
  Show({0x407, 0, 7}, 0);
  prompts_.ExpectEditList({"alpha"}, -1, 0);
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 5);
  ExpectOnlyChange(1, kEntry);
  EXPECT_EQ(ReadI32(OnDisk(), kBody), 0x407);
}

TEST_F(Editing, ACancelledListLeavesTheFileAlone) {
  Show({0x409, kEntry, 7}, 0);
  prompts_.ExpectEditList({"alpha"}, 0, std::nullopt);
  ChangePage();
  ExpectUntouched();
}

TEST_F(Editing, TheChoicesOfTheSelectedRowAreWhatTheDialogLists) {
  Show({0x400, 16, 0x409, kEntry, 0x40C, 0, 7}, 0);
  const std::optional<EditChoices> events = ChoicesOfSelectedRow(mod_, document_, prompts_);
  ASSERT_TRUE(events.has_value());
  EXPECT_THAT(events->lines, ElementsAre("first", "second", "third"));
  EXPECT_THAT(events->values, ElementsAre(0, 8, 16));
  EXPECT_EQ(events->selected, 2);

  document_.lstPageData.Select(1);
  EXPECT_EQ(ChoicesOfSelectedRow(mod_, document_, prompts_)->selected, 0);
  for (const int row : {2, 3, -1}) {
    document_.lstPageData.Select(row);
    EXPECT_FALSE(ChoicesOfSelectedRow(mod_, document_, prompts_).has_value()) << row;
  }
  ExpectUntouched();
}

TEST_F(Editing, ABlankRowHasNoChoicesAndIsTold) {
  Show({0xFFFF, -1, 7}, 0);
  prompts_.ExpectTell("Not much can be done with a blank entry... :S", Icon::Information);
  EXPECT_FALSE(ChoicesOfSelectedRow(mod_, document_, prompts_).has_value());
}

TEST_F(Editing, EventsAreReadInThe8BitCodePageAndEmptyPartsCount) {
  // "a" at 0 and three bytes at 6, NULs between them.
  bytes_.Words(kEvents, {'a', 0x74E90000, 0xE9}).Words(rco::hdrEventLength, {9});
  Show({0x400, 6, 7}, 0);
  prompts_.ExpectEditList({"a", "\u00E9t\u00E9"}, 1, std::nullopt);
  ChangePage();
}

}  // namespace
}  // namespace kelvane
