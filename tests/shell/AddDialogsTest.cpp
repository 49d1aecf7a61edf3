// The dialogs that add something, opened, filled, refused with each of their messages, and accepted.
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "shell/QtPrompts.h"
#include "shell/WindowFixture.h"
#include "shell/frmAddGen.h"
#include "shell/frmAddPage.h"
#include "shell/frmAddText.h"
#include "support/GimBuilder.h"

namespace kelvane::test {
namespace {

const QString kNoFile = "Must have a file loaded to use this feature!";
const QString kTooLazy =
    "Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.";
constexpr auto kWarning = QMessageBox::Warning;
constexpr auto kInformation = QMessageBox::Information;

class AddDialogsTest : public DialogFixture {
 protected:
  AddDialogsTest() {
    for (const char* label : {"img_a", "img_b", "img_c"}) {
      builder.AddImage({.label = label, .data = gim});
    }
    builder.AddLanguage(0x10000);
    builder.AddLanguage(0x10001);
    builder.AddText({.label = "msg_a", .strings = {u"甲", u"alpha"}});
    builder.AddText({.label = "msg_b", .strings = {u"乙", u"beta"}});
    builder.AddPage({.label = "page_a",
                     .body = {0x111},
                     .children = {{.label = "plane_a", .entryClass = 2}, {.label = "plane_b", .entryClass = 2}}});
    path = folder.Write("file.rco", builder.Build().bytes);
  }

  // Fills a box with keys, over what it holds.
  static void Fill(QWidget& dialog, const char* box, const std::string& text) {
    auto* field = In<QLineEdit>(dialog, box);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Home);
    QTest::keyClick(field, Qt::Key_End, Qt::ShiftModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, QString::fromStdString(text));
  }
  static void PressOk(QWidget& dialog) { QTest::mouseClick(In<QPushButton>(dialog, "cmdOK"), Qt::LeftButton); }
  // OK is refused with that message, and the dialog stays as it was filled.
  void ExpectRefusal(QWidget& dialog, const QString& message, QMessageBox::Icon icon) {
    QStringList before;
    for (const QLineEdit* box : dialog.findChildren<QLineEdit*>()) {
      before << box->text();
    }
    dialogs.ExpectMessage(message, icon);
    PressOk(dialog);
    EXPECT_TRUE(dialog.isVisible()) << message.toStdString();
    QStringList after;
    for (const QLineEdit* box : dialog.findChildren<QLineEdit*>()) {
      after << box->text();
    }
    EXPECT_EQ(after, before) << message.toStdString();
  }
  // Of a list of three lines neither end is taken, nor what lies beyond.
  void ExpectRefusedEnds(QWidget& dialog) {
    Fill(dialog, "txtPos", "4");
    ExpectRefusal(dialog, "无效坐标", kWarning);
    for (const char* end : {"3", "0"}) {
      Fill(dialog, "txtPos", end);
      ExpectRefusal(dialog, kTooLazy, kInformation);
    }
  }

