// What the selection of a general resource shows, step by step, and what is left of the temporary files: nothing.
#include <QImage>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "imaging/Fakes.h"
#include "platform/QImageSurface.h"
#include "resources/OpenedRco.h"
#include "resources/Preview.h"
#include "resources/SmallGim.h"
#include "support/BmpBuilder.h"
#include "support/Deflate.h"
#include "support/Failures.h"
#include "support/GifBuilder.h"
#include "support/GimBuilder.h"
#include "support/IcoBuilder.h"
#include "support/PngBuilder.h"

namespace kelvane {
namespace {

using test::DeflateWrapped;
using test::FakePicture;
using test::FakePictures;
using test::OpenedRco;
using test::RecordingSurface;
using test::Rgba;
using test::SmallGim;
using test::SomeBytes;
using Names = std::vector<std::string>;

// A block of the type 3, which doesn't exist.
const Bytes kBrokenStream = {0x78, 0xDA, 0x07, 0, 0, 0};

// Red 200, green 100, blue 50 at alpha 128 beside an opaque pixel, above one whose alpha is 0 and black.
Bytes SmallPng() {
  test::PngImage png;
  png.width = 2;
  png.height = 2;
  png.samples = {200, 100, 50, 128, 1, 2, 3, 255, 9, 9, 9, 0, 0, 0, 0, 255};
  return test::BuildPng(png);
}
// Its pixels as they are drawn, the lower row first: 200 x 128 / 255 is 100.39, 100 and 50 give 50.2 and 25.1.
const Bytes kSmallPngPixels = {0, 0, 0, 0, 0, 0, 0, 255, 25, 50, 100, 128, 3, 2, 1, 255};

class PreviewTest : public ::testing::Test, protected OpenedRco {
 protected:
  void SetUp() override {
    // What stood there for another resource.
    document.general = {.lblGenItemNo = "before",
                        .lblDim = "before",
                        .lblGenCompr = "before",
                        .lblGenOffsetEntry = "before",
                        .lblGenOffsetData = "before",
                        .lblPreviewFailVisible = true,
                        .shpResWidth = 77,
                        .shpResHeight = 88};
  }

  // Opens the file that the builder holds with that image as its only resource, and selects it.
  void ShowImage(test::ImageSpec image) {
    image.label = "image";
    builder.AddImage(std::move(image));
    Open();
    Select(0);
  }

  void Select(int row) {
    document.lst.Select(row);
    Show();
    EXPECT_EQ(program.Names(), Names()) << "temporary files were left";
  }
  void Show() {
    ShowSelectedResource({.mod = mod,
                          .document = document,
                          .prompts = prompts,
                          .pictures = &pictures,
                          .surfaces = {&picPreview, openPreview}});
  }

  void ExpectNoPicture() {
    EXPECT_TRUE(document.general.lblPreviewFailVisible);
    EXPECT_EQ(document.general.lblDim, "尺寸:未知");
    EXPECT_EQ(document.general.shpResWidth, 0);
    EXPECT_EQ(document.general.shpResHeight, 0);
    EXPECT_TRUE(picPreview.drawings.empty());
  }
  void ExpectSize(int width, int height) {
    EXPECT_FALSE(document.general.lblPreviewFailVisible);
    EXPECT_EQ(document.general.lblDim, "尺寸: " + std::to_string(width) + "x" + std::to_string(height));
    EXPECT_EQ(document.general.shpResWidth, width);
    EXPECT_EQ(document.general.shpResHeight, height);
  }
  // Those pixels at the top left corner, in natural size, at full opacity.
  static void ExpectDrawn(const RecordingSurface& surface, int width, int height, const Bytes& pixels,
                          bool perPixelAlpha = true) {
    ASSERT_EQ(surface.drawings.size(), 1U);
    EXPECT_EQ(surface.drawings[0], (RecordingSurface::Drawing{.pixels = pixels,
                                                              .sourceWidth = width,
                                                              .sourceHeight = height,
                                                              .x = 0,
                                                              .y = 0,
                                                              .width = width,
                                                              .height = height,
                                                              .constantAlpha = 255,
                                                              .perPixelAlpha = perPixelAlpha}));
  }

