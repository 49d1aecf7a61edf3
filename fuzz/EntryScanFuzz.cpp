// The page and animation tables of any file: the walk ends, and where it ends well its records and lines agree with its
// counts.
#include "FuzzFile.h"
#include "FuzzTarget.h"
#include "container/RcoFormat.h"
#include "pages/EntryScan.h"
#include "pages/PointerTable.h"

namespace kelvane {
namespace {

using fuzz::Require;
using fuzz::Succeeds;

// False if the walk ended in a failure.
bool Scan(RcoFile& file, std::int32_t endBound, RcoDocument& document, bool isPageTable) {
  file.Seek(isPageTable ? rco::hdrPagePtrs : rco::hdrAnimPtrs);
  return Succeeds([&] { ScanEntryTable(file, endBound, document, isPageTable, true); });
}

// Walks over thousands of empty operations are all alike, and each takes the time of a hundred other inputs: where an
// animation counts more operations than the file has room for, one input in 16 is walked.
bool IsWorthIt(RcoFile& file, ByteView input) {
  bool wild = false;
  Succeeds([&] {
    const std::int32_t offset = file.ReadI32At(rco::hdrAnimPtrs);
    for (const std::int32_t pointer : ReadPointers(file, offset, file.ReadI32At(rco::hdrAnimPtrs + 4))) {
      const std::int32_t children = file.ReadI32At(std::int64_t{pointer} + rco::entryChildren);
      wild = wild || children > file.Length() / rco::kEntryHeadSize;
    }
  });
  return !wild || input.back() % 16 == 0;
}

void ScanBoth(ByteView input) {
  fuzz::FuzzFile holder(input);
  RcoFile& file = holder.File();
  if (!IsWorthIt(file, input)) {
    return;
  }
  RcoDocument document;
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);

  const bool pages = Scan(file, file.ReadI32At(rco::hdrAnimRoot), document, true);
  Require(document.lstPage.Count() <= 32767, "rows of pages are 16-bit numbers");
  if (pages) {
    Require(document.lstPage.Count() == document.pageCount.Int(), "every page has a line");
    Require(document.pageRecs.size() == document.pageCount.Index(), "every page has a record");
    for (const EntryRec& record : document.pageRecs) {
      Require(record.recDepth >= 0 && record.recDepth < 7, "pages are 7 levels deep at most");
    }
  }

  const bool anims = Scan(file, file.ReadI32At(rco::hdrTextPtrs), document, false);
  Require(document.lstAnim.Count() <= 32767, "rows of animations are 16-bit numbers");
  if (anims) {
    Require(document.animRecs.size() <= 4096, "there are 4096 records at most");
    Require(document.animRecs.size() >= document.animCount.Index(), "every animation has a record");
    Require(document.lstAnim.Count() >= static_cast<int>(document.animRecs.size()), "every record has a line");
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::ScanBoth({data, size});
  return 0;
}
