#include "container/GenScan.h"

#include <array>
#include <string>

#include "common/Bytes.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"

namespace kelvane {

namespace {

constexpr int kTables = 3;
// A table's position is its root + 4, so that this tells an absent root.
constexpr std::int32_t kLargestAbsentPosition = 10;

// The prefix of a line of lst; empty for an image of a format that gets no line.
std::string LinePrefix(int table, int format) {
  constexpr std::array<const char*, 6> kImagePrefixes = {"[PNG] ", "[JPG] ", "[TIF] ", "[GIF] ", "[BMP] ", "[GIM] "};
  if (table == rco::kKindVag - 1) {
    return "[VAG] ";
  }
  if (table == rco::kKindGmo - 1) {
    return "[GMO] ";
  }
  return format >= 0 && format < static_cast<int>(kImagePrefixes.size())
             ? kImagePrefixes[static_cast<std::size_t>(format)]
             : "";
}

// Reads the entry whose label field the file is positioned on, adds its line, and moves on to the next entry's.
void ScanEntry(RcoFile& file, RcoDocument& document, int table, GenRsc& record) {
  record.entryPos = CheckedInt32(file.Position());
  record.labelOffset = file.ReadI32();
  const std::string name = ReadLabel(file, AddInt32(document.labelBase, record.labelOffset));
  file.Skip(rco::entryNext - rco::entryHeadSize);
  const std::int32_t entryLength = file.ReadI32();
  file.Skip(rco::bodyFormat - rco::entryPrev);
  record.rscFormat = file.ReadI16();
  record.rscCompression = file.ReadI16();
  record.dataSize = file.ReadI32();
  record.dataOffset = file.ReadI32();
  record.unpackedSize = file.ReadI32();
  if (entryLength <= rco::kShortEntrySize) {
    // The four bytes just read belong to the next entry. The last entry of a table has a length of 0 and comes out the
    // same, even when it is compressed.
    record.unpackedSize = -1;
  }
  record.rscKind = table + 1;
  // An image of any other format has a record and no line: from there on rows and records no longer agree.
  if (const std::string prefix = LinePrefix(table, record.rscFormat.Int()); !prefix.empty()) {
    document.lst.Add(prefix + name);
  }
  // Behind a table's last entry this goes backwards, where nothing is read.
  file.Seek(CheckedInt32(file.Position() + entryLength - rco::kShortEntrySize));
}

}  // namespace

bool ScanGenRsc(RcoFile& file, RcoDocument& document) {
  document.lst.Clear();

  std::array<std::int32_t, kTables> roots{};  // in the file's order: VAG, GMO, image
  file.ReadLongsAt(rco::hdrVagRoot, roots);
  const std::array<std::int32_t, kTables> positions = {
      AddInt32(roots[2], rco::entryLabel), AddInt32(roots[0], rco::entryLabel), AddInt32(roots[1], rco::entryLabel)};

  if (document.dataAreas[0] < 1 && document.dataAreas[2] < 1 && document.dataAreas[4] < 1) {
    return false;
  }

  std::array<std::int32_t, kTables> counts{};
  for (std::size_t table = 0; table < kTables; ++table) {
    if (positions[table] > kLargestAbsentPosition) {
      counts[table] = file.ReadI32At(AddInt32(positions[table], rco::entryChildren - rco::entryLabel));
    }
  }

  document.genCount = Int16(AddInt32(AddInt32(counts[0], counts[1]), counts[2]));
  if (document.genCount < Int16(1)) {
    return false;
  }

  document.genRsc.assign(document.genCount.Index(), GenRsc());
  Int16 k;
  for (std::size_t table = 0; table < kTables; ++table) {
    if (positions[table] <= kLargestAbsentPosition) {
      continue;
    }
    file.Seek(AddInt32(positions[table], rco::kEntryHeadSize));
    for (std::int32_t i = 0; i < counts[table]; ++i) {
      ScanEntry(file, document, static_cast<int>(table), At(document.genRsc, k.Int()));
      ++k;
    }
  }
  return true;
}

std::int32_t GetGenDataPos(const RcoDocument& document, Int16 index) {
  const GenRsc& record = At(document.genRsc, index.Int());
  return AddInt32(At(document.dataAreas, (std::int64_t{record.rscKind.Int()} - 1) * 2), record.dataOffset);
}

}  // namespace kelvane
