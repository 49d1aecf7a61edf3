// replace, replace-all and add.
#include <filesystem>

#include "cli/CliFixture.h"
#include "container/RcoFormat.h"
#include "support/Deflate.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

using test::DeflateWrapped;

// A picture of 16 x 32 pixels with that many colours as a 32-bit bitmap.
Bytes Bitmap(std::uint32_t colours) {
  std::vector<std::uint32_t> pixels;
  for (std::uint32_t i = 0; i < 512; ++i) {
    pixels.push_back(i % colours + 1);
  }
  return test::BuildBmp32(16, 32, pixels);
}

// The same as a GIM of 32 bits a pixel.
Bytes Gim(std::uint32_t colours) {
  std::vector<std::uint32_t> pixels;
  for (std::uint32_t i = 0; i < 512; ++i) {
    const std::uint32_t pixel = i % colours + 1;
    pixels.push_back((pixel & 0xFF) << 16 | (pixel & 0xFF00));
  }
  return test::BuildRgbaGim(16, 32, pixels);
}

class ReplaceCommandsTest : public test::CliFixture {
 protected:
  ReplaceCommandsTest() { path = File("a.rco", Built()); }

  [[nodiscard]] Bytes Built() const {
    test::RcoBuilder builder;
    builder.AddImage({.label = "logo", .format = 0, .data = png});
    builder.AddImage({.label = "icon", .compression = compression, .data = gim, .unpackedSize = unpacked});
    builder.AddImage({.label = "last", .format = 0, .data = Bytes{1}});
    builder.AddVag({.label = "beep", .channel1 = left, .channel2 = right});
    builder.AddGmo({.label = "cube", .compression = 1, .data = gmo});
    return builder.Build().bytes;
  }
  void ExpectUnchanged() const {
    EXPECT_EQ(ReadWholeFile(path), Built());
    EXPECT_FALSE(FileExists(path + ".bak"));
  }
  void ExpectFile() const { EXPECT_TRUE(ReadWholeFile(path) == Built()); }
  // What the icon is once it was replaced.
  void SetIcon(const Bytes& plain) {
    gim = DeflateWrapped(plain);
    unpacked = static_cast<std::int32_t>(plain.size());
  }

  Bytes png = {1, 2, 3};
  Bytes gim = {4, 5, 6, 7, 8};
  std::uint16_t compression = 1;
  std::int32_t unpacked = 77;
  Bytes left = Bytes(16, 3);
  std::optional<Bytes> right = Bytes(20, 4);
  Bytes gmo = {9, 9};
  std::string path;
};

TEST_F(ReplaceCommandsTest, ReplaceStoresAFileAndMakesABackup) {
  const Bytes before = Built();
  png = Bytes(33, 7);
  const test::CliResult result = Run({"replace", path, "0", File("new.png", png)});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
  ExpectFile();
  EXPECT_EQ(ReadWholeFile(path + ".bak"), before);
}

TEST_F(ReplaceCommandsTest, WithNoBackupThereIsNone) {
  png = Bytes(33, 7);
  EXPECT_EQ(Run({"--no-backup", "replace", path, "0", File("new.png", png)}).status, 0);
  ExpectFile();
  EXPECT_FALSE(FileExists(path + ".bak"));
}

TEST_F(ReplaceCommandsTest, ReplaceOfASoundIsMonoOrWithRightStereo) {
  left = Bytes(9, 5);
  right = Bytes(11, 6);
  EXPECT_EQ(Run({"replace", path, "3", File("l.vag", left), "--right", File("r.vag", *right)}).status, 0);
  ExpectFile();
  EXPECT_EQ(Run({"replace", path, "3", File("l.vag", Bytes(8, 1))}).status, 0);
  EXPECT_EQ(Run({"extract", path, "3", (folder / "out.vag").string()}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "out.vag"), Bytes(8, 1));
}

TEST_F(ReplaceCommandsTest, AMissingChannelIsRefused) {
  const std::string there = File("l.vag", left);
  test::CliResult result = Run({"replace", path, "3", (folder / "none.vag").string()});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "warning: 左声道的VAG文件不存在！\n");
  result = Run({"replace", path, "3", there, "--right", (folder / "none.vag").string()});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "warning: 右声道的VAG文件不存在！\n");
  ExpectUnchanged();
}

