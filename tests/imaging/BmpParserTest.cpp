#include <gtest/gtest.h>

#include "imaging/Fakes.h"
#include "imaging/cBMPparser.h"
#include "support/BmpBuilder.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::BuildBmp;
using test::FakePicture;
using test::FakePictures;
using test::PixelsOf;

bool Load(c32bppDIB& image, const Bytes& file) {
  return cBMPparser().LoadStream(file, image, 0, static_cast<std::int32_t>(file.size()));
}

// Pixels as one row, with what the classification says of them.
AlphaChannel Classify(Bytes& pixels, bool bPreMultiply = true) {
  return cBMPparser::ClassifyAlphaChannel(pixels, static_cast<std::int32_t>(pixels.size() / 4), 1, bPreMultiply);
}

constexpr AlphaChannel kNoAlpha = {.hasAlpha = false, .imageKind = ImageKind::BitmapWithoutAlpha};
constexpr AlphaChannel kPremultiplied = {.hasAlpha = true, .imageKind = ImageKind::PremultipliedBitmap};
constexpr AlphaChannel kNotPremultiplied = {.hasAlpha = true, .imageKind = ImageKind::BitmapWithAlpha};

TEST(ClassifyAlphaChannel, TheStatesFollowTheTable) {
  const struct {
    const char* what;
    Bytes pixels;
    AlphaChannel channel;
  } rows[] = {
      {"undecided, alpha 0, no colour", {0, 0, 0, 0, 0, 0, 0, 255}, kPremultiplied},
      {"undecided, alpha 0, blue", {1, 0, 0, 0, 0, 0, 0, 255}, kNotPremultiplied},
      {"undecided, alpha 0, green", {0, 1, 0, 0, 0, 0, 0, 255}, kNotPremultiplied},
      {"undecided, alpha 0, red", {0, 0, 1, 0, 0, 0, 0, 255}, kNotPremultiplied},
      {"undecided, alpha 255", {255, 255, 255, 255}, kPremultiplied},
      {"undecided, alpha 254, colours up to it", {254, 254, 254, 254}, kPremultiplied},
      {"undecided, alpha 254, blue above", {255, 0, 0, 254}, kNotPremultiplied},
      {"undecided, alpha 1, green above", {0, 2, 0, 1}, kNotPremultiplied},
      {"undecided, alpha 1, red above", {0, 0, 2, 1}, kNotPremultiplied},
      {"not premultiplied, alpha 0 only", {1, 0, 0, 0, 0, 0, 0, 0}, kNoAlpha},
      {"not premultiplied, alpha 255", {1, 0, 0, 0, 9, 9, 9, 255}, kNotPremultiplied},
      {"not premultiplied, alpha 1 to 254", {1, 0, 0, 0, 5, 5, 5, 100}, kNotPremultiplied},
      {"no pixel has colour or alpha", {0, 0, 0, 0, 0, 0, 0, 0}, kNoAlpha},
  };
  for (const auto& row : rows) {
    Bytes pixels = row.pixels;
    EXPECT_EQ(Classify(pixels), row.channel) << row.what;
  }
}

TEST(ClassifyAlphaChannel, WithoutPremultiplyingThePixelsStay) {
  Bytes pixels = {200, 10, 10, 128};
  EXPECT_EQ(Classify(pixels, false), kNotPremultiplied);
  EXPECT_EQ(pixels, (Bytes{200, 10, 10, 128}));
}

TEST(ClassifyAlphaChannel, PremultiplyingTruncates) {
  // 200 x 128 / 255 is 100.39, 10 x 128 / 255 is 5.02, 255 x 1 / 255 is 1, 254 x 1 / 255 is 0.996.
  Bytes pixels = {200, 10, 10, 128, 255, 254, 0, 1, 255, 254, 253, 255, 7, 8, 9, 0};
  EXPECT_EQ(Classify(pixels), kNotPremultiplied);
  EXPECT_EQ(pixels, (Bytes{100, 5, 5, 128, 1, 0, 0, 1, 255, 254, 253, 255, 0, 0, 0, 0}));
}