  FakePictures pictures;
  RecordingSurface picPreview;
  RecordingSurface frmPreview;
  RecordingSurface* openPreview = nullptr;
};

// --- The selection ---

TEST_F(PreviewTest, WithNoSelectionTheNumberIsEmptiedAndThePictureStaysAsItWas) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  openPreview = &frmPreview;
  picPreview.drawings.resize(1);
  const GeneralDisplay before = document.general;
  document.lst.Select(-1);
  Show();
  EXPECT_EQ(document.general.lblGenItemNo, "");
  EXPECT_EQ(document.general.lblDim, before.lblDim);
  EXPECT_EQ(document.general.lblGenCompr, before.lblGenCompr);
  EXPECT_EQ(document.general.lblGenOffsetEntry, before.lblGenOffsetEntry);
  EXPECT_EQ(document.general.lblGenOffsetData, before.lblGenOffsetData);
  EXPECT_TRUE(document.general.lblPreviewFailVisible);
  EXPECT_EQ(document.general.shpResWidth, 77);
  EXPECT_EQ(picPreview.cleared, 0);
  EXPECT_EQ(frmPreview.cleared, 0);
  EXPECT_EQ(picPreview.drawings.size(), 1U);
}

TEST_F(PreviewTest, TheNumberIsTheRowCountedFrom0) {
  for (const char* label : {"a", "b", "c"}) {
    builder.AddImage({.label = label, .data = SmallGim()});
  }
  Open();
  Select(2);
  EXPECT_EQ(document.general.lblGenItemNo, "项目 #2");
  Select(0);
  EXPECT_EQ(document.general.lblGenItemNo, "项目 #0");
}

TEST_F(PreviewTest, EverySelectionClearsThePictureFirst) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8)});
  Open();
  Select(0);
  EXPECT_EQ(picPreview.cleared, 1);
  Select(1);
  EXPECT_EQ(picPreview.cleared, 2);
  EXPECT_TRUE(picPreview.drawings.empty());
}

TEST_F(PreviewTest, TheOpenPreviewWindowIsClearedAndDrawnOnToo) {
  openPreview = &frmPreview;
  ShowImage({.format = 0, .data = SmallPng()});
  EXPECT_EQ(picPreview.cleared, 1);
  EXPECT_EQ(frmPreview.cleared, 1);
  ExpectDrawn(picPreview, 2, 2, kSmallPngPixels);
  ExpectDrawn(frmPreview, 2, 2, kSmallPngPixels);
}

TEST_F(PreviewTest, AClosedPreviewWindowIsLeftAlone) {
  ShowImage({.format = 0, .data = SmallPng()});
  EXPECT_EQ(frmPreview.cleared, 0);
  EXPECT_TRUE(frmPreview.drawings.empty());
}

// --- Images other than GIM ---

TEST_F(PreviewTest, AnImageIsDrawnInNaturalSizeAtTheTopLeftCorner) {
  ShowImage({.format = 0, .data = SmallPng()});
  ExpectSize(2, 2);
  ExpectDrawn(picPreview, 2, 2, kSmallPngPixels);
}

TEST_F(PreviewTest, ACompressedPngIsDecodedAfterTheSwapAndBothFilesAreGone) {
  ShowImage({.format = 0, .compression = 1, .data = DeflateWrapped(SmallPng())});
  ExpectSize(2, 2);
  ExpectDrawn(picPreview, 2, 2, kSmallPngPixels);
}

TEST_F(PreviewTest, WhatCannotBeUnpackedIsTriedAsItIsStored) {
  // The first byte of the stream behind the two that are skipped is the "N" of the signature: a block that is broken.
  ShowImage({.format = 0, .compression = 1, .data = SmallPng()});
  ExpectSize(2, 2);
  ExpectDrawn(picPreview, 2, 2, kSmallPngPixels);
}

TEST_F(PreviewTest, AnImageThatCannotBeDecodedShowsNothingAndASizeOf0By0WithoutTheNotice) {
  ShowImage({.format = 0, .data = SomeBytes(100)});
  ExpectSize(0, 0);
  EXPECT_TRUE(picPreview.drawings.empty());
}

TEST_F(PreviewTest, AnImageOfFewerThan57BytesShowsASizeOf0By0) {
  ShowImage({.format = 0, .data = SomeBytes(56)});
  ExpectSize(0, 0);
}

TEST_F(PreviewTest, AnRlzImageReachesTheParsersAsStoredAndShowsNothing) {
  ShowImage({.format = 0, .compression = 2, .data = DeflateWrapped(SmallPng())});
  ExpectSize(0, 0);
  EXPECT_TRUE(picPreview.drawings.empty());
  EXPECT_EQ(document.general.lblGenCompr, "RLZ");
}

