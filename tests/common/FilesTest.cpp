#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "common/Files.h"
#include "support/ChildProcess.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using test::NumberOf;
using test::TempFolder;

const Bytes kContent = {1, 2, 3};

TEST(FileExists, TellsAFileFromNone) {
  const TempFolder folder;
  folder.Write("a.rco", kContent);
  EXPECT_TRUE(FileExists(folder / "a.rco"));
  EXPECT_FALSE(FileExists(folder / "b.rco"));
  EXPECT_FALSE(FileExists(""));
  EXPECT_FALSE(FileExists(folder / "missing/a.rco"));
}

TEST(FileExists, AFolderExistsButNotUnderANameThatEndsInASeparator) {
  const TempFolder folder;
  fs::create_directory(folder / "sub");
  EXPECT_TRUE(FileExists(folder / "sub"));
  EXPECT_FALSE(FileExists(folder / "sub/"));
}

TEST(FileExists, AFileWithoutContentExistsUnlessContentIsRequired) {
  const TempFolder folder;
  folder.Write("empty", {});
  EXPECT_TRUE(FileExists(folder / "empty"));
  EXPECT_FALSE(FileExists(folder / "empty", true));
  folder.Write("full", kContent);
  EXPECT_TRUE(FileExists(folder / "full", true));
}

TEST(FileExists, AWildcardIsMatchedAsSuch) {
  const TempFolder folder;
  folder.Write("page.rco", kContent);
  EXPECT_TRUE(FileExists(folder / "*.rco"));
  EXPECT_TRUE(FileExists(folder / "p?ge.rco"));
  EXPECT_TRUE(FileExists(folder / "*g*.rco", true));
  EXPECT_FALSE(FileExists(folder / "*.bmp"));
  EXPECT_FALSE(FileExists(folder / "?.rco"));
}

TEST(Files, ReadingGivesTheBytesWritten) {
  const TempFolder folder;
  Bytes large(100000);
  for (std::size_t i = 0; i < large.size(); ++i) {
    large[i] = static_cast<std::uint8_t>(i * 7);
  }
  WriteWholeFile(folder / "f", large);
  EXPECT_EQ(ReadWholeFile(folder / "f"), large);
  EXPECT_EQ(FileLength(folder / "f"), 100000);
  WriteWholeFile(folder / "f", kContent);
  EXPECT_EQ(ReadWholeFile(folder / "f"), kContent);
}

TEST(Files, ReadingTheStartGivesWhatIsThereOfIt) {
  const TempFolder folder;
  const fs::path path = folder.Write("f", kContent);
  EXPECT_EQ(ReadFileStart(path, 2), (Bytes{1, 2}));
  EXPECT_EQ(ReadFileStart(path, 54), kContent);
  EXPECT_EQ(NumberOf([&] { (void)ReadFileStart(folder / "none", 2); }), 53);
  EXPECT_EQ(NumberOf([&] { (void)ReadFileStart(folder.Path(), 2); }), 75);
}

TEST(Files, FailuresHaveTheirNumbers) {
  const TempFolder folder;
  folder.Write("file", kContent);
  EXPECT_EQ(NumberOf([&] { (void)ReadWholeFile(folder / "none"); }), 53);
  EXPECT_EQ(NumberOf([&] { (void)ReadWholeFile(folder / "file/inside"); }), 76);
  EXPECT_EQ(NumberOf([&] { (void)ReadWholeFile(folder.Path()); }), 75);
  EXPECT_EQ(NumberOf([&] { WriteWholeFile(folder / "none/file", kContent); }), 76);
  EXPECT_EQ(NumberOf([&] { WriteWholeFile(folder.Path(), kContent); }), 75);
  EXPECT_EQ(NumberOf([&] { (void)FileLength(folder / "none"); }), 53);
  EXPECT_EQ(NumberOf([&] { DeleteFile(folder / "none"); }), 53);
  EXPECT_EQ(NumberOf([&] { CopyWholeFile(folder / "none", folder / "b"); }), 53);
  EXPECT_EQ(NumberOf([&] { (void)DateOfFile(folder / "none"); }), 53);
  EXPECT_EQ(NumberOf([&] { SaveStaged(folder / "none/file", kContent); }), 76);
}

TEST(Files, OverwritingKeepsWhatALongerFileHoldsBehind) {
  const TempFolder folder;
  OverwriteFile(folder / "a", kContent);
  EXPECT_EQ(ReadWholeFile(folder / "a"), kContent);
  folder.Write("a", Bytes{9, 9, 9, 8, 7});
  OverwriteFile(folder / "a", kContent);
  EXPECT_EQ(ReadWholeFile(folder / "a"), (Bytes{1, 2, 3, 8, 7}));
  EXPECT_EQ(NumberOf([&] { OverwriteFile(folder / "none/file", kContent); }), 76);
  EXPECT_EQ(NumberOf([&] { OverwriteFile(folder.Path(), kContent); }), 75);
}

