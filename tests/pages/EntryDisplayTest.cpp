#include <bit>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "container/RcoFormat.h"
#include "pages/EntryDisplay.h"
#include "pages/TableBytes.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TableBytes;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kTextRoot = 0xC0;  // the first language's records at 0x118
constexpr std::int32_t kLabels = 0x180;   // "alpha" at 0, "beta" at 8
constexpr std::int32_t kEvents = 0x1A0;   // "native:/one" at 0, "native:/two" at 12
constexpr std::int32_t kOther = 0x1C0;    // an entry whose label is "beta"
constexpr std::int32_t kEntry = 0x300;    // the entry that is shown

constexpr std::int32_t Word(float value) {
  return std::bit_cast<std::int32_t>(value);
}

class Display : public ::testing::Test {
 protected:
  Display() {
    bytes_.Words(rco::hdrTextRoot, {kTextRoot}).Words(rco::hdrEventOffset, {kEvents, 24});
    bytes_.Words(kTextRoot + 88, {0, 0, 0, 8, 0, 0});  // texts 0 "alpha" and 1 "beta"
    bytes_.Text(kLabels, "alpha").Text(kLabels + 8, "beta");
    bytes_.Text(kEvents, "native:/one").Text(kEvents + 12, "native:/two");
    bytes_.Head(kOther, 0x801, 8, 40, 0);
    document_.labelBase = kLabels;
    document_.lstPage.Add("page");
    document_.lstAnim.Add("anim");
  }

  // One entry at kEntry with those words, in the page and the animation table alike.
  void Entry(std::int32_t type, const std::vector<std::int32_t>& words) {
    bytes_.Reach(kEntry + 40);
    for (std::size_t i = 0; i < words.size(); ++i) {
      bytes_.Words(kEntry + 40 + static_cast<std::int32_t>(i) * 4, {words[i]});
    }
    Record({0, 40 + static_cast<std::int32_t>(words.size()) * 4, kEntry, type, 0});
  }
  void Record(const EntryRec& record) {
    document_.pageRecs = {record};
    document_.animRecs = {record};
  }

  void WriteFile() { mod_.cCurFile = folder_.Write("f.rco", bytes_.Content()); }
  void ClickPage() {
    WriteFile();
    document_.lstPage.Select(0);
    lstPage_Click(mod_, document_);
  }
  void ClickAnim() {
    WriteFile();
    document_.lstAnim.Select(0);
    lstAnim_Click(mod_, document_);
  }

  const std::vector<std::string>& PageRows() { return document_.lstPageData.Lines(); }
  const std::vector<std::string>& AnimRows() { return document_.lstAnimData.Lines(); }
  EntryDisplay& Shown() { return document_.entries; }

  test::TempFolder folder_;
  TableBytes bytes_;
  Mod mod_;
  RcoDocument document_;
};

std::vector<std::int32_t> PositionWords(int count = 13) {
  std::vector<std::int32_t> words;
  for (int i = 0; i < count; ++i) {
    words.push_back(Word(static_cast<float>(i) + 0.5F));
  }
  return words;
}

// --- position blocks

struct ClassRow {
  std::int32_t type;
  bool positionBlock;
};

TEST(HasPositionBlock, IsDecidedByTheTypeAlone) {
  constexpr ClassRow kClasses[] = {{0x801, false}, {0x802, true},  {0x803, true}, {0x804, true},  {0x805, false},
                                   {0x806, true},  {0x807, true},  {0x808, true}, {0x809, true},  {0x80A, false},
                                   {0x80B, false}, {0x80C, false}, {0x80D, true}, {0x80E, true},  {0x80F, true},
                                   {0x810, false}, {0x811, true},  {0x812, true}, {0x813, true},  {0x814, false},
                                   {0x815, true},  {0x816, true},  {0x817, true}, {0x818, false}, {0x819, true}};
  static_assert(std::size(kClasses) == 25);
  for (const ClassRow& row : kClasses) {
    EXPECT_EQ(HasPositionBlock(row.type), row.positionBlock) << std::hex << row.type;
  }
}

TEST(HasPositionBlock, OtherTablesAndTypesHaveNone) {
  for (const std::int32_t type : {0, 0x800, 0x81A, 0x902, 0x10802, 2, -1}) {
    EXPECT_FALSE(HasPositionBlock(type)) << std::hex << type;
  }
}

