#include <bit>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "common/Files.h"
#include "container/RcoFormat.h"
#include "pages/EntryDisplay.h"
#include "pages/EntryEdit.h"
#include "pages/TableBytes.h"
#include "support/Failures.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TableBytes;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Strings = std::vector<std::string>;

constexpr std::int32_t kTextRoot = 0xC0;
constexpr std::int32_t kLabels = 0x180;  // "alpha" at 0, "beta" at 8, "gamma" at 16
constexpr std::int32_t kEvents = 0x1A0;  // "first" at 0, "second" at 8, "third" at 16; 24 bytes
constexpr std::int32_t kEntry = 0x300;
constexpr std::int32_t kBody = kEntry + 40;
constexpr const char* kInputPrompt = "输入新数值";

constexpr std::int32_t Word(float value) {
  return std::bit_cast<std::int32_t>(value);
}

class Editing : public ::testing::Test {
 protected:
  Editing() {
    bytes_.Words(rco::hdrTextRoot, {kTextRoot}).Words(rco::hdrEventOffset, {kEvents, 24});
    bytes_.Words(kTextRoot + 88, {0, 0, 0, 8, 0, 0, 16, 0, 0});
    bytes_.Text(kLabels, "alpha").Text(kLabels + 8, "beta").Text(kLabels + 16, "gamma");
    bytes_.Text(kEvents, "first").Text(kEvents + 8, "second").Text(kEvents + 16, "third").Reach(kEvents + 24);
    document_.labelBase = kLabels;
    document_.textRsc = {{{0, 0, 0}, {8, 0, 0}, {16, 0, 0}}};
    document_.textCount = 3;
  }

  // Shows a page entry of those words at kEntry, and the same as an animation, with a row selected in each list.
  void Show(const std::vector<std::int32_t>& words, int row, std::int32_t type = 0x801) {
    bytes_.Reach(kBody);
    for (std::size_t i = 0; i < words.size(); ++i) {
      bytes_.Words(kBody + static_cast<std::int32_t>(i) * 4, {words[i]});
    }
    mod_.cCurFile = folder_.Write("f.rco", bytes_.Content());
    const EntryRec record{0, 40 + static_cast<std::int32_t>(words.size()) * 4, kEntry, type, 0};
    document_.pageRecs = {record};
    document_.pageCount = 1;
    document_.animRecs = {record};
    document_.lstPage.Clear();
    document_.lstPage.Add("the page");
    document_.lstPage.Select(0);
    document_.lstAnim.Clear();
    document_.lstAnim.Add("the animation");
    document_.lstAnim.Select(0);
    lstPage_Click(mod_, document_);
    lstAnim_Click(mod_, document_);
    if (row < document_.lstPageData.Count()) {
      document_.lstPageData.Select(row);
    }
    document_.lstAnimData.Select(row);
  }

  void ChangePage() { cmdPageChange(mod_, document_, prompts_, watch_); }
  void ChangeAnim() { cmdAnimChange(mod_, document_, prompts_, watch_); }

  const Strings& Rows() { return document_.lstPageData.Lines(); }
  int SelectedRow() { return document_.lstPageData.Selected(); }
  Bytes OnDisk() const { return ReadWholeFile(folder_ / "f.rco"); }

  // The file is as it was written but for that word of the body.
  void ExpectOnlyChange(std::int32_t word, std::int32_t value) {
    Bytes expected = bytes_.Content();
    WriteI32(expected, kBody + word * 4, value);
    EXPECT_EQ(OnDisk(), expected);
    EXPECT_EQ(ReadWholeFile(folder_ / "f.rco.bak"), bytes_.Content());
    EXPECT_THAT(watch_.Calls(), ElementsAre("stop", "start"));
    EXPECT_EQ(mod_.cFileDate, DateOfFile(folder_ / "f.rco"));
  }
  void ExpectUntouched() {
    EXPECT_EQ(OnDisk(), bytes_.Content());
    EXPECT_THAT(folder_.Names(), ElementsAre("f.rco"));
    EXPECT_THAT(watch_.Calls(), IsEmpty());
  }

