#include <gtest/gtest.h>

#include "common/Bytes.h"
#include "platform/QImageSurface.h"

namespace kelvane {
namespace {

// A 4 by 4 target on a green background.
struct Target {
  QImage image{4, 4, QImage::Format_RGB32};
  QImageSurface surface{image, QColor(0, 200, 0)};

  Target() { surface.Clear(); }
  [[nodiscard]] QRgb At(int x, int y) const { return image.pixel(x, y); }
};

const QRgb kGreen = qRgb(0, 200, 0);

TEST(QImageSurface, ClearingFillsWithTheBackground) {
  QImage image(3, 2, QImage::Format_RGB32);
  image.fill(Qt::red);
  QImageSurface(image, QColor(1, 2, 3)).Clear();
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 3; ++x) {
      EXPECT_EQ(image.pixel(x, y), qRgb(1, 2, 3));
    }
  }
}

TEST(QImageSurface, RowsAreBottomFirst) {
  Target target;
  // Blue below red.
  const Bytes pixels = {255, 0, 0, 255, 0, 0, 255, 255};
  EXPECT_TRUE(target.surface.Blend({pixels, 1, 2}, 1, 0, 1, 2, 255, true));
  EXPECT_EQ(target.At(1, 0), qRgb(255, 0, 0));
  EXPECT_EQ(target.At(1, 1), qRgb(0, 0, 255));
  EXPECT_EQ(target.At(0, 0), kGreen);
  EXPECT_EQ(target.At(1, 2), kGreen);
  EXPECT_EQ(target.At(2, 0), kGreen);
}

TEST(QImageSurface, PremultipliedColoursAreAddedToWhatShowsThrough) {
  Target target;
  // Alpha 0; half of full red: 128 and 127/255 of the background's 200, which is 99.6; opaque white.
  const Bytes pixels = {0, 0, 0, 0, 0, 0, 128, 128, 255, 255, 255, 255};
  EXPECT_TRUE(target.surface.Blend({pixels, 3, 1}, 0, 0, 3, 1, 255, true));
  EXPECT_EQ(target.At(0, 0), kGreen);
  EXPECT_EQ(qRed(target.At(1, 0)), 128);
  EXPECT_NEAR(qGreen(target.At(1, 0)), 100, 1);
  EXPECT_EQ(qBlue(target.At(1, 0)), 0);
  EXPECT_EQ(target.At(2, 0), qRgb(255, 255, 255));
}

TEST(QImageSurface, WithoutPerPixelAlphaEverythingIsOpaque) {
  Target target;
  const Bytes pixels = {9, 8, 7, 0, 6, 5, 4, 77};
  EXPECT_TRUE(target.surface.Blend({pixels, 2, 1}, 0, 0, 2, 1, 255, false));
  EXPECT_EQ(target.At(0, 0), qRgb(7, 8, 9));
  EXPECT_EQ(target.At(1, 0), qRgb(4, 5, 6));
}

TEST(QImageSurface, TheConstantAlphaWeighsEveryPixel) {
  Target target;
  const Bytes pixels = {0, 0, 200, 255};
  EXPECT_TRUE(target.surface.Blend({pixels, 1, 1}, 0, 0, 1, 1, 128, true));
  // 200 x 128 / 255 is 100.4 and 200 x 127 / 255 is 99.6.
  EXPECT_NEAR(qRed(target.At(0, 0)), 100, 1);
  EXPECT_NEAR(qGreen(target.At(0, 0)), 100, 1);
  EXPECT_TRUE(target.surface.Blend({pixels, 1, 1}, 1, 0, 1, 1, 0, true));
  EXPECT_EQ(target.At(1, 0), kGreen);
}

TEST(QImageSurface, TheSourceIsStretchedToTheRectangle) {
  Target target;
  const Bytes pixels = {30, 20, 10, 255};
  EXPECT_TRUE(target.surface.Blend({pixels, 1, 1}, 1, 1, 3, 2, 255, true));
  EXPECT_EQ(target.At(1, 1), qRgb(10, 20, 30));
  EXPECT_EQ(target.At(3, 2), qRgb(10, 20, 30));
  EXPECT_EQ(target.At(0, 1), kGreen);
  EXPECT_EQ(target.At(1, 3), kGreen);
}

TEST(QImageSurface, PartsOutsideTheTargetAreCutOff) {
  Target target;
  const Bytes pixels = {0, 0, 1, 255, 0, 0, 2, 255, 0, 0, 3, 255, 0, 0, 4, 255};
  EXPECT_TRUE(target.surface.Blend({pixels, 2, 2}, -1, 3, 2, 2, 255, true));
  EXPECT_EQ(target.At(0, 3), qRgb(4, 0, 0));
  EXPECT_EQ(target.At(1, 3), kGreen);
}

TEST(QImageSurface, WithoutPixelsOrATargetItIsFalse) {
  Target target;
  EXPECT_FALSE(target.surface.Blend({}, 0, 0, 1, 1, 255, true));
  QImage none;
  const Bytes pixels = {0, 0, 1, 255};
  EXPECT_FALSE(QImageSurface(none, Qt::black).Blend({pixels, 1, 1}, 0, 0, 1, 1, 255, true));
}

}  // namespace
}  // namespace kelvane
