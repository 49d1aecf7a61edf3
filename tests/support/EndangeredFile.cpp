#include "support/EndangeredFile.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

#include "common/Files.h"
#include "support/ChildProcess.h"

namespace kelvane::test {

namespace fs = std::filesystem;

EndangeredFile::EndangeredFile(Bytes before, Failing failing, Change change)
    : before_(std::move(before)), failing_(failing), change_(std::move(change)) {
  fs::permissions(folder_.Path(), fs::perms(0755));
  Prepare();
  Run(path_, std::nullopt);
  after_ = ReadWholeFile(path_);
  EXPECT_FALSE(after_ == before_);
}

void EndangeredFile::Prepare() const {
  fs::remove_all(folder_ / "files");
  fs::create_directory(folder_ / "files");
  WriteWholeFile(path_, before_);
  fs::permissions(path_, fs::perms(0644));
}

void EndangeredFile::Run(const fs::path& path, std::optional<FailureCode> failure) const {
  const bool asks = failure.has_value() && failing_ == Failing::kAsks;
  {
    ScriptedPrompts prompts;
    if (asks) {
      prompts.ExpectUnknownFailure(*failure, Answer::No);
    }
    change_(path, prompts);
  }
  if (::testing::Test::HasFailure()) {
    throw std::logic_error("the change didn't go as expected");  // in a child process nothing else would tell
  }
  if (asks) {
    throw RuntimeFailure(*failure);
  }
}

void EndangeredFile::ExpectBackupToBeOldOrAbsent() const {
  if (FileExists(backup_)) {
    EXPECT_TRUE(ReadWholeFile(backup_) == before_);
  }
}

void EndangeredFile::ExpectOldOrNewWhereverItIsKilled() const {
  bool sawOld = false;
  bool sawNew = false;
  const int calls = KillAtEveryCall([&] { Prepare(); }, [&] { Run(path_, std::nullopt); },
                                    [&](int call) {
                                      const Bytes content = ReadWholeFile(path_);
                                      sawOld = sawOld || content == before_;
                                      sawNew = sawNew || content == after_;
                                      EXPECT_TRUE(content == before_ || content == after_) << "killed at call " << call;
                                      ExpectBackupToBeOldOrAbsent();
                                    });
  // Backup and file are each created, written, flushed and renamed.
  EXPECT_GE(calls, 8);
  EXPECT_TRUE(sawOld);
  EXPECT_TRUE(sawNew);
  EXPECT_TRUE(ReadWholeFile(path_) == after_);  // the last time it wasn't killed
  EXPECT_TRUE(ReadWholeFile(backup_) == before_);
}

void EndangeredFile::ExpectOldOnAFullDisk() const {
  const auto size = static_cast<std::int64_t>(before_.size());
  for (const std::int64_t room : {std::int64_t{0}, size / 2, size - 1, size}) {
    SCOPED_TRACE(room);
    Prepare();
    const bool fits = room >= static_cast<std::int64_t>(after_.size());
    const std::optional<FailureCode> failure = fits ? std::nullopt : std::optional(FailureCode::DiskFull);
    EXPECT_EQ(FailureWithDiskOf(room, [&] { Run(path_, failure); }), fits ? 0 : 61);
    EXPECT_TRUE(ReadWholeFile(path_) == (fits ? after_ : before_));
    EXPECT_EQ(FileExists(backup_), room >= size);
    ExpectBackupToBeOldOrAbsent();
    // Nothing half written is left behind.
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_ / "files"), {}), room >= size ? 2 : 1);
  }
}

void EndangeredFile::ExpectOldInAReadOnlyFolder() const {
  Prepare();
  EXPECT_EQ(FailureInReadOnlyFolder(folder_ / "files", [&] { Run(path_, FailureCode::PermissionDenied); }), 70);
  EXPECT_TRUE(ReadWholeFile(path_) == before_);
  EXPECT_FALSE(FileExists(backup_));
}

void EndangeredFile::ExpectPermissionsAndSymbolicLinkToSurvive() const {
  Prepare();
  const fs::path link = folder_ / "files/link.rco";
  fs::permissions(path_, fs::perms(0640));
  fs::create_symlink("screen.rco", link);
  Run(link, std::nullopt);
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_TRUE(ReadWholeFile(path_) == after_);
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0640));
  EXPECT_TRUE(ReadWholeFile(folder_ / "files/link.rco.bak") == before_);
}

}  // namespace kelvane::test
