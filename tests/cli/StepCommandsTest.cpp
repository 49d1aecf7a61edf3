#include "cli/CliFixture.h"
#include "support/GimBuilder.h"

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

}  // namespace
}  // namespace kelvane
