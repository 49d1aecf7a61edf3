// The texts' tab: a whole translation by keys alone, and what its buttons ask.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <gtest/gtest.h>

#include "common/Files.h"
#include "shell/TextTab.h"
#include "shell/WindowFixture.h"

namespace kelvane::test {
namespace {

class TextTabTest : public WindowFixture {
 protected:
  TextTabTest() {
    builder.AddLanguage(0x10000);
    builder.AddLanguage(0x10001);
    builder.AddText({.label = "msg_a", .strings = {u"甲", u"alpha"}});
    builder.AddText({.label = "msg_b", .strings = {u"乙\n丙", u"beta\ngamma"}});
    builder.AddText({.label = "msg_c", .strings = {u"丁", u"delta"}});
    path = folder.Write("texts.rco", builder.Build().bytes);
  }

  void Open() {
    Start(path.string());
    ClickTab(1);
    txt = Find<TextBox>("txt");
    list = Find<ListBox>("lstText");
  }
  void ClickRow(int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(row, 0)).center());
  }
  // What the file holds of a language's texts, read by an editor of its own.
  std::u16string Stored(int lang, int item) {
    ScriptedPrompts others;
    ScriptedWatch watch;
    ScriptedProgress progress;
    Editor editor(folder.Path(), {.prompts = others, .watch = watch, .progress = progress});
    editor.OpenRcoFile(path);
    editor.cboTextLang_Click(lang);
    editor.lstText_Click(item);
    return editor.Document().text.txt;
  }

  RcoBuilder builder;
  std::filesystem::path path;
  TextBox* txt = nullptr;
  ListBox* list = nullptr;
};

TEST_F(TextTabTest, NothingIsEnabledWithoutASelection) {
  Open();
  EXPECT_FALSE(txt->isEnabled());
  EXPECT_FALSE(Find("cmdTextChange")->isEnabled());
  EXPECT_FALSE(Find("cmdTextReset")->isEnabled());
  EXPECT_EQ(Find<QLabel>("lblTxtIdx")->text(), "");
}

TEST_F(TextTabTest, SelectingShowsTheTextOfTheSecondLanguageFirst) {
  Open();
  ClickRow(1);
  EXPECT_EQ(txt->Text(), u"beta\r\ngamma");
  EXPECT_EQ(txt->document()->blockCount(), 2);
  EXPECT_EQ(Find<QLabel>("lblTxtIdx")->text(), "项目 #1");
  EXPECT_TRUE(txt->isEnabled());
  EXPECT_TRUE(Find("cmdTextChange")->isEnabled());
  EXPECT_TRUE(Find("cmdTextReset")->isEnabled());
}

TEST_F(TextTabTest, AnotherLanguageShowsItsText) {
  Open();
  ClickRow(0);
  auto* languages = Find<QComboBox>("cboTextLang");
  languages->setFocus();
  Press(Qt::Key_Up);
  EXPECT_EQ(languages->currentText(), "日语");
  EXPECT_EQ(txt->Text(), u"甲");
  EXPECT_EQ(Find<ListBox>("lstText")->Row(), 0);
}