TEST(Files, AFullDiskIsFailure61) {
  if (!fs::exists("/dev/full")) {
    FAIL() << "this test needs /dev/full";
  }
  EXPECT_EQ(NumberOf([] { WriteWholeFile("/dev/full", kContent); }), 61);
}

TEST(Files, CopyingReplacesWhatStoodThere) {
  const TempFolder folder;
  folder.Write("a", kContent);
  folder.Write("b", Bytes(10));
  CopyWholeFile(folder / "a", folder / "b");
  EXPECT_EQ(ReadWholeFile(folder / "b"), kContent);
}

TEST(Files, DeletingQuietlyLeavesFoldersAndNeverFails) {
  const TempFolder folder;
  folder.Write("a", kContent);
  DeleteFileQuietly(folder / "a");
  DeleteFileQuietly(folder / "a");
  DeleteFileQuietly(folder.Path());
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
  EXPECT_TRUE(fs::exists(folder.Path()));
}

TEST(Files, DeletingWhatMayBeThere) {
  const TempFolder folder;
  folder.Write("a", kContent);
  DeleteFileIfThere(folder / "a");
  DeleteFileIfThere(folder / "a");
  DeleteFileIfThere(folder / "missing/a");
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
  EXPECT_EQ(NumberOf([&] { DeleteFileIfThere(folder.Path()); }), 75);
  folder.Write("file", kContent);
  DeleteFileIfThere(folder / "file/inside");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
}

TEST(Files, DeletingWhatMayBeThereTakesNoWildcard) {
  const TempFolder folder;
  folder.Write("ab", kContent);
  DeleteFileIfThere(folder / "a*");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"ab"});
}

TEST(SaveStaged, ReplacesTheContentAndLeavesNothingBeside) {
  const TempFolder folder;
  folder.Write("a.rco", Bytes(10));
  SaveStaged(folder / "a.rco", kContent);
  EXPECT_EQ(ReadWholeFile(folder / "a.rco"), kContent);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.rco"});
}

TEST(SaveStaged, KeepsPermissions) {
  const TempFolder folder;
  const fs::path path = folder.Write("a.rco", kContent);
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  SaveStaged(path, Bytes(5));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
}

TEST(SaveStaged, AFileThatMayNotBeWrittenToIsFailure70AndStays) {
  const TempFolder folder;
  const fs::path path = folder.Write("a.rco", kContent);
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);  // a file beside it could be made and renamed
  EXPECT_EQ(test::FailureWithoutRights([&] { SaveStaged(path, Bytes(5)); }), 70);
  EXPECT_EQ(test::FailureWithoutRights([&] { SaveStaged(folder / "b.rco", kContent); }), 0);
  EXPECT_EQ(ReadWholeFile(path), kContent);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a.rco", "b.rco"}));
}

TEST(SaveStaged, FollowsSymbolicLinks) {
  const TempFolder folder;
  fs::create_directory(folder / "real");
  folder.Write("real/a.rco", kContent);
  fs::create_symlink("real/a.rco", folder / "middle.rco");
  fs::create_symlink(folder / "middle.rco", folder / "link.rco");
  SaveStaged(folder / "link.rco", Bytes(5));
  EXPECT_TRUE(fs::is_symlink(folder / "link.rco"));
  EXPECT_TRUE(fs::is_symlink(folder / "middle.rco"));
  EXPECT_EQ(ReadWholeFile(folder / "real/a.rco"), Bytes(5));
}

TEST(SaveStaged, ALinkToItselfIsFailure75) {
  const TempFolder folder;
  fs::create_symlink("loop", folder / "loop");
  EXPECT_EQ(NumberOf([&] { SaveStaged(folder / "loop", kContent); }), 75);
}

TEST(SaveStaged, SavesUnderTheLongestNameThatAFileMayHave) {
  const TempFolder folder;
  const std::string name(255, 'n');
  folder.Write(name, kContent);
  SaveStaged(folder / name, Bytes(5));
  EXPECT_EQ(ReadWholeFile(folder / name), Bytes(5));
  EXPECT_EQ(folder.Names(), std::vector<std::string>{name});
  EXPECT_EQ(NumberOf([&] { SaveStaged(folder / (name + "n"), Bytes(5)); }), 75);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{name});
}

TEST(CopyDurably, CopiesContentAndPermissions) {
  const TempFolder folder;
  const fs::path path = folder.Write("a.rco", kContent);
  ASSERT_EQ(chmod(path.c_str(), 0600), 0);
  CopyDurably(path, folder / "a.rco.bak");
  EXPECT_EQ(ReadWholeFile(folder / "a.rco.bak"), kContent);
  EXPECT_EQ(fs::status(folder / "a.rco.bak").permissions(), fs::perms(0600));
}

}  // namespace
}  // namespace kelvane
