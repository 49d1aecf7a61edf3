#include <gmock/gmock.h>

#include "common/Files.h"
#include "editor/EditorFixture.h"
#include "support/Failures.h"
#include "support/RcoBuilder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::RcoBuilder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EditorTexts : public test::EditorFixture {
 protected:
  // Three texts in Japanese, English and French, and a page behind them.
  static RcoBuilder ThreeTexts() {
    RcoBuilder b;
    b.AddImage({.label = "bg", .format = 0, .data = {1, 2, 3, 4}});
    for (const std::uint32_t code : {0x10000U, 0x10001U, 0x10002U}) {
      b.AddLanguage(code);
    }
    b.AddText({.label = "msg_yes", .strings = {u"はい", u"Yes", u"Oui"}});
    b.AddText({.label = "msg_no", .strings = {u"いいえ", u"No", u"Non"}});
    b.AddText({.label = "msg_stop", .strings = {u"中止", u"Stop", u"Arrêter"}});
    b.AddPage({.label = "page", .body = {0x111, 0}});
    return b;
  }

  void Open(const Bytes& content) { editor.OpenRcoFile(folder.Write("f.rco", content)); }
  void Open() { Open(ThreeTexts().Build().bytes); }
  const RcoDocument& Document() { return editor.Document(); }
};

TEST_F(EditorTexts, OpeningListsTheTextsAndLanguagesAndSelectsTheSecondLanguageAndNoText) {
  Open();
  EXPECT_THAT(Document().lstText.Lines(), ElementsAre("msg_yes", "msg_no", "msg_stop"));
  EXPECT_THAT(Document().cboTextLang.Lines(), ElementsAre("日语", "英语", "法语"));
  EXPECT_EQ(Document().cboTextLang.Selected(), 1);
  EXPECT_EQ(Document().lstText.Selected(), -1);
  EXPECT_EQ(Document().text.txt, u"");
  EXPECT_FALSE(Document().text.enabled);
}

TEST_F(EditorTexts, OpeningAgainListsEverythingOnce) {
  Open();
  Open();
  EXPECT_EQ(Document().lstText.Count(), 3);
  EXPECT_EQ(Document().cboTextLang.Count(), 3);
}

TEST_F(EditorTexts, AFailingScanAnsweredYesGoesOnWithThePages) {
  RcoBuilder b;
  b.AddLanguage(0x10001);  // the only one: its record doesn't tell how many texts there are
  b.AddText({.label = "msg_yes", .strings = {u"Yes"}});
  b.AddPage({.label = "page", .body = {0x111, 0}});
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::Yes);
  Open(b.Build().bytes);
  EXPECT_THAT(Document().lstText.Lines(), IsEmpty());
  EXPECT_EQ(Document().lstPage.Count(), 1);
  EXPECT_EQ(editor.State().cCurFile, folder / "f.rco");
}

TEST_F(EditorTexts, MoreThan2730TextsAskAboutAnOverflowAndNoEndsTheOpening) {
  RcoBuilder b;
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  for (int i = 0; i < 2731; ++i) {
    b.AddText({.label = "t", .strings = {u"a", u"b"}});
  }
  b.AddPage({.label = "page", .body = {0x111, 0}});
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::No);
  Open(b.Build().bytes);
  EXPECT_THAT(Document().lstPage.Lines(), IsEmpty());
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(EditorTexts, AFileIsTranslatedTextByText) {
  Open();
  editor.cboTextLang_Click(2);
  editor.lstText_Click(0);
  EXPECT_EQ(Document().text.txt, u"Oui");
  editor.cmdTextChange(u"Si fait,\r\nmonsieur");
  EXPECT_EQ(Document().text.txt, u"Non");
  editor.cmdTextChange(u"Nenni");
  EXPECT_EQ(Document().text.txt, u"Arrêter");
  editor.cmdTextChange(u"");
  EXPECT_EQ(Document().lstText.Selected(), 2);
  EXPECT_TRUE(watch.Running());

  // A second editor finds what was typed, and all else as it was.
  RcoBuilder b;
  b.AddImage({.label = "bg", .format = 0, .data = {1, 2, 3, 4}});
  for (const std::uint32_t code : {0x10000U, 0x10001U, 0x10002U}) {
    b.AddLanguage(code);
  }
  b.AddText({.label = "msg_yes", .strings = {u"はい", u"Yes", u"Si fait,\nmonsieur"}});
  b.AddText({.label = "msg_no", .strings = {u"いいえ", u"No", u"Nenni"}});
  b.AddText({.label = "msg_stop", .strings = {u"中止", u"Stop", u""}});
  b.AddPage({.label = "page", .body = {0x111, 0}});
  b.Options().headerLongs[rco::hdrTextDataLength] = ThreeTexts().Build().layout.textData.length;
  EXPECT_EQ(ReadWholeFile(folder / "f.rco"), b.Build().bytes);
  EXPECT_EQ(ReadWholeFile(folder / "f.rco.bak"), ThreeTexts().Build().bytes);
}