TEST_F(PreviewTest, AnRlzImageThatIsStoredPlainShows) {
  ShowImage({.format = 0, .compression = 2, .data = SmallPng()});
  ExpectSize(2, 2);
  EXPECT_EQ(document.general.lblGenCompr, "RLZ");
}

TEST_F(PreviewTest, TheContentTellsTheKindAndNotTheFormat) {
  // Each below the format of another kind.
  const Bytes bmp = test::BuildBmp({.width = 2, .bits = {1, 2, 3, 0, 4, 5, 6, 0}});
  const Bytes gif =
      test::Join({test::GifHeader(2, 1, {{1, 2, 3}, {4, 5, 6}, {0, 0, 0}, {0, 0, 0}}), test::GifControl(0),
                  test::GifComment("more than enough"),
                  test::GifImage({.width = 2, .height = 1, .lzw = test::GifLzwEncode(2, {0, 1})}), test::GifTrailer()});
  builder.AddImage({.label = "a", .format = 1, .data = bmp});
  builder.AddImage({.label = "b", .format = 4, .data = gif});
  builder.AddImage(
      {.label = "c", .format = 3, .data = test::BuildIco({.images = {test::PlainIcoImage(16, 32, 1, 2, 3)}})});
  Open();
  Select(0);
  ExpectSize(2, 1);
  ExpectDrawn(picPreview, 2, 1, {1, 2, 3, 0, 4, 5, 6, 0}, false);
  Select(1);
  ExpectSize(2, 1);
  ExpectDrawn(picPreview, 2, 1, {0, 0, 0, 0, 6, 5, 4, 255});
  Select(2);
  ExpectSize(16, 16);
}

TEST_F(PreviewTest, WhatNoParserReadsGoesToTheToolkitsReaders) {
  pictures.picture = std::make_unique<FakePicture>();
  pictures.picture->width = 2;
  pictures.picture->painted = {1, 2, 3, 0, 4, 5, 6, 0};
  const Bytes stored = SomeBytes(100);
  ShowImage({.format = 1, .data = stored});
  ASSERT_EQ(pictures.asked.size(), 1U);
  EXPECT_EQ(pictures.asked[0], stored);
  ExpectSize(2, 1);
  ExpectDrawn(picPreview, 2, 1, {1, 2, 3, 0, 4, 5, 6, 0}, false);
}

TEST_F(PreviewTest, TheResultOfTheLoadIsNotTestedSoABrokenIconShowsItsEmptyBitmap) {
  test::IcoImage broken = test::PlainIcoImage(16, 32, 1, 2, 3);
  WriteU16(broken.data, 14, 7);  // no such depth
  ShowImage({.format = 2, .data = test::BuildIco({.images = {broken}})});
  ExpectSize(16, 16);
  ExpectDrawn(picPreview, 16, 16, Bytes(1024), false);
}

TEST_F(PreviewTest, AnImageWithoutDataShowsTheNotice) {
  ShowImage({.format = 0, .data = {}});
  ExpectNoPicture();
}

// --- GIM images ---

TEST_F(PreviewTest, AGimIsDrawnWithItsAlpha) {
  ShowImage({.data = test::BuildRgbaGim(2, 1, {Rgba(200, 100, 50, 128), Rgba(1, 2, 3)})});
  ExpectSize(2, 1);
  ExpectDrawn(picPreview, 2, 1, {25, 50, 100, 128, 3, 2, 1, 255});
}

TEST_F(PreviewTest, ACompressedGimIsUnpacked) {
  ShowImage({.compression = 1, .data = DeflateWrapped(SmallGim())});
  ExpectSize(4, 2);
  // 1 1 0 0 below 0 1 1 0; alphas of 4 and 8 with lower colours count as premultiplied.
  ExpectDrawn(picPreview, 4, 2,
              {7, 6, 5, 8, 7, 6, 5, 8, 3, 2, 1, 4, 3, 2, 1, 4, 3, 2, 1, 4, 7, 6, 5, 8, 7, 6, 5, 8, 3, 2, 1, 4});
}

TEST_F(PreviewTest, AGimIsUnpackedByItsBytesWhateverItsCompressionSays) {
  builder.AddImage({.label = "plain, said to be compressed", .compression = 1, .data = SmallGim()});
  builder.AddImage({.label = "compressed, said to be plain", .compression = 0, .data = DeflateWrapped(SmallGim())});
  builder.AddImage({.label = "compressed, said to be RLZ", .compression = 2, .data = DeflateWrapped(SmallGim())});
  Open();
  for (const int row : {0, 1, 2}) {
    Select(row);
    ExpectSize(4, 2);
    EXPECT_EQ(picPreview.drawings.size(), 1U);
  }
}

