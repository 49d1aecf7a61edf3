// A conversion of a deflated head that is cut short leaves the old file or the new one, whole; the backup, once it is
// there, is the first version.
#include <gtest/gtest.h>

#include "common/Files.h"
#include "editor/DeflatedHead.h"
#include "support/ChildProcess.h"
#include "support/RcoSeeds.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

test::RcoBuilder SomeFile() {
  test::RcoBuilder b = test::SmallRcoOfEverything();
  b.AddImage({.label = "large", .data = Bytes(5000, 7)});
  return b;
}

Bytes Deflated() {
  test::RcoBuilder b = SomeFile();
  b.Options().deflatedHead = true;
  return b.Build().bytes;
}

class DeflatedHeadDurability : public ::testing::Test {
 protected:
  DeflatedHeadDurability() { fs::permissions(folder_.Path(), fs::perms(0755)); }

  void Prepare(const Bytes& content) {
    for (const char* name : {"files", "program"}) {
      fs::remove_all(folder_ / name);
      fs::create_directory(folder_ / name);
    }
    WriteWholeFile(path_, content);
    fs::permissions(path_, fs::perms(0644));
  }

  void Convert() const {
    Mod mod;
    mod.cAppPath = folder_ / "program/";
    test::ScriptedPrompts prompts;
    RcoFile file(path_);
    EXPECT_TRUE(ConvertDeflatedHeader(file, mod, prompts));
  }

  // The same for a block that can't be unpacked, which is told.
  void FailToConvert() const {
    Mod mod;
    mod.cAppPath = folder_ / "program/";
    test::ScriptedPrompts prompts;
    prompts.ExpectTell("解压失败", Icon::Critical);
    RcoFile file(path_);
    EXPECT_FALSE(ConvertDeflatedHeader(file, mod, prompts));
  }

  [[nodiscard]] Bytes Content() const { return ReadWholeFile(path_); }

  void ExpectBackupIsFirstVersionOrAbsent(const Bytes& first) const {
    if (FileExists(backup_)) {
      EXPECT_TRUE(ReadWholeFile(backup_) == first);
    }
  }

  // Files in the folder of the converted one.
  [[nodiscard]] std::ptrdiff_t FilesBeside() const {
    return std::distance(fs::directory_iterator(folder_ / "files"), {});
  }

  const test::TempFolder folder_;
  const fs::path path_ = folder_ / "files/screen.rco";
  const fs::path backup_ = folder_ / "files/screen.rco.bak";
  const Bytes old_ = Deflated();
  const Bytes new_ = SomeFile().Build().bytes;
};

TEST_F(DeflatedHeadDurability, KilledAtAnySystemCallTheFileIsTheOldOrTheNewOneAndCanBeConvertedAgain) {
  bool sawOld = false;
  bool sawNew = false;
  const int calls = test::KillAtEveryCall([&] { Prepare(old_); }, [&] { Convert(); },
                                          [&](int call) {
                                            const bool isOld = Content() == old_;
                                            const bool isNew = Content() == new_;
                                            sawOld = sawOld || isOld;
                                            sawNew = sawNew || isNew;
                                            EXPECT_TRUE(isOld || isNew) << "killed at call " << call;
                                            ExpectBackupIsFirstVersionOrAbsent(old_);
                                            EXPECT_TRUE(isOld || FileExists(backup_));
                                            if (isOld) {
                                              Convert();
                                            }
                                            EXPECT_TRUE(Content() == new_) << "killed at call " << call;
                                            EXPECT_TRUE(ReadWholeFile(backup_) == old_);
                                            EXPECT_TRUE(fs::is_empty(folder_ / "program") || isNew);
                                          });
  // Backup and file are each created, written, flushed and renamed; two temporary files are made, written and deleted.
  EXPECT_GE(calls, 14);
  EXPECT_TRUE(sawOld);
  EXPECT_TRUE(sawNew);
}

TEST_F(DeflatedHeadDurability, KilledWhileABlockCannotBeUnpackedTheFileIsTheOldOneOrTheBackupHoldsIt) {
  Bytes broken = old_;
  broken[178] = 0xFF;  // a block of type 3
  bool sawGone = false;
  const int calls = test::KillAtEveryCall([&] { Prepare(broken); }, [&] { FailToConvert(); },
                                          [&](int call) {
                                            const bool gone = !FileExists(path_);
                                            sawGone = sawGone || gone;
                                            EXPECT_TRUE(gone || Content() == broken) << "killed at call " << call;
                                            EXPECT_TRUE(!gone || FileExists(backup_)) << "killed at call " << call;
                                            ExpectBackupIsFirstVersionOrAbsent(broken);
                                          });
  EXPECT_GE(calls, 9);
  EXPECT_TRUE(sawGone);
}

