// Message boxes, file dialogs and the input box, as a user meets them.
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QTest>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

#include "common/Bytes.h"
#include "common/Files.h"
#include "shell/DialogScript.h"
#include "shell/QtPrompts.h"
#include "shell/frmEditList.h"
#include "support/TempFolder.h"

namespace kelvane::test {
namespace {

class QtPromptsTest : public ::testing::Test {
 protected:
  template <class Dialog>
  void InDialog(std::function<void(Dialog&)> act) {
    dialogs.Expect<Dialog>(std::move(act));
  }

  QWidget form;
  QtPrompts prompts{&form};
  DialogScript dialogs;
  TempFolder folder;
};

TEST_F(QtPromptsTest, MessageShowsTextIconAndButton) {
  InDialog<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.text(), "GIM <b>转换失败</b>");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
    QTest::keyClick(&box, Qt::Key_Return);
  });
  EXPECT_EQ(prompts.ShowMessage({.text = "GIM <b>转换失败</b>", .icon = Icon::Critical}), Answer::Ok);
}

TEST_F(QtPromptsTest, EachIconHasItsBox) {
  const std::pair<Icon, QMessageBox::Icon> icons[] = {{Icon::Exclamation, QMessageBox::Warning},
                                                      {Icon::Critical, QMessageBox::Critical},
                                                      {Icon::Information, QMessageBox::Information},
                                                      {Icon::Question, QMessageBox::Question}};
  for (const auto& [icon, expected] : icons) {
    InDialog<QMessageBox>([expected = expected](QMessageBox& box) {
      EXPECT_EQ(box.icon(), expected);
      EXPECT_EQ(box.iconPixmap().size(), QSize(32, 32));
      box.accept();
    });
    prompts.ShowMessage({.text = "text", .icon = icon});
  }
}

TEST_F(QtPromptsTest, MessageIconsLookApartAndAreDrawnAtTheScreensScale) {
  std::vector<QImage> seen;
  for (const auto icon : {QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxWarning, QStyle::SP_MessageBoxCritical,
                          QStyle::SP_MessageBoxQuestion}) {
    const QImage doubled = QApplication::style()->standardIcon(icon).pixmap(QSize(32, 32), 2.0).toImage();
    EXPECT_EQ(doubled.size(), QSize(64, 64));
    EXPECT_EQ(qAlpha(doubled.pixel(0, 0)), 0) << "the corner is free";
    EXPECT_EQ(qAlpha(doubled.pixel(32, 40)), 255);
    EXPECT_EQ(std::count(seen.begin(), seen.end(), doubled), 0);
    seen.push_back(doubled);
  }
}

TEST_F(QtPromptsTest, EnterPressesTheDefaultButton) {
  for (const Answer answer : {Answer::Yes, Answer::No}) {
    InDialog<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
      QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(prompts.ShowMessage(
                  {.text = "继续", .icon = Icon::Critical, .buttons = Buttons::YesNo, .defaultAnswer = answer}),
              answer);
  }
}

TEST_F(QtPromptsTest, EscIsNo) {
  InDialog<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(prompts.ShowMessage(
                {.text = "继续", .icon = Icon::Question, .buttons = Buttons::YesNo, .defaultAnswer = Answer::Yes}),
            Answer::No);
}

QLineEdit* NameField(QFileDialog& dialog) {
  return dialog.findChild<QLineEdit*>("fileNameEdit");
}

void AcceptName(QFileDialog& dialog, const QString& name) {
  NameField(dialog)->setText(name);
  QTest::keyClick(NameField(dialog), Qt::Key_Return);
}