TEST_F(Display, ThePositionBlockGoesToThe13BoxesAndTheListBeginsBehindIt) {
  std::vector<std::int32_t> words = PositionWords();
  words.push_back(Word(2.0F));
  words.push_back(0x77);
  Entry(0x80D, words);
  const unsigned before = Shown().txtPageOptRevision;
  ClickPage();
  EXPECT_TRUE(Shown().picPagePosVisible);
  EXPECT_EQ(Shown().pageDataStart.Int(), 13);
  EXPECT_THAT(Shown().txtPageOpt, ElementsAre("0.5", "1.5", "2.5", "3.5", "4.5", "5.5", "6.5", "7.5", "8.5", "9.5",
                                              "10.5", "11.5", "12.5"));
  EXPECT_NE(Shown().txtPageOptRevision, before);
  EXPECT_THAT(PageRows(), ElementsAre("2", "0x00000077"));
}

TEST_F(Display, TheBoxesAlwaysShowFloatsWhateverTheWordLooksLike) {
  std::vector<std::int32_t> words = PositionWords();
  words[3] = 0x3F9E0652;  // 1.2345679
  words[4] = 1;
  Entry(0x819, words);
  ClickPage();
  EXPECT_EQ(Shown().txtPageOpt[3], "1.234568");
  EXPECT_EQ(Shown().txtPageOpt[4], "1.401298E-45");
  EXPECT_THAT(PageRows(), IsEmpty());
}

TEST_F(Display, AnEntryWithoutAPositionBlockHidesThePanelAndListsAllItsWords) {
  Shown().picPagePosVisible = true;
  Shown().pageDataStart = 13;
  Entry(0x801, {Word(1.0F), 3});
  ClickPage();
  EXPECT_FALSE(Shown().picPagePosVisible);
  EXPECT_EQ(Shown().pageDataStart.Int(), 0);
  EXPECT_THAT(PageRows(), ElementsAre("1", "0x00000003"));
}

TEST_F(Display, APositionTypeWithFewerThan13WordsRunsOutOfRangeWhileTheBoxesAreFilled) {
  Entry(0x80D, PositionWords(12));
  EXPECT_EQ(NumberOf([&] { ClickPage(); }), 9);
  EXPECT_TRUE(Shown().picPagePosVisible);
  EXPECT_EQ(Shown().pageDataStart.Int(), 13);
  EXPECT_EQ(Shown().txtPageOpt[11], "11.5");
  EXPECT_EQ(Shown().txtPageOpt[12], "");
  EXPECT_THAT(PageRows(), IsEmpty());
}

TEST_F(Display, AnEntryOfExactlyOneWordBehindThePositionBlockShowsOnePlainRowEvenIfItIs401) {
  std::vector<std::int32_t> words = PositionWords();
  words.push_back(0x401);
  Entry(0x80D, words);
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x00000401"));
}

// --- rows

struct RowCase {
  const char* name;
  std::int32_t first;
  std::int32_t second;
  const char* row;
};

TEST_F(Display, EveryKindOfReferenceHasItsRow) {
  const RowCase kCases[] = {{"event", 0x400, 12, "[event] native:/two"},
                            {"text", 0x401, 1, "[text] beta"},
                            {"image", 0x402, kOther, "[image] beta"},
                            {"model", 0x403, kOther, "[model] beta"},
                            {"0x404", 0x404, 0x12, "[0x404] 0x00000012"},
                            {"0x405", 0x405, 0x12, "[0x405] 0x00000012"},
                            {"0x406", 0x406, -1, "[0x406] 0xFFFFFFFF"},
                            {"page 7", 0x407, kOther, "[page] beta"},
                            {"anim", 0x408, kOther, "[anim] beta"},
                            {"page 9", 0x409, kOther, "[page] beta"},
                            {"0x40A", 0x40A, 0, "[0x40A] 0x00000000"},
                            {"0x40B", 0x40B, 0, "[0x40B] 0x00000000"},
                            {"0x40C", 0x40C, 0x12, "[0x40C] 0x00000012"},
                            {"0x40D", 0x40D, 0, "[0x40D] 0x00000000"},
                            {"0x40E", 0x40E, 0, "[0x40E] 0x00000000"},
                            {"0x40F", 0x40F, 0x400, "[0x40F] 0x00000400"},
                            {"blank", 0xFFFF, -1, "[blank]"}};
  for (const RowCase& test : kCases) {
    SCOPED_TRACE(test.name);
    Entry(0x801, {test.first, test.second, 7});
    ClickPage();
    EXPECT_THAT(PageRows(), ElementsAre(test.row, "0x00000007"));
  }
}

TEST_F(Display, WordsOutsideTheReferenceTypesArePlain) {
  Entry(0x801, {0x3FF, 0x410, 0x111, Word(480.0F), 0});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x000003FF", "0x00000410", "0x00000111", "480", "0"));
}

TEST_F(Display, FFFFWithAnotherValueIsAPlainRowAndTheValueBeginsTheNextStep) {
  Entry(0x801, {0xFFFF, 5, 0xFFFF, 0x401, 1, 9});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x0000FFFF", "0x00000005", "0x0000FFFF", "[text] beta", "0x00000009"));
}

