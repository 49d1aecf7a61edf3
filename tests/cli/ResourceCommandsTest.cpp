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
  EXPECT_EQ(Run({"extract", path, "3", Path("x")}).status, 1);
}

TEST_F(ResourceCommandsTest, ExtractAllWritesEverything) {
  const test::CliResult result = Run({"extract-all", path, Path("out")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "info: 完成\n");
  EXPECT_EQ(ReadWholeFile(folder / "out/logo.png"), (Bytes{1, 2, 3}));
  EXPECT_EQ(ReadWholeFile(folder / "out/beep.ch2.vag"), Bytes(20, 4));
  EXPECT_EQ(ReadWholeFile(folder / "out/cube.gim"), model);
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
