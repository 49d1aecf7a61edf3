// The texts of any file: the scan ends, every text can be read or fails, and a change of any text leaves records that
// the file holds too.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzFile.h"
#include "FuzzTarget.h"
#include "container/RcoFormat.h"
#include "text/TextEdit.h"
#include "text/TextScan.h"
#include "text/TextString.h"

namespace kelvane {
namespace {

using fuzz::Require;
using fuzz::Succeeds;

// Texts behind these are of the same kinds.
constexpr int kTexts = 16;
constexpr int kLanguages = 4;
// Larger tables are only claimed by inputs. They take long and show the same, up to those that fail at once.
constexpr std::int64_t kManyRecords = 1 << 14;
constexpr std::int32_t kFarBehind = 1 << 20;

bool Scan(RcoFile& file, RcoDocument& document) {
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
  file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
  return Succeeds([&] { ScanTextRsc(file, document); });
}

void CheckScan(const RcoDocument& document) {
  Require(document.langPos.size() == document.langCount, "every language has its place");
  Require(document.textRsc.size() == document.langCount, "every language has its records");
  Require(document.cboTextLang.Count() == document.langCount, "every language has its line");
  Require(document.lstText.Count() == document.textCount.Int(), "every text has its line");
  Require(document.lstText.Selected() == -1, "no text is selected");
  Require(document.cboTextLang.Selected() == (document.langCount >= 2 ? 1 : -1), "the second language is selected");
  for (const auto& records : document.textRsc) {
    Require(records.size() == document.textCount.Index(), "every text has its record");
  }
}

void ReadTexts(RcoFile& file, const RcoDocument& document) {
  for (int lang = 0; lang < std::min<int>(document.langCount, kLanguages); ++lang) {
    for (int item = 0; item < std::min(document.textCount.Int(), kTexts); ++item) {
      Succeeds([&] {
        const std::u16string text = GetTextString(file, document, Int16(item), Int16(lang));
        Require(WithBoxLineBreaks(WithFileLineBreaks(text)) == text, "line breaks go both ways");
        Require(UpToFirstNul(text).find(u'\0') == std::u16string_view::npos, "a text box shows no NUL");
      });
    }
  }
}

// Whether what the change writes lies where nothing else of the text tables does: then the file must read as the
// records in memory say.
bool IsWellOrdered(const RcoFile& file, const RcoDocument& document) {
  const std::int64_t recordsEnd = std::int64_t{document.langPos.back()} + rco::langRecords +
                                  std::int64_t{document.textCount.Int()} * rco::kTextRecSize;
  if (document.langPos.front() < rco::kHeaderSize || recordsEnd > document.textDataBase) {
    return false;
  }
  std::int64_t before = document.textDataBase;
  for (const auto& records : document.textRsc) {
    for (const TextRec& record : records) {
      const std::int64_t position = std::int64_t{document.textDataBase} + record.textOffset;
      if (position < before) {
        return false;
      }
      before = position;
    }
  }
  return before <= document.labelBase && document.labelBase < file.Length();
}

void ChangeOneText(RcoFile& file, RcoDocument& document, std::uint8_t choice) {
  const int lang = choice % document.langCount;
  const int item = choice / 16 % document.textCount.Int();
  const TextRec& record = document.textRsc[static_cast<std::size_t>(lang)][static_cast<std::size_t>(item)];
  if (std::int64_t{document.textDataBase} + record.textOffset > file.Length() + kFarBehind) {
    return;  // such a change is allowed, but fills the memory with zeros
  }
  const bool wellOrdered = IsWellOrdered(file, document);
  const std::u16string typed(choice % 7U, u'z');
  std::int32_t delta = 0;
  if (!Succeeds([&] { delta = ChangeText(file, document, lang, item, typed); }) || !wellOrdered) {
    return;
  }
  RcoDocument again;
  Scan(file, again);
  Require(again.textRsc == document.textRsc, "the records in memory are those of the file");
  Require(again.langPos == document.langPos, "the languages stay where they are");
  Require(again.labelBase == document.labelBase + delta, "the labels move by the growth");
  Require(again.dataAreas == document.dataAreas, "the data areas in memory are those of the file");
  Require(UpToFirstNul(GetTextString(file, again, Int16(item), Int16(lang))) == typed, "the text is what was typed");
}

bool ClaimsManyRecords(RcoFile& file) {
  const std::int64_t root = file.ReadI32At(rco::hdrTextRoot);
  if (root < 0) {
    return false;
  }
  const std::int64_t languages = static_cast<std::uint16_t>(file.ReadI16At(root + rco::entryChildren));
  const std::int64_t length = file.ReadI32At(root + rco::kEntryHeadSize + rco::entryNext);
  const std::int64_t records = languages * (length / rco::kTextRecSize);
  return records > kManyRecords && records * rco::kTextRecSize <= kMaxClaimedTableBytes;
}

void Run(ByteView input) {
  fuzz::FuzzFile holder(input);
  RcoFile& file = holder.File();
  if (ClaimsManyRecords(file)) {
    return;
  }
  RcoDocument document;
  if (!Scan(file, document)) {
    return;
  }
  CheckScan(document);
  ReadTexts(file, document);
  if (document.langCount > 0) {
    ChangeOneText(file, document, input.back());
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kelvane::Run({data, size});
  return 0;
}