TEST_F(ReplaceCommandsTest, ReplaceTellsWhatItRefuses) {
  struct Row {
    std::string name;
    Bytes content;
    std::string err;
  };
  for (const Row& row : {Row{"a.gim", {1, 2}, "warning: File is too small!\n"},
                         Row{"a.bmp", test::BuildBmp({.width = 1, .height = 1, .bits = 24, .rows = {{1, 2, 3}}}),
                             "warning: The colour depth MUST be 4, 8 or 32 bit!\n"}}) {
    const test::CliResult result = Run({"replace", path, "1", File(row.name, row.content)});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, row.err);
    EXPECT_EQ(result.out, "");
  }
  const test::CliResult missing = Run({"replace", path, "1", (folder / "none.gim").string()});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err, "warning: File is too small!\n");
  ExpectUnchanged();
}

TEST_F(ReplaceCommandsTest, WhatFailsBehindTheBackupIsAnError) {
  test::CliResult result = Run({"replace", path, "1", File("a.gim", Bytes(9))});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: 压缩失败\n");
  result = Run({"replace", path, "1", File("a.bmp", Bitmap(256))});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: GIM转换失败\n");
  ExpectFile();
  EXPECT_TRUE(FileExists(path + ".bak"));
}

TEST_F(ReplaceCommandsTest, ManyColoursAreAQuestionUnlessTheModeIsAnother) {
  const std::string bitmap = File("a.bmp", Bitmap(257));
  const std::string question = "question: 你选择的图像多于256色，不能替换为索引GIM图像。是否使用32位GIM图像代替？";
  test::CliResult result = Run({"replace", path, "1", bitmap});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, question + " [no]\n");
  ExpectUnchanged();
  SetIcon(Gim(257));
  result = Run({"replace", "--yes", path, "1", bitmap});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, question + " [yes]\n");
  ExpectFile();
  for (const char* mode : {"auto", "always"}) {
    result = Run({"replace", path, "1", bitmap, "--import32", mode});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    ExpectFile();
  }
}

TEST_F(ReplaceCommandsTest, TheSettingsAreOptions) {
  SetIcon(Gim(20));
  EXPECT_EQ(Run({"replace", path, "1", File("a.bmp", Bitmap(20)), "--import32", "always"}).status, 0);
  ExpectFile();
  gim = Gim(20);
  compression = 0;
  EXPECT_EQ(Run({"--no-compression", "replace", path, "1", File("a.gim", gim)}).status, 0);
  ExpectFile();
  std::vector<std::uint32_t> palette(256, 0x01020304);
  SetIcon(test::BuildIndexedGim(4, 1, 8, {5, 6, 7, 8}, [&] {
    std::vector<std::uint32_t> expected(256, 0x01040302);
    expected[5] = 0;
    return expected;
  }()));
  compression = 1;
  const Bytes bitmap = test::BuildBmp8(4, 1, {5, 6, 7, 8}, palette);
  EXPECT_EQ(Run({"--first-colour-transparent", "replace", path, "1", File("a.bmp", bitmap)}).status, 0);
  ExpectFile();
}

TEST_F(ReplaceCommandsTest, WithoutASourceNothingIsDoneAndTheStatusIs1) {
  for (const char* row : {"0", "1", "4"}) {
    const test::CliResult result = Run({"replace", path, row, ""});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out + result.err, "");
  }
  // A sound's dialog is left with OK.
  const test::CliResult result = Run({"replace", path, "3", ""});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "warning: 左声道的VAG文件不存在！\n");
  ExpectUnchanged();
}

TEST_F(ReplaceCommandsTest, AnImageOfAnUnknownFormatHasNoDialogWhichCountsAsCancelled) {
  test::RcoBuilder builder;
  builder.AddImage({.label = "odd", .format = 6, .data = Bytes(4)});
  builder.AddImage({.label = "png", .format = 0, .data = Bytes(4)});
  const Bytes odd = builder.Build().bytes;
  path = File("odd.rco", odd);
  const test::CliResult result = Run({"replace", path, "0", File("new.png", Bytes(5))});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(ReadWholeFile(path), odd);
  EXPECT_FALSE(FileExists(path + ".bak"));
}

