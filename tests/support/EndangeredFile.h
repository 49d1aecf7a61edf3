// A change of an open file that comes to a bad end. Wherever it is cut short the file must be the old one or the new
// one, whole, and its backup, once it is there, the old one.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "common/Bytes.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane::test {

// How a change tells of a run-time failure.
enum class Failing {
  kThrows,
  kAsks,  // by the question whether to go on, which is answered with No
};

class EndangeredFile {
 public:
  // Changes the file of that path.
  using Change = std::function<void(const std::filesystem::path& path, ScriptedPrompts& prompts)>;

  // The new file is what the change makes of `before` when nothing disturbs it.
  EndangeredFile(Bytes before, Failing failing, Change change);

  [[nodiscard]] const Bytes& After() const { return after_; }

  // Killed in front of each system call that creates, writes, flushes, renames or deletes a file.
  void ExpectOldOrNewWhereverItIsKilled() const;
  // With no room at all, with too little for the backup, and with just enough for it.
  void ExpectOldOnAFullDisk() const;
  void ExpectOldInAReadOnlyFolder() const;
  void ExpectPermissionsAndSymbolicLinkToSurvive() const;

 private:
  // Puts the old file, and nothing else, into a folder.
  void Prepare() const;
  // The change, which meets that failure.
  void Run(const std::filesystem::path& path, std::optional<FailureCode> failure) const;
  void ExpectBackupToBeOldOrAbsent() const;

  TempFolder folder_;
  std::filesystem::path path_ = folder_ / "files/screen.rco";
  std::filesystem::path backup_ = folder_ / "files/screen.rco.bak";
  Bytes before_;
  Failing failing_;
  Change change_;
  Bytes after_;
};

}  // namespace kelvane::test