TEST(cBMPparser, AllAlphaBytesZeroIsNoTransparencyAndPixelsUnchanged) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, BuildBmp({.width = 2, .bits = {1, 2, 3, 0, 4, 5, 6, 0}})));
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithoutAlpha);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{1, 2, 3, 0, 4, 5, 6, 0}));
}

TEST(cBMPparser, AllAlphaBytes255CountAsPremultiplied) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, BuildBmp({.width = 2, .bits = {1, 2, 3, 255, 4, 5, 6, 255}})));
  EXPECT_TRUE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::PremultipliedBitmap);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(cBMPparser, APixelThatIsNotPremultipliedBecomesSo) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, BuildBmp({.bits = {200, 10, 10, 128}})));
  EXPECT_TRUE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithAlpha);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{100, 5, 5, 128}));
}

TEST(cBMPparser, ColourWithoutAlphaBeforeAnOpaquePixelStopsTheScan) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, BuildBmp({.width = 3, .bits = {1, 0, 0, 0, 9, 9, 9, 255, 0, 0, 0, 0}})));
  EXPECT_TRUE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithAlpha);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{0, 0, 0, 0, 9, 9, 9, 255, 0, 0, 0, 0}));
}

TEST(cBMPparser, ColourWithoutAlphaAmongAllAlphaBytesZeroStays) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, BuildBmp({.width = 3, .bits = {0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}})));
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithoutAlpha);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(cBMPparser, ATopDownFileIsStoredBottomRowFirst) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, BuildBmp({.width = 1, .height = -3, .bits = {1, 1, 1, 0, 2, 2, 2, 0, 3, 3, 3, 0}})));
  EXPECT_EQ(image.Height(), 3);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{3, 3, 3, 0, 2, 2, 2, 0, 1, 1, 1, 0}));
}

TEST(cBMPparser, ABottomUpFileIsCopiedAsItStands) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, BuildBmp({.width = 1, .height = 3, .bits = {1, 1, 1, 0, 2, 2, 2, 0, 3, 3, 3, 0}})));
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{1, 1, 1, 0, 2, 2, 2, 0, 3, 3, 3, 0}));
}

TEST(cBMPparser, TheBitsOffsetCountsFromTheStartOfTheArray) {
  Bytes file = BuildBmp({.bits = {7, 7, 7, 0}});
  file.insert(file.begin(), {1, 2, 3, 0});
  c32bppDIB image;
  ASSERT_TRUE(cBMPparser().LoadStream(file, image, 4, 58));
  // The bits begin at 54 of the array, which is 50 of the file: the last field of its header.
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{0, 0, 0, 0}));
}

TEST(cBMPparser, WithoutASizeTheLoaderIsNotTried) {
  for (const auto& [width, height] : {std::pair{0, 1}, std::pair{-1, 1}, std::pair{1, 0}}) {
    FakePictures pictures;
    pictures.picture = std::make_unique<FakePicture>();
    c32bppDIB image(&pictures);
    EXPECT_FALSE(Load(image, BuildBmp({.width = width, .height = height, .bits = {1, 2, 3, 4}})));
    EXPECT_TRUE(pictures.asked.empty());
    EXPECT_EQ(image.handle(), nullptr);
  }
}

TEST(cBMPparser, EverythingElseGoesToTheLoader) {
  const Bytes rgb = {1, 2, 3, 0};
  const Bytes pixels = {1, 2, 3, 4};
  const struct {
    const char* what;
    Bytes file;
  } rows[] = {
      {"another signature", Bytes(60, 0xFF)},
      {"nothing", {}},
      {"one byte", {'B'}},
      {"24 bits", BuildBmp({.bitCount = 24, .bits = rgb})},
      {"8 bits", BuildBmp({.bitCount = 8, .palette = Bytes(1024), .bits = rgb})},
      {"300 bits", BuildBmp({.bitCount = 300, .bits = Bytes(100)})},
      {"bit fields", BuildBmp({.compression = 3, .palette = Bytes(12), .bits = pixels})},
      {"too short for its header by a byte", BuildBmp({.bits = {1, 2, 3}})},
      {"a width whose row overflows", BuildBmp({.width = 67108864, .bits = pixels})},
      {"a height that has no absolute value", BuildBmp({.height = INT32_MIN, .bits = pixels})},
      {"sides whose product overflows", BuildBmp({.width = 40000, .height = 40000, .bits = pixels})},
      {"bits behind the end", BuildBmp({.bits = pixels, .bitsOffset = 55})},
      {"a bits offset that overflows", BuildBmp({.bits = pixels, .bitsOffset = INT32_MAX})},
  };
  for (const auto& row : rows) {
    FakePictures pictures;
    c32bppDIB image(&pictures);
    EXPECT_FALSE(Load(image, row.file)) << row.what;
    EXPECT_EQ(image.handle(), nullptr) << row.what;
    ASSERT_EQ(pictures.asked.size(), 1U) << row.what;
    EXPECT_EQ(pictures.asked[0], row.file) << row.what;
  }
}