TEST_F(ReplaceCommandsTest, ARowThatIsNotThereIsRefusedAndNoNumberIsWrongUsage) {
  const std::string file = File("new.png", Bytes(5));
  EXPECT_EQ(Run({"replace", path, "5", file}).status, 1);
  EXPECT_EQ(Run({"replace", path, "-1", file}).status, 1);
  EXPECT_EQ(Run({"replace", path, "x", file}).status, 2);
  EXPECT_EQ(Run({"replace", path, "0"}).status, 2);
  ExpectUnchanged();
}

TEST_F(ReplaceCommandsTest, AFailureWithoutAHandlerEndsWith3) {
  const std::string bitmap = File("a.bmp", test::BuildBmp({.width = 40000, .height = 1, .bits = 8}));
  const test::CliResult result = Run({"replace", path, "1", bitmap});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "Run-time error '6': Overflow\n");
  ExpectFile();
}

TEST_F(ReplaceCommandsTest, AFailureOfTheReplacementIsAQuestionAndEndsWith1WhateverIsAnswered) {
  // The first image is said to lie at the start of the file, so that nothing stands in front of it.
  Bytes wrong = Built();
  const std::int32_t imageArea = ReadI32(wrong, rco::kDataAreaLongsAt);
  const std::int32_t entry = ReadI32(wrong, rco::hdrImageRoot) + rco::kEntryHeadSize;
  ASSERT_EQ(ReadI32(wrong, entry + 48), 0);
  WriteI32(wrong, entry + 48, -imageArea);
  const std::string source = File("new.png", Bytes(33, 7));
  const std::string question = "error: 发生了未知错误！\nSubscript out of range (Code: 9)\n\n继续";
  path = File("a.rco", wrong);
  test::CliResult result = Run({"replace", path, "0", source});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, question + " [no]\n");
  EXPECT_TRUE(ReadWholeFile(path) == wrong);
  EXPECT_TRUE(ReadWholeFile(path + ".bak") == wrong);
  result = Run({"--yes", "replace", path, "0", source});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err.substr(0, question.size() + 7), question + " [yes]\n");
}

// replace-all.

TEST_F(ReplaceCommandsTest, ReplaceAllStoresWhatTheFolderHas) {
  std::filesystem::create_directory(folder / "in");
  png = Bytes(9, 1);
  folder.Write("in/logo.png", png);
  SetIcon(Gim(300));
  folder.Write("in/icon.bmp", Bitmap(300));
  left = Bytes(5, 6);
  right = Bytes(6, 7);
  folder.Write("in/beep.ch1.vag", left);
  folder.Write("in/beep.ch2.vag", *right);
  gmo = Bytes(7, 8);
  folder.Write("in/cube.dat", gmo);
  const test::CliResult result = Run({"replace-all", path, (folder / "in").string()});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "info: 完成\n");
  ExpectFile();
}

TEST_F(ReplaceCommandsTest, ReplaceAllOfAnEmptyFolderChangesNothing) {
  std::filesystem::create_directory(folder / "in");
  EXPECT_EQ(Run({"replace-all", path, (folder / "in").string()}).status, 0);
  ExpectUnchanged();
}

TEST_F(ReplaceCommandsTest, ReplaceAllWithoutAFolderIsRefused) {
  for (const std::string& none : {(folder / "none").string(), path, std::string()}) {
    const test::CliResult result = Run({"replace-all", path, none});
    EXPECT_EQ(result.status, 1) << none;
    EXPECT_EQ(result.err, "error: " + none + " is no folder\n");
  }
  ExpectUnchanged();
}

TEST_F(ReplaceCommandsTest, ReplaceAllKeepsWhatCameBeforeAFailure) {
  std::filesystem::create_directory(folder / "in");
  png = Bytes(9, 1);
  folder.Write("in/logo.png", png);
  folder.Write("in/beep.ch1.vag", Bytes(4));
  folder.Write("in/beep.ch2.vag", {});
  folder.Write("in/cube.dat", Bytes(7, 8));
  const test::CliResult result = Run({"replace-all", path, (folder / "in").string()});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "Run-time error '9': Subscript out of range\n");
  ExpectFile();
}

