#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "shell/Icons.h"
#include "shell/TabHeader.h"

namespace kelvane {
namespace {

// Counts its own repaints.
class CountedHeader : public TabHeader {
 public:
  CountedHeader() : TabHeader(IconOfTab(0), "常规资源", nullptr) {
    resize(94, 23);
    show();
    activateWindow();
    QTest::qWait(1);
  }

  [[nodiscard]] int PaintsSince() {
    QTest::qWait(1);
    return std::exchange(paints_, 0);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    ++paints_;
    TabHeader::paintEvent(event);
  }

 private:
  int paints_ = 0;
};

QImage Look(QWidget& widget) {
  return widget.grab().toImage();
}

TEST(TabHeader, PressMovedOffAndReleasedIsPressedThenNormalAndNoClick) {
  CountedHeader header;
  const QSignalSpy clicks(&header, &TabHeader::Clicked);
  QTest::mousePress(&header, Qt::LeftButton, {}, {20, 10});
  EXPECT_EQ(header.State(), TabState::Pressed);
  QTest::mouseMove(&header, {300, 200});
  EXPECT_EQ(header.State(), TabState::Normal);
  QTest::mouseRelease(&header, Qt::LeftButton, {}, {300, 200});
  EXPECT_EQ(header.State(), TabState::Normal);
  EXPECT_EQ(clicks.count(), 0);
}

TEST(TabHeader, HoverLastsUntilTheMouseLeaves) {
  CountedHeader header;
  QTest::mouseMove(&header, {20, 10});
  EXPECT_EQ(header.State(), TabState::Hover);
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&header, &leave);
  EXPECT_EQ(header.State(), TabState::Normal);
}

TEST(TabHeader, RightButtonPressesButDoesNotClick) {
  CountedHeader header;
  const QSignalSpy clicks(&header, &TabHeader::Clicked);
  QTest::mousePress(&header, Qt::RightButton, {}, {20, 10});
  EXPECT_EQ(header.State(), TabState::Pressed);
  QTest::mouseRelease(&header, Qt::RightButton, {}, {20, 10});
  EXPECT_EQ(header.State(), TabState::Normal);
  EXPECT_EQ(clicks.count(), 0);
}

TEST(TabHeader, MiddleButtonAndSecondPressOfTheRightOneLeaveTheState) {
  CountedHeader header;
  const QSignalSpy clicks(&header, &TabHeader::Clicked);
  QTest::mousePress(&header, Qt::MiddleButton, {}, {20, 10});
  EXPECT_EQ(header.State(), TabState::Normal);
  QTest::mouseMove(&header, {21, 10});
  QTest::mouseRelease(&header, Qt::MiddleButton, {}, {21, 10});
  EXPECT_EQ(header.State(), TabState::Hover);
  const QPointF at(21, 10);
  QMouseEvent second(QEvent::MouseButtonDblClick, at, header.mapToGlobal(at), Qt::RightButton, Qt::RightButton, {});
  QApplication::sendEvent(&header, &second);
  EXPECT_EQ(header.State(), TabState::Hover);
  QMouseEvent left(QEvent::MouseButtonDblClick, at, header.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
  QApplication::sendEvent(&header, &left);
  EXPECT_EQ(header.State(), TabState::Pressed);
  EXPECT_EQ(clicks.count(), 0);
}

TEST(TabHeader, KeyboardFocusShows) {
  CountedHeader header;
  header.clearFocus();
  const QImage without = header.grab().toImage();
  header.setAttribute(Qt::WA_KeyboardFocusChange);  // as the Tab key makes it
  header.setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(header.hasFocus());
  EXPECT_NE(header.grab().toImage(), without);
  header.clearFocus();
  EXPECT_EQ(header.grab().toImage(), without);
}

TEST(TabHeader, MouseOnTheSelectedHeaderRepaintsNothing) {
  CountedHeader header;
  header.SetSelected(true);
  EXPECT_GE(header.PaintsSince(), 1);
  EXPECT_EQ(header.State(), TabState::Selected);
  header.clearFocus();
  EXPECT_EQ(header.PaintsSince(), 0);
  QTest::mouseClick(&header, Qt::LeftButton, {}, {20, 10});
  EXPECT_TRUE(header.hasFocus());
  QTest::mouseMove(&header, {22, 11});
  EXPECT_EQ(header.PaintsSince(), 0);
}

TEST(TabHeader, AnotherTabSelectedMakesItNormal) {
  CountedHeader header;
  header.SetSelected(true);
  EXPECT_GE(header.PaintsSince(), 1);
  header.SetSelected(false);
  EXPECT_EQ(header.State(), TabState::Normal);
  EXPECT_EQ(header.PaintsSince(), 1);
}

TEST(TabHeader, StatesLookApart) {
  CountedHeader header;
  const QImage normal = Look(header);
  QTest::mouseMove(&header, {20, 10});
  const QImage hover = Look(header);
  QTest::mousePress(&header, Qt::LeftButton, {}, {20, 10});
  const QImage pressed = Look(header);
  QTest::mouseRelease(&header, Qt::LeftButton, {}, {20, 10});
  header.SetSelected(true);
  const QImage selected = Look(header);
  const QImage looks[] = {normal, hover, pressed, selected};
  for (int i = 0; i < 4; ++i) {
    for (int j = i + 1; j < 4; ++j) {
      EXPECT_NE(looks[i], looks[j]) << i << " " << j;
    }
  }
}

TEST(TabHeader, SelectedIsJoinedToItsPage) {
  CountedHeader header;
  const QRgb page = header.palette().color(QPalette::Window).rgb();
  const QRgb line = header.palette().color(QPalette::Mid).rgb();
  EXPECT_EQ(Look(header).pixel(50, 22), line);
  header.SetSelected(true);
  EXPECT_EQ(Look(header).pixel(50, 22), page);
}

TEST(TabHeader, DisabledIconIsAGreyCopy) {
  QImage image(3, 1, QImage::Format_ARGB32);
  image.setPixel(0, 0, qRgba(200, 0, 0, 255));
  image.setPixel(1, 0, qRgba(0, 200, 0, 255));
  image.setPixel(2, 0, qRgba(0, 0, 200, 128));
  const QImage grey = GreyCopy(image);
  // 0.11 of red, 0.59 of green, 0.33 of blue.
  EXPECT_EQ(grey.pixel(0, 0), qRgba(22, 22, 22, 255));
  EXPECT_EQ(grey.pixel(1, 0), qRgba(118, 118, 118, 255));
  EXPECT_EQ(grey.pixel(2, 0), qRgba(66, 66, 66, 128));

  const QImage icon = IconOfTab(0).pixmap(QSize(16, 16), 1.0, QIcon::Disabled).toImage();
  const QRgb hill = icon.pixel(7, 10);
  EXPECT_EQ(qRed(hill), qGreen(hill));
  EXPECT_EQ(qGreen(hill), qBlue(hill));
}

TEST(TabHeader, IconsAreDrawnAtTheScreensScale) {
  const QPixmap doubled = IconOfTab(0).pixmap(QSize(16, 16), 2.0);
  EXPECT_EQ(doubled.size(), QSize(32, 32));
  // A line one unit wide covers two pixels, crisp.
  EXPECT_EQ(doubled.toImage().pixel(2, 10), doubled.toImage().pixel(3, 10));
}

}  // namespace
}  // namespace kelvane