  const Bytes gim = BuildRgbaGim(1, 1, {Rgba(1, 2, 3)});
  RcoBuilder builder;
  std::filesystem::path path;
};

TEST_F(AddDialogsTest, ResourcesAndTextsNeedAnOpenFile) {
  StartExpert();
  dialogs.ExpectMessage(kNoFile, kWarning);
  Click("cmdGenRscAdd");
  ClickTab(1);
  dialogs.ExpectMessage(kNoFile, kWarning);
  Click("cmdTextRscAdd");
}

TEST_F(AddDialogsTest, ResourceIsRefusedWithEachMessageAndThenAdded) {
  StartExpert(path.string());
  ClickRow("lst", 1);
  const std::string picture = folder.Write("new.png", Bytes(8)).string();
  Bytes deep(60);
  deep[18] = deep[22] = 1;  // 1 x 1
  deep[28] = 24;            // a depth that becomes no GIM
  const std::string broken = folder.Write("deep.bmp", deep).string();
  const std::string good = folder.Write("new.gim", gim).string();
  dialogs.Expect<frmAddGen>([&](frmAddGen& dialog) {
    EXPECT_EQ(dialog.parentWidget(), &form);
    EXPECT_EQ(In<QLineEdit>(dialog, "txtPos")->text(), "1") << "the selected row";
    ExpectRefusal(dialog, "必须输入一个标记", kWarning);
    Fill(dialog, "txtLabel", "img_new");
    ExpectRefusal(dialog, "文件不存在！", kWarning);
    Fill(dialog, "txtFile", picture);
    ExpectRefusedEnds(dialog);
    Fill(dialog, "txtPos", "1");
    ExpectRefusal(dialog, "无效的扩展名", kWarning);
    Fill(dialog, "txtFile", broken);
    ExpectRefusal(dialog, "GIM转换失败", kWarning);
    Fill(dialog, "txtFile", good);
    PressOk(dialog);
    EXPECT_FALSE(dialog.isVisible());
  });
  Click("cmdGenRscAdd");
  EXPECT_EQ(Rows("lst"), (QStringList{"[GIM] img_a", "[GIM] img_new", "[GIM] img_b", "[GIM] img_c"}));
}

TEST_F(AddDialogsTest, ResourceFileIsBrowsedFor) {
  StartExpert(path.string());
  const std::filesystem::path good = folder.Write("new.gim", gim);
  dialogs.Expect<frmAddGen>([&](frmAddGen& dialog) {
    EXPECT_EQ(In<QLineEdit>(dialog, "txtPos")->text(), "") << "no row is selected";
    Fill(dialog, "txtFile", path.string());
    dialogs.Expect<QFileDialog>([&](QFileDialog& browse) {
      EXPECT_EQ(browse.parentWidget(), &dialog);
      EXPECT_EQ(browse.directory().absolutePath().toStdString(), folder.Path().string());
      In<QLineEdit>(browse, "fileNameEdit")->setText("new.gim");
      QTest::keyClick(In<QLineEdit>(browse, "fileNameEdit"), Qt::Key_Return);
    });
    QTest::mouseClick(In<QPushButton>(dialog, "cmdFileBrowse"), Qt::LeftButton);
    EXPECT_EQ(In<QLineEdit>(dialog, "txtFile")->text().toStdString(), good.string());
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Click("cmdGenRscAdd");
  EXPECT_EQ(ReadWholeFile(path), builder.Build().bytes);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"file.rco", "new.gim", "program"})) << "no backup";
}

TEST_F(AddDialogsTest, TextIsRefusedWithEachMessageAndThenAdded) {
  StartExpert(path.string());
  ClickTab(1);
  ClickRow("lstText", 1);
  dialogs.Expect<frmAddText>([&](frmAddText& dialog) {
    EXPECT_EQ(dialog.parentWidget(), &form);
    EXPECT_EQ(In<QLineEdit>(dialog, "txtPos")->text(), "1") << "the selected row";
    ExpectRefusal(dialog, "必须输入一个标记", kWarning);
    Fill(dialog, "txtLabel", "msg_new");
    Fill(dialog, "txtPos", "3");
    ExpectRefusal(dialog, "无效坐标", kWarning);
    Fill(dialog, "txtPos", "2");
    ExpectRefusal(dialog, kTooLazy, kInformation);
    Fill(dialog, "txtPos", "");  // 0
    QTest::keyClick(In<QLineEdit>(dialog, "txtPos"), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  Click("cmdTextRscAdd");
  EXPECT_EQ(Rows("lstText"), (QStringList{"msg_new", "msg_a", "msg_b"}));
}

// No control of the form opens it, so it stands on an editor of its own.
TEST_F(AddDialogsTest, PageIsRefusedWithEachMessageAndThenAdded) {
  QtPrompts own(&form);
  ScriptedWatch watch;
  ScriptedProgress progress;
  Editor editor(folder.Path(), {.prompts = own, .watch = watch, .progress = progress});
  editor.OpenRcoFile(path);
  frmAddPage dialog(&form, editor.Document().lstPage.Count(),
                    [&](const AddPageFields& fields) { return editor.frmAddPage_cmdOK(fields); });
  dialog.show();
  dialog.activateWindow();
  Fill(dialog, "txtPos", "1");
  ExpectRefusal(dialog, "Must enter a depth value!", kWarning);
  Fill(dialog, "txtDepth", "1");
  ExpectRefusedEnds(dialog);
  Fill(dialog, "txtPos", "1");
  Fill(dialog, "txtLabel", "plane_new");
  auto* kinds = In<QComboBox>(dialog, "cboID");
  kinds->setFocus();
  QTest::keyClick(kinds, Qt::Key_Down);
  QTest::keyClick(kinds, Qt::Key_Down);
  EXPECT_EQ(kinds->currentText(), "0x902 (plane)");
  PressOk(dialog);
  EXPECT_FALSE(dialog.isVisible());
  ASSERT_EQ(editor.Document().lstPage.Count(), 4);
  EXPECT_TRUE(editor.Document().lstPage.Text(1).starts_with("   plane_new"));
  EXPECT_EQ(editor.Document().pageRecs[1].recType & 0xFFFF, 0x802);
}

}  // namespace
}  // namespace kelvane::test
