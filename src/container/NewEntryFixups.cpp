#include "container/NewEntryFixups.h"

#include <array>
#include <optional>
#include <vector>

#include "common/Bytes.h"
#include "container/GenWrite.h"
#include "container/RcoFormat.h"

namespace kelvane {

namespace {

using RootLongs = std::array<std::int32_t, rco::kRootLongs>;
using PointerLongs = std::array<std::int32_t, rco::kPointerLongs>;

// Indexes of the longs at 16, by the header field that each holds.
constexpr std::size_t RootIndex(std::int32_t headerField) {
  return static_cast<std::size_t>((headerField - rco::kRootLongsAt) / 4);
}
constexpr std::size_t kTextRoot = RootIndex(rco::hdrTextRoot);
constexpr std::size_t kVagRoot = RootIndex(rco::hdrVagRoot);
constexpr std::size_t kGmoRoot = RootIndex(rco::hdrGmoRoot);
constexpr std::size_t kImageRoot = RootIndex(rco::hdrImageRoot);
constexpr std::size_t kPageRoot = RootIndex(rco::hdrPageRoot);
constexpr std::size_t kAnimRoot = RootIndex(rco::hdrAnimRoot);
constexpr std::size_t kTextData = RootIndex(rco::hdrTextDataOffset);
constexpr std::size_t kLabels = RootIndex(rco::hdrLabelOffset);
constexpr std::size_t kEvents = RootIndex(rco::hdrEventOffset);

// Indexes of the longs at 80: the offset of each pointer table, its length in the next one.
enum PointerTable : std::size_t {
  kTextPtrs = 0,
  kImagePtrs = 2,
  kVagPtrs = 4,
  kGmoPtrs = 6,
  kPagePtrs = 8,
  kAnimPtrs = 10
};

void Add(std::int32_t& value, std::int32_t delta) {
  value = AddInt32(value, delta);
}

void AddIfAbove0(std::int32_t& value, std::int32_t delta) {
  if (value > 0) {
    Add(value, delta);
  }
}

// Adds `delta` to the pointers of a table that are `threshold` or greater; to all of them without one.
void MovePointers(RcoFile& file, std::int32_t offset, std::int32_t byteLength, std::int32_t delta,
                  std::optional<std::int32_t> threshold) {
  if (offset <= 0) {
    return;
  }
  const Int16 count = byteLength / 4;
  std::vector<std::int32_t> pointers(count.Index());
  file.ReadLongsAt(offset, pointers);
  for (std::int32_t& pointer : pointers) {
    if (!threshold || pointer >= *threshold) {
      Add(pointer, delta);
    }
  }
  file.WriteLongsAt(offset, pointers);
}

// The way back to the parent gets longer for the siblings behind the place. Gives the threshold for the pointers: 0,
// and so all of them, for an index above the count.
std::int32_t MoveSiblings(const NewEntry& entry, bool isPage, RcoFile& file, const RcoDocument& document) {
  if (entry.index > (isPage ? document.pageCount : document.genCount)) {
    return 0;
  }
  if (!isPage) {
    // The threshold is the label field of the entry at the place: so the pointer to that entry stays as it is, and
    // comes to point at the new one.
    const GenRsc& at = At(document.genRsc, entry.index.Int());
    for (Int16 i = entry.index + 1; i < document.genCount; ++i) {
      const GenRsc& record = At(document.genRsc, i.Int());
      if (record.rscKind != at.rscKind) {
        break;
      }
      AddToFileLong(file, std::int64_t{record.entryPos} + rco::FromEntryPos(rco::entryParent), entry.entryDelta, false);
    }
    return at.entryPos;
  }
  // Files in the field were made with the count of the general resources as the bound here.
  for (Int16 i = entry.index + 1; i < document.genCount; ++i) {
    const EntryRec& record = At(document.pageRecs, i.Int());
    if (record.recDepth != entry.depth.Int()) {
      break;
    }
    AddToFileLong(file, std::int64_t{record.recPos} + rco::entryParent, entry.entryDelta, false);
  }
  return At(document.pageRecs, entry.index.Int()).recPos;
}

// The lengths and child counts of the root, or of a page entry's parent. Grandparents keep theirs.
void GrowParents(const NewEntry& entry, int kind, const RootLongs& h, RcoFile& file, const RcoDocument& document) {
  if (kind != 0) {
    const std::int32_t root = kind == rco::kKindImage ? h[kImageRoot]
                              : kind == rco::kKindVag ? h[kVagRoot]
                                                      : h[kGmoRoot];
    AddToFileLong(file, std::int64_t{root} + rco::entryNext, entry.entryDelta, false);
    AddToFileLong(file, std::int64_t{root} + rco::entryChildren, entry.countDelta, false);
    return;
  }
  AddToFileLong(file, std::int64_t{h[kPageRoot]} + rco::entryNext, entry.entryDelta, true);
  if (entry.depth == Int16(0)) {
    AddToFileLong(file, std::int64_t{h[kPageRoot]} + rco::entryChildren, entry.countDelta, false);
    return;
  }
  const std::int64_t parent = At(document.pageRecs, entry.parent.Int()).recPos;
  AddToFileLong(file, parent + rco::entryChildren, entry.countDelta, false);
  AddToFileLong(file, parent + rco::entryNext, entry.entryDelta, true);
}

// A root that stands behind the place moves, and its way back to its own parent gets longer.
void MoveRoot(std::int32_t& root, std::int32_t delta, RcoFile& file) {
  if (root > 0) {
    AddToFileLong(file, std::int64_t{root} + rco::entryParent, delta, false);
    Add(root, delta);
  }
}

void MoveRootsAndAreas(const NewEntry& entry, int kind, RootLongs& h, RcoFile& file) {
  if (kind == rco::kKindImage || kind == rco::kKindGmo) {
    MoveRoot(h[kVagRoot], entry.entryDelta, file);
  }
  if (kind == rco::kKindImage) {
    MoveRoot(h[kGmoRoot], entry.entryDelta, file);
  }
  if (kind != 0) {
    MoveRoot(h[kTextRoot], entry.entryDelta, file);
    MoveRoot(h[kPageRoot], entry.entryDelta, file);
  }
  MoveRoot(h[kAnimRoot], entry.entryDelta, file);
  for (const std::size_t area : {kTextData, kLabels, kEvents}) {
    AddIfAbove0(h[area], AddInt32(entry.entryDelta, entry.ptrDelta));
  }
}

// The pointer tables: all move by the entry; the one of the kind grows, and those behind it move by that too.
void MovePointerTables(const NewEntry& entry, int kind, PointerLongs& p) {
  for (std::size_t table = kTextPtrs; table <= kAnimPtrs; table += 2) {
    AddIfAbove0(p[table], entry.entryDelta);
  }
  switch (kind) {
    case rco::kKindImage:
      AddIfAbove0(p[kGmoPtrs], entry.ptrDelta);
      AddIfAbove0(p[kVagPtrs], entry.ptrDelta);
      Add(p[kImagePtrs + 1], entry.ptrDelta);
      break;
    case rco::kKindVag:
      AddIfAbove0(p[kGmoPtrs], entry.ptrDelta);
      Add(p[kVagPtrs + 1], entry.ptrDelta);
      break;
    case rco::kKindGmo:
      Add(p[kGmoPtrs + 1], entry.ptrDelta);
      break;
    default:
      Add(p[kPagePtrs + 1], entry.ptrDelta);
      break;
  }
  if (kind != 0) {
    AddIfAbove0(p[kPagePtrs], entry.ptrDelta);
  }
  AddIfAbove0(p[kAnimPtrs], entry.ptrDelta);
}

void MoveDataAreas(RcoDocument& document, std::int32_t delta, RcoFile& file) {
  for (const std::size_t area : {0U, 2U, 4U}) {
    AddIfAbove0(document.dataAreas[area], delta);
  }
  file.WriteLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
}

}  // namespace

void FixForNewEntry(const NewEntry& entry, RcoFile& file, RcoDocument& document) {
  const bool isPage = entry.depth != Int16(-1);
  const std::int32_t threshold = MoveSiblings(entry, isPage, file, document);

  PointerLongs p{};
  file.ReadLongsAt(rco::kPointerLongsAt, p);
  for (std::size_t table = kTextPtrs; table <= kAnimPtrs; table += 2) {
    MovePointers(file, p[table], p[table + 1], entry.entryDelta, threshold);
  }

  RootLongs h{};
  file.ReadLongsAt(rco::kRootLongsAt, h);
  const int kind = isPage ? 0 : At(document.genRsc, entry.index.Int()).rscKind.Int();
  GrowParents(entry, kind, h, file, document);
  MoveRootsAndAreas(entry, kind, h, file);
  file.WriteLongsAt(rco::kRootLongsAt, h);

  MovePointerTables(entry, kind, p);
  file.WriteLongsAt(rco::kPointerLongsAt, p);
  MoveDataAreas(document, AddInt32(entry.entryDelta, entry.ptrDelta), file);
}

void FixForNewTextEntry(std::int32_t recordSize, std::int32_t countDelta, std::int32_t ptrDelta, RcoFile& file,
                        RcoDocument& document) {
  const std::int32_t textRoot = file.ReadI32At(rco::hdrTextRoot);
  // The distance between two languages is worked out in 16 bits.
  const Int16 languageSize = document.textCount * rco::kTextRecSize + rco::langRecords;
  for (std::int32_t language = 0; language < document.langCount; ++language) {
    const std::int64_t at = std::int64_t{textRoot} + rco::kEntryHeadSize + (languageSize * language).Int();
    AddToFileLong(file, at + rco::entryNext, recordSize, false);
    AddToFileLong(file, at + rco::langTextCount, countDelta, false);
  }

  const std::int32_t grow = CheckedInt32(std::int64_t{document.langCount} * recordSize);
  PointerLongs p{};
  file.ReadLongsAt(rco::kPointerLongsAt, p);
  for (const std::size_t table : {kPagePtrs, kAnimPtrs}) {
    MovePointers(file, p[table], p[table + 1], grow, std::nullopt);
  }

  std::array<std::int32_t, rco::kPageLongs> g{};  // page root, anim root, then offset and length of three areas
  file.ReadLongsAt(rco::kPageLongsAt, g);
  AddToFileLong(file, std::int64_t{textRoot} + rco::entryNext, grow, false);
  MoveRoot(g[0], grow, file);
  MoveRoot(g[1], grow, file);
  for (const std::size_t area : {2U, 4U, 6U}) {
    AddIfAbove0(g[area], AddInt32(grow, ptrDelta));
  }
  file.WriteLongsAt(rco::kPageLongsAt, g);

  for (std::size_t table = kImagePtrs; table <= kAnimPtrs; table += 2) {
    AddIfAbove0(p[table], AddInt32(grow, ptrDelta));
  }
  Add(p[kTextPtrs], grow);
  Add(p[kTextPtrs + 1], ptrDelta);
  file.WriteLongsAt(rco::kPointerLongsAt, p);
  MoveDataAreas(document, AddInt32(grow, ptrDelta), file);
}

}  // namespace kelvane
