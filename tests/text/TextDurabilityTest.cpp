// A change of a text that is cut short leaves the old file or the new one, whole.

#include <gtest/gtest.h>

#include "OpenTexts.h"
#include "support/ChildProcess.h"
#include "support/RcoBuilder.h"
#include "support/ScriptedPrompts.h"
#include "text/TextEdit.h"

namespace kelvane {
namespace {

using test::RcoBuilder;
using test::ScriptedWatch;
using test::TempFolder;

Bytes FileWith(std::u16string text) {
  RcoBuilder b;
  b.AddImage({.label = "bg", .format = 0, .data = Bytes(5000, 7)});
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "msg", .strings = {u"はい", std::move(text)}});
  b.Options().headerLongs[rco::hdrTextDataLength] = 16;
  return b.Build().bytes;
}

class TextDurability : public ::testing::Test {
 protected:
  void Prepare() {
    std::filesystem::remove_all(folder_ / "files");
    std::filesystem::create_directory(folder_ / "files");
    WriteWholeFile(path_, old_);
    std::filesystem::permissions(path_, std::filesystem::perms(0644));
  }

  void Change() const {
    Mod mod;
    mod.cCurFile = path_;
    RcoDocument document;
    ScriptedWatch watch;
    test::ScanTexts(path_, document);
    SelectText(mod, document, 0);
    cmdTextChange(mod, document, watch, u"A longer text than before");
  }

  [[nodiscard]] Bytes Content() const { return ReadWholeFile(path_); }
  // The backup, once it is there, is the first version.
  void ExpectBackupWholeOrAbsent() const {
    if (FileExists(backup_)) {
      EXPECT_EQ(ReadWholeFile(backup_), old_);
    }
  }

  TempFolder folder_;
  std::filesystem::path path_ = folder_ / "files/texts.rco";
  std::filesystem::path backup_ = folder_ / "files/texts.rco.bak";
  Bytes old_ = FileWith(u"Yes");
  Bytes new_ = FileWith(u"A longer text than before");
};

TEST_F(TextDurability, KilledAtAnySystemCallTheFileIsTheOldOrTheNewOne) {
  bool sawOld = false;
  bool sawNew = false;
  const int calls = test::KillAtEveryCall([&] { Prepare(); }, [&] { Change(); },
                                          [&](int call) {
                                            const Bytes content = Content();
                                            sawOld = sawOld || content == old_;
                                            sawNew = sawNew || content == new_;
                                            EXPECT_TRUE(content == old_ || content == new_)
                                                << "killed at call " << call;
                                            ExpectBackupWholeOrAbsent();
                                          });
  // Backup and file are each created, written, flushed and renamed.
  EXPECT_GE(calls, 8);
  EXPECT_TRUE(sawOld);
  EXPECT_TRUE(sawNew);
  EXPECT_EQ(Content(), new_);
  EXPECT_EQ(ReadWholeFile(backup_), old_);
}

TEST_F(TextDurability, OnAFullDiskTheFileIsTheOldOneAndNothingIsLeftBehind) {
  // No room for the backup, then room for the backup and not for the longer file.
  const auto size = static_cast<std::int64_t>(old_.size());
  for (const std::int64_t room : {std::int64_t{0}, std::int64_t{1000}, size - 1, size}) {
    Prepare();
    EXPECT_EQ(test::FailureWithDiskOf(room, [&] { Change(); }), 61) << room;
    EXPECT_EQ(Content(), old_);
    EXPECT_EQ(FileExists(backup_), room == size);
    ExpectBackupWholeOrAbsent();
    const auto files = std::distance(std::filesystem::directory_iterator(folder_ / "files"), {});
    EXPECT_EQ(files, room == size ? 2 : 1);
  }
}

TEST_F(TextDurability, InAReadOnlyFolderTheFileIsTheOldOne) {
  Prepare();
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0755));
  EXPECT_EQ(test::FailureInReadOnlyFolder(folder_ / "files", [&] { Change(); }), 70);
  EXPECT_EQ(Content(), old_);
  EXPECT_FALSE(FileExists(backup_));
}

TEST_F(TextDurability, PermissionsAndASymbolicLinkSurvive) {
  Prepare();
  const auto link = folder_ / "files/link.rco";
  std::filesystem::permissions(path_, std::filesystem::perms(0640));
  std::filesystem::create_symlink("texts.rco", link);
  Mod mod;
  mod.cCurFile = link;
  RcoDocument document;
  ScriptedWatch watch;
  test::ScanTexts(link, document);
  SelectText(mod, document, 0);
  cmdTextChange(mod, document, watch, u"A longer text than before");
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(Content(), new_);
  EXPECT_EQ(std::filesystem::status(path_).permissions(), std::filesystem::perms(0640));
}

}  // namespace
}  // namespace kelvane
