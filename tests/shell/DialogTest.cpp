// The dialogs that add something, and those of a word's value, with real keys and clicks.
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>
#include <optional>
#include <utility>
#include <vector>

#include "shell/DialogScript.h"
#include "shell/ListBox.h"
#include "shell/frmAddGen.h"
#include "shell/frmAddPage.h"
#include "shell/frmAddText.h"
#include "shell/frmEditList.h"
#include "shell/frmEditVal.h"
#include "shell/frmOther.h"
#include "support/ScriptedPrompts.h"

namespace kelvane::test {
namespace {

void Show(QDialog& dialog) {
  dialog.show();
  dialog.activateWindow();
  QTest::qWait(1);
}

void Type(QDialog& dialog, const char* box, const QString& text) {
  QTest::keyClicks(In<QLineEdit>(dialog, box), text);
}

void Click(QDialog& dialog, const char* button) {
  QTest::mouseClick(In<QPushButton>(dialog, button), Qt::LeftButton);
}

using Captions = std::vector<std::pair<const char*, const char*>>;

void ExpectCaptions(QDialog& dialog, const char* title, const Captions& labels) {
  EXPECT_EQ(dialog.windowTitle(), title);
  for (const auto& [name, caption] : labels) {
    EXPECT_EQ(In<QLabel>(dialog, name)->text(), caption);
  }
}

const char* const kWarning = "NOTE: This feature isn't exactly \"complete\" so expect bugs!!!";

TEST(FrmAddText, ShowsItsCaptionsAndWhatItStartsWith) {
  frmAddText dialog(nullptr, 120, "7", [](const std::string&, const std::string&) { return true; });
  ExpectCaptions(dialog, "Kelvane Editor - Add Text Resource",
                 {{"lblLabelDes", "&Label Name:"},
                  {"lblPosDes", "&坐    标:"},
                  {"lblPosInfo", "(0 to 120)"},
                  {"lblWarn", kWarning}});
  EXPECT_EQ(In<QLineEdit>(dialog, "txtPos")->text(), "7");
}

TEST(FrmAddText, StaysOpenWithWhatWasTypedUntilOkIsAccepted) {
  std::vector<std::pair<std::string, std::string>> asked;
  frmAddText dialog(nullptr, 120, "", [&asked](const std::string& label, const std::string& position) {
    asked.emplace_back(label, position);
    return asked.size() == 2;
  });
  Show(dialog);
  Type(dialog, "txtLabel", "msg_new");
  Type(dialog, "txtPos", "3");
  Click(dialog, "cmdOK");
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_EQ(In<QLineEdit>(dialog, "txtLabel")->text(), "msg_new");
  Type(dialog, "txtPos", "4");
  QTest::keyClick(In<QLineEdit>(dialog, "txtPos"), Qt::Key_Return);  // OK is the default button
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(asked, (std::vector<std::pair<std::string, std::string>>{{"msg_new", "3"}, {"msg_new", "34"}}));
}

TEST(FrmAddText, CancelAndEscAcceptNothing) {
  int asked = 0;
  const auto accept = [&asked](const std::string&, const std::string&) { return ++asked > 0; };
  frmAddText cancelled(nullptr, 120, "", accept);
  Show(cancelled);
  Click(cancelled, "cmdCancel");
  EXPECT_FALSE(cancelled.isVisible());
  frmAddText escaped(nullptr, 120, "", accept);
  Show(escaped);
  QTest::keyClick(&escaped, Qt::Key_Escape);
  EXPECT_FALSE(escaped.isVisible());
  EXPECT_EQ(asked, 0);
}

TEST(FrmAddText, PositionTakesDigitsColonsStopsAndBackspace) {
  frmAddText dialog(nullptr, 120, "", [](const std::string&, const std::string&) { return true; });
  Show(dialog);
  auto* box = In<QLineEdit>(dialog, "txtPos");
  Type(dialog, "txtPos", "1a2-3 +4e,5:6.7/;x8");
  QKeyEvent chinese(QEvent::KeyPress, 0, Qt::NoModifier, "坐");
  QApplication::sendEvent(box, &chinese);
  Type(dialog, "txtPos", "9");
  EXPECT_EQ(box->text(), "12345:6.789");
  QTest::keyClick(box, Qt::Key_Backspace);
  EXPECT_EQ(box->text(), "12345:6.78");
  QTest::keyClick(box, Qt::Key_Home);
  QTest::keyClick(box, Qt::Key_Delete);
  EXPECT_EQ(box->text(), "2345:6.78");
}

TEST(FrmAddText, PositionIsNotComposed) {
  frmAddText dialog(nullptr, 120, "", [](const std::string&, const std::string&) { return true; });
  EXPECT_FALSE(In<QLineEdit>(dialog, "txtPos")->testAttribute(Qt::WA_InputMethodEnabled));
}

TEST(FrmAddGen, ShowsItsCaptionsAndHandsItsFieldsOver) {
  ScriptedPrompts prompts;
  std::vector<std::string> asked;
  frmAddGen dialog(nullptr, 66, "2", prompts,
                   [&asked](const std::filesystem::path& file, const std::string& position, const std::string& label) {
                     asked = {file.string(), position, label};
                     return true;
                   });
  ExpectCaptions(dialog, "Kelvane Editor - Add General Resource",
                 {{"lblFileDes", "&File:"},
                  {"lblPosDes", "&坐    标:"},
                  {"lblPosInfo", "(0 to 66)"},
                  {"lblLabelDes", "&Label Name:"},
                  {"lblWarn", kWarning}});
  EXPECT_EQ(In<QPushButton>(dialog, "cmdFileBrowse")->text(), "...");
  Show(dialog);
  Type(dialog, "txtFile", "/pictures/old.gim");
  prompts.ExpectFileDialog({.path = "/pictures/new.gim"}, [](const FileDialog& file) {
    EXPECT_EQ(file.title, "");
    EXPECT_TRUE(file.open);
    EXPECT_EQ(file.initialDir, "/pictures/old.gim");
    EXPECT_EQ(file.filters, (std::vector<FileFilter>{{"支持文件(*.bmp;*.mig;*.gim;*.vag;*.omg;*.gmo)",
                                                      "*.bmp;*.mig;*.gim;*.vag;*.omg;*.gmo"}}));
  });
  Click(dialog, "cmdFileBrowse");
  EXPECT_EQ(In<QLineEdit>(dialog, "txtFile")->text(), "/pictures/new.gim");
  prompts.ExpectFileDialog({});
  Click(dialog, "cmdFileBrowse");
  EXPECT_EQ(In<QLineEdit>(dialog, "txtFile")->text(), "/pictures/new.gim") << "cancelled";
  Type(dialog, "txtLabel", "tex_new");
  Click(dialog, "cmdOK");
  EXPECT_EQ(asked, (std::vector<std::string>{"/pictures/new.gim", "2", "tex_new"}));
  EXPECT_FALSE(dialog.isVisible());
}

TEST(FrmAddPage, ShowsItsCaptionsAndKinds) {
  frmAddPage dialog(nullptr, 30, [](const AddPageFields&) { return true; });
  ExpectCaptions(dialog, "Kelvane Editor - Add Page Resource",
                 {{"lblLabelDes", "&Label Name:"},
                  {"lblPosDes", "&坐    标:"},
                  {"lblPosInfo", "(0 to 30)"},
                  {"lblDepthDes", "&Depth:"},
                  {"lblIDDes", "&ID:"},
                  {"lblWarn", kWarning}});
  auto* kinds = In<QComboBox>(dialog, "cboID");
  EXPECT_EQ(kinds->count(), 25);
  EXPECT_EQ(kinds->itemText(0), "0x901 (page)");
  EXPECT_EQ(kinds->itemText(10), "0x90B <non-existant>");
  EXPECT_EQ(kinds->itemText(24), "0x919 (icon)");
}

TEST(FrmAddPage, HandsOverWhatItsControlsHold) {
  std::vector<AddPageFields> asked;
  frmAddPage dialog(nullptr, 30, [&asked](const AddPageFields& fields) {
    asked.push_back(fields);
    return asked.size() == 2;
  });
  Show(dialog);
  Click(dialog, "cmdOK");
  Type(dialog, "txtLabel", "page_new");
  Type(dialog, "txtPos", "5x");
  Type(dialog, "txtDepth", "1x");
  In<QComboBox>(dialog, "cboID")->setCurrentIndex(1);
  Click(dialog, "cmdOK");
  ASSERT_EQ(asked.size(), 2U);
  EXPECT_EQ(asked[0].cboID, -1) << "nothing is selected at first";
  EXPECT_EQ(asked[1].txtLabel, "page_new");
  EXPECT_EQ(asked[1].txtPos, "5");
  EXPECT_EQ(asked[1].txtDepth, "1x") << "the depth isn't filtered";
  EXPECT_EQ(asked[1].cboID, 1);
}

class FrmEditValTest : public ::testing::Test {
 protected:
  FrmEditValTest() {
    Show(dialog);
    box = In<QLineEdit>(dialog, "txt");
    box->setFocus();
  }
  void Press(Qt::Key key) { QTest::keyClick(box, key); }
  // The text, and where its selected character is.
  void ExpectField(const char* text, int at) const {
    EXPECT_EQ(box->text(), text);
    EXPECT_EQ(box->selectionStart(), at);
    EXPECT_EQ(box->selectionLength(), 1);
  }

