// What happens to a failure that nobody handles: each in a process of its own, which it ends.
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <gtest/gtest.h>

#include "common/Bytes.h"
#include "common/Files.h"
#include "common/RuntimeFailure.h"
#include "shell/Failure.h"
#include "shell/MainForm.h"
#include "shell/QtPrompts.h"
#include "shell/frmOpt.h"
#include "support/RcoBuilder.h"
#include "support/TempFolder.h"

namespace kelvane::test {
namespace {

// Prints the box that shows next to stderr and presses its button. It comes within five seconds.
void ReadAndCloseBox(int tries = 100) {
  QTimer::singleShot(50, [tries] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr && tries > 0) {
      ReadAndCloseBox(tries - 1);
      return;
    }
    if (box == nullptr) {
      std::fputs("no box\n", stderr);
      std::exit(9);
    }
    std::fprintf(stderr, "icon %d text <%s>\n", static_cast<int>(box->icon()), box->text().toUtf8().constData());
    QTest::keyClick(box, Qt::Key_Return);
  });
}

// Runs the application with one event that does `act`, until it ends, and ends the process with its status.
// `report` may print before that.
[[noreturn]] void RunToTheEnd(
    const std::function<void()>& act, const std::function<void()>& report = [] {}) {
  ReadAndCloseBox();
  QTimer::singleShot(0, act);
  const int status = QApplication::exec();
  report();
  std::exit(status);
}

const char* const kOverflow = "icon 3 text <Run-time error '6':\n\nOverflow>";

TEST(FailureDeathTest, FailureOfASignalsHandlerIsToldAndEndsWithStatusOne) {
  EXPECT_EXIT(RunToTheEnd(Guarded([] { throw RuntimeFailure(FailureCode::Overflow); })), testing::ExitedWithCode(1),
              kOverflow);
}

TEST(FailureDeathTest, FailureOfAnEventsHandlerIsToldAndEndsWithStatusOne) {
  class Failing : public QWidget {
    bool event(QEvent* event) override {
      return event->type() == QEvent::User ? throw RuntimeFailure(FailureCode::Overflow) : QWidget::event(event);
    }
  };
  EXPECT_EXIT(
      {
        Failing widget;
        RunToTheEnd([&] { QCoreApplication::postEvent(&widget, new QEvent(QEvent::User)); });
      },
      testing::ExitedWithCode(1), kOverflow);
}

TEST(FailureDeathTest, ShortageOfMemoryIsFailureSeven) {
  EXPECT_EXIT(RunToTheEnd(Guarded([] { throw std::bad_alloc(); })), testing::ExitedWithCode(1),
              "Run-time error '7':\n\nOut of memory");
}

// A handler around a dialog gets no chance to go on: its own clean-up runs, and nothing else.
TEST(FailureDeathTest, FailureUnderADialogLeavesTheCommandThatWaitsForIt) {
  EXPECT_EXIT(
      {
        QWidget form;
        QtPrompts prompts(&form);
        RunToTheEnd(Guarded([&] {
          struct CleanUp {
            ~CleanUp() { std::fputs("cleaned up\n", stderr); }
          } const cleanUp;
          QTimer::singleShot(10, Guarded([] {
                               ReadAndCloseBox();
                               throw RuntimeFailure(FailureCode::Overflow);
                             }));
          prompts.AskText("question", "");
          std::fputs("went on\n", stderr);
        }));
      },
      testing::ExitedWithCode(1), "Overflow>\ncleaned up\n$");
}

// A page whose words are a text that isn't there, and a pair of another type.
class EntryFailureDeathTest : public ::testing::Test {
 protected:
  EntryFailureDeathTest() {
    RcoBuilder builder;
    builder.AddLanguage(0x10000);
    builder.AddLanguage(0x10001);
    builder.AddText({.label = "msg_a", .strings = {u"a", u"b"}});
    builder.AddPage({.label = "page", .body = {PairOf(0x401, 5), PairOf(0x40C, 0x12)}});
    built = builder.Build();
    path = folder.Write("page.rco", built.bytes);
  }

