// The bracket around every write to the open file.
#pragma once

#include "common/Mod.h"
#include "common/Watch.h"

namespace kelvane {

// Before the first write: copies cCurFile to cCurFile + ".bak" unless there is one already or backups are turned off,
// so that the .bak is the file as it was before the first change; then stops the watcher. Failures: those of copying.
void BackupOnce(const Mod& mod, Watch& watch);

// After the last write and after opening: records the file's date and starts the watcher. Failure 53.
void RecordFileDate(Mod& mod, Watch& watch);

// Copies `path` to `path` + ".bak" unless there is one already, whatever the settings say. Failures: those of copying.
void MakeBackup(const std::filesystem::path& path);

// `path` + ".bak".
[[nodiscard]] std::filesystem::path BackupPath(const std::filesystem::path& path);

}  // namespace kelvane