  frmEditVal dialog{nullptr, "0012ABCD"};
  QLineEdit* box = nullptr;
};

TEST_F(FrmEditValTest, StartsOnTheFirstDigit) {
  EXPECT_EQ(dialog.windowTitle(), "Change Value (hex)");
  ExpectField("0012ABCD", 0);
}

TEST_F(FrmEditValTest, TypingReplacesDigitsAndSmallLettersGrow) {
  QTest::keyClicks(box, "fe");
  ExpectField("FE12ABCD", 2);
  QTest::keyClicks(box, "gz !");
  ExpectField("FE12ABCD", 2);
  QTest::keyClicks(box, "000000");
  ExpectField("FE000000", 7);
  QTest::keyClicks(box, "7");
  ExpectField("FE000007", 7);
  EXPECT_EQ(dialog.Text(), "FE000007");
}

TEST_F(FrmEditValTest, CursorKeysKeepOneCharacterSelected) {
  Press(Qt::Key_Right);
  ExpectField("0012ABCD", 1);
  Press(Qt::Key_Delete);
  ExpectField("0012ABCD", 2);
  Press(Qt::Key_Backspace);
  ExpectField("0012ABCD", 1);
  Press(Qt::Key_Left);
  Press(Qt::Key_Left);
  ExpectField("0012ABCD", 0);
  Press(Qt::Key_End);
  ExpectField("0012ABCD", 7);
  Press(Qt::Key_Right);
  ExpectField("0012ABCD", 7);
  Press(Qt::Key_Up);
  Press(Qt::Key_Down);
  ExpectField("0012ABCD", 7);
  Press(Qt::Key_Home);
  ExpectField("0012ABCD", 0);
}

TEST_F(FrmEditValTest, MouseSelectsOneCharacter) {
  QTest::mouseDClick(box, Qt::LeftButton);
  EXPECT_EQ(box->selectionLength(), 1);
  QTest::mouseClick(box, Qt::LeftButton, {}, {box->width() - 4, box->height() / 2});
  ExpectField("0012ABCD", 7);
}

TEST_F(FrmEditValTest, TextOfAnotherLengthBecomesZeros) {
  box->setText("123");
  EXPECT_EQ(box->text(), "00000000");
  EXPECT_EQ(box->selectionLength(), 1);
}

TEST_F(FrmEditValTest, PasteRunsTheRepair) {
  QGuiApplication::clipboard()->setText("12");
  QTest::keyClick(box, Qt::Key_Insert, Qt::ShiftModifier);
  ExpectField("00000000", 2);
  QGuiApplication::clipboard()->setText("7");
  QTest::keyClick(box, Qt::Key_Home);
  QTest::keyClick(box, Qt::Key_Insert, Qt::ShiftModifier);
  ExpectField("70000000", 1);
  QTest::keyClick(box, Qt::Key_Insert, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "0") << "the selected character is copied";
  box->selectAll();
  box->cut();  // as the context menu does
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "70000000");
  ExpectField("00000000", 0);
  box->paste();
  ExpectField("00000000", 7);
  EXPECT_EQ(dialog.Text(), "00000000") << "15 characters";
}

TEST_F(FrmEditValTest, PasteCutUndoAndSelectAllKeysAreCancelled) {
  QGuiApplication::clipboard()->setText("7");
  for (const QKeySequence::StandardKey key :
       {QKeySequence::Paste, QKeySequence::Cut, QKeySequence::Undo, QKeySequence::SelectAll}) {
    QTest::keySequence(box, QKeySequence(key));
    ExpectField("0012ABCD", 0);
  }
  QTest::keyClick(box, Qt::Key_F, Qt::AltModifier);
  ExpectField("0012ABCD", 0);
}

TEST_F(FrmEditValTest, NothingIsComposed) {
  EXPECT_FALSE(box->testAttribute(Qt::WA_InputMethodEnabled));
  QInputMethodEvent composed;
  composed.setCommitString("坐");
  QApplication::sendEvent(box, &composed);
  EXPECT_EQ(box->text().size(), 8);
}

TEST_F(FrmEditValTest, EveryFocusLeavesOneCharacterSelected) {
  Press(Qt::Key_Right);
  PressIn(dialog, Qt::Key_Tab);
  EXPECT_FALSE(box->hasFocus());
  PressIn(dialog, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(box->hasFocus());
  ExpectField("0012ABCD", 1);
  QTest::keyClick(box, Qt::Key_Right, Qt::ShiftModifier);
  ExpectField("0012ABCD", 2);
  QTest::mousePress(box, Qt::LeftButton, {}, {4, box->height() / 2});
  QTest::mouseMove(box, {box->width() - 4, box->height() / 2});
  EXPECT_EQ(box->selectionLength(), 1) << "dragging selects no more";
  QTest::mouseRelease(box, Qt::LeftButton, {}, {box->width() - 4, box->height() / 2});
  EXPECT_EQ(box->selectionLength(), 1);
}

TEST_F(FrmEditValTest, ColonPasses) {
  QTest::keyClicks(box, ":");
  ExpectField(":012ABCD", 1);
}

TEST_F(FrmEditValTest, EnterIsOkAndEscIsCancel) {
  Press(Qt::Key_Return);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_FALSE(dialog.isVisible());
  Show(dialog);
  Press(Qt::Key_Escape);
  EXPECT_EQ(dialog.result(), QDialog::Rejected);
  EXPECT_FALSE(dialog.isVisible());
}

TEST(FrmEditList, OkAndDoubleClickGiveTheSelectedRow) {
  frmEditList dialog(nullptr, {"a", "b", "c"}, 1);
  EXPECT_EQ(dialog.windowTitle(), "Change Value (list)");
  Show(dialog);
  EXPECT_EQ(dialog.Row(), 1);
  auto* list = In<ListBox>(dialog, "lst");
  QTest::keyClick(list, Qt::Key_Down);
  Click(dialog, "cmdOK");
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(dialog.Row(), 2);
  Show(dialog);
  const QPoint first = list->visualRect(list->model()->index(0, 0)).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, first);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, first);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(dialog.Row(), 0);
}

