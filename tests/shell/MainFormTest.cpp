#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "common/Encoding.h"
#include "common/Files.h"
#include "shell/FormLayout.h"
#include "shell/MainForm.h"
#include "shell/TextBox.h"
#include "shell/WindowFixture.h"

namespace kelvane::test {
namespace {

class MainFormTest : public WindowFixture {
 protected:
  std::filesystem::path WriteSample() {
    RcoBuilder builder;
    builder.AddImage({.label = "img_one", .data = Bytes(8)});
    builder.AddImage({.label = "img_two", .data = Bytes(8)});
    builder.AddLanguage(0x10000);
    builder.AddLanguage(0x10001);
    builder.AddText({.label = "msg_a", .strings = {u"甲", u"alpha"}});
    builder.AddText({.label = "msg_b", .strings = {u"乙", u"beta"}});
    builder.AddPage({.label = "page_main", .body = {0x111, 1.5F}});
    builder.AddAnimation({.label = "anim_in", .body = {7}});
    return folder.Write("sample.rco", builder.Build().bytes);
  }
};

TEST_F(MainFormTest, CaptionsStandAsTold) {
  const std::pair<const char*, const char*> buttons[] = {
      {"cmdOpen", "   打开RCO文件"},
      {"cmdOpt", " 设      置 "},
      {"cmdOther", "   Random Info..."},
      {"cmdUtil", "    Tools..."},
      {"cmdExtract", "提    取"},
      {"cmdReplace", "替    换"},
      {"cmdExtractAll", "提取全部"},
      {"cmdReplaceAll", "替换全部"},
      {"cmdGenRscAdd", "Add..."},
      {"cmdTextRscAdd", "Add..."},
      {"chkRes", "Check1"},
      {"cmdTextChange", "&更 改"},
      {"cmdTextReset", "&重 设"},
      {"cmdTextSearch", "搜索文本"},
      {"cmdTextExport", "   Export List..."},
      {"cmdTextImport", "   Import List..."},
      {"cmdPageChange", "更改数值"},
      {"cmdPagePosChange", "Set"},
      {"cmdAnimChange", "更  改"},
  };
  for (const auto& [name, caption] : buttons) {
    EXPECT_EQ(Find<QAbstractButton>(name)->text(), caption);
  }
  const std::pair<const char*, const char*> labels[] = {
      {"lblPreviewFail", "Invalid Icon"},
      {"lblDim", "尺寸:未知"},
      {"lblGenComprDes", "压缩状况:"},
      {"lblGenOffsetEntryDes", "Entry at:"},
      {"lblGenOffsetDataDes", "Data at:"},
      {"lblTextLangDes", "语    言:"},
      {"lblTextTip", "提示:使用Shift+Enter或者Ctrl+Enter可以换行"},
  };
  for (const auto& [name, caption] : labels) {
    EXPECT_EQ(Find<QLabel>(name)->text(), caption);
  }
  const char* tabs[] = {"常规资源", "文本数据", "页面数据", "动画数据"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(Find<TabHeader>(("picTabSel(" + std::to_string(i) + ")").c_str())->Caption(), tabs[i]);
  }
  EXPECT_EQ(form.objectName(), "frm");
  EXPECT_EQ(form.windowTitle(), "Kelvane Editor MOD(by Orrelin)");
}

TEST_F(MainFormTest, ButtonsWhoseCaptionsBeginWithBlanksHaveIcons) {
  const QList<QPushButton*> buttons = form.findChildren<QPushButton*>();
  for (const QPushButton* button : buttons) {
    EXPECT_EQ(!button->icon().isNull(), button->text().startsWith(' ')) << button->objectName().toStdString();
  }
}

TEST_F(MainFormTest, LoadingSelectsTheFirstTab) {
  Start();
  EXPECT_EQ(form.CurrentTab(), 0);
  EXPECT_TRUE(Find("picTab(0)")->isVisible());
  EXPECT_TRUE(Find("lst")->isVisible());
  for (const char* hidden : {"picTab(1)", "picTab(2)", "picTab(3)", "lstText", "lstPage", "lstAnim"}) {
    EXPECT_FALSE(Find(hidden)->isVisible()) << hidden;
  }
  EXPECT_EQ(Find<TabHeader>("picTabSel(0)")->State(), TabState::Selected);
}

TEST_F(MainFormTest, ClickOnAHeaderShowsItsPage) {
  Start();
  const char* lists[] = {"lst", "lstText", "lstPage", "lstAnim"};
  for (const int tab : {2, 1, 3, 0}) {
    ClickTab(tab);
    EXPECT_EQ(form.CurrentTab(), tab);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(Find(("picTab(" + std::to_string(i) + ")").c_str())->isVisible(), i == tab);
      EXPECT_EQ(Find(lists[i])->isVisible(), i == tab);
      EXPECT_EQ(Find<TabHeader>(("picTabSel(" + std::to_string(i) + ")").c_str())->IsSelected(), i == tab);
    }
  }
}

TEST_F(MainFormTest, ArrowsMoveAlongTheHeadersAndAroundTheirEnds) {
  Start();
  Find("picTabSel(0)")->setFocus();
  Press(Qt::Key_Left);
  EXPECT_EQ(form.CurrentTab(), 3);
  EXPECT_TRUE(Find("picTabSel(3)")->hasFocus());
  Press(Qt::Key_Right);
  EXPECT_EQ(form.CurrentTab(), 0);
  Press(Qt::Key_Down);
  EXPECT_EQ(form.CurrentTab(), 1);
  Find("picTabSel(2)")->setEnabled(false);
  Press(Qt::Key_Right);
  EXPECT_EQ(form.CurrentTab(), 3);
  Press(Qt::Key_Up);
  EXPECT_EQ(form.CurrentTab(), 1);
  Press(Qt::Key_A);
  EXPECT_EQ(form.CurrentTab(), 1);
}

TEST_F(MainFormTest, DefaultButtonFollowsTheTab) {
  Start();
  const char* defaults[] = {nullptr, "cmdTextChange", "cmdPageChange", "cmdAnimChange"};
  for (const int tab : {1, 2, 3, 0}) {
    ClickTab(tab);
    for (const char* name : {"cmdTextChange", "cmdPageChange", "cmdPagePosChange", "cmdAnimChange"}) {
      EXPECT_EQ(Find<QPushButton>(name)->isDefault(), defaults[tab] != nullptr && std::string(name) == defaults[tab])
          << tab << " " << name;
    }
  }
}

TEST_F(MainFormTest, EnterPressesTheDefaultButtonAndEscTheCancelButton) {
  Start();
  auto* change = Find<QPushButton>("cmdTextChange");
  auto* reset = Find<QPushButton>("cmdTextReset");
  change->setEnabled(true);
  reset->setEnabled(true);
  change->disconnect();
  reset->disconnect();
  const QSignalSpy changes(change, &QPushButton::clicked);
  const QSignalSpy resets(reset, &QPushButton::clicked);
  Find("lst")->setFocus();
  Press(Qt::Key_Return);
  Press(Qt::Key_Escape);
  EXPECT_EQ(changes.count() + resets.count(), 0) << "tab 0 has neither";
  ClickTab(1);
  Find("lstText")->setFocus();
  Press(Qt::Key_Return);
  EXPECT_EQ(changes.count(), 1);
  Press(Qt::Key_Escape);
  EXPECT_EQ(resets.count(), 1);
  Find("cboTextLang")->setFocus();
  Press(Qt::Key_Enter);
  EXPECT_EQ(changes.count(), 2);
  auto* txt = Find<TextBox>("txt");
  txt->setEnabled(true);
  txt->setFocus();
  Press(Qt::Key_Return);
  Press(Qt::Key_Escape);
  EXPECT_EQ(changes.count(), 3);
  EXPECT_EQ(resets.count(), 2);
  Press(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(changes.count(), 3);
  change->setEnabled(false);
  Find("lstText")->setFocus();
  Press(Qt::Key_Return);
  EXPECT_EQ(changes.count(), 3) << "a disabled default button takes no Enter";
  ClickTab(2);
  Find("lstPage")->setFocus();
  Press(Qt::Key_Escape);
  EXPECT_EQ(resets.count(), 2) << "the cancel button is that of tab 1 alone";
}

TEST_F(MainFormTest, EnterOnAButtonPressesThatButton) {
  Start();
  ClickTab(1);
  auto* change = Find<QPushButton>("cmdTextChange");
  change->setEnabled(true);
  change->disconnect();
  const QSignalSpy changes(change, &QPushButton::clicked);
  auto* exportList = Find<QPushButton>("cmdTextExport");
  const QSignalSpy exports(exportList, &QPushButton::clicked);
  exportList->setFocus();
  Press(Qt::Key_Return);
  EXPECT_EQ(exports.count(), 1);
  EXPECT_EQ(changes.count(), 0);
}

TEST_F(MainFormTest, FocusOnThePageDataDecidesItsDefaultButton) {
  Start();
  ClickTab(2);
  Find("picPagePos")->setVisible(true);
  auto* list = Find("lstPageData");
  list->setEnabled(true);
  Find<QLineEdit>("txtPageOpt(7)")->setFocus();
  EXPECT_TRUE(Find<QPushButton>("cmdPagePosChange")->isDefault());
  EXPECT_FALSE(Find<QPushButton>("cmdPageChange")->isDefault());
  auto* set = Find<QPushButton>("cmdPagePosChange");
  set->disconnect();
  const QSignalSpy sets(set, &QPushButton::clicked);
  Press(Qt::Key_Return);
  EXPECT_EQ(sets.count(), 1);
  list->setFocus();
  EXPECT_TRUE(Find<QPushButton>("cmdPageChange")->isDefault());
  EXPECT_FALSE(Find<QPushButton>("cmdPagePosChange")->isDefault());
}

TEST_F(MainFormTest, ResizeTo100By100TwipsStaysAt7815By7020) {
  Start();
  form.resize(7, 7);
  EXPECT_EQ(form.size(), QSize(521, 468));
}

TEST_F(MainFormTest, DesktopThatDisregardsTheSmallestSizeCutsTheFormOff) {
  Start();
  form.windowHandle()->resize(100, 90);
  QTest::qWait(1);
  ASSERT_EQ(form.size(), QSize(100, 90));
  EXPECT_EQ(Find("lst")->size(), QSize(339, 359)) << "(7815 - 2730) / 15 by (7020 - 1640) / 15";
  EXPECT_EQ(Find("shpBorder")->size(), QSize(491, 371)) << "(7815 - 450) / 15 by (7020 - 1455) / 15";
}

TEST_F(MainFormTest, SmallestSizeHoldsInNormalStateOnly) {
  Start();
  form.showMaximized();
  EXPECT_EQ(form.minimumSize(), QSize(0, 0));
  form.showNormal();
  EXPECT_EQ(form.minimumSize(), QSize(521, 468));
}

TEST_F(MainFormTest, ResizingPlacesTheControls) {
  Start();
  form.resize(800, 600);  // 12000 by 9000 twips
  QTest::qWait(1);
  EXPECT_EQ(Find("shpBorder")->size(), QSize(770, 503));
  EXPECT_EQ(Find("lblWebsite")->pos(), QPoint(645, 558));
  EXPECT_EQ(Find("picTab(0)")->size(), QSize(754, 479));
  EXPECT_EQ(Find("lst")->size(), QSize(618, 491));
  EXPECT_EQ(Find("lstPageData")->size(), QSize(301, 436));
  EXPECT_EQ(Find("lstPageData")->x(), 451);
  EXPECT_EQ(Find("cmdAnimChange")->pos(), QPoint(459, 448));
}

TEST_F(MainFormTest, NothingIsCutOffAtTheSmallestSize) {
  Start("expert");
  form.resize(521, 468);
  QTest::qWait(1);
  const QList<QWidget*> controls = form.findChildren<QWidget*>();
  for (const QWidget* control : controls) {
    if (control->objectName().isEmpty() || control->objectName().startsWith("qt_") || control->isWindow()) {
      continue;
    }
    EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << control->objectName().toStdString();
  }
  for (const QPushButton* button : form.findChildren<QPushButton*>()) {
    const int text = button->fontMetrics().horizontalAdvance(button->text().remove('&'));
    const int icon = button->icon().isNull() ? 0 : 20;
    EXPECT_LE(text + icon, button->width()) << button->objectName().toStdString();
  }
  for (const QLabel* label : form.findChildren<QLabel*>()) {
    if (!label->wordWrap() && label->isVisibleTo(&form)) {
      EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
          << label->objectName().toStdString();
    }
  }
}

TEST_F(MainFormTest, ExpertModeShowsItsControls) {
  const char* expertControls[] = {"cmdGenRscAdd",      "cmdTextRscAdd",       "cmdOther",        "lblGenOffsetEntryDes",
                                  "lblGenOffsetEntry", "lblGenOffsetDataDes", "lblGenOffsetData"};
  Start();
  for (const char* name : expertControls) {
    EXPECT_TRUE(Find(name)->isHidden()) << name;
  }
  form.Load("  \"Expert\" ");
  for (const char* name : expertControls) {
    EXPECT_FALSE(Find(name)->isHidden()) << name;
  }
}

TEST_F(MainFormTest, SettingsBesideTheProgramAreReadFirst) {
  WriteWholeFile(folder / "program/kelvane-editor.ini", Utf8ToLatin1("ExpertMode = 1\n"));
  Start();
  EXPECT_FALSE(Find("cmdOther")->isHidden());
}

TEST_F(MainFormTest, FileOfTheCommandLineIsShown) {
  Start(WriteSample().string());
  EXPECT_EQ(form.windowTitle(), "Kelvane Editor [sample.rco] (by Orrelin)");
  EXPECT_EQ(Rows("lst"), (QStringList{"[GIM] img_one", "[GIM] img_two"}));
  EXPECT_EQ(Rows("lstText"), (QStringList{"msg_a", "msg_b"}));
  EXPECT_EQ(Rows("lstPage").size(), 1);
  EXPECT_EQ(Rows("lstAnim").size(), 1);
  auto* languages = Find<QComboBox>("cboTextLang");
  EXPECT_EQ(languages->count(), 2);
  EXPECT_EQ(languages->currentText(), "英语");
}

TEST_F(MainFormTest, OpenButtonOpensTheChosenFile) {
  Start();
  prompts.ExpectFileDialog({.path = WriteSample()}, [](const FileDialog& dialog) {
    EXPECT_EQ(dialog.title, "选择一个RCO文件");
    EXPECT_EQ(dialog.filters, (std::vector<FileFilter>{{"RCO文件(*.rco)", "*.rco"}, {"所有文件(*.*)", "*.*"}}));
    EXPECT_TRUE(dialog.open);
  });
  Click("cmdOpen");
  EXPECT_EQ(Rows("lst").size(), 2);
}

TEST_F(MainFormTest, CaptionWithTheToolkitsMarkStandsAsItIs) {
  RcoBuilder builder;
  builder.AddImage({.label = "one", .data = Bytes(8)});
  Start(folder.Write("*].rco", builder.Build().bytes).string());
  EXPECT_EQ(form.windowTitle(), "Kelvane Editor [*][*].rco] (by Orrelin)") << "[*][*] shows as [*]";
}

TEST_F(MainFormTest, ToolsExportAndImportDoNothing) {
  Start(WriteSample().string());
  const QString title = form.windowTitle();
  Click("cmdUtil");
  ClickTab(1);
  Click("cmdTextExport");
  Click("cmdTextImport");
  EXPECT_EQ(form.windowTitle(), title);
  EXPECT_EQ(Rows("lstText").size(), 2);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

}  // namespace
}  // namespace kelvane::test
