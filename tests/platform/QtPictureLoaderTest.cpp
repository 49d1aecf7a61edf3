#include <QBuffer>
#include <QImage>
#include <algorithm>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "imaging/cBMPparser.h"
#include "platform/QtPictureLoader.h"
#include "support/BmpBuilder.h"
#include "support/GifBuilder.h"
#include "support/IcoBuilder.h"

namespace kelvane {
namespace {

using test::BmpSpec;
using test::BuildBmp;

// What comes of a file by way of the loader: its pixels in stored order, empty where it is refused.
struct Loaded {
  Bytes pixels;
  std::int32_t width = 0;
  std::int32_t height = 0;
  bool alpha = false;
  ImageKind kind = ImageKind::None;
};

Loaded Load(const Bytes& file) {
  QtPictureLoader pictures;
  c32bppDIB image(&pictures);
  if (!cBMPparser().LoadStream(file, image, 0, static_cast<std::int32_t>(file.size()))) {
    return {};
  }
  return {Bytes(image.Pixels().begin(), image.Pixels().end()), image.Width(), image.Height(), image.Alpha(),
          image.ImageType()};
}

// Blue, green, red and nothing for each entry of a palette.
const Bytes kTwoColours = {10, 20, 30, 0, 40, 50, 60, 0};
const Bytes kSixteenColours = [] {
  Bytes colours;
  for (std::uint8_t i = 0; i < 16; ++i) {
    Append(colours, Bytes{i, static_cast<std::uint8_t>(16 * i), static_cast<std::uint8_t>(255 - i), 0});
  }
  return colours;
}();

// Little-endian words.
Bytes Longs(std::initializer_list<std::uint32_t> values) {
  Bytes bytes(4 * values.size());
  std::int64_t at = 0;
  for (const std::uint32_t value : values) {
    WriteU32(bytes, at, value);
    at += 4;
  }
  return bytes;
}

Bytes Jpeg(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, "JPEG", 100));
  return {bytes.begin(), bytes.end()};
}

TEST(QtPictureLoader, BitmapsOfEveryDepthGiveTheirColours) {
  const struct {
    const char* what;
    BmpSpec bmp;
    Bytes pixels;
  } rows[] = {
      {"1 bit",
       {.width = 3, .bitCount = 1, .palette = kTwoColours, .bits = {0b01000000, 0, 0, 0}},
       {10, 20, 30, 0, 40, 50, 60, 0, 10, 20, 30, 0}},
      {"4 bits",
       {.width = 3, .bitCount = 4, .palette = kSixteenColours, .bits = {0x1F, 0x20, 0, 0}},
       {1, 16, 254, 0, 15, 240, 240, 0, 2, 32, 253, 0}},
      {"8 bits",
       {.width = 2, .bitCount = 8, .palette = test::Join({kSixteenColours, Bytes(960)}), .bits = {3, 14, 0, 0}},
       {3, 48, 252, 0, 14, 224, 241, 0}},
      {"16 bits, 5 each", {.width = 2, .bitCount = 16, .bits = {0x1F, 0x00, 0x00, 0x7C}}, {255, 0, 0, 0, 0, 0, 255, 0}},
      {"24 bits", {.width = 1, .bitCount = 24, .bits = {1, 2, 3, 0}}, {1, 2, 3, 0}},
      {"24 bits with the short header",
       {.width = 1, .bitCount = 24, .coreHeader = true, .bits = {1, 2, 3, 0}},
       {1, 2, 3, 0}},
      {"16 bits in fields of 5, 6 and 5",
       {.width = 3,
        .bitCount = 16,
        .compression = 3,
        .palette = Longs({0xF800, 0x07E0, 0x001F}),
        .bits = {0x1F, 0x00, 0xE0, 0x07, 0x00, 0xF8, 0, 0}},
       {255, 0, 0, 0, 0, 255, 0, 0, 0, 0, 255, 0}},
      {"32 bits in fields",
       {.width = 1,
        .bitCount = 32,
        .compression = 3,
        .palette = Longs({0x000000FF, 0x0000FF00, 0x00FF0000}),
        .bits = {3, 2, 1, 200}},
       {1, 2, 3, 0}},
      {"32 bits in fields of 10",
       {.width = 3,
        .compression = 3,
        .palette = Longs({0x3FF00000, 0x000FFC00, 0x000003FF}),
        .bits = Longs({0x3FF00000, 0x00080000, 0x00000201})},
       {0, 0, 255, 0, 0, 128, 0, 0, 128, 0, 0, 0}},
      {"16 bits in fields of 4",
       {.width = 2,
        .bitCount = 16,
        .compression = 3,
        .palette = Longs({0x0F00, 0x00F0, 0x000F}),
        .bits = {0x5F, 0x0A, 0, 0}},
       {255, 85, 170, 0, 0, 0, 0, 0}},
      {"runs of 8 bits",
       {.width = 4,
        .height = 2,
        .bitCount = 8,
        .compression = 1,
        .palette = test::Join({kSixteenColours, Bytes(960)}),
        .bits = {3, 1, 1, 2, 0, 0, 0, 4, 5, 6, 7, 8, 0, 1}},
       {1, 16, 254, 0, 1, 16, 254, 0, 1, 16,  254, 0, 2, 32,  253, 0,
        5, 80, 250, 0, 6, 96, 249, 0, 7, 112, 248, 0, 8, 128, 247, 0}},
      {"runs of 4 bits",
       {.width = 4, .height = 1, .bitCount = 4, .compression = 2, .palette = kSixteenColours, .bits = {4, 0x12, 0, 1}},
       {1, 16, 254, 0, 2, 32, 253, 0, 1, 16, 254, 0, 2, 32, 253, 0}},
  };
  for (const auto& row : rows) {
    const Loaded loaded = Load(BuildBmp(row.bmp));
    EXPECT_EQ(loaded.pixels, row.pixels) << row.what;
    EXPECT_FALSE(loaded.alpha) << row.what;
    EXPECT_EQ(loaded.kind, ImageKind::BitmapWithoutAlpha) << row.what;
  }
}