  test::TempFolder folder_;
  test::ScriptedPrompts prompts_;
  test::ScriptedWatch watch_;
  TableBytes bytes_;
  Mod mod_;
  RcoDocument document_;
};

// --- the kind of a row

TEST(RowOf, IsToldByTheFirstCharacters) {
  EXPECT_EQ(RowOf("[event] x"), (Row{RowKind::Reference, 0x400}));
  EXPECT_EQ(RowOf("[text] x"), (Row{RowKind::Reference, 0x401}));
  EXPECT_EQ(RowOf("[image] x"), (Row{RowKind::Reference, 0x402}));
  EXPECT_EQ(RowOf("[model] x"), (Row{RowKind::Reference, 0x403}));
  EXPECT_EQ(RowOf("[anim] x"), (Row{RowKind::Reference, 0x408}));
  EXPECT_EQ(RowOf("[page] x"), (Row{RowKind::Reference, 0x409}));
  EXPECT_EQ(RowOf("[0x40C] 0x00000012"), (Row{RowKind::Reference, 0x40C}));
  EXPECT_EQ(RowOf("[blank]").kind, RowKind::Blank);
  EXPECT_EQ(RowOf("0x00000012").kind, RowKind::Hexadecimal);
  EXPECT_EQ(RowOf("1.5").kind, RowKind::Float);
  EXPECT_EQ(RowOf("0").kind, RowKind::Float);
  EXPECT_EQ(RowOf("0.5").kind, RowKind::Float);
  EXPECT_EQ(RowOf("").kind, RowKind::Float);
}

// --- the hexadecimal dialog

TEST(EditHexValue, StartsWith8DigitsAndReadsWhatTheFieldHolds) {
  test::ScriptedPrompts prompts;
  prompts.ExpectEditVal("0000001F", "FFFFFFFE");
  std::int32_t value = 0x1F;
  EXPECT_TRUE(EditHexValue(prompts, value));
  EXPECT_EQ(value, -2);
}

TEST(EditHexValue, AColonInTheFieldEndsTheNumber) {
  test::ScriptedPrompts prompts;
  prompts.ExpectEditVal("00000000", "0012:456");
  std::int32_t value = 0;
  EXPECT_TRUE(EditHexValue(prompts, value));
  EXPECT_EQ(value, 0x12);
}

TEST(EditHexValue, CancelLeavesTheValue) {
  test::ScriptedPrompts prompts;
  prompts.ExpectEditVal("FFFFFFFF", std::nullopt);
  std::int32_t value = -1;
  EXPECT_FALSE(EditHexValue(prompts, value));
  EXPECT_EQ(value, -1);
}

// --- nothing to do

TEST_F(Editing, WithoutASelectionNothingHappens) {
  Show({1, 2}, 0);
  document_.lstPageData.Select(-1);
  document_.lstAnimData.Select(-1);
  ChangePage();
  ChangeAnim();
  document_.lstPageData.Select(0);
  document_.lstAnimData.Select(0);
  document_.lstPage.Select(-1);
  document_.lstAnim.Select(-1);
  ChangePage();
  ChangeAnim();
  ExpectUntouched();
}

TEST_F(Editing, ABlankRowStopsWithItsMessage) {
  Show({0xFFFF, -1, 7}, 0);
  prompts_.ExpectTell("Not much can be done with a blank entry... :S", Icon::Information);
  ChangePage();
  ExpectUntouched();
  EXPECT_EQ(SelectedRow(), 0);
}

// --- plain rows

