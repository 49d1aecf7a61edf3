// The order of the Tab key, mnemonics, default buttons; and what all dialogs have in common.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "shell/WindowFixture.h"
#include "shell/frmAddGen.h"
#include "shell/frmAddPage.h"
#include "shell/frmAddText.h"
#include "shell/frmEditList.h"
#include "shell/frmEditVal.h"
#include "shell/frmOpt.h"
#include "shell/frmVAGReplace.h"

namespace kelvane::test {
namespace {

class TabOrderTest : public WindowFixture {
 protected:
  TabOrderTest() {
    RcoBuilder builder;
    builder.AddImage({.label = "one", .data = Bytes(8)});
    builder.AddLanguage(0x10000);
    builder.AddLanguage(0x10001);
    builder.AddText({.label = "msg_a", .strings = {u"a", u"b"}});
    builder.AddPage(
        {.label = "plane", .entryClass = 2, .position = {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}}, .body = {1}});
    builder.AddAnimation({.label = "anim", .body = {7}});
    path = folder.Write("one.rco", builder.Build().bytes);
  }

  // Where Tab leads from cmdOpen until it is there again; Shift+Tab must lead the same way back.
  QStringList Order() {
    Find("cmdOpen")->setFocus();
    QStringList order;
    do {
      order << form.focusWidget()->objectName();
      Press(Qt::Key_Tab);
    } while (form.focusWidget() != Find("cmdOpen") && order.size() < 60);
    QStringList back;
    do {
      back.prepend(form.focusWidget()->objectName());
      Press(Qt::Key_Backtab, Qt::ShiftModifier);
    } while (form.focusWidget() != Find("cmdOpen") && back.size() < 60);
    back.prepend(back.takeLast());
    EXPECT_EQ(back, order);
    return order;
  }

  std::filesystem::path path;
};

const QStringList kHeaders = {"picTabSel(0)", "picTabSel(1)", "picTabSel(2)", "picTabSel(3)"};

TEST_F(TabOrderTest, GoesAlongTheButtonsTheHeadersTheListAndItsControls) {
  Start(path.string());
  const char* lists[] = {"lst", "lstText", "lstPage", "lstAnim"};
  const QStringList controls[] = {
      {"chkRes", "cmdExtract", "cmdReplace", "cmdExtractAll", "cmdReplaceAll"},
      {"cboTextLang", "txt", "cmdTextChange", "cmdTextReset", "cmdTextSearch", "cmdTextExport", "cmdTextImport"},
      {"txtPageOpt(0)", "txtPageOpt(1)", "txtPageOpt(2)", "txtPageOpt(3)", "txtPageOpt(4)", "txtPageOpt(5)",
       "txtPageOpt(6)", "txtPageOpt(7)", "txtPageOpt(8)", "txtPageOpt(9)", "txtPageOpt(10)", "txtPageOpt(11)",
       "txtPageOpt(12)", "cmdPagePosChange", "lstPageData", "cmdPageChange"},
      {"lstAnimData", "cmdAnimChange"}};
  for (int tab = 0; tab < 4; ++tab) {
    ClickTab(tab);
    ClickRow(lists[tab], 0);
    EXPECT_EQ(Order(),
              QStringList({"cmdOpen", "cmdOpt", "cmdUtil"}) + kHeaders + QStringList(lists[tab]) + controls[tab])
        << tab;
  }
}

TEST_F(TabOrderTest, ExpertControlsStandInTheirPlaces) {
  StartExpert(path.string());
  const QStringList frame = QStringList({"cmdOpen", "cmdOpt", "cmdUtil", "cmdOther"}) + kHeaders;
  EXPECT_EQ(Order(), frame + QStringList({"lst", "chkRes", "cmdExtract", "cmdReplace", "cmdExtractAll", "cmdReplaceAll",
                                          "cmdGenRscAdd"}));
  ClickTab(1);
  EXPECT_EQ(Order(), frame + QStringList({"lstText", "cboTextLang", "cmdTextSearch", "cmdTextRscAdd", "cmdTextExport",
                                          "cmdTextImport"}))
      << "without a selection";
}

// All dialogs with OK and Cancel.
class AllDialogsTest : public ::testing::Test {
 protected:
  static void Show(QDialog& dialog) {
    dialog.show();
    dialog.activateWindow();
    QTest::qWait(1);
  }