TEST_F(QtPromptsTest, OpenDialogGivesTheChosenFile) {
  const auto path = folder.Write("a.rco", Bytes(4));
  InDialog<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "选择一个RCO文件");
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder.Path().string());
    const auto* filters = dialog.findChild<QComboBox*>("fileTypeCombo");
    ASSERT_NE(filters, nullptr);
    EXPECT_EQ(filters->itemText(0), "RCO文件(*.rco)");
    EXPECT_EQ(filters->itemText(1), "所有文件(*.*)");
    EXPECT_EQ(filters->currentIndex(), 0);
    AcceptName(dialog, "a.rco");
  });
  const FileChoice choice = prompts.ShowFileDialog({.title = "选择一个RCO文件",
                                                    .filters = {{"RCO文件(*.rco)", "*.rco"}, {"所有文件(*.*)", "*.*"}},
                                                    .initialDir = folder.Path()});
  EXPECT_EQ(choice.path, path);
}

TEST_F(QtPromptsTest, OpenDialogRefusesAFileThatIsNotThere) {
  InDialog<QFileDialog>([&](QFileDialog& dialog) {
    InDialog<QMessageBox>([](QMessageBox& box) { box.accept(); });
    AcceptName(dialog, "missing.rco");
    EXPECT_TRUE(dialog.isVisible());
    dialog.reject();
  });
  EXPECT_TRUE(prompts.ShowFileDialog({.title = "t", .filters = {}, .initialDir = folder.Path()}).path.empty());
}

TEST_F(QtPromptsTest, CancelledDialogsGiveNothing) {
  InDialog<QFileDialog>([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  const FileChoice choice = prompts.ShowFileDialog({.title = "t", .filters = {{"a", "*.a"}}, .open = false});
  EXPECT_TRUE(choice.path.empty());
  EXPECT_EQ(choice.filterNumber, 0);
  InDialog<QFileDialog>([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_TRUE(prompts.BrowseForFolder("选择输出目录").empty());
}

const FileDialog kSave = {.title = "选择ICO保存位置",
                          .filters = {{"Bitmap (force 32bit) Images (*.bmp)", "*.bmp"},
                                      {"Bitmap (no colour conversion) Files (*.bmp)", "*.bmp"},
                                      {"DAT文件(*.dat)", "*.dat"}},
                          .open = false,
                          .defaultExt = "bmp"};

TEST_F(QtPromptsTest, SaveDialogTellsTheFilterCountedFromOne) {
  FileDialog save = kSave;
  save.initialDir = folder.Path();
  for (int number = 1; number <= 3; ++number) {
    InDialog<QFileDialog>([&](QFileDialog& dialog) {
      EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
      auto* filters = dialog.findChild<QComboBox*>("fileTypeCombo");
      filters->setCurrentIndex(number - 1);
      emit filters->activated(number - 1);
      AcceptName(dialog, "out.x");
    });
    const FileChoice choice = prompts.ShowFileDialog(save);
    EXPECT_EQ(choice.path, folder / "out.x");
    EXPECT_EQ(choice.filterNumber, number);
  }
}

TEST_F(QtPromptsTest, SaveDialogAddsTheDefaultExtension) {
  FileDialog save = kSave;
  save.initialDir = folder.Path();
  InDialog<QFileDialog>([](QFileDialog& dialog) { AcceptName(dialog, "out"); });
  EXPECT_EQ(prompts.ShowFileDialog(save).path, folder / "out.bmp");
}

TEST_F(QtPromptsTest, ChosenPathLosesItsBlanksButNoOtherSpace) {
  FileDialog save = kSave;
  save.initialDir = folder.Path();
  for (const auto& [typed, taken] : {std::pair{"out.b  ", "out.b"}, {"out.b\u3000", "out.b\u3000"}}) {
    InDialog<QFileDialog>([typed = typed](QFileDialog& dialog) { AcceptName(dialog, typed); });
    EXPECT_EQ(prompts.ShowFileDialog(save).path, folder / taken);
  }
}

TEST_F(QtPromptsTest, SaveDialogAsksBeforeItOverwrites) {
  folder.Write("there.bmp", Bytes(4));
  FileDialog save = kSave;
  save.initialDir = folder.Path();
  InDialog<QFileDialog>([this](QFileDialog& dialog) {
    InDialog<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
    AcceptName(dialog, "there.bmp");
    EXPECT_TRUE(dialog.isVisible());
    dialog.reject();
  });
  EXPECT_TRUE(prompts.ShowFileDialog(save).path.empty());
}

TEST_F(QtPromptsTest, EmptyInitialFolderIsTheCurrentOne) {
  InDialog<QFileDialog>([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().absolutePath(), QDir::currentPath());
    dialog.reject();
  });
  prompts.ShowFileDialog({.title = "t", .filters = {{"a", "*.a"}}});
}

TEST_F(QtPromptsTest, InitialFileStartsInItsFolder) {
  InDialog<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder.Path().string());
    EXPECT_TRUE(NameField(dialog)->text().isEmpty());
    dialog.reject();
  });
  prompts.ShowFileDialog({.title = "t", .filters = {{"a", "*.a"}}, .initialDir = folder.Write("x.rco", Bytes(1))});
}

