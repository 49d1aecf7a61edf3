#include "cli/CliFixture.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

class StepCommandsTest : public test::CliFixture {
 protected:
  [[nodiscard]] std::string Path(const std::string& name) const { return (folder / name).string(); }
};

TEST_F(StepCommandsTest, DeflateAndInflateAreEachOthersInverse) {
  Bytes plain(5000);
  for (std::size_t i = 0; i < plain.size(); ++i) {
    plain[i] = static_cast<std::uint8_t>(i / 100);
  }
  EXPECT_EQ(Run({"deflate", File("plain", plain), Path("packed")}).status, 0);
  const Bytes packed = ReadWholeFile(folder / "packed");
  EXPECT_EQ(packed[0], 0x78);
  EXPECT_EQ(packed[1], 0xDA);
  EXPECT_LT(packed.size(), plain.size());
  EXPECT_EQ(Run({"inflate", Path("packed"), Path("again")}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "again"), plain);
}

TEST_F(StepCommandsTest, AFileThatCannotBeCompressedIsToldInTheEditorsWords) {
  const test::CliResult result = Run({"deflate", File("plain", Bytes(9)), Path("packed")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: 压缩失败\n");
  EXPECT_FALSE(FileExists(folder / "packed"));
}

TEST_F(StepCommandsTest, AFileThatCannotBeUnpackedIsToldInTheEditorsWords) {
  const test::CliResult result = Run({"inflate", File("packed", Bytes{0, 0, 0xFF, 0xFF, 0xFF}), Path("plain")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: 解压失败\n");
}

TEST_F(StepCommandsTest, AFileIsNotUnpackedIntoItself) {
  const Bytes packed = {0x78, 0xDA, 0xFF, 0xFF, 0xFF};
  const std::string path = File("packed", packed);
  const test::CliResult result = Run({"inflate", path, path});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "Run-time error '70': Permission denied\n");
  EXPECT_EQ(ReadWholeFile(path), packed);
}

TEST_F(StepCommandsTest, GimToBmpConvertsInBothModes) {
  const std::vector<std::uint32_t> colours(256, test::Rgba(9, 8, 7, 6));
  const std::string gim = File("a.gim", test::BuildIndexedGim(2, 1, 8, {0, 1}, colours));
  EXPECT_EQ(Run({"gim", "to-bmp", gim, Path("keep.bmp")}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "keep.bmp").size(), 54U + 1024U + 4U);
  EXPECT_EQ(Run({"gim", "to-bmp", gim, Path("wide.bmp"), "--force32"}).status, 0);
  const Bytes wide = ReadWholeFile(folder / "wide.bmp");
  EXPECT_EQ(Bytes(wide.begin() + 54, wide.end()), (Bytes{7, 8, 9, 6, 7, 8, 9, 6}));
}

TEST_F(StepCommandsTest, AFileThatIsNoGimIsToldInTheEditorsWords) {
  const test::CliResult result = Run({"gim", "to-bmp", File("a.gim", Bytes(200)), Path("a.bmp")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: 无效的GIM\n");
}

// `count` colours that a bitmap keeps, and the same as a GIM does.
std::vector<std::uint32_t> BmpColours(std::uint32_t count) {
  std::vector<std::uint32_t> colours;
  for (std::uint32_t i = 0; i < count; ++i) {
    colours.push_back(test::Bgra(static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i / 256), 7, 9));
  }
  return colours;
}
std::vector<std::uint32_t> GimColours(std::uint32_t count) {
  std::vector<std::uint32_t> colours;
  for (std::uint32_t i = 0; i < count; ++i) {
    colours.push_back(test::Rgba(7, static_cast<std::uint8_t>(i / 256), static_cast<std::uint8_t>(i), 9));
  }
  return colours;
}

TEST_F(StepCommandsTest, GimFromBmpStoresTilesOrRows) {
  const std::string bmp = File("a.bmp", test::BuildBmp8(3, 2, {5, 1, 2, 3, 4, 5}, BmpColours(256)));
  EXPECT_EQ(Run({"gim", "from-bmp", bmp, Path("tiled.gim")}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "tiled.gim"),
            test::BuildIndexedGim(3, 2, 8, {5, 1, 2, 3, 4, 5}, GimColours(256), true));
  EXPECT_EQ(Run({"gim", "from-bmp", bmp, Path("linear.gim"), "--linear"}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "linear.gim"),
            test::BuildIndexedGim(3, 2, 8, {5, 1, 2, 3, 4, 5}, GimColours(256), false));
}

TEST_F(StepCommandsTest, GimFromBmpClearsTheFirstColourWhereThatIsSet) {
  const std::string bmp = File("a.bmp", test::BuildBmp8(3, 2, {5, 1, 2, 3, 4, 5}, BmpColours(256)));
  EXPECT_EQ(Run({"gim", "from-bmp", bmp, Path("a.gim"), "--first-colour-transparent"}).status, 0);
  std::vector<std::uint32_t> colours = GimColours(256);
  colours[5] = 0;
  EXPECT_EQ(ReadWholeFile(folder / "a.gim"), test::BuildIndexedGim(3, 2, 8, {5, 1, 2, 3, 4, 5}, colours));
}

TEST_F(StepCommandsTest, GimFromBmpIndexesA32BitBitmapWhereThatIsAsked) {
  // Colours in the order of the file, whose bottom row comes first.
  const std::vector<std::uint32_t> bmpColours = BmpColours(32);
  const std::vector<std::uint32_t> gimColours = GimColours(32);
  std::vector<std::uint32_t> bmpPixels(bmpColours.begin() + 16, bmpColours.end());
  bmpPixels.insert(bmpPixels.end(), bmpColours.begin(), bmpColours.begin() + 16);
  std::vector<std::uint32_t> gimPixels(gimColours.begin() + 16, gimColours.end());
  gimPixels.insert(gimPixels.end(), gimColours.begin(), gimColours.begin() + 16);
  const std::string bmp = File("a.bmp", test::BuildBmp32(16, 2, bmpPixels));
  EXPECT_EQ(Run({"gim", "from-bmp", bmp, Path("direct.gim")}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "direct.gim"), test::BuildRgbaGim(16, 2, gimPixels));

  EXPECT_EQ(Run({"gim", "from-bmp", bmp, Path("indexed.gim"), "--index"}).status, 0);
  std::vector<std::uint32_t> indexes;
  for (std::uint32_t i = 0; i < 32; ++i) {
    indexes.push_back((i + 16) % 32);
  }
  std::vector<std::uint32_t> palette = gimColours;
  palette.resize(256);
  EXPECT_EQ(ReadWholeFile(folder / "indexed.gim"), test::BuildIndexedGim(16, 2, 8, indexes, palette));
}

TEST_F(StepCommandsTest, ABitmapThatCannotBecomeAGimIsToldInTheEditorsWords) {
  const std::string bmp = File("a.bmp", test::BuildBmp({.width = 1, .height = 1, .bits = 24, .rows = {{1, 2, 3}}}));
  const test::CliResult result = Run({"gim", "from-bmp", bmp, Path("a.gim")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: GIM转换失败\n");
  EXPECT_FALSE(FileExists(folder / "a.gim"));
  const test::CliResult many =
      Run({"gim", "from-bmp", "--index", File("b.bmp", test::BuildBmp32(16, 16, BmpColours(256))), Path("a.gim")});
  EXPECT_EQ(many.status, 1);
  EXPECT_EQ(many.err, "error: GIM转换失败\n");
}

TEST_F(StepCommandsTest, ATopDownBitmapIsARunTimeError) {
  const test::CliResult result =
      Run({"gim", "from-bmp", File("a.bmp", test::BuildBmp({.width = 4, .height = -4})), Path("a.gim")});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "Run-time error '9': Subscript out of range\n");
}

TEST_F(StepCommandsTest, GimColoursPrintsTheCountAndWhatTheSettingsMakeOfIt) {
  // 36 pixels of 3 colours take less room without a palette, 42 with one.
  std::vector<std::uint32_t> pixels(36, 1);
  pixels[7] = 2;
  pixels[35] = 3;
  const std::string small = File("small.bmp", test::BuildBmp32(6, 6, pixels));
  pixels.resize(42, 3);
  const std::string large = File("large.bmp", test::BuildBmp32(6, 7, pixels));
  EXPECT_EQ(Run({"gim", "colours", small}).out, "3\tpalette\n");
  EXPECT_EQ(Run({"gim", "colours", small, "--import32", "ask"}).out, "3\tpalette\n");
  EXPECT_EQ(Run({"gim", "colours", small, "--import32", "auto"}).out, "3\tdirect\n");
  EXPECT_EQ(Run({"gim", "colours", large, "--import32", "auto"}).out, "3\tpalette\n");
  EXPECT_EQ(Run({"gim", "colours", large, "--import32", "always"}).out, "3\tdirect\n");
  const std::string many = File("many.bmp", test::BuildBmp32(300, 1, BmpColours(300)));
  EXPECT_EQ(Run({"gim", "colours", many}).out, "257\tdirect\n");
  const std::string paletted = File("8.bmp", test::BuildBmp8(1, 1, {0}, BmpColours(256)));
  const test::CliResult result = Run({"gim", "colours", paletted});
  EXPECT_EQ(result.out, "0\tpalette\n");
  EXPECT_EQ(result.status, 0);
}

TEST_F(StepCommandsTest, GimColoursTellsOfADepthThatHasNoPlace) {
  const std::string bmp = File("a.bmp", test::BuildBmp({.width = 1, .height = 1, .bits = 24, .rows = {{1, 2, 3}}}));
  const test::CliResult result = Run({"gim", "colours", bmp});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "warning: The colour depth MUST be 4, 8 or 32 bit!\n");
}

}  // namespace
}  // namespace kelvane
