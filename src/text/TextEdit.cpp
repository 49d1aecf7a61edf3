#include "text/TextEdit.h"

#include <algorithm>
#include <array>
#include <string>

#include "common/Bytes.h"
#include "container/FileBracket.h"
#include "container/RcoFile.h"
#include "container/RcoFormat.h"
#include "container/TextRecords.h"
#include "text/TextList.h"
#include "text/TextString.h"

namespace kelvane {

namespace {

// Label offset and length, event offset and length.
using LabelLongs = std::array<std::int32_t, rco::kLabelLongs>;

std::int32_t PositionOfText(const RcoDocument& document, int lang, int item) {
  return AddInt32(document.textDataBase, At(At(document.textRsc, lang), item).textOffset);
}

// File offset of what follows a text: the next text, in this language or as the first of the next one, or the label
// area. Strings lie in the order of their records, so the next record tells it even when its text is empty.
std::int32_t TailPosition(const RcoDocument& document, const LabelLongs& head4, int lang, int item) {
  if (item != document.lstText.Count() - 1) {
    return PositionOfText(document, lang, item + 1);
  }
  if (lang != document.cboTextLang.Count() - 1) {
    return PositionOfText(document, lang + 1, 0);
  }
  return head4[0];
}

// The text as it is stored: UTF-16 little-endian, line feeds for line breaks, and 2 or 4 NUL bytes up to a multiple
// of 4.
Bytes StoredText(std::u16string_view txt) {
  const std::u16string text = WithFileLineBreaks(txt);
  Bytes stored;
  stored.reserve(text.size() * 2 + 4);
  for (const char16_t unit : text) {
    stored.push_back(static_cast<std::uint8_t>(unit));
    stored.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  stored.resize(stored.size() + 4 - stored.size() % 4);
  return stored;
}

// Bytes from `tailPos` on there must be.
void RequireTail(RcoFile& file, std::int32_t tailPos) {
  file.Seek(tailPos);
  RequireArraySize(file.Length() - tailPos);
}

// Makes the file of its bytes in front of `textPos`, `stored`, and its bytes from `tailPos` on. Where the tail begins
// in front of the text, the bytes between stand on both sides of it.
void ReplaceText(RcoFile& file, std::int32_t textPos, std::int32_t tailPos, Bytes stored) {
  RequireArraySize(textPos);
  if (tailPos < textPos) {
    file.Seek(tailPos);
    Append(stored, file.ReadBytes(std::min(std::int64_t{textPos}, file.Length()) - tailPos));
  }
  file.Splice(textPos, std::max(tailPos - textPos, 0), stored);
}

void MoveTexts(std::vector<TextRec>& records, std::size_t from, std::int32_t delta) {
  for (std::size_t item = from; item < records.size(); ++item) {
    records[item].textOffset = AddInt32(records[item].textOffset, delta);
  }
}

void MoveIfPresent(std::int32_t& offset, std::int32_t delta) {
  if (offset > 0) {
    offset = AddInt32(offset, delta);
  }
}

// Gives the text its new length, and moves every text behind it, empty ones included, the label and event areas and the
// data areas.
void MoveBehindText(RcoDocument& document, LabelLongs& head4, int lang, int item, std::int32_t newLen,
                    std::int32_t delta) {
  std::vector<TextRec>& records = At(document.textRsc, lang);
  At(records, item).textLength = newLen;
  MoveTexts(records, static_cast<std::size_t>(item) + 1, delta);
  for (std::size_t later = static_cast<std::size_t>(lang) + 1; later < document.textRsc.size(); ++later) {
    MoveTexts(document.textRsc[later], 0, delta);
  }
  MoveIfPresent(head4[0], delta);
  MoveIfPresent(head4[2], delta);
  for (const int area : {0, 2, 4}) {
    MoveIfPresent(At(document.dataAreas, area), delta);
  }
}

void SelectWholeText(RcoDocument& document) {
  ++document.text.selectAllRevision;
}

}  // namespace

std::int32_t ChangeText(RcoFile& file, RcoDocument& document, int lang, int item, std::u16string_view txt) {
  LabelLongs head4{};
  file.ReadLongsAt(rco::kLabelLongsAt, head4);
  const std::int32_t tailPos = TailPosition(document, head4, lang, item);
  RequireTail(file, tailPos);
  const std::int32_t textPos = PositionOfText(document, lang, item);

  Bytes stored = StoredText(txt);
  const std::int32_t newLen = CheckedInt32(static_cast<std::int64_t>(stored.size()));
  ReplaceText(file, textPos, tailPos, std::move(stored));

  const std::int32_t delta = CheckedInt32(std::int64_t{newLen} - (std::int64_t{tailPos} - textPos));
  MoveBehindText(document, head4, lang, item, newLen, delta);
  WriteTextRecords(file, document, Int16(lang));
  file.WriteLongsAt(rco::kLabelLongsAt, head4);
  file.WriteLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
  return delta;
}

void cmdTextChange(Mod& mod, RcoDocument& document, Watch& watch, std::u16string_view txt) {
  if (document.lstText.Selected() < 0) {
    return;
  }
  BackupOnce(mod, watch);
  const int item = document.lstText.Selected();
  RcoFile file(mod.cCurFile);
  const std::int32_t delta = ChangeText(file, document, document.cboTextLang.Selected(), item, txt);
  file.Close();
  RecordFileDate(mod, watch);
  document.labelBase = AddInt32(document.labelBase, delta);

  if (item != document.lstText.Count() - 1) {
    SelectText(mod, document, item + 1);
    SelectWholeText(document);
  }
}

void cmdTextReset(const Mod& mod, RcoDocument& document) {
  if (document.lstText.Selected() < 0) {
    return;
  }
  lstText_Click(mod, document);
  SelectWholeText(document);
}

}  // namespace kelvane
