// A file with texts, opened as far as texts need it.
#pragma once

#include <filesystem>

#include "common/Bytes.h"
#include "common/Files.h"
#include "common/Mod.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"
#include "container/RcoFormat.h"
#include "support/TempFolder.h"
#include "text/TextList.h"
#include "text/TextScan.h"

namespace kelvane::test {

// Reads what stands in front of the scan of texts, and scans.
inline void ScanTexts(const std::filesystem::path& path, RcoDocument& document) {
  RcoFile file(path);
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
  file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
  ScanTextRsc(file, document);
}

struct OpenTexts {
  // Without a scan.
  OpenTexts() = default;
  explicit OpenTexts(const Bytes& content) { Open(content); }

  void Open(const Bytes& content) {
    mod.cCurFile = folder.Write("texts.rco", content);
    ScanTexts(mod.cCurFile, document);
  }

  [[nodiscard]] Bytes Content() const { return ReadWholeFile(mod.cCurFile); }

  TempFolder folder;
  Mod mod;
  RcoDocument document;
};

}  // namespace kelvane::test
