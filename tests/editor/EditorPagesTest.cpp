#include <bit>
#include <gmock/gmock.h>

#include "common/Files.h"
#include "editor/EditorFixture.h"
#include "support/Failures.h"
#include "support/RcoBuilder.h"

namespace kelvane {
namespace {

using test::BlankRef;
using test::BuiltRco;
using test::EventRef;
using test::ImageRef;
using test::ModelRef;
using test::NumberOf;
using test::PageRef;
using test::PairOf;
using test::RcoBuilder;
using test::RcoTable;
using test::TextRef;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::array<float, 13> kPosition = {-240, 136, 1, 1, 0.5F, 0.1F, 1, 480, 272, 0, 1, 1, 1};

class EditorPages : public test::EditorFixture {
 protected:
  EditorPages() {
    b_.AddImage({.label = "img_a", .data = {1, 2, 3, 4}, .unpackedSize = 4});
    b_.AddImage({.label = "img_b", .data = {5, 6, 7, 8}, .unpackedSize = 4});
    b_.AddGmo({.label = "model", .data = {9, 9, 9, 9}});
    b_.AddLanguage(0x10000);
    b_.AddLanguage(0x10001);
    b_.AddText({.label = "msg_yes", .strings = {u"はい", u"Yes"}});
    b_.AddText({.label = "msg_no", .strings = {u"いいえ", u"No"}});
    b_.AddEvent("native:/open");
    b_.AddEvent("native:/close");
    b_.AddPage(
        {.label = "page_main",
         .body = {0x111, 1.5F},
         .children = {{.label = "label",
                       .entryClass = 13,
                       .position = kPosition,
                       .body = {TextRef("msg_no"), EventRef("native:/close"), ImageRef("img_b"), ModelRef("model"),
                                PageRef("page_main", test::kRefPage7), BlankRef(), PairOf(0x40C, 0x12), 0x77, 0.25F}},
                      {.entryClass = 18, .position = kPosition, .body = {2.0F}, .statesSize = false}}});
    b_.AddPage({.label = "page_end", .body = {7}});
    b_.AddAnimation(
        {.label = "anim_in", .children = {{.entryClass = 2, .body = {0.5F, 3}}, {.entryClass = 7, .body = {100.0F}}}});
    b_.AddAnimation({.label = "anim_out", .body = {1}});
    built_ = b_.Build();
  }

  void Open() { editor.OpenRcoFile(folder.Write("f.rco", built_.bytes)); }
  const RcoDocument& Document() { return editor.Document(); }
  Bytes OnDisk() const { return ReadWholeFile(folder / "f.rco"); }

  // The file is as it was built but for one word of an entry's body.
  void ExpectOnlyChange(std::int32_t entry, std::int32_t word, std::int32_t value) {
    Bytes expected = built_.bytes;
    WriteI32(expected, entry + 40 + word * 4, value);
    EXPECT_EQ(OnDisk(), expected);
  }
  // What is in memory is what opening the file anew gives.
  void ExpectInStepWithTheFile() {
    test::ScriptedWatch otherWatch;
    Editor other{folder / "program", Ports{.prompts = prompts, .watch = otherWatch, .progress = progress}};
    other.OpenRcoFile(folder / "f.rco");
    EXPECT_EQ(Document().pageRecs, other.Document().pageRecs);
    EXPECT_EQ(Document().animRecs, other.Document().animRecs);
    EXPECT_EQ(Document().genRsc, other.Document().genRsc);
    EXPECT_EQ(Document().textRsc, other.Document().textRsc);
    EXPECT_EQ(Document().lstPage.Lines(), other.Document().lstPage.Lines());
    EXPECT_EQ(Document().lstAnim.Lines(), other.Document().lstAnim.Lines());
  }