TEST_F(QtPromptsTest, PathOf255CharactersCountsAsCancelled) {
  const std::size_t room = 254 - folder.Path().string().size() - 1;
  const std::string longest(std::min<std::size_t>(room, 120), 'n');
  std::filesystem::path deep = folder.Path();
  while (deep.string().size() + 1 + longest.size() < 254) {
    deep /= std::string(std::min<std::size_t>(60, 254 - deep.string().size() - 1 - longest.size() - 1), 'd');
    if (deep.string().ends_with('/')) {
      break;
    }
  }
  std::filesystem::create_directories(deep);
  const std::string fits(254 - deep.string().size() - 1, 'n');
  FileDialog save = kSave;
  save.defaultExt.clear();
  save.initialDir = deep;
  InDialog<QFileDialog>([&](QFileDialog& dialog) { AcceptName(dialog, QString::fromStdString(fits)); });
  EXPECT_EQ(prompts.ShowFileDialog(save).path, deep / fits);
  InDialog<QFileDialog>([&](QFileDialog& dialog) { AcceptName(dialog, QString::fromStdString(fits + "n")); });
  const FileChoice choice = prompts.ShowFileDialog(save);
  EXPECT_TRUE(choice.path.empty());
  EXPECT_EQ(choice.filterNumber, 0);
}

TEST_F(QtPromptsTest, FolderDialogGivesAFolder) {
  std::filesystem::create_directory(folder / "out");
  InDialog<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "选择输出目录");
    EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
    AcceptName(dialog, QString::fromStdString((folder / "out").string()));
  });
  EXPECT_EQ(prompts.BrowseForFolder("选择输出目录"), folder / "out");
}

TEST_F(QtPromptsTest, FolderOf260CharactersCountsAsCancelled) {
  const std::filesystem::path parent = folder / std::string(100, 'd');
  for (const std::size_t length : {259U, 260U}) {
    const auto deep = parent / std::string(length - parent.string().size() - 1, 'e');
    std::filesystem::create_directories(deep);
    InDialog<QFileDialog>([&](QFileDialog& dialog) { AcceptName(dialog, QString::fromStdString(deep.string())); });
    EXPECT_EQ(prompts.BrowseForFolder("选择输出目录"), length == 259 ? deep : std::filesystem::path());
  }
}

TEST_F(QtPromptsTest, InputBoxStartsWithItsDefaultAndGivesWhatIsTyped) {
  InDialog<QInputDialog>([](QInputDialog& dialog) {
    EXPECT_EQ(dialog.labelText(), "输入新数值");
    EXPECT_EQ(dialog.textValue(), "1.5");
    auto* field = dialog.findChild<QLineEdit*>();
    QTest::keyClicks(field, "2.5");  // the default is selected, so that typing replaces it
    QTest::keyClick(field, Qt::Key_Return);
  });
  EXPECT_EQ(prompts.AskText("输入新数值", "1.5"), "2.5");
}

TEST_F(QtPromptsTest, CancelledInputBoxIsEmpty) {
  InDialog<QInputDialog>([](QInputDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(prompts.AskText("输入新数值", "1.5"), "");
}

}  // namespace
}  // namespace kelvane::test
