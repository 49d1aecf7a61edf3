#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>
#include <vector>

#include "shell/PictureBox.h"
#include "shell/frmPreview.h"

namespace kelvane {
namespace {

using Pixels = std::vector<std::uint8_t>;

PixelView View(const Pixels& pixels, int width, int height) {
  return {.pixels = pixels, .width = width, .height = height};
}

TEST(PictureBox, RowsComeBottomFirstAndBytesBlueFirst) {
  PictureBox box("picPreview", nullptr);
  const Pixels pixels = {1, 2, 3, 255, 4, 5, 6, 255};  // two rows of one pixel
  ASSERT_TRUE(box.Blend(View(pixels, 1, 2), 0, 0, 1, 2, 255, true));
  EXPECT_EQ(box.Picture().size(), QSize(1, 2));
  EXPECT_EQ(box.Picture().pixelColor(0, 0), QColor(6, 5, 4));
  EXPECT_EQ(box.Picture().pixelColor(0, 1), QColor(3, 2, 1));
}

TEST(PictureBox, PremultipliedPixelsLieOverTheBackground) {
  PictureBox box("picPreview", nullptr);
  box.SetBackground(QColor(200, 100, 0));
  const Pixels pixels = {10, 20, 30, 51, 0, 0, 0, 0};  // a fifth opaque; clear
  ASSERT_TRUE(box.Blend(View(pixels, 2, 1), 0, 0, 2, 1, 255, true));
  // 204 / 255 of the background stays: 160, 80, 0.
  EXPECT_EQ(box.Picture().pixelColor(0, 0), QColor(190, 100, 10));
  EXPECT_EQ(box.Picture().pixelColor(1, 0), QColor(200, 100, 0));
}

TEST(PictureBox, WithoutPixelAlphaTheAlphaBytesCountAs255) {
  PictureBox box("picPreview", nullptr);
  const Pixels pixels = {10, 20, 30, 0};
  ASSERT_TRUE(box.Blend(View(pixels, 1, 1), 0, 0, 1, 1, 255, false));
  EXPECT_EQ(box.Picture().pixelColor(0, 0), QColor(30, 20, 10));
}

TEST(PictureBox, ConstantAlphaWeighsEveryPixel) {
  PictureBox box("picPreview", nullptr);
  box.SetBackground(QColor(0, 0, 0));
  const Pixels pixels = {255, 255, 255, 255};
  ASSERT_TRUE(box.Blend(View(pixels, 1, 1), 0, 0, 1, 1, 51, true));
  EXPECT_EQ(box.Picture().pixelColor(0, 0), QColor(51, 51, 51));
}

TEST(PictureBox, ColoursBrighterThanTheirAlphaStopAtWhite) {
  PictureBox box("picPreview", nullptr);
  const Pixels pixels = {255, 255, 255, 0};
  ASSERT_TRUE(box.Blend(View(pixels, 1, 1), 0, 0, 1, 1, 255, true));
  EXPECT_EQ(box.Picture().pixelColor(0, 0), QColor(255, 255, 255));
}

TEST(PictureBox, StretchesToTheRectangle) {
  PictureBox box("picPreview", nullptr);
  const Pixels pixels = {0, 0, 1, 255, 0, 0, 2, 255};
  ASSERT_TRUE(box.Blend(View(pixels, 2, 1), 1, 1, 4, 2, 255, true));
  EXPECT_EQ(box.Picture().size(), QSize(5, 3));
  EXPECT_EQ(box.Picture().pixelColor(0, 1), QColor(255, 255, 255));
  EXPECT_EQ(box.Picture().pixelColor(1, 1).red(), 1);
  EXPECT_EQ(box.Picture().pixelColor(2, 2).red(), 1);
  EXPECT_EQ(box.Picture().pixelColor(3, 1).red(), 2);
  EXPECT_EQ(box.Picture().pixelColor(4, 2).red(), 2);
}

TEST(PictureBox, RefusesWhatCannotBeDrawn) {
  PictureBox box("picPreview", nullptr);
  const Pixels pixels(4, 0);
  EXPECT_FALSE(box.Blend(View(pixels, 2, 1), 0, 0, 2, 1, 255, true));  // fewer bytes than pixels
  EXPECT_FALSE(box.Blend(View(pixels, 0, 0), 0, 0, 1, 1, 255, true));
  EXPECT_FALSE(box.Blend(View(pixels, 1, 1), 0, 0, 0, 1, 255, true));
  EXPECT_TRUE(box.Picture().isNull());
}

TEST(PictureBox, RectanglesOutsideAreCut) {
  PictureBox box("picPreview", nullptr);
  const Pixels pixels = {0, 0, 9, 255};
  EXPECT_TRUE(box.Blend(View(pixels, 1, 1), -1, -1, 3, 3, 255, true));
  EXPECT_EQ(box.Picture().size(), QSize(2, 2));
  EXPECT_TRUE(box.Blend(View(pixels, 1, 1), 100000, 0, 5, 5, 255, true));
  EXPECT_EQ(box.Picture().size(), QSize(2, 2));
  EXPECT_TRUE(box.Blend(View(pixels, 1, 1), 8190, 0, 100, 1, 255, true));
  EXPECT_EQ(box.Picture().width(), PictureBox::kMaxSide);
}

TEST(PictureBox, ClearLeavesTheBackground) {
  PictureBox box("picPreview", nullptr);
  box.resize(8, 8);
  box.SetBackground(QColor(1, 2, 3));
  const Pixels pixels = {0, 0, 9, 255};
  ASSERT_TRUE(box.Blend(View(pixels, 1, 1), 0, 0, 8, 8, 255, true));
  EXPECT_EQ(box.grab().toImage().pixelColor(4, 4), QColor(9, 0, 0));
  box.Clear();
  EXPECT_EQ(box.grab().toImage().pixelColor(4, 4), QColor(1, 2, 3));
}

TEST(PictureBox, OutlineIsAsLargeAsTheImage) {
  PictureBox box("picPreview", nullptr);
  box.resize(20, 20);
  box.SetOutline({10, 6});
  const QColor line = box.palette().color(QPalette::Highlight);
  EXPECT_NE(box.grab().toImage().pixelColor(9, 5), line);
  box.SetOutlineVisible(true);
  const QImage shown = box.grab().toImage();
  EXPECT_EQ(shown.pixelColor(0, 0), line);
  EXPECT_EQ(shown.pixelColor(9, 5), line);
  EXPECT_EQ(shown.pixelColor(5, 3), QColor(Qt::white));
  EXPECT_EQ(shown.pixelColor(10, 6), QColor(Qt::white));
  box.SetOutline({0, 0});
  EXPECT_EQ(box.grab().toImage().pixelColor(0, 0), QColor(Qt::white));
}

TEST(PreviewForm, DrawsOnlyWhileItIsOpen) {
  frmPreview preview(nullptr);
  EXPECT_EQ(preview.windowTitle(), "Preview (Right-click to change BG colour)");
  const Pixels pixels = {0, 0, 9, 255};
  EXPECT_FALSE(preview.IsOpen());
  EXPECT_FALSE(preview.Blend(View(pixels, 1, 1), 0, 0, 1, 1, 255, true));
  preview.Open();
  EXPECT_TRUE(preview.Blend(View(pixels, 1, 1), 0, 0, 1, 1, 255, true));
  preview.close();
  EXPECT_FALSE(preview.IsOpen());
  EXPECT_FALSE(preview.Blend(View(pixels, 1, 1), 0, 0, 1, 1, 255, true));
}

}  // namespace
}  // namespace kelvane
