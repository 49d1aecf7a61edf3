// Acts on the dialogs that a command opens, while the command waits for them.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <deque>
#include <functional>
#include <gtest/gtest.h>

namespace kelvane::test {

// Does one act after the other, each as soon as a dialog of its type is the one in front. An act that is left over at
// the end fails the test, and so does a dialog that nobody closes for five seconds; it is cancelled then.
class DialogScript {
 public:
  DialogScript() { PollSoon(); }
  DialogScript(const DialogScript&) = delete;
  DialogScript& operator=(const DialogScript&) = delete;
  ~DialogScript() { EXPECT_TRUE(acts_.empty()) << acts_.size() << " dialogs didn't come"; }

  template <class Type>
  void Expect(std::function<void(Type&)> act) {
    acts_.push_back({.matches = [](QWidget* dialog) { return qobject_cast<Type*>(dialog) != nullptr; },
                     .act = [act = std::move(act)](QWidget& dialog) { act(*qobject_cast<Type*>(&dialog)); }});
  }

  // A message box with an OK button, which Enter presses.
  void ExpectMessage(const QString& text, QMessageBox::Icon icon) {
    Expect<QMessageBox>([text, icon](QMessageBox& box) {
      EXPECT_EQ(box.text(), text);
      EXPECT_EQ(box.icon(), icon) << text.toStdString();
      EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
      QTest::keyClick(&box, Qt::Key_Return);
    });
  }

 private:
  struct Act {
    std::function<bool(QWidget*)> matches;
    std::function<void(QWidget&)> act;
  };

  // A timer of its own each time: one that is in its act doesn't tick for the dialogs that the act opens.
  void PollSoon() {
    QTimer::singleShot(5, &guard_, [this] { Poll(); });
  }

  void Poll() {
    PollSoon();
    QWidget* front = QApplication::activeModalWidget();
    if (front == nullptr || front != waiting_) {
      waiting_ = front;
      since_.start();
    }
    if (front == nullptr) {
      return;
    }
    if (!front->isActiveWindow()) {
      front->activateWindow();
      return;  // its first key would go elsewhere
    }
    if (!acts_.empty() && acts_.front().matches(front)) {
      const Act next = acts_.front();
      acts_.pop_front();
      next.act(*front);
      since_.start();
    } else if (since_.elapsed() > 5000) {
      const auto* box = qobject_cast<QMessageBox*>(front);
      ADD_FAILURE() << "nobody closes " << front->metaObject()->className() << " "
                    << (box != nullptr ? box->text() : front->windowTitle()).toStdString();
      since_.start();
      front->close();
    }
  }

  QObject guard_;
  std::deque<Act> acts_;
  QWidget* waiting_ = nullptr;
  QElapsedTimer since_;
};

// A control of a window by its name.
template <class Control>
Control* In(QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(name);
  EXPECT_NE(control, nullptr) << name;
  return control;
}

// A key that the window gets: it goes to what has the focus there, or to the popup that is open.
inline void PressIn(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  QTest::keyClick(window.windowHandle(), key, modifiers);
}
inline void TypeIn(QWidget& window, const QString& text) {
  for (const QChar character : text) {
    QTest::keyClick(window.windowHandle(), character.toLatin1());
  }
}

}  // namespace kelvane::test
