// The page and animation tables of any file: the walk ends, and where it ends well its records and lines agree with its
// counts.
#include "FuzzFile.h"
#include "FuzzTarget.h"
#include "container/RcoFormat.h"
#include "pages/EntryScan.h"

namespace kelvane {
namespace {

using fuzz::Require;

// False if the walk ended in a failure.
bool Scan(RcoFile& file, std::int32_t endBound, RcoDocument& document, bool isPageTable) {
  file.Seek(isPageTable ? rco::hdrPagePtrs : rco::hdrAnimPtrs);
  return fuzz::Succeeds([&] { ScanEntryTable(file, endBound, document, isPageTable, true); });
}

void ScanBoth(ByteView input) {
  fuzz::FuzzFile holder(input);
  RcoFile& file = holder.File();
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
