#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "shell/BoxText.h"
#include "shell/TextBox.h"

namespace kelvane {
namespace {

TEST(BoxText, LineBreaksArePairsOfCrAndLf) {
  TextBox box(nullptr);
  box.SetText(u"one\r\ntwo\r\n");
  EXPECT_EQ(box.document()->blockCount(), 3);
  EXPECT_EQ(box.Text(), u"one\r\ntwo\r\n");
}

TEST(BoxText, EveryCodeUnitSurvivesTheTextBox) {
  std::u16string text;
  for (int unit = 1; unit < 0x10000; ++unit) {
    // The carriers stand for what the document would lose; they are noncharacters that no text holds.
    if (unit < 0xFDE0 || unit > 0xFDE4) {
      text.push_back(static_cast<char16_t>(unit));
      text.push_back(u'.');
    }
  }
  TextBox box(nullptr);
  box.SetText(text);
  EXPECT_EQ(box.document()->blockCount(), 1);
  EXPECT_EQ(box.Text(), text);
}

TEST(BoxText, LoneBreaksStayAsTheyAre) {
  const std::u16string text = u"a\rb\nc\n\rd\u2028e\u2029f\u00A0g";
  EXPECT_EQ(FromDocument(ToDocument(text)), text);
}

TEST(BoxText, ShiftEnterAndCtrlEnterBreakTheLine) {
  TextBox box(nullptr);
  box.show();
  QTest::keyClicks(&box, "a");
  QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClicks(&box, "b");
  QTest::keyClick(&box, Qt::Key_Enter, Qt::ControlModifier);
  QTest::keyClicks(&box, "c");
  EXPECT_EQ(box.Text(), u"a\r\nb\r\nc");
}

TEST(BoxText, EnterAndEscBelongToTheForm) {
  struct Parent : QWidget {
    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
    std::vector<int> keys;
  } parent;
  TextBox box(&parent);
  parent.show();
  box.SetText(u"a");
  QTest::keyClick(&box, Qt::Key_Return);
  QTest::keyClick(&box, Qt::Key_Enter);
  QTest::keyClick(&box, Qt::Key_Escape);
  EXPECT_EQ(parent.keys, (std::vector<int>{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}));
  EXPECT_EQ(box.Text(), u"a");
}

}  // namespace
}  // namespace kelvane