TEST(QtPictureLoader, RowsAreStoredBottomFirstWhicheverWayTheFileHasThem) {
  const Bytes rows = {1, 1, 1, 0, 2, 2, 2, 0};
  EXPECT_EQ(Load(BuildBmp({.height = 2, .bitCount = 24, .bits = rows})).pixels, (Bytes{1, 1, 1, 0, 2, 2, 2, 0}));
  EXPECT_EQ(Load(BuildBmp({.height = -2, .bitCount = 24, .bits = rows})).pixels, (Bytes{2, 2, 2, 0, 1, 1, 1, 0}));
}

TEST(QtPictureLoader, TheAlphaOfA32BitBitmapWithBitFieldsIsLost) {
  // A header of 108 bytes with four masks.
  const Bytes masks = Longs({0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000});
  const Loaded loaded =
      Load(BuildBmp({.compression = 3, .moreHeader = test::Join({masks, Bytes(52)}), .bits = {1, 2, 3, 128}}));
  EXPECT_EQ(loaded.pixels, (Bytes{1, 2, 3, 0}));
  EXPECT_FALSE(loaded.alpha);
}

TEST(QtPictureLoader, AJpegGivesItsColoursWithAlpha0) {
  for (const auto format : {QImage::Format_RGB32, QImage::Format_Grayscale8}) {
    QImage image(40, 24, format);
    image.fill(QColor(120, 120, 120));
    const Loaded loaded = Load(Jpeg(image));
    EXPECT_EQ(loaded.width, 40);
    EXPECT_EQ(loaded.height, 24);
    EXPECT_FALSE(loaded.alpha);
    EXPECT_EQ(loaded.kind, ImageKind::BitmapWithoutAlpha);
    ASSERT_EQ(loaded.pixels.size(), 40U * 24 * 4);
    for (std::size_t i = 0; i < loaded.pixels.size(); ++i) {
      ASSERT_NEAR(loaded.pixels[i], i % 4 == 3 ? 0 : 120, 1) << i;
    }
  }
}

TEST(QtPictureLoader, AJpegsRowsAreStoredBottomFirst) {
  QImage image(16, 32, QImage::Format_RGB32);
  image.fill(Qt::red);
  for (int y = 16; y < 32; ++y) {
    for (int x = 0; x < 16; ++x) {
      image.setPixel(x, y, qRgb(0, 0, 255));
    }
  }
  const Loaded loaded = Load(Jpeg(image));
  ASSERT_EQ(loaded.pixels.size(), 16U * 32 * 4);
  EXPECT_GT(loaded.pixels[0], 250);  // blue below
  EXPECT_LT(loaded.pixels[2], 5);
  EXPECT_GT(loaded.pixels[loaded.pixels.size() - 2], 250);  // red above
}

TEST(QtPictureLoader, AGifThatItsOwnParserRefusesIsOpaque) {
  // An unknown block in front of the frame.
  const std::vector<test::GifColour> table = {{10, 11, 12}, {20, 21, 22}, {30, 31, 32}, {40, 41, 42}};
  const test::GifFrame frame{.width = 2, .height = 1, .lzw = test::GifLzwEncode(2, {3, 1})};
  const Loaded loaded = Load(test::Join({test::GifHeader(2, 1, table), test::GifImage(frame), test::GifTrailer()}));
  EXPECT_EQ(loaded.pixels, (Bytes{42, 41, 40, 0, 22, 21, 20, 0}));
  EXPECT_FALSE(loaded.alpha);
}

