#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

#include "pages/EditFixture.h"
#include "pages/EntryEdit.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::Editing;
using test::kBody;
using test::kInputPrompt;
using test::NumberOf;
using test::Word;
using ::testing::ElementsAre;

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

TEST_F(Editing, APositionBlockWithoutASelectedLineIsFailure9BehindTheBackup) {
  Show(std::vector<std::int32_t>(13, 0), 0, 0x80D);
  document_.lstPage.Select(-1);
  EXPECT_EQ(NumberOf([&] { cmdPagePosChange(mod_, document_, watch_, {}); }), 9);
  ExpectOnlyBackedUp();
}

TEST_F(Editing, APositionBlockIs52BytesEvenBehindAShorterBodyAndTheEndOfTheFile) {
  Show({7}, 0);
  std::array<std::string, 13> typed;
  typed.fill("2");
  cmdPagePosChange(mod_, document_, watch_, typed);
  Bytes expected = bytes_.Content();
  expected.resize(kBody + 52);
  for (int i = 0; i < 13; ++i) {
    WriteU32(expected, kBody + i * 4, 0x40000000);
  }
  EXPECT_EQ(OnDisk(), expected);
}

// --- what changed on disk in the meantime

TEST_F(Editing, AHexadecimalValueIsReadFromTheRowAndNotFromTheFile) {
  Show({0x7F, 9}, 0);
  bytes_.Words(kBody, {0x80});
  folder_.Write("f.rco", bytes_.Content());
  prompts_.ExpectEditVal("0000007F", "00000081");
  ChangePage();
  ExpectOnlyChange(0, 0x81);
}

TEST_F(Editing, AListsSelectionIsReadFromTheFileAndNotFromTheRow) {
  Show({0x401, 1, 7}, 0);
  bytes_.Words(kBody + 4, {2});
  folder_.Write("f.rco", bytes_.Content());
  prompts_.ExpectEditList({"alpha", "beta", "gamma"}, 2, 0);
  ChangePage();
  ExpectOnlyChange(1, 0);
  EXPECT_EQ(Rows().front(), "[text] alpha");
}

// --- what is around the write

TEST_F(Editing, WithBackupsTurnedOffThereIsNoneAndTheWatcherStopsAllTheSame) {
  Show({0x7F, 9}, 0);
  mod_.cNoUpdatBak = true;
  prompts_.ExpectEditVal("0000007F", "00000001");
  ChangePage();
  EXPECT_THAT(folder_.Names(), ElementsAre("f.rco"));
  EXPECT_THAT(watch_.Calls(), ElementsAre("stop", "start"));
}

TEST_F(Editing, AFileThatIsGoneIsFailure53AndNoneIsMadeInItsPlace) {
  Show({0x7F, 9}, 0);
  std::filesystem::remove(folder_ / "f.rco");
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 53);
  prompts_.ExpectEditVal("0000007F", "00000001");
  EXPECT_EQ(NumberOf([&] { ChangeAnim(); }), 53);
  EXPECT_EQ(NumberOf([&] { cmdPagePosChange(mod_, document_, watch_, {}); }), 53);
  EXPECT_THAT(folder_.Names(), ::testing::IsEmpty());
}

// A page's word is read before the question; an animation's place is worked out when it is to be written.
TEST_F(Editing, APagesWordBeyond32BitsIsFailure6BeforeTheQuestion) {
  Show({0x7F, 9}, 1);
  document_.pageRecs[0].recPos = 0x7FFFFFF0;
  EXPECT_EQ(NumberOf([&] { ChangePage(); }), 6);
  ExpectUntouched();
}

TEST_F(Editing, AnAnimationsWordBeyond32BitsIsFailure6BehindTheBackup) {
  Show({0x7F, 9}, 1);
  document_.animRecs[0].recPos = 0x7FFFFFF0;
  prompts_.ExpectEditVal("00000009", "00000001");
  EXPECT_EQ(NumberOf([&] { ChangeAnim(); }), 6);
  ExpectOnlyBackedUp();
}

TEST_F(Editing, AnAnimationWithoutARecordIsFailure9BehindTheBackup) {
  Show({0x7F, 9}, 1);
  document_.animRecs.clear();
  prompts_.ExpectEditVal("00000009", "00000001");
  EXPECT_EQ(NumberOf([&] { ChangeAnim(); }), 9);
  ExpectOnlyBackedUp();
}

TEST_F(Editing, APositionBlockBeyond32BitsIsFailure6BehindTheBackup) {
  Show(std::vector<std::int32_t>(13, 0), 0, 0x80D);
  document_.pageRecs[0].recPos = 0x7FFFFFF0;
  EXPECT_EQ(NumberOf([&] { cmdPagePosChange(mod_, document_, watch_, {}); }), 6);
  ExpectOnlyBackedUp();
}

TEST_F(Editing, ThePlaceOfAnEntryWithoutABodyDoesNotMatter) {
  Show({0x7F, 9}, 1);
  document_.pageRecs[0] = {0, 43, 0x7FFFFFF0, 0x801, 0};
  document_.animRecs[0] = {0, 43, 0x7FFFFFF0, 0x901, 0};
  prompts_.ExpectEditVal("00000009", "00000001");
  ChangeAnim();
  cmdPagePosChange(mod_, document_, watch_, {});
  EXPECT_EQ(OnDisk(), bytes_.Content());
  EXPECT_THAT(watch_.Calls(), ElementsAre("stop", "start", "stop", "start"));
}

}  // namespace
}  // namespace kelvane
