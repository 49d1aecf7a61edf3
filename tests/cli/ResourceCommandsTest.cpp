#include <cstdlib>

#include "cli/CliFixture.h"
#include "support/Deflate.h"

namespace kelvane {
namespace {

class ResourceCommandsTest : public test::CliFixture {
 protected:
  ResourceCommandsTest() {
    model.insert(model.end(), {'O', 'M', 'G', '.'});
    model.resize(400, 7);
    builder.AddImage({.label = "logo", .format = 0, .data = Bytes{1, 2, 3}});
    builder.AddVag({.label = "beep", .channel1 = Bytes(16, 3), .channel2 = Bytes(20, 4)});
    builder.AddGmo({.label = "cube", .compression = 1, .data = test::DeflateWrapped(model), .unpackedSize = 400});
    path = File("a.rco", builder.Build().bytes);
  }
  [[nodiscard]] std::string Path(const std::string& name) const { return (folder / name).string(); }

  Bytes model;
  test::RcoBuilder builder;
  std::string path;
};

TEST_F(ResourceCommandsTest, ExtractWritesOneResource) {
  EXPECT_EQ(Run({"extract", path, "0", Path("logo.png")}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "logo.png"), (Bytes{1, 2, 3}));
}

TEST_F(ResourceCommandsTest, ExtractSplitsAStereoSound) {
  EXPECT_EQ(Run({"extract", path, "1", Path("beep.vag")}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "beep.ch1.vag"), Bytes(16, 3));
  EXPECT_EQ(ReadWholeFile(folder / "beep.ch2.vag"), Bytes(20, 4));
  EXPECT_FALSE(FileExists(folder / "beep.vag"));
}

TEST_F(ResourceCommandsTest, TheFilterChoosesTheForm) {
  EXPECT_EQ(Run({"extract", path, "2", Path("cube.omg")}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "cube.omg"), model);
  EXPECT_EQ(Run({"extract", path, "2", Path("cube.dat"), "--as", "2"}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "cube.dat"), test::DeflateWrapped(model));
}

TEST_F(ResourceCommandsTest, AFilterThatTheDialogDoesNotHaveIsWrongUsage) {
  EXPECT_EQ(Run({"extract", path, "2", Path("cube.dat"), "--as", "3"}).status, 2);
  EXPECT_EQ(Run({"extract", path, "2", Path("cube.dat"), "--as", "0"}).status, 2);
  EXPECT_FALSE(FileExists(folder / "cube.dat"));
}

TEST_F(ResourceCommandsTest, ARowThatIsNotThereIsRefused) {
  const test::CliResult result = Run({"extract", path, "3", Path("x")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: ROW 3 is not there: the file has 3\n");
  EXPECT_EQ(Run({"extract", path, "-1", Path("x")}).status, 1);
}

TEST_F(ResourceCommandsTest, WithoutADestinationNothingIsExtracted) {
  const test::CliResult result = Run({"extract", path, "0", ""});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out + result.err, "");
  const test::CliResult all = Run({"extract-all", path, ""});
  EXPECT_EQ(all.status, 1);
  EXPECT_EQ(all.out + all.err, "");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.rco"});
}

TEST_F(ResourceCommandsTest, AnImageOfAnUnknownFormatIsNotExtracted) {
  test::RcoBuilder unknown;
  unknown.AddImage({.label = "unknown", .format = 6, .data = Bytes{1, 2, 3}});
  unknown.AddImage({.label = "logo", .format = 0, .data = Bytes{4, 5, 6}});
  const test::CliResult result = Run({"extract", File("u.rco", unknown.Build().bytes), "0", Path("x")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out + result.err, "");
  EXPECT_FALSE(FileExists(folder / "x"));
}

TEST_F(ResourceCommandsTest, WhatCannotBeExtractedIsToldInTheEditorsWords) {
  test::RcoBuilder broken;
  broken.AddImage({.label = "empty", .data = {}});
  broken.AddImage({.label = "undecodable", .compression = 1, .data = {0x78, 0xDA, 0x07, 0, 0, 0}});
  broken.AddImage({.label = "no image", .data = Bytes{'M', 'I', 'G', '!'}});
  const std::string file = File("b.rco", broken.Build().bytes);
  const std::vector<std::string> words = {"数据获取失败", "解压失败", "无效的GIM"};
  for (std::size_t row = 0; row < words.size(); ++row) {
    const test::CliResult result = Run({"extract", file, std::to_string(row), Path("x")});
    EXPECT_EQ(result.status, 1) << row;
    EXPECT_EQ(result.err, "error: " + words[row] + "\n");
    EXPECT_FALSE(FileExists(folder / "x")) << row;
  }
}

TEST_F(ResourceCommandsTest, TheFileItselfIsNoDestination) {
  const Bytes before = ReadWholeFile(path);
  EXPECT_EQ(Run({"extract", path, "2", path}).status, 1);
  EXPECT_EQ(Run({"extract", path, "0", path}).status, 1);
  EXPECT_EQ(ReadWholeFile(path), before);
}

TEST_F(ResourceCommandsTest, ExtractAllWritesEverything) {
  const test::CliResult result = Run({"extract-all", path, Path("out")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "info: 完成\n");
  EXPECT_EQ(ReadWholeFile(folder / "out/logo.png"), (Bytes{1, 2, 3}));
  EXPECT_EQ(ReadWholeFile(folder / "out/beep.ch2.vag"), Bytes(20, 4));
  EXPECT_EQ(ReadWholeFile(folder / "out/cube.gim"), model);
}

TEST_F(ResourceCommandsTest, OnATerminalExtractAllShowsHowFarItIs) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(cli::RunCli({"extract-all", path, Path("out")}, {.in = in, .out = out, .err = err, .errIsTerminal = true}),
            0);
  const auto bar = [](int done, const char* count) {
    return "\r[" + std::string(static_cast<std::size_t>(done), '#') +
           std::string(static_cast<std::size_t>(40 - done), ' ') + "] " + count;
  };
  // 40 characters wide: a third of it is 13, two thirds are 26.
  EXPECT_EQ(err.str(), bar(0, "0/3") + bar(13, "1/3") + bar(26, "2/3") + bar(40, "3/3") + "\ninfo: 完成\n");
  EXPECT_EQ(out.str(), "");
}

TEST_F(ResourceCommandsTest, AFolderThatCannotBeMadeIsARunTimeError) {
  const test::CliResult result = Run({"extract-all", path, Path("a.rco/out")});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "Run-time error '76': Path not found\n");
}

TEST_F(ResourceCommandsTest, PlainLeavesAPlainFileAsItIs) {
  const Bytes before = ReadWholeFile(path);
  const test::CliResult result = Run({"plain", path});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(ReadWholeFile(path), before);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.rco"});
}

TEST_F(ResourceCommandsTest, PlainConvertsADeflatedHeadWithoutBeingAsked) {
  const Bytes plain = builder.Build().bytes;
  builder.Options().deflatedHead = true;
  const std::string deflated = File("d.rco", builder.Build().bytes);
  const test::CliResult result = Run({"plain", deflated});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(Run({"list", deflated}).out, Run({"list", path}).out);
  EXPECT_EQ(Run({"extract", deflated, "0", Path("l.png")}).status, 0);
  EXPECT_EQ(ReadWholeFile(folder / "l.png"), (Bytes{1, 2, 3}));
}

TEST_F(ResourceCommandsTest, TheFolderForTemporaryFilesIsRemoved) {
  std::filesystem::create_directory(folder / "tmp");
  setenv("TMPDIR", (folder / "tmp").c_str(), 1);
  EXPECT_EQ(Run({"extract", path, "2", Path("cube.omg")}).status, 0);
  EXPECT_EQ(Run({"inflate", path, Path("no")}).status, 1);
  unsetenv("TMPDIR");
  EXPECT_TRUE(std::filesystem::is_empty(folder / "tmp"));
}

}  // namespace
}  // namespace kelvane
