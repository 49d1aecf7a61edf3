// `kelvane preview`: what the selection of a resource shows, and its picture.
#include <QImage>

#include "cli/CliFixture.h"
#include "support/Deflate.h"
#include "support/GimBuilder.h"
#include "support/PngBuilder.h"

namespace kelvane {
namespace {

using test::Rgba;

class PreviewCommandTest : public test::CliFixture {
 protected:
  PreviewCommandTest() {
    builder.AddImage({.label = "gim",
                      .compression = 1,
                      .data = test::DeflateWrapped(
                          test::BuildRgbaGim(3, 1, {Rgba(200, 100, 50, 128), Rgba(1, 2, 3), Rgba(9, 9, 9, 0)}))});
    builder.AddImage({.label = "grey", .format = 0, .data = GreyPng()});
    builder.AddImage({.label = "broken", .format = 4, .data = Bytes(100, 7)});
    builder.AddVag({.label = "beep", .channel1 = Bytes(16, 3), .channel2 = Bytes(20, 4)});
    builder.AddGmo({.label = "cube", .data = Bytes(40, 5)});
    built = builder.Build();
    path = File("a.rco", built.bytes);
  }

  // 1 by 2 pixels of grey 10 above grey 20.
  static Bytes GreyPng() {
    test::PngImage png;
    png.height = 2;
    png.colourType = 0;
    png.samples = {10, 20};
    return test::BuildPng(png);
  }
  [[nodiscard]] std::string Path(const std::string& name) const { return (folder / name).string(); }
  static std::string Hexadecimal(std::int32_t value) {
    std::ostringstream text;
    text << "0x" << std::hex << std::uppercase << value;
    return text.str();
  }
  [[nodiscard]] std::int32_t ImageArea() const {
    return built.layout.images[0].data - built.layout.images[0].dataOffset;
  }

  test::RcoBuilder builder;
  test::BuiltRco built;
  std::string path;
};

TEST_F(PreviewCommandTest, PrintsTheSixLabelsOfAGim) {
  const test::CliResult result = Run({"preview", path, "0"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  const test::GeneralPlace& place = built.layout.images[0];
  EXPECT_EQ(result.out, "lblGenItemNo\t项目 #0\nlblDim\t尺寸: 3x1\nlblGenCompr\t压缩\nlblGenOffsetEntry\t" +
                            Hexadecimal(place.entry) + "\nlblGenOffsetData\t" + Hexadecimal(place.data) +
                            "\nlblPreviewFail\thidden\n");
}

TEST_F(PreviewCommandTest, ASoundShowsTheNotice) {
  const test::CliResult result = Run({"preview", path, "3"});
  EXPECT_EQ(result.status, 0);
  const test::GeneralPlace& place = built.layout.vags[0];
  EXPECT_EQ(result.out, "lblGenItemNo\t项目 #3\nlblDim\t尺寸:未知\nlblGenCompr\tRLZ\nlblGenOffsetEntry\t" +
                            Hexadecimal(place.entry) + "\nlblGenOffsetData\t" +
                            Hexadecimal(ImageArea() + place.dataOffset) + "\nlblPreviewFail\tshown\n");
}

TEST_F(PreviewCommandTest, AModelShowsTheNotice) {
  const test::CliResult result = Run({"preview", path, "4"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("lblDim\t尺寸:未知\nlblGenCompr\t无\n"), std::string::npos);
  EXPECT_NE(result.out.find("lblPreviewFail\tshown\n"), std::string::npos);
}

TEST_F(PreviewCommandTest, AnImageThatCannotBeDecodedHasASizeOf0By0AndNoNotice) {
  const test::CliResult result = Run({"preview", path, "2"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("lblDim\t尺寸: 0x0\n"), std::string::npos);
  EXPECT_NE(result.out.find("lblPreviewFail\thidden\n"), std::string::npos);
}

TEST_F(PreviewCommandTest, PrintsTheSameAsJson) {
  const std::string out = Run({"--json", "preview", path, "1"}).out;
  EXPECT_TRUE(out.starts_with("[\n  {\n    \"name\": \"lblGenItemNo\",\n    \"text\": \"项目 #1\"\n  },\n")) << out;
}

TEST_F(PreviewCommandTest, WritesThePictureWithStraightAlpha) {
  EXPECT_EQ(Run({"preview", path, "0", Path("out.png")}).status, 0);
  QImage picture;
  ASSERT_TRUE(picture.load(QString::fromStdString(Path("out.png")), "PNG"));
  ASSERT_EQ(picture.size(), QSize(3, 1));
  // The preview draws 100, 50, 25 at alpha 128; that as straight colours is 199.2, 99.6 and 49.8.
  const QColor first = picture.pixelColor(0, 0);
  EXPECT_EQ(first.alpha(), 128);
  EXPECT_NEAR(first.red(), 199.2, 1);
  EXPECT_NEAR(first.green(), 99.6, 1);
  EXPECT_NEAR(first.blue(), 49.8, 1);
  EXPECT_EQ(picture.pixelColor(1, 0), QColor(1, 2, 3, 255));
  EXPECT_EQ(picture.pixelColor(2, 0).alpha(), 0);
}

TEST_F(PreviewCommandTest, APictureWithoutAlphaIsWrittenOpaque) {
  EXPECT_EQ(Run({"preview", path, "1", Path("out.png")}).status, 0);
  QImage picture;
  ASSERT_TRUE(picture.load(QString::fromStdString(Path("out.png")), "PNG"));
  ASSERT_EQ(picture.size(), QSize(1, 2));
  EXPECT_EQ(picture.pixelColor(0, 0), QColor(10, 10, 10, 255));
  EXPECT_EQ(picture.pixelColor(0, 1), QColor(20, 20, 20, 255));
}

TEST_F(PreviewCommandTest, WithoutAPictureNoneIsWrittenAndItEndsWith1) {
  for (const char* row : {"2", "3", "4"}) {
    const test::CliResult result = Run({"preview", path, row, Path("out.png")});
    EXPECT_EQ(result.status, 1) << row;
    EXPECT_EQ(result.err, "error: there is no picture to write\n") << row;
    EXPECT_EQ(result.out, Run({"preview", path, row}).out) << row;
  }
  EXPECT_FALSE(FileExists(folder / "out.png"));
}

TEST_F(PreviewCommandTest, APictureThatCannotBeWrittenEndsWith1) {
  const test::CliResult result = Run({"preview", path, "0", Path("none/out.png")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: " + Path("none/out.png") + ": the picture can't be written\n");
}

TEST_F(PreviewCommandTest, ARowThatIsNotThereIsRefused) {
  for (const char* row : {"5", "-1"}) {
    const test::CliResult result = Run({"preview", path, row});
    EXPECT_EQ(result.status, 1) << row;
    EXPECT_EQ(result.out, "") << row;
  }
  EXPECT_EQ(Run({"preview", path, "x"}).status, 2);
  EXPECT_EQ(Run({"preview", path}).status, 2);
}

TEST_F(PreviewCommandTest, TheFileIsLeftAsItWas) {
  for (const char* row : {"0", "1", "2", "3", "4"}) {
    (void)Run({"preview", path, row});
  }
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.rco"});
}

}  // namespace
}  // namespace kelvane
