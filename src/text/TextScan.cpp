#include "text/TextScan.h"

#include <array>

#include "common/Bytes.h"
#include "common/Int16.h"
#include "common/Numbers.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"
#include "container/TextRecords.h"
#include "text/TextList.h"

namespace kelvane {

namespace {

constexpr std::uint32_t kFirstLanguageCode = 0x10000;

void ClearTexts(RcoDocument& document) {
  document.cboTextLang.Clear();
  document.lstText.Clear();
  document.textRsc.clear();
  document.textCount = Int16(0);
  document.langPos.clear();
  document.langCount = 0;
}

// Makes room for the records of all languages, all of which have as many texts as the first one, at `start`.
void SizeRecords(RcoFile& file, RcoDocument& document, std::int32_t start) {
  const std::int32_t firstEntryNext = file.ReadI32At(std::int64_t{start} + rco::entryNext);
  document.textCount = Int16(AddInt32(firstEntryNext, -rco::langRecords) / rco::kTextRecSize);
  if (document.textCount < Int16(1)) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  const std::int64_t language = rco::langRecords + std::int64_t{document.textCount.Int()} * rco::kTextRecSize;
  const std::int64_t table = document.langCount * language;
  if (table > kMaxClaimedTableBytes && start + table > file.Length()) {
    throw RuntimeFailure(FailureCode::OutOfMemory);
  }
  document.textRsc.assign(document.langCount, std::vector<TextRec>(document.textCount.Index()));
}

void ReadRecords(RcoFile& file, RcoDocument& document, Int16 lang) {
  const Bytes block = file.ReadBytes(TextRecordBytes(document.textCount).Int());
  std::int32_t at = 0;
  for (TextRec& record : At(document.textRsc, lang.Int())) {
    record.textLabel = ReadI32(block, at + rco::textLabel);
    record.textLength = ReadI32(block, at + rco::textLength);
    record.textOffset = ReadI32(block, at + rco::textOffset);
    at += rco::kTextRecSize;
  }
}

// Reads the language record that the file is positioned on, and leaves the file behind its records: there the next one
// is taken to stand, whatever entryNext says.
void ScanLanguage(RcoFile& file, RcoDocument& document, Int16 lang) {
  const std::int32_t start = CheckedInt32(file.Position());
  At(document.langPos, lang.Int()) = start;
  if (lang == Int16(0)) {
    SizeRecords(file, document, start);
  }
  const std::int32_t code = file.ReadI32At(std::int64_t{start} + rco::langCode);
  file.Seek(std::int64_t{start} + rco::langRecords);
  ReadRecords(file, document, lang);
  document.cboTextLang.Add(LanguageName(static_cast<std::uint32_t>(code)));
}

}  // namespace

std::string LanguageName(std::uint32_t code) {
  constexpr std::array<const char*, 12> kNames = {"日语", "英语",   "法语", "西班牙", "德语",       "意大利",
                                                  "荷兰", "葡萄牙", "俄语", "韩语",   "中文(繁体)", "中文(简体)"};
  const std::uint32_t index = code - kFirstLanguageCode;  // a code below the first one wraps to a large index
  return index < kNames.size() ? kNames[index] : "Language 0x" + HexOf(code);
}

void ScanTextRsc(RcoFile& file, RcoDocument& document) {
  ClearTexts(document);

  document.textDataBase = file.ReadI32At(rco::hdrTextDataOffset);
  if (file.ReadI32At(rco::hdrTextDataLength) < 1) {
    return;
  }
  const std::int32_t root = file.ReadI32At(rco::hdrTextRoot);
  if (root < 0) {
    return;
  }

  document.langCount = static_cast<std::uint16_t>(file.ReadI16At(std::int64_t{root} + rco::entryChildren));
  document.langPos.assign(document.langCount, 0);
  file.Seek(std::int64_t{root} + rco::kEntryHeadSize);
  for (Int16 lang; lang.Int() < document.langCount; ++lang) {
    ScanLanguage(file, document, lang);
  }

  for (std::int32_t item = 0; item < document.textCount.Int(); ++item) {
    const TextRec& record = At(At(document.textRsc, 0), item);
    document.lstText.Add(ReadLabel(file, AddInt32(document.labelBase, record.textLabel)));
  }

  if (document.cboTextLang.Count() >= 2) {
    document.cboTextLang.Select(1);
    ShowNoText(document);  // no text is selected yet
  }
}

}  // namespace kelvane
