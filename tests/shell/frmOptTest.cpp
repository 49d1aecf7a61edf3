#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "common/Files.h"
#include "shell/WindowFixture.h"
#include "shell/frmOpt.h"

namespace kelvane::test {
namespace {

class FrmOptTest : public ::testing::Test {
 protected:
  void Open() {
    dialog = std::make_unique<frmOpt>(nullptr, mod, folder / "kelvane-editor.ini");
    dialog->show();
    QTest::qWait(1);
  }
  template <class Control>
  Control* Find(const char* name) {
    return In<Control>(*dialog, name);
  }
  void Click(const char* name) { Find<QAbstractButton>(name)->click(); }
  std::string Written() {
    const Bytes text = ReadWholeFile(folder / "kelvane-editor.ini");
    return {text.begin(), text.end()};
  }

  TempFolder folder;
  Mod mod;
  std::unique_ptr<frmOpt> dialog;
};

TEST_F(FrmOptTest, CaptionsStandAsTold) {
  Open();
  EXPECT_EQ(dialog->windowTitle(), "Kelvane Editor - Options");
  EXPECT_EQ(Find<QLabel>("lblPaletteBMPImprt")->text(), "4bit/8bit BMP格式输入");
  EXPECT_EQ(Find<QLabel>("Label1")->text(), "32bit BMP格式输入");
  const std::pair<const char*, const char*> buttons[] = {
      {"chkFirstAlpha", "把第一颜色改为透明色"},
      {"opt32bitImport(0)", "生成32位GIM图像前先提示我"},
      {"opt32bitImport(1)", "自动选择GIM图像位数"},
      {"opt32bitImport(2)", "总是生成32位GIM图像"},
      {"chkNoCompression", "禁止压缩图像和模型(适用于3.7+ RCO文件)"},
      {"chkNoBak", "禁止创建 .bak 备份文件"},
      {"cmdOK", "OK"},
      {"cmdCancel", "Cancel"},
  };
  for (const auto& [name, caption] : buttons) {
    EXPECT_EQ(Find<QAbstractButton>(name)->text(), caption);
  }
}

TEST_F(FrmOptTest, StartsFromTheSettings) {
  mod.cFirstColTrans = true;
  mod.cNoUpdatBak = true;
  mod.cImpt32bitMode = 2;
  Open();
  EXPECT_TRUE(Find<QCheckBox>("chkFirstAlpha")->isChecked());
  EXPECT_FALSE(Find<QCheckBox>("chkNoCompression")->isChecked());
  EXPECT_TRUE(Find<QCheckBox>("chkNoBak")->isChecked());
  EXPECT_TRUE(Find<QRadioButton>("opt32bitImport(2)")->isChecked());
  EXPECT_FALSE(Find<QRadioButton>("opt32bitImport(0)")->isChecked());
}

TEST_F(FrmOptTest, OkTakesOverAndWritesAlsoWhatHasNoControl) {
  mod.cExpert = true;
  mod.cNoUpdatChk = true;
  Open();
  Click("chkFirstAlpha");
  Click("opt32bitImport(1)");
  Click("chkNoCompression");
  Click("chkNoBak");
  Click("cmdOK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_TRUE(mod.cFirstColTrans);
  EXPECT_EQ(mod.cImpt32bitMode.Int(), 1);
  EXPECT_TRUE(mod.cNoCompression);
  EXPECT_TRUE(mod.cNoUpdatBak);
  EXPECT_EQ(Written(),
            ";For 4/8bit BMP importing...\n"
            "ImptSetFirstColAsTrans = 1\n"
            "\n"
            ";For 32bit BMP importing...\n"
            "; 0 = Always convert to palette\n"
            "; 1 = Auto-decide\n"
            "; 2 = Always use 32 bit GIMs\n"
            "Impt32bitMode = 1\n"
            "\n"
            ";Set to 1 to disable making a .bak file \n"
            "NoUpdatBak = 1\n"
            "\n"
            ";Disable the file update checker (may fix problems on Wine)\n"
            "NoUpdatChk = 1\n"
            "\n"
            ";Disable image/model compression\n"
            "NoCompression = 1\n"
            "\n"
            ";Enter 'expert' mode by default\n"
            "ExpertMode = 1\n"
            "\n");
}

TEST_F(FrmOptTest, CancelTouchesNothing) {
  Open();
  Click("chkFirstAlpha");
  Click("opt32bitImport(2)");
  Click("cmdCancel");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_FALSE(mod.cFirstColTrans);
  EXPECT_EQ(mod.cImpt32bitMode.Int(), 0);
  EXPECT_FALSE(FileExists(folder / "kelvane-editor.ini"));
}

using OptionsButtonTest = WindowFixture;

TEST_F(OptionsButtonTest, OpensTheDialogOverTheForm) {
  Start();
  QTimer::singleShot(50, [this] {
    auto* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->objectName(), "frmOpt");
    EXPECT_EQ(dialog->parentWidget(), &form);
    dialog->findChild<QCheckBox*>("chkNoBak")->click();
    dialog->findChild<QPushButton*>("cmdOK")->click();
  });
  Click("cmdOpt");
  const Bytes text = ReadWholeFile(folder / "program/kelvane-editor.ini");
  EXPECT_NE(std::string(text.begin(), text.end()).find("NoUpdatBak = 1\n"), std::string::npos);
}

}  // namespace
}  // namespace kelvane::test