TEST_F(DeflatedHeadDurability, ABackupThatExistsIsTheFirstVersionAtEveryCall) {
  const Bytes first = {1, 2, 3};
  test::KillAtEveryCall(
      [&] {
        Prepare(old_);
        WriteWholeFile(backup_, first);
      },
      [&] { Convert(); },
      [&](int call) {
        EXPECT_TRUE(Content() == old_ || Content() == new_) << "killed at call " << call;
        EXPECT_EQ(ReadWholeFile(backup_), first) << "killed at call " << call;
      });
}

TEST_F(DeflatedHeadDurability, OnAFullDiskTheFileIsTheOldOneAndNothingIsLeftBehind) {
  // No room for the backup, then room for the backup and not for the longer file.
  const auto size = static_cast<std::int64_t>(old_.size());
  ASSERT_GT(new_.size(), old_.size());
  for (const std::int64_t room : {std::int64_t{0}, std::int64_t{1000}, size - 1, size}) {
    Prepare(old_);
    EXPECT_EQ(test::FailureWithDiskOf(room, [&] { Convert(); }), 61) << room;
    EXPECT_TRUE(Content() == old_);
    EXPECT_EQ(FileExists(backup_), room == size);
    ExpectBackupIsFirstVersionOrAbsent(old_);
    EXPECT_EQ(FilesBeside(), room == size ? 2 : 1);
    EXPECT_TRUE(fs::is_empty(folder_ / "program"));
  }
}

TEST_F(DeflatedHeadDurability, InAReadOnlyFolderTheFileIsTheOldOne) {
  Prepare(old_);
  fs::permissions(folder_ / "program", fs::perms(0777));
  EXPECT_EQ(test::FailureInReadOnlyFolder(folder_ / "files", [&] { Convert(); }), 70);
  EXPECT_TRUE(Content() == old_);
  EXPECT_EQ(FilesBeside(), 1);
  // With the backup there already it is the file itself that can't be replaced.
  WriteWholeFile(backup_, old_);
  EXPECT_EQ(test::FailureInReadOnlyFolder(folder_ / "files", [&] { Convert(); }), 70);
  EXPECT_TRUE(Content() == old_);
  EXPECT_TRUE(fs::is_empty(folder_ / "program"));
}

TEST_F(DeflatedHeadDurability, WithAReadOnlyFolderForTemporaryFilesTheFileIsTheOldOne) {
  Prepare(old_);
  fs::permissions(folder_ / "files", fs::perms(0777));
  fs::permissions(path_, fs::perms(0666));
  EXPECT_EQ(test::FailureInReadOnlyFolder(folder_ / "program", [&] { Convert(); }), 70);
  EXPECT_TRUE(Content() == old_);
  EXPECT_TRUE(ReadWholeFile(backup_) == old_);
  EXPECT_EQ(FilesBeside(), 2);
}

TEST_F(DeflatedHeadDurability, AFileThatMayNotBeWrittenToIsTheOldOne) {
  Prepare(old_);
  fs::permissions(folder_ / "files", fs::perms(0777));
  fs::permissions(folder_ / "program", fs::perms(0777));
  fs::permissions(path_, fs::perms(0444));
  EXPECT_EQ(test::FailureWithoutRights([&] { Convert(); }), 70);
  EXPECT_TRUE(Content() == old_);
  EXPECT_TRUE(fs::is_empty(folder_ / "program"));
}

TEST_F(DeflatedHeadDurability, PermissionsAndASymbolicLinkSurvive) {
  Prepare(old_);
  fs::permissions(path_, fs::perms(0640));
  const fs::path link = folder_ / "files/link.rco";
  fs::create_symlink("screen.rco", link);
  Mod mod;
  mod.cAppPath = folder_ / "program/";
  test::ScriptedPrompts prompts;
  RcoFile file(link);
  EXPECT_TRUE(ConvertDeflatedHeader(file, mod, prompts));
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_TRUE(Content() == new_);
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0640));
}

}  // namespace
}  // namespace kelvane
