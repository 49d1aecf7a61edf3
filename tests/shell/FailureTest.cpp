// What happens to a failure that nobody handles: each in a process of its own, which it ends.
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <gtest/gtest.h>

#include "common/RuntimeFailure.h"
#include "shell/Failure.h"
#include "shell/MainForm.h"
#include "shell/QtPrompts.h"
#include "support/TempFolder.h"

namespace kelvane::test {
namespace {

// Prints the box that shows next to stderr and presses its button.
void ReadAndCloseBox() {
  QTimer::singleShot(50, [] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) {
      std::fputs("no box\n", stderr);
      std::exit(9);
    }
    std::fprintf(stderr, "icon %d text <%s>\n", static_cast<int>(box->icon()), box->text().toUtf8().constData());
    QTest::keyClick(box, Qt::Key_Return);
  });
}

// Runs the application with one event that does `act`, until it ends, and ends the process with its status.
[[noreturn]] void RunToTheEnd(const std::function<void()>& act) {
  ReadAndCloseBox();
  QTimer::singleShot(0, act);
  const int status = QApplication::exec();
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
