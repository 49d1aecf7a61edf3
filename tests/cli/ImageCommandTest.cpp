// `kelvane image`: an image of any kind becomes a 32-bit bitmap.
#include <QBuffer>
#include <QImage>

#include "cli/CliFixture.h"
#include "support/BmpBuilder.h"
#include "support/GifBuilder.h"
#include "support/IcoBuilder.h"
#include "support/PngBuilder.h"

namespace kelvane {
namespace {

class ImageCommandTest : public test::CliFixture {
 protected:
  [[nodiscard]] std::string Path(const std::string& name) const { return (folder / name).string(); }
  // The command on a file of that content.
  test::CliResult Convert(const Bytes& content, const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments = {"image", File("source", content), Path("out.bmp")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Run(arguments);
  }
};

// 2 by 1 pixels: red 200, green 100, blue 50 at alpha 128, and an opaque one.
Bytes SmallPng() {
  test::PngImage png;
  png.width = 2;
  png.samples = {200, 100, 50, 128, 1, 2, 3, 255};
  return test::BuildPng(png);
}

std::string Printed(int width, int height, int alpha, int kind) {
  return "Width\t" + std::to_string(width) + "\nHeight\t" + std::to_string(height) + "\nAlpha\t" +
         std::to_string(alpha) + "\nImageType\t" + std::to_string(kind) + "\n";
}

TEST_F(ImageCommandTest, WritesTheBitmapAndPrintsWhatItIs) {
  const test::CliResult result = Convert(SmallPng());
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "Width\t2\nHeight\t1\nAlpha\t1\nImageType\t10\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(ReadWholeFile(folder / "out.bmp"),
            (Bytes{'B', 'M', 62, 0, 0, 0, 0, 0,  0, 0, 54, 0, 0,  0,  40,  0,   0, 0, 2, 0,  0,
                   0,   1,   0,  0, 0, 1, 0, 32, 0, 0, 0,  0, 0,  8,  0,   0,   0, 0, 0, 0,  0,
                   0,   0,   0,  0, 0, 0, 0, 0,  0, 0, 0,  0, 25, 50, 100, 128, 3, 2, 1, 255}));
}

TEST_F(ImageCommandTest, PrintsTheSameAsJson) {
  EXPECT_EQ(Convert(SmallPng(), {"--json"}).out,
            "[\n  {\n    \"name\": \"Width\",\n    \"value\": 2\n  },\n"
            "  {\n    \"name\": \"Height\",\n    \"value\": 1\n  },\n"
            "  {\n    \"name\": \"Alpha\",\n    \"value\": 1\n  },\n"
            "  {\n    \"name\": \"ImageType\",\n    \"value\": 10\n  }\n]\n");
}

TEST_F(ImageCommandTest, EveryKindOfImageIsTaken) {
  const Bytes gif =
      test::Join({test::GifHeader(2, 1, {{1, 2, 3}, {4, 5, 6}, {0, 0, 0}, {0, 0, 0}}),
                  test::GifComment("more than enough for a file"),
                  test::GifImage({.width = 2, .height = 1, .lzw = test::GifLzwEncode(2, {0, 1})}), test::GifTrailer()});
  QImage picture(20, 10, QImage::Format_RGB32);
  picture.fill(Qt::red);
  QByteArray jpeg;
  QBuffer buffer(&jpeg);
  buffer.open(QIODevice::WriteOnly);
  ASSERT_TRUE(picture.save(&buffer, "JPEG"));
  const struct {
    const char* what;
    Bytes content;
    std::string printed;
  } rows[] = {
      {"32-bit bitmap without alpha", test::BuildBmp({.bits = {1, 2, 3, 0}}), Printed(1, 1, 0, 1)},
      {"32-bit bitmap, not premultiplied", test::BuildBmp({.bits = {200, 0, 0, 100}}), Printed(1, 1, 1, 6)},
      {"32-bit bitmap, opaque", test::BuildBmp({.bits = {1, 2, 3, 255}}), Printed(1, 1, 1, 7)},
      {"24-bit bitmap", test::BuildBmp({.bitCount = 24, .bits = {1, 2, 3, 0}}), Printed(1, 1, 0, 1)},
      {"icon", test::BuildIco({.images = {test::PlainIcoImage(16, 8, 1, 2, 3)}}), Printed(16, 16, 0, 3)},
      {"icon with alpha", test::BuildIco({.images = {test::PlainIcoImage(16, 32, 1, 2, 3)}}), Printed(16, 16, 1, 8)},
      {"cursor", test::BuildIco({.type = 2, .images = {test::PlainIcoImage(16, 8, 1, 2, 3)}}), Printed(16, 16, 0, 5)},
      {"GIF", gif, Printed(2, 1, 0, 9)},
      {"JPEG", Bytes(jpeg.begin(), jpeg.end()), Printed(20, 10, 0, 1)},
  };
  for (const auto& row : rows) {
    const test::CliResult result = Convert(row.content);
    EXPECT_EQ(result.status, 0) << row.what;
    EXPECT_EQ(result.out, row.printed) << row.what;
  }
}

TEST_F(ImageCommandTest, TheWantedSizeChoosesAmongIcons) {
  const Bytes icon =
      test::BuildIco({.images = {test::PlainIcoImage(16, 32, 1, 2, 3), test::PlainIcoImage(32, 32, 1, 2, 3),
                                 test::PlainIcoImage(64, 32, 1, 2, 3)}});
  EXPECT_EQ(Convert(icon).out, Printed(32, 32, 1, 8));
  EXPECT_EQ(Convert(icon, {"--icon", "16x16"}).out, Printed(16, 16, 1, 8));
  EXPECT_EQ(Convert(icon, {"--icon", "128x32"}).out, Printed(64, 64, 1, 8));
  EXPECT_EQ(Convert(icon, {"--icon", "0x0"}).out, Printed(32, 32, 1, 8));
}

TEST_F(ImageCommandTest, AWantedSizeThatIsNoneIsWrongUsage) {
  for (const char* size : {"16", "16x", "x16", "16X16", "16x16x16", "ax16", "16 x 16", "99999999999x1"}) {
    const test::CliResult result = Convert(SmallPng(), {"--icon", size});
    EXPECT_EQ(result.status, 2) << size;
    EXPECT_EQ(result.out, "") << size;
  }
  EXPECT_FALSE(FileExists(folder / "out.bmp"));
}

TEST_F(ImageCommandTest, WhatCannotBeLoadedEndsWith1AndWritesNothing) {
  for (const Bytes& content : {Bytes(100, 7), Bytes(56, 0x42), Bytes()}) {
    const test::CliResult result = Convert(content);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "error: " + Path("source") + ": the image can't be loaded\n");
  }
  EXPECT_EQ(Run({"image", Path("missing"), Path("out.bmp")}).status, 1);
  EXPECT_FALSE(FileExists(folder / "out.bmp"));
}

TEST_F(ImageCommandTest, WhatCannotBeWrittenEndsWith1) {
  const test::CliResult result = Run({"image", File("source", SmallPng()), Path("none/out.bmp")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "error: " + Path("none/out.bmp") + ": the bitmap can't be written\n");
}

TEST_F(ImageCommandTest, AnExistingLongerFileIsNotTruncated) {
  (void)File("out.bmp", Bytes(70, 0xEE));
  EXPECT_EQ(Convert(SmallPng()).status, 0);
  const Bytes written = ReadWholeFile(folder / "out.bmp");
  ASSERT_EQ(written.size(), 70U);
  EXPECT_EQ(Bytes(written.begin() + 58, written.end()),
            (Bytes{3, 2, 1, 255, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}));
}

TEST_F(ImageCommandTest, WithoutATargetTheUsageIsWrong) {
  EXPECT_EQ(Run({"image", File("source", SmallPng())}).status, 2);
}

}  // namespace
}  // namespace kelvane