TEST_F(Display, APairThatEndsTheBodyIsAPair) {
  Entry(0x801, {1, 0xFFFF, -1});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x00000001", "[blank]"));
}

TEST_F(Display, TheLastWordIsAlwaysPlain) {
  Entry(0x801, {0x402, kOther, 0x402});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("[image] beta", "0x00000402"));
}

TEST_F(Display, AWord402ThatIsMeantAsANumberIsReadAsAnImagePair) {
  Entry(0x801, {0x402, 0, 0x55});
  ClickPage();
  // The word at 4 of this file is 0, the label of "alpha".
  EXPECT_THAT(PageRows(), ElementsAre("[image] alpha", "0x00000055"));
}

TEST_F(Display, AFloatOfMoreThan5DecimalPlacesShowsAsHexadecimal) {
  Entry(0x801, {Word(0.1234567F), Word(0.1F), 0});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x3DFCD6DE", "0.1", "0"));
}

TEST_F(Display, TypesAreComparedAsWholeWords) {
  Entry(0x801, {0x10402, 1, static_cast<std::int32_t>(0x80000402), 0});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x00010402", "0x00000001", "0x80000402", "0"));
}

// --- references that lead nowhere

TEST_F(Display, AReferenceBehindTheEndOfTheFileReadsZeros) {
  Entry(0x801, {0x400, 0x100000, 0x401, 0x10000, 0x402, 0x100000, 0});
  ClickPage();
  // No event is an empty string; a label of 0 is the first one.
  EXPECT_THAT(PageRows(), ElementsAre("[event] ", "[text] alpha", "[image] alpha", "0"));
}

TEST_F(Display, AReferenceInFrontOfTheFileHasNoLabel) {
  Entry(0x801, {0x400, -0x10000, 0x401, -1000, 0x402, -1000, 0x409, -5, 0});
  ClickPage();
  EXPECT_THAT(PageRows(),
              ElementsAre("[event] <No label>", "[text] <No label>", "[image] <No label>", "[page] <No label>", "0"));
}

TEST_F(Display, AnEntryWithANegativeLabelReadsInFrontOfTheLabelArea) {
  bytes_.Words(kOther + 4, {-0x1000});
  Entry(0x801, {0x402, kOther, 0});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("[image] <No label>", "0"));
}

TEST_F(Display, AReferenceBeyond32BitsIsOneBehindTheEndOfTheFile) {
  Entry(0x801, {0x400, 0x7FFFFFFF, 0x401, 0x7FFFFFFF, 0x401, Word(1.0F), 0x402, 0x7FFFFFFF, 0x409, 0x7FFFFFFC, 0});
  ClickPage();
  EXPECT_THAT(PageRows(),
              ElementsAre("[event] ", "[text] alpha", "[text] alpha", "[image] alpha", "[page] alpha", "0"));
}

TEST_F(Display, AReferenceBelow32BitsIsOneInFrontOfTheFile) {
  constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
  bytes_.Words(rco::hdrEventOffset, {-8});
  Entry(0x801, {0x400, kLowest, 0x401, kLowest, 0x402, kLowest, 0});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("[event] <No label>", "[text] <No label>", "[image] <No label>", "0"));
}

TEST_F(Display, ALabelBeyond32BitsIsOneBehindTheEndOfTheFile) {
  bytes_.Words(kOther + 4, {0x7FFFFFFF});
  Entry(0x801, {0x402, kOther, 0});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("[image] ", "0"));
}

// --- the body's length

TEST_F(Display, AnEntryOf44BytesHasOneWord) {
  Entry(0x801, {0x12});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x00000012"));
  ClickAnim();
  EXPECT_THAT(AnimRows(), ElementsAre("0x00000012"));
}

TEST_F(Display, AnEntryBelow44BytesLeavesTheListEmptyAndPanelAndStartAsTheyWere) {
  Shown().picPagePosVisible = true;
  Shown().pageDataStart = 13;
  Shown().txtPageOpt[0] = "old";
  document_.lstPageData.Add("old");
  document_.lstAnimData.Add("old");
  Entry(0x801, {0x12});
  for (const std::int32_t size : {43, 40, 0, -1}) {
    Record({0, size, kEntry, 0x801, 0});
    ClickPage();
    ClickAnim();
    EXPECT_THAT(PageRows(), IsEmpty());
    EXPECT_THAT(AnimRows(), IsEmpty());
  }
  EXPECT_TRUE(Shown().picPagePosVisible);
  EXPECT_EQ(Shown().pageDataStart.Int(), 13);
  EXPECT_EQ(Shown().txtPageOpt[0], "old");
  EXPECT_TRUE(Shown().lstPageDataEnabled);
}