TEST(QtPictureLoader, NoOtherKindIsRead) {
  QImage image(4, 4, QImage::Format_RGB32);
  image.fill(Qt::red);
  for (const char* format : {"PNG", "XPM", "PPM", "ICO"}) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(image.save(&buffer, format)) << format;
    EXPECT_EQ(QtPictureLoader().Load(Bytes(bytes.begin(), bytes.end())), nullptr) << format;
  }
  const Bytes icon = test::BuildIco({.images = {test::PlainIcoImage(16, 32, 1, 2, 3)}});
  EXPECT_EQ(QtPictureLoader().Load(icon), nullptr);
  EXPECT_EQ(QtPictureLoader().Load(Bytes()), nullptr);
  EXPECT_EQ(QtPictureLoader().Load(Bytes{'B'}), nullptr);
  EXPECT_EQ(Load(Bytes(100, 'B')).pixels, Bytes());
}

TEST(QtPictureLoader, ABitmapWhoseRowsAreNotAllThereIsRefused) {
  const Bytes whole = BuildBmp({.width = 5, .height = 3, .bitCount = 24, .bits = Bytes(48, 7)});
  EXPECT_EQ(Load(whole).pixels.size(), 60U);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(Load(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))).pixels, Bytes())
        << length;
  }
}

TEST(QtPictureLoader, WhatBrokenRunsLeaveOutIsTheFirstColour) {
  Bytes palette = test::Join({kSixteenColours, Bytes(960)});
  // One pixel of four, and the end of the data.
  const Loaded loaded =
      Load(BuildBmp({.width = 4, .bitCount = 8, .compression = 1, .palette = palette, .bits = {1, 2}}));
  EXPECT_EQ(loaded.pixels, (Bytes{2, 32, 253, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0}));
}

// The most memory that this process has taken so far, in bytes.
std::int64_t PeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return std::int64_t{usage.ru_maxrss} * 1024;
}

TEST(QtPictureLoader, HeadersThatPromiseMoreThanTheirDataCanHoldCostNothing) {
  const auto side = [](Bytes file, std::int64_t at, std::uint16_t value) {
    file[static_cast<std::size_t>(at)] = static_cast<std::uint8_t>(value >> 8);
    file[static_cast<std::size_t>(at) + 1] = static_cast<std::uint8_t>(value);
    return file;
  };
  QImage small(8, 8, QImage::Format_RGB32);
  small.fill(Qt::red);
  Bytes jpeg = Jpeg(small);
  // Start of frame: marker, length, precision, height, width.
  const Bytes marker = {0xFF, 0xC0};
  const auto frame = std::search(jpeg.begin(), jpeg.end(), marker.begin(), marker.end()) - jpeg.begin();
  const std::vector<test::GifColour> table(4);
  const test::GifFrame gifFrame{.width = 1, .height = 1, .lzw = test::GifLzwEncode(2, {1})};
  const struct {
    const char* what;
    Bytes file;
  } rows[] = {
      {"24 bits", BuildBmp({.width = 16000, .height = 16000, .bitCount = 24, .bits = Bytes(4)})},
      {"1 bit", BuildBmp({.width = 16000, .height = 16000, .bitCount = 1, .palette = Bytes(8), .bits = Bytes(4)})},
      {"bit fields", BuildBmp({.width = 16000, .height = 16000, .compression = 3, .palette = Bytes(12)})},
      {"runs", BuildBmp({.width = 16000, .height = 16000, .bitCount = 8, .compression = 1, .palette = Bytes(1024)})},
      {"more than a gibibyte", BuildBmp({.width = 40000, .height = 40000, .bitCount = 8, .compression = 1})},
      {"sides without end", BuildBmp({.width = INT32_MAX, .height = INT32_MAX, .bitCount = 24})},
      {"JPEG", side(side(jpeg, frame + 5, 16000), frame + 7, 16000)},
      {"GIF", test::Join({test::GifHeader(16000, 16000, table), test::GifImage(gifFrame), test::GifTrailer()})},
  };
  const std::int64_t before = PeakMemory();
  for (const auto& row : rows) {
    EXPECT_EQ(Load(row.file).pixels, Bytes()) << row.what;
  }
  EXPECT_LT(PeakMemory() - before, std::int64_t{64} << 20);
}

TEST(QtPictureLoader, AJpegOfScansWithoutEndIsRefused) {
  QImage small(8, 8, QImage::Format_RGB32);
  small.fill(Qt::red);
  Bytes jpeg = Jpeg(small);
  EXPECT_NE(QtPictureLoader().Load(jpeg), nullptr);
  for (int i = 0; i < 300; ++i) {
    Append(jpeg, Bytes{0xFF, 0xDA});
  }
  EXPECT_EQ(QtPictureLoader().Load(jpeg), nullptr);
}

TEST(QtPictureLoader, CutOffAnywhereItNeitherFailsNorReadsBeyond) {
  QImage image(20, 20, QImage::Format_RGB32);
  image.fill(Qt::blue);
  const Bytes jpeg = Jpeg(image);
  for (std::size_t length = 0; length < jpeg.size(); ++length) {
    const Loaded loaded = Load(Bytes(jpeg.begin(), jpeg.begin() + static_cast<std::ptrdiff_t>(length)));
    EXPECT_TRUE(loaded.pixels.empty() || loaded.pixels.size() == 1600U) << length;
  }
}

}  // namespace
}  // namespace kelvane
