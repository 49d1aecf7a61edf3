#include <gtest/gtest.h>

#include "imaging/Fakes.h"
#include "imaging/c32bppDIB.h"
#include "support/BmpBuilder.h"
#include "support/GifBuilder.h"
#include "support/IcoBuilder.h"
#include "support/PngBuilder.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::FakePicture;
using test::FakePictures;
using test::PixelsOf;
using test::TempFolder;

// One image of each kind.
const Bytes kBmp = test::BuildBmp({.width = 2, .bits = {1, 2, 3, 255, 4, 5, 6, 255}});
const Bytes kIcon = test::BuildIco({.images = {test::PlainIcoImage(16, 32, 1, 2, 3)}});
const Bytes kCursor = test::BuildIco({.type = 2, .images = {test::PlainIcoImage(16, 8, 1, 2, 3)}});
const Bytes kGif = test::Join({test::GifHeader(3, 1, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}}),
                               test::GifControl(0), test::GifComment("so that the file is long enough"),
                               test::GifImage({.width = 3, .height = 1, .lzw = test::GifLzwEncode(2, {0, 1, 2})}),
                               test::GifTrailer()});
const Bytes kPng = [] {
  test::PngImage png;
  png.width = 5;
  png.samples.assign(20, 255);
  return test::BuildPng(png);
}();

// An image of one white pixel that is there before.
void Fill(c32bppDIB& image) {
  Bytes white = test::BuildBmp({.bits = {255, 255, 255, 255}});
  ASSERT_TRUE(image.LoadPicture_Stream(white, 0, 0));
}

void ExpectUnchanged(const c32bppDIB& image) {
  EXPECT_EQ(image.Width(), 1);
  EXPECT_EQ(image.ImageType(), ImageKind::PremultipliedBitmap);
  EXPECT_EQ(PixelsOf(image.Pixels()), Bytes(4, 255));
}

TEST(LoadPicture_File, A56ByteFileOfAnyKindIsRefusedAndTheObjectUnchanged) {
  const TempFolder folder;
  for (const Bytes& whole : {kBmp, kIcon, kGif, kPng}) {
    c32bppDIB image;
    Fill(image);
    const Bytes cut(whole.begin(), whole.begin() + 56);
    EXPECT_FALSE(image.LoadPicture_File(folder.Write("a", cut), 0, 0));
    ExpectUnchanged(image);
  }
}

TEST(LoadPicture_File, AFileOf57BytesIsLookedAt) {
  const TempFolder folder;
  c32bppDIB image;
  Fill(image);
  EXPECT_FALSE(image.LoadPicture_File(folder.Write("a", Bytes(57)), 0, 0));
  EXPECT_EQ(image.handle(), nullptr);
  // A bitmap of one pixel has 58.
  EXPECT_TRUE(image.LoadPicture_File(folder.Write("b", test::BuildBmp({.bits = {1, 2, 3, 4}})), 0, 0));
}

TEST(LoadPicture_File, WithoutAFileTheObjectIsUnchanged) {
  const TempFolder folder;
  folder.Write("a.png", kPng);
  c32bppDIB image;
  Fill(image);
  EXPECT_FALSE(image.LoadPicture_File(folder / "none", 0, 0));
  EXPECT_FALSE(image.LoadPicture_File("", 0, 0));
  EXPECT_FALSE(image.LoadPicture_File(folder / "*.png", 0, 0));
  ExpectUnchanged(image);
}

TEST(LoadPicture_File, AFolderIsNoImage) {
  const TempFolder folder;
  c32bppDIB image;
  EXPECT_FALSE(image.LoadPicture_File(folder.Path(), 0, 0));
}

TEST(LoadPicture_File, EveryKindIsKnownByItsContentWhateverTheExtension) {
  const TempFolder folder;
  const struct {
    const Bytes& file;
    ImageKind kind;
    std::int32_t width;
  } rows[] = {{kPng, ImageKind::Png, 5},
              {kIcon, ImageKind::IconWithAlpha, 16},
              {kCursor, ImageKind::Cursor, 16},
              {kGif, ImageKind::Gif, 3},
              {kBmp, ImageKind::PremultipliedBitmap, 2}};
  for (const auto& row : rows) {
    for (const char* name : {"a.gif", "a.png", "a.bmp", "a.ico", "a"}) {
      c32bppDIB image;
      EXPECT_TRUE(image.LoadPicture_File(folder.Write(name, row.file), 0, 0)) << name;
      EXPECT_EQ(image.ImageType(), row.kind) << name;
      EXPECT_EQ(image.Width(), row.width) << name;
    }
  }
}

