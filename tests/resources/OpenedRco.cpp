#include "resources/OpenedRco.h"

#include "common/Files.h"
#include "container/GenScan.h"
#include "container/RcoFile.h"
#include "container/RcoFormat.h"

namespace kelvane::test {

namespace {

// Nothing but the resources changes in the document.
void Scan(const std::filesystem::path& path, RcoDocument& document) {
  RcoFile file(path);
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
  file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
  ScanGenRsc(file, document);
}

}  // namespace

OpenedRco::OpenedRco() {
  mod.cAppPath = program.Path() / "";
  mod.cCurFile = home / "page.rco";
}

void OpenedRco::Open() {
  built = builder.Build();
  WriteWholeFile(mod.cCurFile, built.bytes);
  Scan(mod.cCurFile, document);
}

RcoDocument ScannedResources(const std::filesystem::path& path) {
  RcoDocument document;
  Scan(path, document);
  return document;
}

Bytes SomeBytes(std::size_t count, std::uint32_t seed) {
  Bytes bytes(count);
  std::uint32_t state = seed * 2654435761U + 1;
  for (std::uint8_t& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(state >> 24);
    if (byte == 'M' || byte == 'O') {
      byte = 0;
    }
  }
  return bytes;
}

}  // namespace kelvane::test