TEST(FrmEditList, CancelRejectsAndNoSelectionIsRowMinusOne) {
  frmEditList dialog(nullptr, {"a", "b"}, -1);
  Show(dialog);
  EXPECT_EQ(dialog.Row(), -1);
  Click(dialog, "cmdCancel");
  EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST(FrmOther, ShowsFourListsAndDisablesTheTablesThatAreNotThere) {
  RandomInfo info;
  info.lstPage.Add("page_main");
  info.lstPage.Add(" --- BLANK --- ");
  info.lstLabel.Add("msg_ok");
  info.lstNative.Add("native:/fn");
  info.lstPageEnabled = true;
  frmOther dialog(nullptr, info);
  ExpectCaptions(dialog, "Kelvane Editor - Random Info",
                 {{"lblSec1", "Page/Anim Tables (unsorted)"},
                  {"lblPageDes", "\"Page/Dialog\" table"},
                  {"lblAnimDes", "\"Anim\" table"},
                  {"lblSec2", "Text Data"},
                  {"lblLabelDes", "Label Data (all)"},
                  {"lblNativeDes", "\"native:/\" Data"}});
  Show(dialog);
  const auto row = [&](const char* list, int at) {
    return In<ListBox>(dialog, list)->model()->index(at, 0).data().toString();
  };
  EXPECT_EQ(row("lstPage", 0), "page_main");
  EXPECT_EQ(row("lstPage", 1), " --- BLANK --- ");
  EXPECT_EQ(row("lstLabel", 0), "msg_ok");
  EXPECT_EQ(row("lstNative", 0), "native:/fn");
  EXPECT_TRUE(In<ListBox>(dialog, "lstPage")->isEnabled());
  EXPECT_TRUE(In<QLabel>(dialog, "lblPageDes")->isEnabled());
  EXPECT_FALSE(In<ListBox>(dialog, "lstAnim")->isEnabled());
  EXPECT_FALSE(In<QLabel>(dialog, "lblAnimDes")->isEnabled());
  EXPECT_EQ(In<ListBox>(dialog, "lstAnim")->model()->rowCount(), 0);
  Click(dialog, "cmdClose");
  EXPECT_FALSE(dialog.isVisible());
}

}  // namespace
}  // namespace kelvane::test