TEST(LoadPicture_File, TwiceInARowNothingOfTheFirstImageSurvives) {
  const TempFolder folder;
  c32bppDIB image;
  ASSERT_TRUE(image.LoadPicture_File(folder.Write("a", kGif), 0, 0));
  EXPECT_EQ(image.ImageType(), ImageKind::Gif);
  ASSERT_TRUE(image.LoadPicture_File(folder.Write("b", kBmp), 0, 0));
  EXPECT_EQ(image.ImageType(), ImageKind::PremultipliedBitmap);
  EXPECT_EQ(image.Width(), 2);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(LoadPicture_File, AFailedLoadLosesTheOldImage) {
  const TempFolder folder;
  c32bppDIB image;
  Fill(image);
  EXPECT_FALSE(image.LoadPicture_File(folder.Write("a", Bytes(100, 1)), 0, 0));
  EXPECT_EQ(image.handle(), nullptr);
  EXPECT_FALSE(image.Alpha());
  // What it was stays.
  EXPECT_EQ(image.ImageType(), ImageKind::PremultipliedBitmap);
}

TEST(LoadPicture_File, TheWantedSizeChoosesAmongIcons) {
  const TempFolder folder;
  const auto path = folder.Write(
      "a", test::BuildIco({.images = {test::PlainIcoImage(16, 32, 1, 2, 3), test::PlainIcoImage(32, 32, 1, 2, 3),
                                      test::PlainIcoImage(64, 32, 1, 2, 3)}}));
  const struct {
    std::int32_t cx;
    std::int32_t cy;
    std::int32_t width;
  } rows[] = {{0, 0, 32}, {16, 16, 16}, {64, 64, 64}, {-1, 128, 64}, {-9, -9, 32}};
  for (const auto& row : rows) {
    c32bppDIB image;
    EXPECT_TRUE(image.LoadPicture_File(path, row.cx, row.cy));
    EXPECT_EQ(image.Width(), row.width) << row.cx << ' ' << row.cy;
  }
}

TEST(LoadPicture_File, TheLoaderGetsWhatNoParserTakes) {
  const TempFolder folder;
  FakePictures pictures;
  pictures.picture = std::make_unique<FakePicture>();
  pictures.picture->painted = {9, 8, 7, 0};
  c32bppDIB image(&pictures);
  Bytes jpeg(80, 0x11);
  jpeg[0] = 0xFF;
  jpeg[1] = 0xD8;
  EXPECT_TRUE(image.LoadPicture_File(folder.Write("a", jpeg), 0, 0));
  ASSERT_EQ(pictures.asked.size(), 1U);
  EXPECT_EQ(pictures.asked[0], jpeg);
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{9, 8, 7, 0}));
}

TEST(LoadPicture_File, WhateverGoesWrongInsideItOnlyReturnsFalse) {
  const TempFolder folder;
  FakePictures pictures;
  pictures.throws = true;
  c32bppDIB image(&pictures);
  EXPECT_FALSE(image.LoadPicture_File(folder.Write("a", Bytes(80, 1)), 0, 0));
  EXPECT_EQ(pictures.asked.size(), 1U);
}

TEST(LoadPicture_File, AnIconsOffsetOutsideTheFileHandsOverToTheNextParser) {
  const TempFolder folder;
  FakePictures pictures;
  c32bppDIB image(&pictures);
  test::IcoImage broken = test::PlainIcoImage(16, 32, 1, 2, 3);
  broken.imageOffset = 1 << 20;
  EXPECT_FALSE(image.LoadPicture_File(folder.Write("a", test::BuildIco({.images = {broken}})), 0, 0));
  EXPECT_EQ(pictures.asked.size(), 1U);
  EXPECT_EQ(image.handle(), nullptr);
}

TEST(LoadPicture_File, AnIconThatCannotBeExpandedIsFalseThoughThereIsABitmap) {
  const TempFolder folder;
  FakePictures pictures;
  pictures.picture = std::make_unique<FakePicture>();
  c32bppDIB image(&pictures);
  test::IcoImage broken = test::PlainIcoImage(16, 32, 1, 2, 3);
  WriteU16(broken.data, 14, 7);
  EXPECT_FALSE(image.LoadPicture_File(folder.Write("a", test::BuildIco({.images = {broken}})), 0, 0));
  EXPECT_NE(image.handle(), nullptr);
  EXPECT_TRUE(pictures.asked.empty());
  // The next load begins empty.
  EXPECT_TRUE(image.LoadPicture_File(folder.Write("b", Bytes(80, 1)), 0, 0));
}

TEST(LoadPicture_File, AnIconWhoseMaskLiesOutsideTheFileIsFalseThoughThereIsABitmap) {
  const TempFolder folder;
  FakePictures pictures;
  pictures.picture = std::make_unique<FakePicture>();
  c32bppDIB image(&pictures);
  // With no bytes told for the image its mask would begin before the file.
  test::IcoImage broken = test::PlainIcoImage(16, 24, 1, 2, 3);
  broken.bytesInRes = 0;
  EXPECT_FALSE(image.LoadPicture_File(folder.Write("a", test::BuildIco({.images = {broken}})), 0, 0));
  EXPECT_NE(image.handle(), nullptr);
  EXPECT_TRUE(pictures.asked.empty());
}

TEST(LoadPicture_Stream, EveryKindLoadsFromBytes) {
  for (const auto& [bytes, kind] : {std::pair{kPng, ImageKind::Png},
                                    {kIcon, ImageKind::IconWithAlpha},
                                    {kCursor, ImageKind::Cursor},
                                    {kGif, ImageKind::Gif},
                                    {kBmp, ImageKind::PremultipliedBitmap}}) {
    Bytes stream = bytes;
    c32bppDIB image;
    EXPECT_TRUE(image.LoadPicture_Stream(stream, 0, 0));
    EXPECT_EQ(image.ImageType(), kind);
  }
}

TEST(LoadPicture_Stream, WithoutBytesItIsFalseAndTheObjectEmpty) {
  c32bppDIB image;
  Fill(image);
  EXPECT_FALSE(image.LoadPicture_Stream({}, 0, 0));
  EXPECT_EQ(image.handle(), nullptr);
}

TEST(LoadPicture_Stream, AnIconsHeaderIsRepairedInTheCallersBytes) {
  Bytes stream = kCursor;
  c32bppDIB image;
  ASSERT_TRUE(image.LoadPicture_Stream(stream, 0, 0));
  EXPECT_EQ(ReadI32(kCursor, 22 + 8), 32);
  EXPECT_EQ(ReadI32(stream, 22 + 8), 16);
}

}  // namespace
}  // namespace kelvane