TEST_F(TextTabTest, ChangeStoresTheTextAndTheNextOneIsReadyForTyping) {
  Open();
  ClickRow(0);
  txt->setFocus();
  QTest::keyClick(txt, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(txt, "new text");
  Press(Qt::Key_Return);
  EXPECT_EQ(Stored(1, 0), u"new text");
  EXPECT_EQ(list->Row(), 1);
  EXPECT_EQ(Find<QLabel>("lblTxtIdx")->text(), "项目 #1");
  EXPECT_EQ(txt->Text(), u"beta\r\ngamma");
  EXPECT_TRUE(txt->hasFocus());
  EXPECT_EQ(txt->textCursor().selectedText().size(), 10);
  EXPECT_TRUE(FileExists(folder / "texts.rco.bak"));
}

TEST_F(TextTabTest, ResetFetchesTheTextAgainAndSelectsIt) {
  Open();
  ClickRow(2);
  txt->setFocus();
  QTest::keyClicks(txt, "typed over ");
  Press(Qt::Key_Escape);
  EXPECT_EQ(txt->Text(), u"delta");
  EXPECT_EQ(txt->textCursor().selectedText(), "delta");
  EXPECT_TRUE(txt->hasFocus());
}

TEST_F(TextTabTest, WholeTranslationByKeysAlone) {
  Start();
  // Enter on cmdOpen, which has the focus first.
  EXPECT_TRUE(Find("cmdOpen")->hasFocus());
  prompts.ExpectFileDialog({.path = path});
  Press(Qt::Key_Return);
  // Tab to the headers, one to the right, and on to the list.
  while (!Find("picTabSel(0)")->hasFocus()) {
    Press(Qt::Key_Tab);
  }
  Press(Qt::Key_Right);
  EXPECT_EQ(form.CurrentTab(), 1);
  list = Find<ListBox>("lstText");
  while (!list->hasFocus()) {
    Press(Qt::Key_Tab);
  }
  Press(Qt::Key_Down);
  EXPECT_EQ(list->Row(), 0);
  txt = Find<TextBox>("txt");
  while (!txt->hasFocus()) {
    Press(Qt::Key_Tab);
  }
  // The first text is typed over, the next one comes up selected and is typed over at once.
  QTest::keyClick(txt, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(txt, "eins");
  Press(Qt::Key_Return);
  QTest::keyClicks(txt, "zwei");
  QTest::keyClick(txt, Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClicks(txt, "drei");
  Press(Qt::Key_Enter);
  EXPECT_EQ(list->Row(), 2);
  // A search by its button, then Esc takes back what was typed.
  prompts.ExpectInput("请输入你想要搜索的文字(只搜索当前选择的语言,允许使用 *?[] 通配符)", "", "EINS");
  while (!Find("cmdTextSearch")->hasFocus()) {
    Press(Qt::Key_Tab);
  }
  Press(Qt::Key_Return);
  EXPECT_EQ(list->Row(), 0);
  while (!txt->hasFocus()) {
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
  }
  QTest::keyClicks(txt, "junk");
  Press(Qt::Key_Escape);
  EXPECT_EQ(txt->Text(), u"eins");
  EXPECT_EQ(Stored(1, 0), u"eins");
  EXPECT_EQ(Stored(1, 1), u"zwei\r\ndrei");
  EXPECT_EQ(Stored(1, 2), u"delta");
  EXPECT_EQ(Stored(0, 1), u"乙\r\n丙");
}

TEST_F(TextTabTest, AddTextNeedsAnOpenFile) {
  Start("expert");
  ClickTab(1);
  prompts.ExpectTell("Must have a file loaded to use this feature!", Icon::Exclamation);
  Click("cmdTextRscAdd");
}

TEST_F(TextTabTest, AddTextIsRefusedWithAMessageAndThenAddsTheText) {
  WriteWholeFile(folder / "program/kelvane-editor.ini",
                 Bytes{'E', 'x', 'p', 'e', 'r', 't', 'M', 'o', 'd', 'e', '=', '1'});
  Open();
  ClickRow(1);
  prompts.ExpectTell("必须输入一个标记", Icon::Exclamation);
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  QTimer::singleShot(50, [] {
    auto* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->objectName(), "frmAddText");
    auto* pos = dialog->findChild<QLineEdit*>("txtPos");
    EXPECT_EQ(pos->text(), "1");
    auto* ok = dialog->findChild<QPushButton*>("cmdOK");
    ok->click();
    QTest::keyClicks(dialog->findChild<QLineEdit*>("txtLabel"), "msg_new");
    QTest::keyClicks(pos, "9");
    ok->click();
    EXPECT_TRUE(dialog->isVisible());
    QTest::keyClick(pos, Qt::Key_Backspace);
    ok->click();
    EXPECT_FALSE(dialog->isVisible());
  });
  Click("cmdTextRscAdd");
  EXPECT_EQ(list->model()->rowCount(), 4);
  EXPECT_EQ(list->model()->index(1, 0).data().toString(), "msg_new");
  EXPECT_EQ(list->model()->index(2, 0).data().toString(), "msg_b");
}

}  // namespace
}  // namespace kelvane::test