  RcoBuilder b_;
  BuiltRco built_;
};

std::string Place(std::int32_t position) {
  char text[32];
  std::snprintf(text, sizeof text, " @ 0x%X", static_cast<unsigned>(position));
  return text;
}

TEST_F(EditorPages, OpeningShowsBothTrees) {
  Open();
  const auto& pages = built_.layout.pages;
  const auto& anims = built_.layout.animEntries;
  EXPECT_THAT(Document().lstPage.Lines(),
              ElementsAre("page_main" + Place(pages[0].entry), "   label" + Place(pages[1].entry), "   项目 #2",
                          "page_end" + Place(pages[3].entry)));
  EXPECT_THAT(Document().lstAnim.Lines(), ElementsAre("anim_in" + Place(anims[0].entry), "   [0x902] 设置对象坐标",
                                                      "   [0x907] 延迟", "anim_out" + Place(anims[3].entry)));
  EXPECT_EQ(Document().pageCount, Int16(4));
  EXPECT_EQ(Document().animCount, Int16(2));
  EXPECT_EQ(Document().animRecs.size(), 4U);
}

TEST_F(EditorPages, APointerTableInAnyOrderWithZerosShowsFileOrderAndFrmOtherShowsItAsStored) {
  b_.SetPointers(RcoTable::kPage, {3, -1, 1, 0, 2});
  built_ = b_.Build();
  Open();
  EXPECT_EQ(Document().lstPage.Count(), 4);
  EXPECT_EQ(Document().lstPage.Text(0), "page_main" + Place(built_.layout.pages[0].entry));
  const std::optional<RandomInfo> info = editor.cmdOther();
  ASSERT_TRUE(info.has_value());
  // The entry without a name reads the byte in front of the label area, which is no label.
  EXPECT_THAT(info->lstPage.Lines(), ElementsAre("page_end", " --- BLANK --- ", "label", "page_main", ""));
  EXPECT_THAT(info->lstAnim.Lines(), ElementsAre("anim_in", "anim_out"));
  EXPECT_THAT(info->lstLabel.Lines(), ElementsAre("msg_yes", "msg_no", "img_a", "img_b", "model", "page_main", "label",
                                                  "page_end", "anim_in", "anim_out"));
  EXPECT_THAT(info->lstNative.Lines(), ElementsAre("native:/open", "native:/close"));
}

TEST_F(EditorPages, FrmOtherNeedsAFile) {
  prompts.ExpectTell("Must have a file loaded to use this feature!", Icon::Exclamation);
  EXPECT_FALSE(editor.cmdOther().has_value());
}

TEST_F(EditorPages, SelectingAPageShowsItsBlockAndItsWordsWithNames) {
  Open();
  editor.lstPage_Click(1);
  EXPECT_TRUE(Document().entries.picPagePosVisible);
  EXPECT_THAT(Document().entries.txtPageOpt,
              ElementsAre("-240", "136", "1", "1", "0.5", "0.1", "1", "480", "272", "0", "1", "1", "1"));
  EXPECT_THAT(Document().lstPageData.Lines(),
              ElementsAre("[text] msg_no", "[event] native:/close", "[image] img_b", "[model] model",
                          "[page] page_main", "[blank]", "[0x40C] 0x00000012", "0x00000077", "0.25"));
  editor.lstPage_Click(0);
  EXPECT_FALSE(Document().entries.picPagePosVisible);
  EXPECT_THAT(Document().lstPageData.Lines(), ElementsAre("0x00000111", "1.5"));
  editor.lstPage_Click(2);
  EXPECT_TRUE(Document().entries.picPagePosVisible);
  EXPECT_THAT(Document().lstPageData.Lines(), ElementsAre("2"));
}

TEST_F(EditorPages, SelectingAnAnimationShowsItsWords) {
  Open();
  editor.lstAnim_Click(1);
  EXPECT_THAT(Document().lstAnimData.Lines(), ElementsAre("0.5", "0x00000003"));
  editor.lstAnim_Click(0);
  EXPECT_THAT(Document().lstAnimData.Lines(), IsEmpty());
  editor.lstAnim_Click(-1);
  EXPECT_FALSE(Document().entries.lstAnimDataEnabled);
}

TEST_F(EditorPages, ARowThatIsNotThereIsFailure5) {
  Open();
  EXPECT_EQ(NumberOf([&] { editor.lstPage_Click(4); }), 5);
  EXPECT_EQ(NumberOf([&] { editor.lstAnim_Click(4); }), 5);
  EXPECT_EQ(NumberOf([&] { editor.lstPageData_Click(0); }), 5);
  EXPECT_EQ(NumberOf([&] { editor.lstAnimData_Click(0); }), 5);
}

TEST_F(EditorPages, AChangedWordIsInTheFileAndOnShowAgain) {
  Open();
  editor.lstPage_Click(1);
  editor.lstPageData_Click(8);
  prompts.ExpectInput("输入新数值", "0.25", "-12.5");
  EXPECT_TRUE(editor.cmdPageChange());
  // 13 words of the block, 7 pairs, 1 word.
  ExpectOnlyChange(built_.layout.pages[1].entry, 28, std::bit_cast<std::int32_t>(-12.5F));
  ExpectInStepWithTheFile();
  EXPECT_TRUE(watch.Running());
  editor.lstPage_Click(1);
  EXPECT_EQ(Document().lstPageData.Text(8), "-12.5");
}

TEST_F(EditorPages, AChangedTextReferenceLeadsToTheChosenText) {
  Open();
  editor.lstPage_Click(1);
  editor.lstPageData_Click(0);
  EXPECT_THAT(editor.ChoicesOfSelectedRow()->values, ElementsAre(0, 1));
  prompts.ExpectEditList({"msg_yes", "msg_no"}, 1, 0);
  EXPECT_TRUE(editor.cmdPageChange());
  ExpectOnlyChange(built_.layout.pages[1].entry, 14, 0);
  EXPECT_EQ(Document().lstPageData.Text(0), "[text] msg_yes");
  EXPECT_EQ(Document().lstPageData.Selected(), 1);
}

TEST_F(EditorPages, AChangedPageReferenceIsInTheFileAlthoughTheRowFails) {
  Open();
  editor.lstPage_Click(1);
  editor.lstPageData_Click(4);
  const std::int32_t end = built_.layout.pages[3].entry;
  prompts.ExpectEditList({"page_main", "label", "", "page_end"}, 0, 3);
  EXPECT_EQ(NumberOf([&] { editor.cmdPageChange(); }), 5);
  ExpectOnlyChange(built_.layout.pages[1].entry, 13 + 9, end);
  EXPECT_TRUE(watch.Running());
  editor.lstPage_Click(1);
  EXPECT_EQ(Document().lstPageData.Text(4), "[page] page_end");
}

TEST_F(EditorPages, ACancelledChangeIsNone) {
  Open();
  editor.lstPage_Click(1);
  editor.lstPageData_Click(7);
  prompts.ExpectEditVal("00000077", std::nullopt);
  EXPECT_FALSE(editor.cmdPageChange());
  editor.lstPageData_Click(5);
  prompts.ExpectTell("Not much can be done with a blank entry... :S", Icon::Information);
  EXPECT_FALSE(editor.ChoicesOfSelectedRow().has_value());
  prompts.ExpectTell("Not much can be done with a blank entry... :S", Icon::Information);
  EXPECT_FALSE(editor.cmdPageChange());
  EXPECT_EQ(OnDisk(), built_.bytes);
  EXPECT_FALSE(FileExists(folder / "f.rco.bak"));
}

TEST_F(EditorPages, AChangedWordOfAnOperationIsInTheFile) {
  Open();
  editor.lstAnim_Click(2);
  editor.lstAnimData_Click(0);
  prompts.ExpectInput("输入新数值", "100", "250");
  EXPECT_TRUE(editor.cmdAnimChange());
  ExpectOnlyChange(built_.layout.animEntries[2].entry, 0, std::bit_cast<std::int32_t>(250.0F));
  ExpectInStepWithTheFile();
}

TEST_F(EditorPages, TheBoxesAreWrittenAsTheyStand) {
  Open();
  editor.lstPage_Click(2);
  std::array<std::string, 13> typed = Document().entries.txtPageOpt;
  typed[7] = "240";
  editor.cmdPagePosChange(typed);
  ExpectOnlyChange(built_.layout.pages[2].entry, 7, std::bit_cast<std::int32_t>(240.0F));
  ExpectInStepWithTheFile();
}

TEST_F(EditorPages, ANewPageIsAddedAndTheFileOpenedAnew) {
  Open();
  EXPECT_TRUE(editor.frmAddPage_cmdOK({.txtLabel = "new", .txtPos = "1", .txtDepth = "1", .cboID = 0}));
  ASSERT_EQ(Document().lstPage.Count(), 5);
  EXPECT_THAT(Document().lstPage.Text(1), ::testing::HasSubstr("new @ 0x"));
  EXPECT_EQ(Document().pageRecs[1].recType, 0x801);
  EXPECT_EQ(Document().pageRecs[1].recSize, 40 + 9 * 4);
  EXPECT_EQ(Document().pageRecs[1].recDepth, 1);
  editor.lstPage_Click(1);
  EXPECT_EQ(Document().lstPageData.Count(), 9);
  ExpectInStepWithTheFile();
}

TEST_F(EditorPages, ARefusedNewPageChangesNothing) {
  Open();
  prompts.ExpectTell("Must enter a depth value!", Icon::Exclamation);
  EXPECT_FALSE(editor.frmAddPage_cmdOK({.txtLabel = "new", .txtPos = "1", .txtDepth = "", .cboID = 0}));
  EXPECT_EQ(OnDisk(), built_.bytes);
}

// Of a kind without words of its own; the label is in the file by then. The dialog closes whatever the answer is.
TEST_F(EditorPages, ANewPageOfAKindWithoutWordsFailsInItsHandler) {
  Open();
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  EXPECT_TRUE(editor.frmAddPage_cmdOK({.txtLabel = "new", .txtPos = "1", .txtDepth = "1", .cboID = 2}));
  EXPECT_EQ(OnDisk().size(), built_.bytes.size() + 4);
  EXPECT_EQ(ReadWholeFile(folder / "f.rco.bak"), built_.bytes);
}

}  // namespace
}  // namespace kelvane