TEST(cBMPparser, BytesBehindThePixelsAreIgnored) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, BuildBmp({.bits = {1, 2, 3, 0, 99, 99}})));
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{1, 2, 3, 0}));
}

TEST(cBMPparser, ANegativeBitsOffsetIsPassedOverAndThePixelsStayZero) {
  FakePictures pictures;
  pictures.picture = std::make_unique<FakePicture>();
  c32bppDIB image(&pictures);
  ASSERT_TRUE(Load(image, BuildBmp({.width = 2, .bits = {1, 2, 3, 4, 5, 6, 7, 8}, .bitsOffset = -4})));
  EXPECT_EQ(PixelsOf(image.Pixels()), Bytes(8));
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithoutAlpha);
  EXPECT_TRUE(pictures.asked.empty());
}

TEST(cBMPparser, ANegativeBitsOffsetWhoseDifferenceToTheEndOverflowsGoesToTheLoader) {
  // 58 bytes less 4 of pixels, less the offset: INT32_MAX, and one more.
  for (const std::int32_t over : {0, 1}) {
    FakePictures pictures;
    c32bppDIB image(&pictures);
    EXPECT_EQ(Load(image, BuildBmp({.bits = {1, 2, 3, 4}, .bitsOffset = 54 - INT32_MAX - over})), over == 0);
    EXPECT_EQ(pictures.asked.size(), static_cast<std::size_t>(over));
  }
}

TEST(cBMPparser, OfATopDownFileOnlyTheRowsBeforeTheStreamArePassedOver) {
  c32bppDIB image;
  // The top row would begin 4 bytes before the stream. The second one is its signature and half of its length, 66.
  ASSERT_TRUE(Load(image, BuildBmp({.height = -3, .bits = Bytes(12), .bitsOffset = -4})));
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{0, 0, 0, 0, 'B', 'M', 66, 0, 0, 0, 0, 0}));
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithoutAlpha);
}

TEST(cBMPparser, AFileTooShortToTellItsSizeIsNotHandedToTheLoader) {
  const Bytes whole = BuildBmp({.bits = {1, 2, 3, 4}});
  for (std::size_t length = 2; length < 26; ++length) {
    FakePictures pictures;
    pictures.picture = std::make_unique<FakePicture>();
    c32bppDIB image(&pictures);
    EXPECT_FALSE(Load(image, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)))) << length;
    EXPECT_TRUE(pictures.asked.empty()) << length;
  }
}

TEST(cBMPparser, ABitmapThatAnEarlierParserLeftIsNotLoadedOver) {
  FakePictures pictures;
  pictures.picture = std::make_unique<FakePicture>();
  c32bppDIB image(&pictures);
  ASSERT_TRUE(image.InitializeDIB(2, 2));
  EXPECT_FALSE(Load(image, Bytes(60, 1)));
  EXPECT_TRUE(pictures.asked.empty());
  EXPECT_EQ(image.Width(), 2);
}

TEST(cBMPparser, WithoutAPictureTheHostIsEmpty) {
  FakePictures pictures;
  c32bppDIB image(&pictures);
  EXPECT_FALSE(Load(image, Bytes(60, 1)));
  pictures.throws = true;
  EXPECT_FALSE(Load(image, Bytes(60, 1)));
  pictures.throws = false;
  pictures.picture = std::make_unique<FakePicture>();
  pictures.picture->type = PictureType::None;
  EXPECT_FALSE(Load(image, Bytes(60, 1)));
  pictures.picture->type = PictureType::Bitmap;
  pictures.picture->fails = true;
  EXPECT_FALSE(Load(image, Bytes(60, 1)));
  pictures.picture->fails = false;
  pictures.picture->width = 0;
  EXPECT_FALSE(Load(image, Bytes(60, 1)));
  EXPECT_EQ(image.handle(), nullptr);
}

