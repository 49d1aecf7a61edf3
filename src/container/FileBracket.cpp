#include "container/FileBracket.h"

#include <system_error>

#include "common/Files.h"

namespace kelvane {

std::filesystem::path BackupPath(const std::filesystem::path& path) {
  std::filesystem::path backup = path;
  backup += ".bak";
  return backup;
}

void MakeBackup(const std::filesystem::path& path) {
  // Not FileExists: a name may hold '*' or '?', and another file's backup is none of this one.
  const std::filesystem::path backup = BackupPath(path);
  std::error_code error;
  if (!std::filesystem::exists(backup, error)) {
    CopyDurably(path, backup);
  }
}

void BackupOnce(const Mod& mod, Watch& watch) {
  if (!mod.cNoUpdatBak) {
    MakeBackup(mod.cCurFile);
  }
  watch.Stop();
}

void RecordFileDate(Mod& mod, Watch& watch) {
  mod.cFileDate = DateOfFile(mod.cCurFile);
  watch.Start();
}

}  // namespace kelvane
