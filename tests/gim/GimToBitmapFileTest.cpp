// GimToBitmap from file to file.
#include <gtest/gtest.h>

#include "common/Files.h"
#include "gim/ExpectedBitmap.h"
#include "gim/GimToBitmap.h"
#include "support/GimBuilder.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using namespace test;
using Names = std::vector<std::string>;

const Bytes kGim = BuildRgbaGim(1, 1, {Rgba(1, 2, 3, 4)});
const Bytes kBitmap = Joined({Header32(1, 1), {3, 2, 1, 4}});
const Bytes kOld(500, 0x77);

TEST(GimToBitmapFile, WritesTheBitmapAndDeletesTempS) {
  const TempFolder folder;
  const TempFolder program;
  program.Write("tempS.gim", kOld);
  const auto source = folder.Write("a.gim", kGim);
  EXPECT_TRUE(GimToBitmap(source, folder / "a.bmp", false, program.Path()));
  EXPECT_EQ(ReadWholeFile(folder / "a.bmp"), kBitmap);
  EXPECT_EQ(ReadWholeFile(source), kGim);
  EXPECT_EQ(program.Names(), Names{});
}

TEST(GimToBitmapFile, NothingOfALongerFileThatWasThereStays) {
  const TempFolder folder;
  const auto destination = folder.Write("a.bmp", kOld);
  EXPECT_TRUE(GimToBitmap(folder.Write("a.gim", kGim), destination, true, folder.Path()));
  EXPECT_EQ(ReadWholeFile(destination), kBitmap);
}

TEST(GimToBitmapFile, AWrongSignatureLeavesTheDestinationUntouchedAndDeletesTempS) {
  const TempFolder folder;
  const auto destination = folder.Write("a.bmp", kOld);
  folder.Write("tempS.gim", kOld);
  EXPECT_FALSE(GimToBitmap(folder.Write("a.gim", Bytes{'M', 'I', 'G'}), destination, false, folder.Path()));
  EXPECT_EQ(ReadWholeFile(destination), kOld);
  EXPECT_EQ(folder.Names(), (Names{"a.bmp", "a.gim"}));
}

TEST(GimToBitmapFile, AFailureBehindTheHeaderLeavesTheHeaderAndDeletesTempS) {
  const TempFolder folder;
  const auto destination = folder.Write("a.bmp", kOld);
  folder.Write("tempS.gim", kOld);
  const auto source =
      folder.Write("a.gim", GimBuilder().Image({.width = 2, .height = 2, .bits = 8, .pixels = {0, 0, 0, 0}}).Build());
  EXPECT_FALSE(GimToBitmap(source, destination, true, folder.Path()));
  EXPECT_EQ(ReadWholeFile(destination), Header32(2, 2));
  EXPECT_EQ(folder.Names(), (Names{"a.bmp", "a.gim"}));
}

TEST(GimToBitmapFile, AMissingSourceIsFalseAndDeletesTempS) {
  const TempFolder folder;
  folder.Write("tempS.gim", kOld);
  EXPECT_FALSE(GimToBitmap(folder / "none.gim", folder / "a.bmp", false, folder.Path()));
  EXPECT_EQ(folder.Names(), Names{});
}

TEST(GimToBitmapFile, ADestinationThatCannotBeMadeIsFalse) {
  const TempFolder folder;
  const auto source = folder.Write("a.gim", kGim);
  EXPECT_FALSE(GimToBitmap(source, folder / "none/a.bmp", false, folder.Path()));
  std::filesystem::create_directory(folder / "folder");
  EXPECT_FALSE(GimToBitmap(source, folder / "folder", false, folder.Path()));
  EXPECT_EQ(folder.Names(), (Names{"a.gim", "folder"}));
}

TEST(GimToBitmapFile, ALinkAtTheDestinationIsReplacedAndNotFollowed) {
  const TempFolder folder;
  const auto other = folder.Write("other", kOld);
  std::filesystem::create_symlink(other, folder / "a.bmp");
  EXPECT_TRUE(GimToBitmap(folder.Write("a.gim", kGim), folder / "a.bmp", false, folder.Path()));
  EXPECT_FALSE(std::filesystem::is_symlink(folder / "a.bmp"));
  EXPECT_EQ(ReadWholeFile(folder / "a.bmp"), kBitmap);
  EXPECT_EQ(ReadWholeFile(other), kOld);
}

}  // namespace
}  // namespace kelvane