TEST(ConvertstdPicTo32bpp, ABitmapWithoutAlphaBytesIsWithoutTransparency) {
  FakePictures pictures;
  pictures.picture = std::make_unique<FakePicture>();
  pictures.picture->width = 2;
  pictures.picture->painted = {1, 2, 3, 0, 4, 5, 6, 0};
  c32bppDIB image(&pictures);
  ASSERT_TRUE(Load(image, Bytes(60, 1)));
  EXPECT_EQ(image.Width(), 2);
  EXPECT_EQ(image.Height(), 1);
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithoutAlpha);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{1, 2, 3, 0, 4, 5, 6, 0}));
}

TEST(ConvertstdPicTo32bpp, APictureThatPaintsAlphaIsClassified) {
  FakePicture picture;
  picture.type = PictureType::Icon;
  picture.painted = {200, 10, 10, 128};
  c32bppDIB image;
  ASSERT_TRUE(cBMPparser().ConvertstdPicTo32bpp(&picture, image));
  EXPECT_TRUE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::BitmapWithAlpha);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{100, 5, 5, 128}));
}

TEST(ConvertstdPicTo32bpp, WhatAMetafileDoesNotDrawIsTransparent) {
  for (const auto type : {PictureType::Metafile, PictureType::EnhancedMetafile}) {
    FakePicture picture;
    picture.type = type;
    picture.width = 3;
    picture.painted = {1, 2, 3, 0, 0, 0, 0, 0, 4, 5, 6, 0};
    picture.undrawn = {1};
    c32bppDIB image;
    ASSERT_TRUE(cBMPparser().ConvertstdPicTo32bpp(&picture, image));
    EXPECT_TRUE(image.Alpha());
    EXPECT_EQ(image.ImageType(), type == PictureType::Metafile ? ImageKind::Metafile : ImageKind::EnhancedMetafile);
    EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{1, 2, 3, 255, 0, 0, 0, 0, 4, 5, 6, 255}));
  }
}

TEST(ConvertstdPicTo32bpp, AMetafileThatDrawsAllIsWithoutTransparency) {
  FakePicture picture;
  picture.type = PictureType::Metafile;
  picture.painted = {1, 2, 3, 0};
  c32bppDIB image;
  ASSERT_TRUE(cBMPparser().ConvertstdPicTo32bpp(&picture, image));
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{1, 2, 3, 255}));
}

TEST(ConvertstdPicTo32bpp, WithoutAPictureItIsFalse) {
  c32bppDIB image;
  EXPECT_FALSE(cBMPparser().ConvertstdPicTo32bpp(nullptr, image));
  FakePicture picture;
  picture.type = static_cast<PictureType>(-1);
  EXPECT_FALSE(cBMPparser().ConvertstdPicTo32bpp(&picture, image));
}

TEST(HimetricToPixels, RoundsToTheNearest) {
  EXPECT_EQ(cBMPparser::HimetricToPixels(0, true), 0);
  EXPECT_EQ(cBMPparser::HimetricToPixels(26, true), 1);
  EXPECT_EQ(cBMPparser::HimetricToPixels(2540, true), 96);
  EXPECT_EQ(cBMPparser::HimetricToPixels(2540, false), 96);
  EXPECT_EQ(cBMPparser::HimetricToPixels(3175, true), 120);
  // 0.491 and 0.529 of a pixel.
  EXPECT_EQ(cBMPparser::HimetricToPixels(13, true), 0);
  EXPECT_EQ(cBMPparser::HimetricToPixels(14, true), 1);
  EXPECT_EQ(cBMPparser::HimetricToPixels(-2540, true), -96);
}

TEST(HimetricToPixels, OverflowsAbove1491308) {
  EXPECT_EQ(cBMPparser::HimetricToPixels(1491308, true), 56364);
  EXPECT_EQ(test::NumberOf([] { (void)cBMPparser::HimetricToPixels(1491309, true); }), 6);
}

}  // namespace
}  // namespace kelvane
