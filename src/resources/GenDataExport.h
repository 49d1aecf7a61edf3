// Dumps the stored bytes of general resources into files.
#pragma once

#include <filesystem>

#include "common/Bytes.h"
#include "common/FileWriter.h"
#include "common/Mod.h"
#include "common/Prompts.h"
#include "common/Statements.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// Writes what the open file stores of one resource to `path`. A stereo sound goes into two files, `path` without its
// last four characters and ".ch1.vag" and ".ch2.vag" behind; `path` is shortened alike, if it is longer than that.
// False where the resource has no data, and where a failure was answered with No; bytes beyond the file's end are
// zeros. The open file itself is never written over: that is failure 70.
bool ExportGenData(const Mod& mod, const RcoDocument& document, std::filesystem::path& path, Int16 index,
                   Prompts& prompts);

// ExportGenData for many resources of one file, which is read once.
class GenDataExporter {
 public:
  // All that is referred to must outlive the exporter.
  GenDataExporter(const Mod& mod, const RcoDocument& document, Prompts& prompts)
      : mod_(mod), document_(document), prompts_(prompts) {}

  bool Export(std::filesystem::path& path, Int16 index);

  // What the last Export wrote to its one file; null where it didn't, wrote a stereo sound, or met any failure.
  [[nodiscard]] const Bytes* Written() const { return whole_ ? &data_ : nullptr; }

 private:
  [[nodiscard]] const GenRsc& Record(Int16 index) const;
  [[nodiscard]] bool HasData(Int16 index) const;
  void OpenSource();
  [[nodiscard]] bool IsStereo(Int16 index);
  // The statements that copy `size` bytes of the open file, from where `position()` tells, and close the target.
  template <class Position>
  void CopyToTarget(Statements& run, FileWriter& target, std::int32_t size, Position position);
  void ExportWhole(Statements& run, const std::filesystem::path& path, Int16 index);
  void ExportChannels(Statements& run, std::filesystem::path& path, Int16 index);

  const Mod& mod_;
  const RcoDocument& document_;
  Prompts& prompts_;
  RcoFile source_;
  Bytes data_;
  bool whole_ = false;
};

// Whether `path` is the open file, under whatever name.
[[nodiscard]] bool IsOpenFile(const Mod& mod, const std::filesystem::path& path);

}  // namespace kelvane