TEST_F(Editing, AFloatRowTakesTheNumberThatTheAnswerBeginsWith) {
  Show({Word(1.5F), 7}, 0);
  prompts_.ExpectInput(kInputPrompt, "1.5", " 2.25x");
  ChangePage();
  ExpectOnlyChange(0, Word(2.25F));
  EXPECT_THAT(Rows(), ElementsAre("2.25", "0x00000007"));
  EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(Editing, AFloatRowAnsweredAbcBecomes0) {
  Show({Word(1.5F), 7}, 0);
  prompts_.ExpectInput(kInputPrompt, "1.5", "abc");
  ChangePage();
  ExpectOnlyChange(0, 0);
  EXPECT_THAT(Rows(), ElementsAre("0", "0x00000007"));
}

TEST_F(Editing, AFloatRowAnswered1e2Becomes100) {
  Show({Word(1.5F), 7}, 0);
  prompts_.ExpectInput(kInputPrompt, "1.5", "1e2");
  ChangePage();
  ExpectOnlyChange(0, Word(100.0F));
  EXPECT_THAT(Rows(), ElementsAre("100", "0x00000007"));
}

TEST_F(Editing, AFloatRowWithAnEmptyAnswerLeavesTheFileAlone) {
  Show({Word(1.5F), 7}, 0);
  prompts_.ExpectInput(kInputPrompt, "1.5", "");
  ChangePage();
  ExpectUntouched();
  EXPECT_THAT(Rows(), ElementsAre("1.5", "0x00000007"));
  EXPECT_EQ(SelectedRow(), 0);
}

TEST_F(Editing, AFloatBeyondTheSinglesIsFailure6AndLeavesTheFileAlone) {
  Show({Word(1.5F), 7}, 0);
  prompts_.ExpectInput(kInputPrompt, "1.5", "1e39");
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 6);
  ExpectUntouched();
}

TEST_F(Editing, AValueOfMoreThan7DigitsShowsShortenedAndStaysAFloatRow) {
  Show({Word(1.5F), 7}, 0);
  prompts_.ExpectInput(kInputPrompt, "1.5", "0.123456789");
  ChangePage();
  ExpectOnlyChange(0, 0x3DFCD6EA);
  EXPECT_THAT(Rows(), ElementsAre("0.1234568", "0x00000007"));
}

TEST_F(Editing, AHexadecimalRowGoesThroughTheHexadecimalDialogAndStaysOne) {
  Show({Word(1.5F), 0x7F, 9}, 1);
  prompts_.ExpectEditVal("0000007F", "3F800000");
  ChangePage();
  ExpectOnlyChange(1, 0x3F800000);
  EXPECT_THAT(Rows(), ElementsAre("1.5", "0x3F800000", "0x00000009"));
  EXPECT_EQ(SelectedRow(), 2);
}

TEST_F(Editing, ACancelledHexadecimalDialogLeavesNoBackupAndTheWatcherRunning) {
  Show({0x7F, 9}, 0);
  prompts_.ExpectEditVal("0000007F", std::nullopt);
  ChangePage();
  ExpectUntouched();
}