TEST_F(PreviewTest, AGimWithABrokenDeflateStreamShowsTheNotice) {
  ShowImage({.compression = 1, .data = kBrokenStream});
  ExpectNoPicture();
}

TEST_F(PreviewTest, AGimThatCannotBeConvertedShowsTheNotice) {
  Bytes gim = SmallGim();
  gim.resize(40);
  ShowImage({.data = gim});
  ExpectNoPicture();
}

TEST_F(PreviewTest, CompressedDataThatAreNoGimShowTheNotice) {
  ShowImage({.compression = 1, .data = DeflateWrapped(SomeBytes(300))});
  ExpectNoPicture();
}

TEST_F(PreviewTest, AGimWithoutDataShowsTheNotice) {
  ShowImage({.data = {}});
  ExpectNoPicture();
}

TEST_F(PreviewTest, AGimOfTwoBytesIsAFailureAndItsFilesAreGoneAllTheSame) {
  builder.AddImage({.label = "image", .compression = 1, .data = {0x78, 0xDA}});
  Open();
  document.lst.Select(0);
  EXPECT_EQ(test::NumberOf([&] { Show(); }), 9);
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(PreviewTest, ACompressedImageOfTwoBytesIsAFailureAndItsFilesAreGoneAllTheSame) {
  builder.AddImage({.label = "image", .format = 0, .compression = 1, .data = {0x78, 0xDA}});
  Open();
  document.lst.Select(0);
  EXPECT_EQ(test::NumberOf([&] { Show(); }), 9);
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(PreviewTest, AnExportThatFailsAndIsGivenUpShowsTheNotice) {
  builder.AddImage({.label = "gim", .data = SmallGim()});
  builder.AddImage({.label = "png", .format = 0, .data = SmallPng()});
  Open();
  std::filesystem::remove(mod.cCurFile);
  for (const int row : {0, 1}) {
    prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
    Select(row);
    ExpectNoPicture();
    EXPECT_EQ(document.general.lblGenCompr, "无");
  }
}

TEST_F(PreviewTest, TheAlphaOfAGimIsBlendedAgainstTheChosenBackground) {
  builder.AddImage(
      {.label = "image", .data = test::BuildRgbaGim(3, 1, {Rgba(200, 100, 50, 128), Rgba(9, 9, 9, 0), Rgba(1, 2, 3)})});
  Open();
  document.lst.Select(0);
  for (const QColor& background : {QColor(0, 0, 0), QColor(250, 150, 20)}) {
    QImage image(4, 2, QImage::Format_RGB32);
    QImageSurface surface(image, background);
    ShowSelectedResource({.mod = mod, .document = document, .prompts = prompts, .surfaces = {&surface}});
    // 128 parts of 255 are the image's, the others the background's.
    const auto blended = [](int colour, int behind) { return (colour * 128 + behind * 127) / 255.0; };
    EXPECT_NEAR(qRed(image.pixel(0, 0)), blended(200, background.red()), 1.5);
    EXPECT_NEAR(qGreen(image.pixel(0, 0)), blended(100, background.green()), 1.5);
    EXPECT_NEAR(qBlue(image.pixel(0, 0)), blended(50, background.blue()), 1.5);
    EXPECT_EQ(image.pixel(1, 0), background.rgb());
    EXPECT_EQ(image.pixel(2, 0), qRgb(1, 2, 3));
    // Beside and below the image.
    EXPECT_EQ(image.pixel(3, 0), background.rgb());
    EXPECT_EQ(image.pixel(0, 1), background.rgb());
  }
}

// --- Sounds and models ---

TEST_F(PreviewTest, SoundsAndModelsShowTheNoticeAndNoSize) {
  // Their data would make an image.
  builder.AddVag({.label = "mono", .channel1 = SmallPng()});
  builder.AddVag({.label = "stereo", .channel1 = SmallPng(), .channel2 = SmallPng()});
  builder.AddGmo({.label = "model", .data = SmallPng()});
  builder.AddGmo({.label = "model of format 5", .format = 5, .data = SmallGim()});
  Open();
  for (int row = 0; row < 4; ++row) {
    document.general.lblPreviewFailVisible = false;
    document.general.lblDim = "尺寸: 1x1";
    document.general.shpResWidth = 1;
    document.general.shpResHeight = 1;
    Select(row);
    ExpectNoPicture();
  }
}

TEST_F(PreviewTest, APictureHidesTheNoticeOfTheRowBefore) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8)});
  Open();
  Select(1);
  ExpectNoPicture();
  Select(0);
  ExpectSize(4, 2);
}