  ScriptedPrompts prompts;
  Mod mod;
  frmAddText text{nullptr, 1, "", [](const std::string&, const std::string&) { return true; }};
  frmAddPage page{nullptr, 1, [](const AddPageFields&) { return true; }};
  frmAddGen gen{nullptr, 1, "", prompts,
                [](const std::filesystem::path&, const std::string&, const std::string&) { return true; }};
  frmVAGReplace vag{nullptr, true, prompts, [](const VagChoice&) { return true; }};
  frmEditVal value{nullptr, "00000000"};
  frmEditList list{nullptr, {"a"}, 0};
  frmOpt options{nullptr, mod, "none.ini"};
};

TEST_F(AllDialogsTest, MnemonicsLeadToTheirControls) {
  using Ways = std::vector<std::pair<Qt::Key, const char*>>;
  const std::pair<QDialog*, Ways> tables[] = {
      {&text, {{Qt::Key_L, "txtLabel"}}},
      {&page, {{Qt::Key_L, "txtLabel"}, {Qt::Key_D, "txtDepth"}, {Qt::Key_I, "cboID"}}},
      {&gen, {{Qt::Key_F, "txtFile"}, {Qt::Key_L, "txtLabel"}}},
      {&vag, {{Qt::Key_L, "txtLFile"}, {Qt::Key_R, "txtRFile"}}}};
  for (const auto& [dialog, ways] : tables) {
    Show(*dialog);
    for (const auto& [key, control] : ways) {
      In<QPushButton>(*dialog, "cmdCancel")->setFocus();
      PressIn(*dialog, key, Qt::AltModifier);
      EXPECT_TRUE(In<QWidget>(*dialog, control)->hasFocus()) << control;
    }
    dialog->hide();
  }
  // The letter before the position is none of a keyboard's, so its label alone tells.
  EXPECT_EQ(In<QLabel>(text, "lblPosDes")->buddy(), In<QLineEdit>(text, "txtPos"));
}

TEST_F(AllDialogsTest, NothingIsCutOff) {
  for (QDialog* dialog : std::initializer_list<QDialog*>{&text, &page, &gen, &vag, &value, &list, &options}) {
    Show(*dialog);
    const QList<QWidget*> controls = dialog->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* control : controls) {
      const std::string name = (dialog->objectName() + "." + control->objectName()).toStdString();
      EXPECT_TRUE(dialog->rect().adjusted(6, 6, -6, -6).contains(control->geometry())) << name;
      EXPECT_GE(control->width(), control->minimumSizeHint().width()) << name;
      EXPECT_GE(control->height(), control->minimumSizeHint().height()) << name;
    }
    dialog->hide();
  }
}

TEST_F(AllDialogsTest, OkIsTheDefaultButtonAndFocusStartsInTheFirstControl) {
  const std::pair<QDialog*, const char*> firsts[] = {{&text, "txtLabel"},        {&page, "txtLabel"}, {&gen, "txtFile"},
                                                     {&vag, "chkStereo"},        {&value, "txt"},     {&list, "lst"},
                                                     {&options, "chkFirstAlpha"}};
  for (const auto& [dialog, first] : firsts) {
    Show(*dialog);
    EXPECT_TRUE(In<QPushButton>(*dialog, "cmdOK")->isDefault()) << dialog->objectName().toStdString();
    EXPECT_EQ(dialog->focusWidget(), In<QWidget>(*dialog, first)) << dialog->objectName().toStdString();
    dialog->hide();
  }
}

}  // namespace
}  // namespace kelvane::test
