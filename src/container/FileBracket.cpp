#include "container/FileBracket.h"

#include "common/Files.h"

namespace kelvane {

std::filesystem::path BackupPath(const std::filesystem::path& path) {
  std::filesystem::path backup = path;
  backup += ".bak";
  return backup;
}

void BackupOnce(const Mod& mod, Watch& watch) {
  const std::filesystem::path backup = BackupPath(mod.cCurFile);
  if (!FileExists(backup) && !mod.cNoUpdatBak) {
    CopyDurably(mod.cCurFile, backup);
  }
  watch.Stop();
}

void RecordFileDate(Mod& mod, Watch& watch) {
  mod.cFileDate = DateOfFile(mod.cCurFile);
  watch.Start();
}

}  // namespace kelvane