TEST_F(PreviewTest, FilesThatTheSelectionDidNotMakeAreLeftAlone) {
  const Names names = {"temp.bmp", "temp.gim", "temp2.dat"};
  builder.AddImage({.label = "png", .format = 0, .data = SmallPng()});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8)});
  Open();
  for (const std::string& name : names) {
    program.Write(name, Bytes{1});
  }
  for (const int row : {0, 1}) {
    document.lst.Select(row);
    Show();
    EXPECT_EQ(program.Names(), names);
  }
}

// --- Compression and offsets ---

TEST_F(PreviewTest, TheCompressionIsToldByTheTable) {
  const struct {
    std::int16_t compression;
    const char* text;
  } rows[] = {{0, "无"},
              {1, "压缩"},
              {2, "RLZ"},
              {3, "Unknown (0x3)"},
              {255, "Unknown (0xFF)"},
              {32767, "Unknown (0x7FFF)"},
              {-1, "Unknown (0xFFFF)"}};
  builder.AddGmo({.label = "model", .data = SomeBytes(20)});
  Open();
  for (const auto& row : rows) {
    document.genRsc[0].rscCompression = row.compression;
    Select(0);
    EXPECT_EQ(document.general.lblGenCompr, row.text);
  }
}

TEST_F(PreviewTest, ASoundShowsAsCompressedWhenMonoAndAsRlzWhenStereo) {
  builder.AddVag({.label = "mono", .channel1 = SomeBytes(8)});
  builder.AddVag({.label = "stereo", .channel1 = SomeBytes(8), .channel2 = SomeBytes(8)});
  Open();
  Select(0);
  EXPECT_EQ(document.general.lblGenCompr, "压缩");
  Select(1);
  EXPECT_EQ(document.general.lblGenCompr, "RLZ");
}

std::string Hexadecimal(std::int32_t value) {
  char text[12];
  std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(value));
  return text;
}

TEST_F(PreviewTest, TheEntrysOffsetIsItsStartAndTheDatasCountsFromTheImagesArea) {
  builder.AddImage({.label = "first", .data = SmallGim()});
  builder.AddImage({.label = "second", .data = SmallGim(1)});
  Open();
  const auto& images = built.layout.images;
  for (const int row : {0, 1}) {
    Select(row);
    const auto& image = images[static_cast<std::size_t>(row)];
    EXPECT_EQ(document.general.lblGenOffsetEntry, Hexadecimal(image.entry));
    EXPECT_EQ(document.general.lblGenOffsetData, Hexadecimal(image.data));
  }
}

TEST_F(PreviewTest, TheDataOffsetOfSoundsAndModelsCountsFromTheImagesAreaToo) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8)});
  builder.AddVag({.label = "second sound", .channel1 = SomeBytes(8)});
  builder.AddGmo({.label = "model", .data = SomeBytes(20)});
  Open();
  const std::int32_t imageArea = built.layout.images[0].data - built.layout.images[0].dataOffset;
  const test::GeneralPlace places[] = {built.layout.vags[0], built.layout.vags[1], built.layout.gmos[0]};
  for (int i = 0; i < 3; ++i) {
    Select(1 + i);
    const test::GeneralPlace& place = places[i];
    EXPECT_EQ(document.general.lblGenOffsetEntry, Hexadecimal(place.entry));
    EXPECT_EQ(document.general.lblGenOffsetData, Hexadecimal(imageArea + place.dataOffset));
    EXPECT_NE(imageArea + place.dataOffset, place.data);
  }
}

TEST_F(PreviewTest, WithoutAnImageAreaTheDataOffsetIsLessTheMinus1ThatStandsForIt) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8)});
  builder.AddVag({.label = "second sound", .channel1 = SomeBytes(8)});
  Open();
  Select(0);
  EXPECT_EQ(document.general.lblGenOffsetData, "0xFFFFFFFF");
  Select(1);
  EXPECT_EQ(document.general.lblGenOffsetData, Hexadecimal(built.layout.vags[1].dataOffset - 1));
}

}  // namespace
}  // namespace kelvane
