// The sample's own image writers, read back by the toolkit's readers.
#include <QImage>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>

#include "samples/ImageFiles.h"

namespace kelvane::sample {
namespace {

constexpr int kWidth = 21;
constexpr int kHeight = 13;

// Two smooth ramps, and a corner that can't be seen.
Bytes Picture() {
  Bytes rgba;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const bool seen = x > 3 || y > 3;
      rgba.push_back(seen ? static_cast<std::uint8_t>(x * 12) : 0);
      rgba.push_back(seen ? static_cast<std::uint8_t>(y * 19) : 0);
      rgba.push_back(seen ? 0x60 : 0);
      rgba.push_back(seen ? 0xFF : 0);
    }
  }
  return rgba;
}

QImage Read(const Bytes& file, const char* format) {
  QImage image;
  EXPECT_TRUE(image.loadFromData(file.data(), static_cast<int>(file.size()), format));
  EXPECT_EQ(image.width(), kWidth);
  EXPECT_EQ(image.height(), kHeight);
  return image;
}

// Every pixel that can be seen is as it was painted, but for `tolerance` in each channel; with `alpha` the others are
// transparent.
void ExpectPicture(const QImage& image, bool alpha, int tolerance) {
  ASSERT_FALSE(image.isNull());
  const Bytes rgba = Picture();
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const auto at = static_cast<std::size_t>(y * kWidth + x) * 4;
      const QColor colour = image.pixelColor(x, y);
      ASSERT_EQ(colour.alpha(), alpha ? rgba[at + 3] : 255) << x << ' ' << y;
      if (rgba[at + 3] != 0) {
        ASSERT_LE(std::abs(colour.red() - rgba[at]), tolerance) << x << ' ' << y;
        ASSERT_LE(std::abs(colour.green() - rgba[at + 1]), tolerance) << x << ' ' << y;
        ASSERT_LE(std::abs(colour.blue() - rgba[at + 2]), tolerance) << x << ' ' << y;
      }
    }
  }
}

TEST(ImageFiles, PngKeepsColoursAndAlpha) {
  ExpectPicture(Read(PngRgba(Picture(), kWidth, kHeight), "png"), true, 0);
}

TEST(ImageFiles, PngWithAPaletteComesNear) {
  // 21 x 13 pixels less the corner are 258 colours: a few are merged.
  ExpectPicture(Read(PngIndexed(Picture(), kWidth, kHeight), "png"), true, 20);
}

TEST(ImageFiles, GreyPngHoldsTheLightness) {
  const QImage image = Read(PngGrey(Picture(), kWidth, kHeight), "png");
  // (0.299 * 120 + 0.587 * 190 + 0.114 * 96) = 158.4
  EXPECT_EQ(qRed(image.pixel(10, 10)), 158);
  EXPECT_EQ(qBlue(image.pixel(10, 10)), 158);
  EXPECT_EQ(qRed(image.pixel(0, 0)), 0);
}

TEST(ImageFiles, BmpOf24BitsKeepsColours) {
  ExpectPicture(Read(Bmp24(Picture(), kWidth, kHeight), "bmp"), false, 0);
}

TEST(ImageFiles, BmpOf32BitsKeepsColoursAndHoldsAlphaInTheFourthByte) {
  const Bytes bmp = Bmp32(Picture(), kWidth, kHeight);
  ExpectPicture(Read(bmp, "bmp").convertToFormat(QImage::Format_RGB32), false, 0);
  ASSERT_EQ(bmp.size(), 54U + kWidth * kHeight * 4U);
  // The last row is the top one, and its first pixel is in the corner that can't be seen.
  EXPECT_EQ(bmp[54 + (kHeight - 1) * kWidth * 4 + 3], 0);
  EXPECT_EQ(bmp[57], 0xFF);
}

TEST(ImageFiles, BmpOf8BitsComesNear) {
  ExpectPicture(Read(Bmp8(Picture(), kWidth, kHeight), "bmp"), false, 20);
}

TEST(ImageFiles, GifComesNearAndKeepsTheTransparentCorner) {
  ExpectPicture(Read(Gif(Picture(), kWidth, kHeight), "gif"), true, 20);
}

TEST(ImageFiles, JpegComesNear) {
  // The hard edge of the corner is blurred around it: a ramp without one.
  Bytes rgba;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      rgba.insert(rgba.end(), {static_cast<std::uint8_t>(x * 12), static_cast<std::uint8_t>(y * 19), 0x60, 0xFF});
    }
  }
  const QImage image = Read(Jpeg(rgba, kWidth, kHeight), "jpg");
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      ASSERT_LE(std::abs(qRed(image.pixel(x, y)) - x * 12), 10) << x << ' ' << y;
      ASSERT_LE(std::abs(qGreen(image.pixel(x, y)) - y * 19), 10) << x << ' ' << y;
      ASSERT_LE(std::abs(qBlue(image.pixel(x, y)) - 0x60), 10) << x << ' ' << y;
    }
  }
}

TEST(ImageFiles, TiffIsADirectoryAndOneStrip) {
  const Bytes rgba = {1, 2, 3, 255, 4, 5, 6, 255};
  const Bytes expected = {'I',  'I', 42, 0, 8, 0, 0, 0, 9,   0,        // header, 9 fields
                          0x00, 1,   4,  0, 1, 0, 0, 0, 2,   0, 0, 0,  // width
                          0x01, 1,   4,  0, 1, 0, 0, 0, 1,   0, 0, 0,  // height
                          0x02, 1,   3,  0, 3, 0, 0, 0, 122, 0, 0, 0,  // bits, at 122
                          0x03, 1,   3,  0, 1, 0, 0, 0, 1,   0, 0, 0,  // not compressed
                          0x06, 1,   3,  0, 1, 0, 0, 0, 2,   0, 0, 0,  // RGB
                          0x11, 1,   4,  0, 1, 0, 0, 0, 128, 0, 0, 0,  // strip, at 128
                          0x15, 1,   3,  0, 1, 0, 0, 0, 3,   0, 0, 0,  // samples a pixel
                          0x16, 1,   4,  0, 1, 0, 0, 0, 1,   0, 0, 0,  // rows a strip
                          0x17, 1,   4,  0, 1, 0, 0, 0, 6,   0, 0, 0,  // bytes of the strip
                          0,    0,   0,  0, 8, 0, 8, 0, 8,   0, 1, 2, 3, 4, 5, 6};
  EXPECT_EQ(Tiff(rgba, 2, 1), expected);
}

}  // namespace
}  // namespace kelvane::sample