TEST_F(Editing, TheChangeOfTheLastRowLeavesItSelected) {
  Show({0x7F, 9}, 1);
  prompts_.ExpectEditVal("00000009", "0000000A");
  ChangePage();
  ExpectOnlyChange(1, 10);
  EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(Editing, WritingAValueNeverTouchesLstPage) {
  Show({0x7F, 9}, 0);
  const unsigned revision = document_.lstPage.Revision();
  prompts_.ExpectEditVal("0000007F", "00000001");
  ChangePage();
  EXPECT_EQ(document_.lstPage.Revision(), revision);
  EXPECT_EQ(document_.lstPage.Selected(), 0);
}

TEST_F(Editing, TheWordIsFoundBehindThePositionBlockAndPairs) {
  std::vector<std::int32_t> words(13, Word(1.0F));
  words.insert(words.end(), {0x401, 1, 5, 0xFFFF, -1, 0x40C, 0x12, 6, 7});
  Show(words, 4, 0x80D);
  ASSERT_THAT(Rows(),
              ElementsAre("[text] beta", "0x00000005", "[blank]", "[0x40C] 0x00000012", "0x00000006", "0x00000007"));
  prompts_.ExpectEditVal("00000006", "00000066");
  ChangePage();
  ExpectOnlyChange(13 + 7, 0x66);
}

TEST_F(Editing, AnExistingBackupIsKept) {
  Show({0x7F, 9}, 0);
  folder_.Write("f.rco.bak", Bytes{1, 2, 3});
  prompts_.ExpectEditVal("0000007F", "00000001");
  ChangePage();
  EXPECT_EQ(ReadWholeFile(folder_ / "f.rco.bak"), (Bytes{1, 2, 3}));
}

TEST_F(Editing, AnEntryThatLostItsBodyIsNotWritten) {
  Show({0x7F, 9}, 0);
  document_.pageRecs[0].recSize = 43;
  prompts_.ExpectEditVal("0000007F", "00000001");
  ChangePage();
  EXPECT_EQ(OnDisk(), bytes_.Content());
  EXPECT_THAT(watch_.Calls(), ElementsAre("stop", "start"));
}

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

// An image record of that label, a sound, a model.
GenRsc Resource(int kind, std::int32_t label, std::int32_t entryPos) {
  GenRsc record;
  record.rscKind = kind;
  record.labelOffset = label;
  record.entryPos = entryPos;
  return record;
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
  const std::pair<std::int32_t, int> kCases[] = {{244, 0},           {271, 0},  // 27 / 56 = 0.48
                                                 {272, 0},                      // 0.5: to the even row
                                                 {273, 1},           {328, 2},  // 1.5: to the even row
                                                 {217, 0},           {216, 0},  // -0.48 and -0.5
                                                 {215, -1},          {0, -1},
                                                 {-1, -1},            // rows in front of the list
                                                 {244 + 3 * 56, -1},  // row 3 is below genCount, but no image
                                                 {244 + 4 * 56, -1}, {0x7FFF0000, -1}};
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
  const std::optional<EditChoices> events = ChoicesOfSelectedRow(mod_, document_);
  ASSERT_TRUE(events.has_value());
  EXPECT_THAT(events->lines, ElementsAre("first", "second", "third"));
  EXPECT_THAT(events->values, ElementsAre(0, 8, 16));
  EXPECT_EQ(events->selected, 2);

  document_.lstPageData.Select(1);
  EXPECT_EQ(ChoicesOfSelectedRow(mod_, document_)->selected, 0);
  for (const int row : {2, 3, -1}) {
    document_.lstPageData.Select(row);
    EXPECT_FALSE(ChoicesOfSelectedRow(mod_, document_).has_value()) << row;
  }
  ExpectUntouched();
}

// --- animations

TEST_F(Editing, AnAnimationsFloatRowGoesThroughTheInputBox) {
  Show({Word(1.5F), 0x400, 12}, 0);
  prompts_.ExpectInput(kInputPrompt, "1.5", "-3");
  ChangeAnim();
  ExpectOnlyChange(0, Word(-3.0F));
  EXPECT_THAT(document_.lstAnimData.Lines(), ElementsAre("-3", "0x00000400", "0x0000000C"));
  EXPECT_EQ(document_.lstAnimData.Selected(), 1);
}

TEST_F(Editing, AnAnimationsHexadecimalRowIsTheWordOfItsIndex) {
  Show({Word(1.5F), 0x400, 12}, 2);
  prompts_.ExpectEditVal("0000000C", "FFFFFFFF");
  ChangeAnim();
  ExpectOnlyChange(2, -1);
  EXPECT_THAT(document_.lstAnimData.Lines(), ElementsAre("1.5", "0x00000400", "0xFFFFFFFF"));
  EXPECT_EQ(document_.lstAnimData.Selected(), 2);
}

TEST_F(Editing, AnAnimationsEmptyAnswerOrCancelStops) {
  Show({Word(1.5F), 0x400, 12}, 0);
  prompts_.ExpectInput(kInputPrompt, "1.5", "");
  ChangeAnim();
  document_.lstAnimData.Select(1);
  prompts_.ExpectEditVal("00000400", std::nullopt);
  ChangeAnim();
  ExpectUntouched();
}

TEST_F(Editing, AnOperationThatLostItsBodyIsNotWritten) {
  Show({0x400, 12}, 0);
  document_.animRecs[0].recSize = 40;
  prompts_.ExpectEditVal("00000400", "00000001");
  ChangeAnim();
  EXPECT_EQ(OnDisk(), bytes_.Content());
}

// --- the position block

TEST_F(Editing, ThePositionBlockIsWrittenWhole) {
  std::vector<std::int32_t> words(13, Word(1.0F));
  words.push_back(0x55);
  Show(words, 0, 0x80D);
  const unsigned revision = document_.entries.txtPageOptRevision;
  const std::array<std::string, 13> typed = {"0",  "1.5", "-2",   "0.1", "1e2",   "abc",         "",
                                             " 7", "8x",  "&H10", "NaN", "1E-45", "3.402823E+38"};
  cmdPagePosChange(mod_, document_, watch_, typed);
  Bytes expected = bytes_.Content();
  const std::uint32_t kWords[] = {0,          0x3FC00000, 0xC0000000, 0x3DCCCCCD, 0x42C80000, 0,         0,
                                  0x40E00000, 0x41000000, 0x41800000, 0,          1,          0x7F7FFFFD};
  for (int i = 0; i < 13; ++i) {
    WriteU32(expected, kBody + i * 4, kWords[i]);
  }
  EXPECT_EQ(OnDisk(), expected);
  EXPECT_EQ(ReadWholeFile(folder_ / "f.rco.bak"), bytes_.Content());
  EXPECT_THAT(watch_.Calls(), ElementsAre("stop", "start"));
  // The boxes aren't rewritten: they keep what was typed.
  EXPECT_EQ(document_.entries.txtPageOpt, typed);
  EXPECT_EQ(document_.entries.txtPageOptRevision, revision);
}

TEST_F(Editing, AWordThatCannotSurviveTheTripThroughTextChangesAlthoughItWasLeftAlone) {
  std::vector<std::int32_t> words(13, Word(1.0F));
  words[0] = 0x7FC00001;         // no number
  words[1] = Word(16777217.0F);  // 1.677722E+07
  words[2] = 5;                  // 7.006492E-45
  Show(words, 0, 0x80D);
  cmdPagePosChange(mod_, document_, watch_, document_.entries.txtPageOpt);
  EXPECT_EQ(ReadU32(OnDisk(), kBody), 0U);
  EXPECT_EQ(ReadU32(OnDisk(), kBody + 4), 0x4B800002U);  // 16777220
  EXPECT_EQ(ReadU32(OnDisk(), kBody + 8), 5U);
  EXPECT_EQ(ReadU32(OnDisk(), kBody + 12), 0x3F800000U);
}

TEST_F(Editing, ABoxBeyondTheSinglesIsFailure6AndLeavesTheFileAlone) {
  Show(std::vector<std::int32_t>(13, 0), 0, 0x80D);
  std::array<std::string, 13> typed;
  typed[12] = "1e39";
  EXPECT_EQ(NumberOf([&] { cmdPagePosChange(mod_, document_, watch_, typed); }), 6);
  ExpectUntouched();
}

TEST_F(Editing, APositionBlockOfAnEntryWithoutABodyIsNotWritten) {
  Show(std::vector<std::int32_t>(13, 0), 0, 0x80D);
  document_.pageRecs[0].recSize = 40;
  std::array<std::string, 13> typed;
  typed[0] = "1";
  cmdPagePosChange(mod_, document_, watch_, typed);
  EXPECT_EQ(OnDisk(), bytes_.Content());
}

TEST_F(Editing, APositionBlockWithoutASelectedLineIsFailure9) {
  Show(std::vector<std::int32_t>(13, 0), 0, 0x80D);
  document_.lstPage.Select(-1);
  EXPECT_EQ(NumberOf([&] { cmdPagePosChange(mod_, document_, watch_, {}); }), 9);
  ExpectUntouched();
}

}  // namespace
}  // namespace kelvane
