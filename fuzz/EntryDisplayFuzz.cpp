// Entries of the page and animation tables of any file, shown: the rows stand for exactly the words of the entry, plain
// floats read back to their words, and the choices of references and the raw lists end.
#include <algorithm>
#include <bit>

#include "FuzzFile.h"
#include "FuzzTarget.h"
#include "common/Numbers.h"
#include "container/RcoFormat.h"
#include "pages/EntryDisplay.h"
#include "pages/EntryEdit.h"
#include "pages/PlainFloat.h"
#include "pages/PointerTable.h"
#include "pages/RandomInfo.h"

namespace kelvane {
namespace {

using fuzz::Require;
using fuzz::Succeeds;

// How many words and lists of choices of an input are looked at, and how many entries, images and texts there are to
// choose from. Longer lists and bodies, which repeat the zeros behind the end of the file, take all the time.
constexpr std::int32_t kWords = 1024;
constexpr int kChoices = 16;
constexpr std::size_t kEntries = 16;
constexpr std::int32_t kPointerBytes = 1024;

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

void CheckChoices(RcoFile& file, const RcoDocument& document, std::int32_t type, std::int32_t value) {
  EditChoices choices;
  if (Succeeds([&] { choices = ListChoices(file, document, type, value); })) {
    Require(choices.values.size() >= choices.lines.size(), "every line has a value");
    Require(choices.selected >= -1 && choices.selected < static_cast<int>(choices.lines.size()),
            "the selected line is there");
  }
}

void CheckPageRows(RcoFile& file, const RcoDocument& document, const EntryRec& record, int& choices) {
  std::int32_t word = document.entries.pageDataStart.Int();
  for (int row = 0; row < document.lstPageData.Count(); ++row) {
    const std::string& text = document.lstPageData.Text(row);
    const Row kind = RowOf(text);
    const std::int64_t position = std::int64_t{record.recPos} + rco::kEntryHeadSize + std::int64_t{word} * 4;
    if (text.starts_with('[')) {
      Require(kind.kind == RowKind::Reference || kind.kind == RowKind::Blank, "a row in brackets is a pair");
      if (HasChoices(kind.type) && choices-- > 0) {
        CheckChoices(file, document, kind.type, file.ReadI32At(position + 4));
      }
      word += 2;
    } else {
      CheckPlainRow(text, kind.kind, file.ReadI32At(position));
      ++word;
    }
  }
  Require(document.lstPageData.Count() == 0 || word == WordCount(record), "the rows stand for all words");
}

// Whether an entry is looked at.
bool Afford(const EntryRec& record, std::int32_t& budget) {
  const std::int32_t words = WordCount(record);
  if (words > budget) {
    return false;
  }
  budget -= words;
  return true;
}

void ShowPages(RcoFile& file, RcoDocument& document) {
  std::int32_t budget = kWords;
  int choices = kChoices;
  for (std::size_t line = 0; line < document.pageRecs.size(); ++line) {
    const EntryRec& record = document.pageRecs[line];
    document.lstPage.Select(static_cast<int>(line));
    document.lstPageData.Clear();
    if (Afford(record, budget) && Succeeds([&] { ShowPageEntry(file, document); })) {
      CheckPageRows(file, document, record, choices);
    }
  }
}

void ShowAnims(RcoFile& file, RcoDocument& document) {
  std::int32_t budget = kWords;
  for (std::size_t line = 0; line < document.animRecs.size(); ++line) {
    const EntryRec& record = document.animRecs[line];
    document.lstAnim.Select(static_cast<int>(line));
    document.lstAnimData.Clear();
    if (!Afford(record, budget) || !Succeeds([&] { ShowAnimEntry(file, document); })) {
      continue;
    }
    Require(document.lstAnimData.Count() == WordCount(record), "every word has a row");
    for (int row = 0; row < document.lstAnimData.Count(); ++row) {
      const std::string& text = document.lstAnimData.Text(row);
      const std::int64_t position = std::int64_t{record.recPos} + rco::kEntryHeadSize + std::int64_t{row} * 4;
      CheckPlainRow(text, RowOf(text).kind, file.ReadI32At(position));
    }
  }
}

// The first entries of a pointer table as records, with a line for each. The walk over whole tables has its own target.
std::vector<EntryRec> Entries(RcoFile& file, std::int32_t pairAt, ListLines& lines) {
  std::vector<std::int32_t> pointers;
  const std::int32_t offset = file.ReadI32At(pairAt);
  const std::int32_t byteLength = file.ReadI32At(pairAt + 4);
  Succeeds([&] { pointers = ReadPointers(file, offset, std::min(byteLength, kPointerBytes)); });
  pointers.resize(std::min(pointers.size(), kEntries));
  std::vector<EntryRec> recs;
  for (const std::int32_t pointer : pointers) {
    const std::int64_t position = std::max(pointer, 0);
    recs.push_back({.recLabel = file.ReadI32At(position + rco::entryLabel),
                    .recSize = file.ReadI32At(position + rco::entrySize),
                    .recPos = pointer,
                    .recType = file.ReadI32At(position),
                    .recDepth = 0});
    lines.Add("entry");
  }
  return recs;
}

// Resources and texts of any kind and place.
void AddOthers(RcoFile& file, RcoDocument& document) {
  const std::int32_t textRoot = std::max(file.ReadI32At(rco::hdrTextRoot), 0);
  document.textRsc.resize(1);
  for (std::size_t i = 0; i < kEntries; ++i) {
    const std::int64_t place = static_cast<std::int64_t>(i) * rco::kTextRecSize;
    document.textRsc[0].push_back({.textLabel = file.ReadI32At(std::int64_t{textRoot} + 88 + place)});
    GenRsc record;
    record.rscKind =
        static_cast<std::int64_t>(static_cast<std::uint16_t>(file.ReadI16At(rco::hdrImageData + place)) % 4);
    record.entryPos = file.ReadI32At(rco::hdrTextPtrs + place);
    record.labelOffset = file.ReadI32At(rco::kHeaderSize + place);
    document.genRsc.push_back(record);
  }
  document.textCount = std::int64_t{kEntries};
  document.genCount = std::int64_t{kEntries};
}

void ShowAll(ByteView input) {
  fuzz::FuzzFile holder(input);
  RcoFile& file = holder.File();
  RcoDocument document;
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
  document.pageRecs = Entries(file, rco::hdrPagePtrs, document.lstPage);
  document.pageCount = static_cast<std::int64_t>(document.pageRecs.size());
  document.animRecs = Entries(file, rco::hdrAnimPtrs, document.lstAnim);
  document.animCount = static_cast<std::int64_t>(document.animRecs.size());
  AddOthers(file, document);
  ShowPages(file, document);
  ShowAnims(file, document);
  if (file.ReadI32At(rco::hdrPagePtrs + 4) < kPointerBytes && file.ReadI32At(rco::hdrAnimPtrs + 4) < kPointerBytes) {
    Succeeds([&] { (void)ReadRandomInfo(file); });
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::ShowAll({data, size});
  return 0;
}
