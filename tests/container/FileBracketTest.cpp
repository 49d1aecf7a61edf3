#include <gtest/gtest.h>

#include "common/Files.h"
#include "container/FileBracket.h"
#include "support/Failures.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::ScriptedWatch;
using test::TempFolder;

const Bytes kFirst = {1, 2, 3};

TEST(BackupOnce, CopiesTheFileAndStopsTheWatcher) {
  const TempFolder folder;
  Mod mod;
  mod.cCurFile = folder.Write("a.rco", kFirst);
  ScriptedWatch watch;
  watch.Start();
  BackupOnce(mod, watch);
  EXPECT_EQ(ReadWholeFile(folder / "a.rco.bak"), kFirst);
  EXPECT_FALSE(watch.Running());
}

TEST(BackupOnce, NeverRefreshesABackup) {
  const TempFolder folder;
  Mod mod;
  mod.cCurFile = folder.Write("a.rco", kFirst);
  folder.Write("a.rco.bak", Bytes{9});
  ScriptedWatch watch;
  BackupOnce(mod, watch);
  EXPECT_EQ(ReadWholeFile(folder / "a.rco.bak"), Bytes{9});
}

TEST(BackupOnce, ANameThatHoldsAWildcardHasABackupOfItsOwn) {
  const TempFolder folder;
  Mod mod;
  mod.cCurFile = folder.Write("menu?*.rco", kFirst);
  folder.Write("menu of another.rco.bak", Bytes{9});
  ScriptedWatch watch;
  BackupOnce(mod, watch);
  EXPECT_EQ(ReadWholeFile(folder / "menu?*.rco.bak"), kFirst);
}

TEST(BackupOnce, WithBackupsTurnedOffNoneIsMadeAndOneThatExistsIsLeftAloneAndTheWatcherIsStoppedAllTheSame) {
  const TempFolder folder;
  Mod mod;
  mod.cNoUpdatBak = true;
  mod.cCurFile = folder.Write("a.rco", kFirst);
  ScriptedWatch watch;
  watch.Start();
  BackupOnce(mod, watch);
  EXPECT_FALSE(FileExists(folder / "a.rco.bak"));
  EXPECT_FALSE(watch.Running());

  folder.Write("a.rco.bak", Bytes{9});
  BackupOnce(mod, watch);
  EXPECT_EQ(ReadWholeFile(folder / "a.rco.bak"), Bytes{9});
}

TEST(BackupOnce, AFailingCopyLeavesTheWatcherRunning) {
  const TempFolder folder;
  Mod mod;
  mod.cCurFile = folder / "gone.rco";
  ScriptedWatch watch;
  watch.Start();
  EXPECT_EQ(NumberOf([&] { BackupOnce(mod, watch); }), 53);
  EXPECT_TRUE(watch.Running());
}

TEST(MakeBackup, AsksNoSettingAndKeepsTheOneThatIsThere) {
  const TempFolder folder;
  const auto path = folder.Write("a.rco", kFirst);
  MakeBackup(path);
  EXPECT_EQ(ReadWholeFile(folder / "a.rco.bak"), kFirst);
  folder.Write("a.rco", Bytes{4});
  MakeBackup(path);
  EXPECT_EQ(ReadWholeFile(folder / "a.rco.bak"), kFirst);
}

TEST(RecordFileDate, RecordsTheDateAndStartsTheWatcher) {
  const TempFolder folder;
  Mod mod;
  mod.cCurFile = folder.Write("a.rco", kFirst);
  ScriptedWatch watch;
  RecordFileDate(mod, watch);
  EXPECT_EQ(mod.cFileDate, DateOfFile(folder / "a.rco"));
  EXPECT_TRUE(watch.Running());
}

}  // namespace
}  // namespace kelvane