  // Selects a row of lstPageData and presses its button; then presses OK in the dialog, filled by `fill`.
  void ChangeWord(MainForm& form, int row, const std::function<void(QDialog&)>& fill) {
    form.Load(path.string());
    form.ClickTab(2);
    form.show();
    const auto select = [&](const char* list, int line) {
      auto* box = form.findChild<ListBox*>(list);
      box->setCurrentIndex(box->model()->index(line, 0));
    };
    select("lstPage", 0);
    select("lstPageData", row);
    QTimer::singleShot(50, [&fill] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      fill(*dialog);
      dialog->findChild<QPushButton*>("cmdOK")->click();
    });
    form.findChild<QPushButton*>("cmdPageChange")->click();
  }

  TempFolder folder;
  BuiltRco built;
  std::filesystem::path path;
};

TEST(FailureDeathTest, TextClickBeforeALanguageIsChosenEndsTheProgram) {
  const TempFolder folder;
  RcoBuilder builder;
  builder.Options().lastLanguageStatesNext = true;
  builder.AddLanguage(0x10001);
  builder.AddText({.label = "msg_a", .strings = {u"alpha"}});
  const std::filesystem::path path = folder.Write("one.rco", builder.Build().bytes);
  EXPECT_EXIT(
      {
        MainForm form(folder / "kelvane-editor");
        RunToTheEnd([&] {
          form.Load(path.string());
          auto* texts = form.findChild<ListBox*>("lstText");
          texts->setCurrentIndex(texts->model()->index(0, 0));
        });
      },
      testing::ExitedWithCode(1), "Run-time error '9':\n\nSubscript out of range");
}

TEST_F(EntryFailureDeathTest, OkInTheListWithoutASelectionEndsTheProgram) {
  EXPECT_EXIT(
      {
        MainForm form(folder / "kelvane-editor");
        RunToTheEnd(
            [&] {
              ChangeWord(form, 0, [](QDialog& dialog) {
                std::fprintf(stderr, "row %d\n", dialog.findChild<ListBox*>("lst")->Row());
              });
            },
            [&] { std::fputs(ReadWholeFile(path) == built.bytes ? "untouched" : "changed", stderr); });
      },
      testing::ExitedWithCode(1), "row -1\n.*Run-time error '9':\n\nSubscript out of range>\nuntouched");
}

TEST_F(EntryFailureDeathTest, ValueOfAnotherPairIsWrittenBeforeTheProgramEnds) {
  EXPECT_EXIT(
      {
        MainForm form(folder / "kelvane-editor");
        RunToTheEnd(
            [&] {
              ChangeWord(form, 1, [](QDialog& dialog) { QTest::keyClicks(dialog.findChild<QLineEdit*>("txt"), "AB"); });
            },
            [&] {
              const auto at = built.layout.pages[0].entry + 40 + 3 * 4;
              std::fprintf(stderr, "word %X", static_cast<unsigned>(ReadI32(ReadWholeFile(path), at)));
            });
      },
      testing::ExitedWithCode(1), "Run-time error '5':\n\nInvalid procedure call or argument>\nword AB000012");
}

TEST(FailureDeathTest, SettingsThatCannotBeWrittenEndTheProgram) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "kelvane-editor.ini");
  EXPECT_EXIT(
      {
        Mod mod;
        frmOpt dialog(nullptr, mod, folder / "kelvane-editor.ini");
        RunToTheEnd([&] {
          dialog.show();
          dialog.findChild<QPushButton*>("cmdOK")->click();
        });
      },
      testing::ExitedWithCode(1), "Run-time error '75':\n\nPath/File access error");
}

TEST(FailureDeathTest, SettingsThatCannotBeReadEndTheProgram) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "kelvane-editor.ini");
  EXPECT_EXIT(
      {
        MainForm form(folder / "kelvane-editor");
        RunToTheEnd(Guarded([&] { form.Load(""); }));
      },
      testing::ExitedWithCode(1), "Run-time error '75':\n\nPath/File access error");
}

}  // namespace
}  // namespace kelvane::test
