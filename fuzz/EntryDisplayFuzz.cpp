// Every row of the page and animation lists of any file, shown: the rows stand for exactly the words of the entry,
// plain floats read back to their words, and the choices of references and the raw lists end.
#include <algorithm>
#include <bit>

#include "FuzzFile.h"
#include "FuzzTarget.h"
#include "common/Numbers.h"
#include "container/RcoFormat.h"
#include "pages/EntryDisplay.h"
#include "pages/EntryEdit.h"
#include "pages/EntryScan.h"
#include "pages/PlainFloat.h"
#include "pages/RandomInfo.h"

namespace kelvane {
namespace {

using fuzz::Require;
using fuzz::Succeeds;

// How many words of an input are looked at, and how many rows of an entry are asked for their choices. Entries that
// claim to be longer than this, which repeat the zeros behind the end of the file, are passed over: they take all the
// time.
constexpr std::int32_t kWords = 8192;
constexpr int kRows = 256;

std::int32_t WordCount(const EntryRec& record) {
  return record.recSize < rco::kSmallestWithBody ? 0 : (record.recSize - rco::kEntryHeadSize) / rco::kWordSize;
}

void CheckPlainRow(const std::string& text, RowKind kind, std::int32_t word) {
  if (kind == RowKind::Hexadecimal) {
    Require(text == HexWordText(word), "a hexadecimal row tells its word");
  } else {
    Require(kind == RowKind::Float, "a plain row is a float or hexadecimal");
    Require(std::bit_cast<std::int32_t>(SingleOf(LeadingNumber(text))) == word, "a float row reads back to its word");
  }
}

void CheckPageRows(RcoFile& file, const RcoDocument& document, const EntryRec& record) {
  std::int32_t word = document.entries.pageDataStart.Int();
  for (int row = 0; row < document.lstPageData.Count(); ++row) {
    const std::string& text = document.lstPageData.Text(row);
    const Row kind = RowOf(text);
    const std::int64_t position = std::int64_t{record.recPos} + rco::kEntryHeadSize + std::int64_t{word} * 4;
    if (text.starts_with('[')) {
      Require(kind.kind == RowKind::Reference || kind.kind == RowKind::Blank, "a row in brackets is a pair");
      const std::int32_t value = file.ReadI32At(position + 4);
      if (HasChoices(kind.type) && row < kRows) {
        Succeeds([&] { (void)ListChoices(file, document, kind.type, value); });
      }
      word += 2;
    } else {
      CheckPlainRow(text, kind.kind, file.ReadI32At(position));
      ++word;
    }
  }
  Require(document.lstPageData.Count() == 0 || word == WordCount(record), "the rows stand for all words");
}

// Whether a line's entry is looked at. A line need not have a record.
bool Afford(const std::vector<EntryRec>& recs, int line, std::int32_t& budget) {
  if (line >= static_cast<int>(recs.size())) {
    return true;
  }
  const std::int32_t words = WordCount(recs[static_cast<std::size_t>(line)]);
  if (words > budget) {
    return false;
  }
  budget -= words;
  return true;
}

void ShowPages(RcoFile& file, RcoDocument& document) {
  std::int32_t budget = kWords;
  for (int line = 0; line < document.lstPage.Count(); ++line) {
    if (!Afford(document.pageRecs, line, budget)) {
      continue;
    }
    document.lstPage.Select(line);
    document.lstPageData.Clear();
    if (Succeeds([&] { ShowPageEntry(file, document); })) {
      CheckPageRows(file, document, document.pageRecs.at(static_cast<std::size_t>(line)));
    }
  }
}

void ShowAnims(RcoFile& file, RcoDocument& document) {
  std::int32_t budget = kWords;
  for (int line = 0; line < document.lstAnim.Count(); ++line) {
    if (!Afford(document.animRecs, line, budget)) {
      continue;
    }
    document.lstAnim.Select(line);
    document.lstAnimData.Clear();
    if (Succeeds([&] { ShowAnimEntry(file, document); })) {
      const EntryRec& record = document.animRecs.at(static_cast<std::size_t>(line));
      Require(document.lstAnimData.Count() == WordCount(record), "every word has a row");
      for (int row = 0; row < document.lstAnimData.Count(); ++row) {
        const std::string& text = document.lstAnimData.Text(row);
        const std::int64_t position = std::int64_t{record.recPos} + rco::kEntryHeadSize + std::int64_t{row} * 4;
        CheckPlainRow(text, RowOf(text).kind, file.ReadI32At(position));
      }
    }
  }
}

void Scan(RcoFile& file, RcoDocument& document, bool isPageTable) {
  const std::int32_t endBound = file.ReadI32At(isPageTable ? rco::hdrAnimRoot : rco::hdrTextPtrs);
  file.Seek(isPageTable ? rco::hdrPagePtrs : rco::hdrAnimPtrs);
  Succeeds([&] { ScanEntryTable(file, endBound, document, isPageTable, false); });
}

void ShowAll(ByteView input) {
  fuzz::FuzzFile holder(input);
  RcoFile& file = holder.File();
  RcoDocument document;
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
  Scan(file, document, true);
  Scan(file, document, false);
  ShowPages(file, document);
  ShowAnims(file, document);
  Succeeds([&] { (void)ReadRandomInfo(file); });
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::ShowAll({data, size});
  return 0;
}