TEST_F(Display, BytesBehindTheLastWholeWordAreNotShown) {
  Entry(0x801, {0x12, 0x34});
  Record({0, 40 + 7, kEntry, 0x801, 0});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x00000012"));
}

TEST_F(Display, WordsBehindTheEndOfTheFileAreZeros) {
  Entry(0x801, {0x12});
  Record({0, 40 + 12, kEntry, 0x801, 0});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x00000012", "0", "0"));
}

TEST_F(Display, RowsAre16BitNumbers) {
  Entry(0x801, {});
  Record({0, 40 + 32767 * 4, kEntry, 0x801, 0});
  ClickPage();
  EXPECT_EQ(PageRows().size(), 32767U);
  Record({0, 40 + 0x10000000, kEntry, 0x801, 0});
  EXPECT_EQ(NumberOf([&] { ClickPage(); }), 6);
  EXPECT_EQ(NumberOf([&] { ClickAnim(); }), 6);
}

TEST_F(Display, ABodyThatNoMemoryHoldsIsFailure7) {
  Entry(0x801, {});
  Record({0, 0x7FFFFFFF, kEntry, 0x801, 0});
  EXPECT_EQ(NumberOf([&] { ClickPage(); }), 7);
  EXPECT_EQ(NumberOf([&] { ClickAnim(); }), 7);
}

TEST_F(Display, APlaceBeyond32BitsIsFailure6) {
  Entry(0x801, {});
  Record({0, 44, 0x7FFFFFFF, 0x801, 0});
  EXPECT_EQ(NumberOf([&] { ClickPage(); }), 6);
  EXPECT_EQ(NumberOf([&] { ClickAnim(); }), 6);
}

// --- the selection

TEST_F(Display, ASelectionEnablesListAndButtonAndNoneDisablesThemAndChangesNothingElse) {
  Entry(0x801, {0x12});
  ClickPage();
  ClickAnim();
  EXPECT_TRUE(Shown().lstPageDataEnabled);
  EXPECT_TRUE(Shown().cmdPageChangeEnabled);
  EXPECT_TRUE(Shown().lstAnimDataEnabled);
  EXPECT_TRUE(Shown().cmdAnimChangeEnabled);

  document_.lstPage.Select(-1);
  document_.lstAnim.Select(-1);
  lstPage_Click(mod_, document_);
  lstAnim_Click(mod_, document_);
  EXPECT_FALSE(Shown().lstPageDataEnabled);
  EXPECT_FALSE(Shown().cmdPageChangeEnabled);
  EXPECT_FALSE(Shown().lstAnimDataEnabled);
  EXPECT_FALSE(Shown().cmdAnimChangeEnabled);
  EXPECT_THAT(PageRows(), ElementsAre("0x00000012"));
  EXPECT_THAT(AnimRows(), ElementsAre("0x00000012"));
}

TEST_F(Display, ALineWithoutARecordIsFailure9) {
  Entry(0x801, {0x12});
  document_.pageRecs.clear();
  document_.animRecs.clear();
  EXPECT_EQ(NumberOf([&] { ClickPage(); }), 9);
  EXPECT_EQ(NumberOf([&] { ClickAnim(); }), 9);
}

TEST_F(Display, AFileThatIsGoneIsFailure53) {
  mod_.cCurFile = folder_ / "gone.rco";
  document_.lstPage.Select(0);
  document_.lstPageData.Add("old");
  EXPECT_EQ(NumberOf([&] { lstPage_Click(mod_, document_); }), 53);
  EXPECT_THAT(PageRows(), IsEmpty());
}

TEST_F(Display, NothingIsCachedTheFileIsReadAgain) {
  Entry(0x801, {0x12});
  ClickPage();
  Entry(0x801, {0x13});
  ClickPage();
  EXPECT_THAT(PageRows(), ElementsAre("0x00000013"));
}

// --- animations

TEST_F(Display, AnAnimationShowsEveryWordAsAPlainRow) {
  Entry(0x908, {0x400, 12, 0xFFFF, -1, Word(0.5F), 0x402});
  ClickAnim();
  EXPECT_THAT(AnimRows(), ElementsAre("0x00000400", "0x0000000C", "0x0000FFFF", "0xFFFFFFFF", "0.5", "0x00000402"));
}

TEST_F(Display, AnAnimationOfATypeWithAPositionBlockLeavesThePanelAlone) {
  Entry(0x80D, {1});
  ClickAnim();
  EXPECT_FALSE(Shown().picPagePosVisible);
  EXPECT_THAT(AnimRows(), ElementsAre("0x00000001"));
}

}  // namespace
}  // namespace kelvane