// add.

TEST_F(ReplaceCommandsTest, AddPutsAResourceInFrontOfARow) {
  const Bytes plain(100, 7);
  const test::CliResult result = Run({"add", path, File("n.gim", plain), "--at", "2", "--label", "fresh"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(Run({"list", path}).out,
            "0\t[PNG] logo\n1\t[GIM] icon\n2\t[GIM] fresh\n3\t[PNG] last\n4\t[VAG] beep\n5\t[GMO] cube\n");
  EXPECT_EQ(Run({"extract", path, "2", (folder / "o.gim").string(), "--as", "4"}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "o.gim"), plain);
  EXPECT_EQ(Run({"extract", path, "3", (folder / "o.png").string()}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "o.png"), Bytes{1});
}

TEST_F(ReplaceCommandsTest, AddTellsWhatItRefuses) {
  struct Row {
    std::string source;
    std::string at;
    std::string label;
    std::string err;
  };
  const std::string gimFile = File("n.gim", Bytes(100));
  const Bytes shallow = test::BuildBmp({.width = 1, .height = 1, .bits = 24, .rows = {{1, 2, 3}}});
  const std::string lazy =
      "info: Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.\n";
  for (const Row& row :
       {Row{gimFile, "2", "", "warning: 必须输入一个标记\n"},
        Row{(folder / "none.gim").string(), "2", "n", "warning: 文件不存在！\n"},
        Row{gimFile, "6", "n", "warning: 无效坐标\n"}, Row{gimFile, "5", "n", lazy}, Row{gimFile, "0", "n", lazy},
        Row{File("n.png", Bytes(100)), "2", "n", "warning: 无效的扩展名\n"},
        Row{File("n.bmp", shallow), "2", "n", "warning: GIM转换失败\n"}}) {
    const test::CliResult result = Run({"add", path, row.source, "--at", row.at, "--label", row.label});
    EXPECT_EQ(result.status, 1) << row.err;
    EXPECT_EQ(result.err, row.err);
  }
  ExpectUnchanged();
}

TEST_F(ReplaceCommandsTest, AddOfAGimTooShortToBeCompressedFailsInTheInsert) {
  const test::CliResult result = Run({"add", path, File("n.gim", Bytes(9)), "--at", "2", "--label", "n"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "error: 发生了未知错误！\nFile not found (Code: 53)\n\n继续 [no]\n");
  EXPECT_TRUE(FileExists(path + ".bak"));
}

TEST_F(ReplaceCommandsTest, AddToAFileWithoutResourcesIsRefusedAtEveryPlace) {
  const Bytes none = test::RcoBuilder().Build().bytes;
  path = File("none.rco", none);
  const std::string source = File("n.gim", Bytes(100));
  const std::string outside = "warning: 无效坐标\n";
  const std::string border =
      "info: Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.\n";
  for (const auto& [at, err] : {std::pair{"-1", outside}, {"0", border}, {"1", outside}}) {
    const test::CliResult result = Run({"add", path, source, "--at", at, "--label", "n"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, err);
  }
  EXPECT_EQ(ReadWholeFile(path), none);
}

TEST_F(ReplaceCommandsTest, AddNeedsItsPlaceAndItsLabel) {
  const std::string gimFile = File("n.gim", Bytes(100));
  EXPECT_EQ(Run({"add", path, gimFile, "--at", "2"}).status, 2);
  EXPECT_EQ(Run({"add", path, gimFile, "--label", "n"}).status, 2);
  EXPECT_EQ(Run({"add", path, "--at", "2", "--label", "n"}).status, 2);
  const test::CliResult beyond = Run({"add", path, gimFile, "--at", "40000", "--label", "n"});
  EXPECT_EQ(beyond.status, 3);
  EXPECT_EQ(beyond.err, "Run-time error '6': Overflow\n");
  ExpectUnchanged();
}

}  // namespace
}  // namespace kelvane
