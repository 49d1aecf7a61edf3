// The image object with the toolkit's readers behind it.
#include <QBuffer>
#include <QImage>
#include <gtest/gtest.h>

#include "imaging/c32bppDIB.h"
#include "platform/QtPictureLoader.h"
#include "support/BmpBuilder.h"
#include "support/GifBuilder.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::TempFolder;

Bytes Written(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, format));
  return {bytes.begin(), bytes.end()};
}

struct Loading : testing::Test {
  TempFolder folder;
  QtPictureLoader pictures;
  c32bppDIB image{&pictures};

  bool Load(const Bytes& file) { return image.LoadPicture_File(folder.Write("file", file), 0, 0); }
};

TEST_F(Loading, WhatThePngParserRefusesStaysRefused) {
  QImage picture(20, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  Bytes png = Written(picture, "PNG");
  EXPECT_TRUE(Load(png));
  EXPECT_EQ(image.ImageType(), ImageKind::Png);
  // Compression method 1; the check sum 0 passes unlooked at.
  png[26] = 1;
  WriteU32(png, 29, 0);
  EXPECT_FALSE(Load(png));
  EXPECT_EQ(image.handle(), nullptr);
}

TEST_F(Loading, JpegAndBitmapsOfFewBitsAreWithoutAlpha) {
  QImage picture(20, 10, QImage::Format_RGB32);
  picture.fill(QColor(90, 90, 90));
  for (const Bytes& file : {Written(picture, "JPEG"), Written(picture, "BMP"),
                            Written(picture.convertToFormat(QImage::Format_Mono), "BMP")}) {
    EXPECT_TRUE(Load(file));
    EXPECT_EQ(image.Width(), 20);
    EXPECT_EQ(image.Height(), 10);
    EXPECT_FALSE(image.Alpha());
    EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithoutAlpha);
    for (std::size_t i = 3; i < image.Pixels().size(); i += 4) {
      ASSERT_EQ(image.Pixels()[i], 0);
    }
  }
}

TEST_F(Loading, AGifThatItsParserRefusesMayStillBeReadAsAnOpaqueImage) {
  // The data ends before the last of two pixels.
  const std::vector<test::GifColour> table = {{10, 11, 12}, {20, 21, 22}, {30, 31, 32}, {40, 41, 42}};
  const test::GifFrame frame{.width = 2, .height = 1, .lzw = test::GifLzwEncode(2, {1})};
  const Bytes file = test::Join({test::GifHeader(2, 1, table), test::GifControl(0), test::GifComment("a longer file"),
                                 test::GifImage(frame), test::GifTrailer()});
  EXPECT_TRUE(Load(file));
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithoutAlpha);
  EXPECT_EQ(image.Width(), 2);
  EXPECT_EQ(Bytes(image.Pixels().begin(), image.Pixels().begin() + 4), (Bytes{22, 21, 20, 0}));
}

TEST_F(Loading, ACutOff32BitBitmapIsRefused) {
  Bytes file = test::BuildBmp({.width = 5, .height = 5, .bits = Bytes(100, 200)});
  EXPECT_TRUE(Load(file));
  file.pop_back();
  EXPECT_FALSE(Load(file));
  EXPECT_EQ(image.handle(), nullptr);
}

}  // namespace
}  // namespace kelvane
