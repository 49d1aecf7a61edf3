// The texts' tab, and a whole translation by keys alone.
#include <QComboBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "common/Files.h"
#include "shell/TextTab.h"
#include "shell/WindowFixture.h"

namespace kelvane::test {
namespace {

class TextTabTest : public WindowFixture {
 protected:
  explicit TextTabTest(bool scripted = true) : WindowFixture(scripted) {
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
  void ClickRow(int row) { WindowFixture::ClickRow("lstText", row); }
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

TEST_F(TextTabTest, OnlyLanguageIsChosenBeforeItsTexts) {
  RcoBuilder one;
  one.Options().lastLanguageStatesNext = true;
  one.AddLanguage(0x10001);
  one.AddText({.label = "msg_a", .strings = {u"alpha"}});
  path = folder.Write("one.rco", one.Build().bytes);
  Open();
  auto* languages = Find<QComboBox>("cboTextLang");
  EXPECT_EQ(languages->currentIndex(), -1);
  languages->setFocus();
  Press(Qt::Key_Down);
  EXPECT_EQ(languages->currentText(), "英语");
  ClickRow(0);
  EXPECT_EQ(txt->Text(), u"alpha");
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

// With the dialogs that a user meets, and nothing but keys.
class TranslationTest : public TextTabTest {
 protected:
  TranslationTest() : TextTabTest(false) {}

  void TabTo(const char* control) {
    form.activateWindow();  // as a desktop does when a dialog has closed
    for (int i = 0; i < 60 && !Find(control)->hasFocus(); ++i) {
      PressIn(form, Qt::Key_Tab);
    }
    ASSERT_TRUE(Find(control)->hasFocus()) << control;
  }
  void Type(const QString& text) { TypeIn(form, text); }

  DialogScript dialogs;
};

TEST_F(TranslationTest, WholeTranslationByKeysAlone) {
  Start();
  EXPECT_TRUE(Find("cmdOpen")->hasFocus()) << "it has the focus first";
  dialogs.Expect<QFileDialog>([this](QFileDialog& dialog) {
    TypeIn(dialog, QString::fromStdString(path.string()));
    PressIn(dialog, Qt::Key_Return);
  });
  PressIn(form, Qt::Key_Return);
  EXPECT_EQ(form.windowTitle(), "Kelvane Editor [texts.rco] (by Orrelin)");
  TabTo("picTabSel(0)");
  PressIn(form, Qt::Key_Right);
  EXPECT_EQ(form.CurrentTab(), 1);
  TabTo("lstText");
  PressIn(form, Qt::Key_Down);
  TabTo("txt");
  txt = Find<TextBox>("txt");
  list = Find<ListBox>("lstText");
  // The first text is typed over; the next one comes up selected whole and is typed over at once.
  PressIn(form, Qt::Key_A, Qt::ControlModifier);
  Type("eins");
  PressIn(form, Qt::Key_Return);
  EXPECT_EQ(list->Row(), 1);
  EXPECT_EQ(Find<QLabel>("lblTxtIdx")->text(), "项目 #1");
  Type("zwei");
  PressIn(form, Qt::Key_Return, Qt::ShiftModifier);
  Type("drei");
  PressIn(form, Qt::Key_Return, Qt::ControlModifier);
  PressIn(form, Qt::Key_Enter);
  EXPECT_EQ(list->Row(), 2);
  Type("vier");
  PressIn(form, Qt::Key_Return);
  EXPECT_EQ(list->Row(), 2) << "the last text stays selected";
  // A search leads back to the first; Esc takes back what is typed there.
  dialogs.Expect<QInputDialog>([](QInputDialog& dialog) {
    TypeIn(dialog, "E?NS");
    PressIn(dialog, Qt::Key_Return);
  });
  TabTo("cmdTextSearch");
  PressIn(form, Qt::Key_Return);
  EXPECT_EQ(list->Row(), 0);
  TabTo("txt");
  Type("junk");
  PressIn(form, Qt::Key_Escape);
  EXPECT_EQ(txt->Text(), u"eins");
  EXPECT_EQ(txt->textCursor().selectedText(), "eins");
  EXPECT_EQ(Stored(1, 0), u"eins");
  EXPECT_EQ(Stored(1, 1), u"zwei\r\ndrei\r\n");
  EXPECT_EQ(Stored(1, 2), u"vier");
  EXPECT_EQ(Stored(0, 0), u"甲");
  EXPECT_EQ(Stored(0, 1), u"乙\r\n丙");
  EXPECT_EQ(Stored(0, 2), u"丁");
  EXPECT_EQ(ReadWholeFile(folder / "texts.rco.bak"), builder.Build().bytes) << "as it was at first";
}

}  // namespace
}  // namespace kelvane::test