TEST_F(EditorTexts, ResetFetchesTheTextAnew) {
  Open();
  editor.lstText_Click(1);
  const unsigned shown = Document().text.txtRevision;
  editor.cmdTextReset();
  EXPECT_EQ(Document().text.txt, u"No");
  EXPECT_EQ(Document().text.txtRevision, shown + 1);
  EXPECT_EQ(Document().text.selectAllRevision, 1U);
}

TEST_F(EditorTexts, TheSearchSelectsAndRemembersItsPatternAlsoInTheNextFile) {
  constexpr const char* kPrompt = "请输入你想要搜索的文字(只搜索当前选择的语言,允许使用 *?[] 通配符)";
  Open();
  prompts.ExpectInput(kPrompt, "", "ST?P");
  EXPECT_TRUE(editor.cmdTextSearch());
  EXPECT_EQ(Document().lstText.Selected(), 2);
  EXPECT_EQ(Document().text.txt, u"Stop");
  Open();
  prompts.ExpectInput(kPrompt, "st?p", "[");
  EXPECT_EQ(NumberOf([&] { (void)editor.cmdTextSearch(); }), 93);
}

TEST_F(EditorTexts, AddingATextNeedsALoadedFileAndStartsAtTheSelectedText) {
  prompts.ExpectTell("Must have a file loaded to use this feature!", Icon::Exclamation);
  EXPECT_EQ(editor.cmdTextRscAdd(), std::nullopt);
  Open();
  EXPECT_EQ(editor.cmdTextRscAdd(), "");
  editor.lstText_Click(2);
  EXPECT_EQ(editor.cmdTextRscAdd(), "2");
}

TEST_F(EditorTexts, ARefusedTextLeavesTheFileAndTheDialogOpen) {
  Open();
  prompts.ExpectTell("必须输入一个标记", Icon::Exclamation);
  EXPECT_FALSE(editor.frmAddText_cmdOK("", "1"));
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  EXPECT_FALSE(editor.frmAddText_cmdOK("msg_new", "4"));
  EXPECT_EQ(ReadWholeFile(folder / "f.rco"), ThreeTexts().Build().bytes);
  EXPECT_FALSE(FileExists(folder / "f.rco.bak"));
}

TEST_F(EditorTexts, AnAddedTextIsEmptyInEveryLanguageAndTakesWhatIsTypedThen) {
  Open();
  EXPECT_TRUE(editor.frmAddText_cmdOK("msg_new", "1.6"));
  EXPECT_THAT(Document().lstText.Lines(), ElementsAre("msg_yes", "msg_no", "msg_new", "msg_stop"));
  EXPECT_THAT(Document().cboTextLang.Lines(), ElementsAre("日语", "英语", "法语"));
  for (int lang = 0; lang < 3; ++lang) {
    editor.cboTextLang_Click(lang);
    editor.lstText_Click(2);
    EXPECT_EQ(Document().text.txt, u"");
    editor.cmdTextChange(u"New " + std::u16string(1, static_cast<char16_t>(u'0' + lang)));
  }
  EXPECT_EQ(Document().text.txt, u"Arrêter");
  editor.OpenRcoFile(folder / "f.rco");
  const std::vector<std::vector<std::u16string>> expected = {{u"はい", u"いいえ", u"New 0", u"中止"},
                                                             {u"Yes", u"No", u"New 1", u"Stop"},
                                                             {u"Oui", u"Non", u"New 2", u"Arrêter"}};
  for (int lang = 0; lang < 3; ++lang) {
    editor.cboTextLang_Click(lang);
    for (int item = 0; item < 4; ++item) {
      editor.lstText_Click(item);
      EXPECT_EQ(Document().text.txt, expected[static_cast<std::size_t>(lang)][static_cast<std::size_t>(item)]);
    }
  }
}

}  // namespace
}  // namespace kelvane
