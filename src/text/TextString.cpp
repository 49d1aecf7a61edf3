#include "text/TextString.h"

#include <algorithm>

#include "common/Bytes.h"
#include "common/Files.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

namespace {

constexpr char16_t kCarriageReturn = u'\r';
constexpr char16_t kLineFeed = u'\n';

const TextRec& RecordOf(const RcoDocument& document, Int16 item, Int16 lang) {
  return At(At(document.textRsc, lang.Int()), item.Int());
}

std::int32_t PositionOf(const RcoDocument& document, const TextRec& record) {
  return AddInt32(document.textDataBase, record.textOffset);
}

void RequireLengthInFile(const TextRec& record, std::int64_t position, std::int64_t fileLength) {
  if (record.textLength > kMaxTextBytes && position + record.textLength > fileLength) {
    throw RuntimeFailure(FailureCode::OutOfMemory);
  }
}

std::u16string BoxTextOf(ByteView stored) {
  std::u16string text(stored.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    text[i] = static_cast<char16_t>(stored[2 * i] | stored[2 * i + 1] << 8);
  }
  return WithBoxLineBreaks(text);
}

}  // namespace

std::u16string GetTextString(RcoFile& file, const RcoDocument& document, Int16 item, Int16 lang) {
  const TextRec& record = RecordOf(document, item, lang);
  if (record.textLength <= 0) {
    return {};
  }
  file.Seek(PositionOf(document, record));
  RequireLengthInFile(record, file.Position(), file.Length());
  return BoxTextOf(file.ReadBytes(record.textLength));
}

std::u16string GetTextString(const Mod& mod, const RcoDocument& document, Int16 item, Int16 lang) {
  const TextRec& record = RecordOf(document, item, lang);
  if (record.textLength <= 0) {
    return {};
  }
  const std::int64_t fileLength = FileLength(mod.cCurFile);
  const std::int64_t position = PositionOf(document, record);
  if (position < 0) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  RequireLengthInFile(record, position, fileLength);
  Bytes stored = AllocateBytes(record.textLength);
  // Texts lie in front of images and sounds: reading up to a text's end spares reading the whole of a large file each
  // time that a text is shown.
  const std::int64_t end = std::min(position + record.textLength, fileLength);
  const Bytes head = ReadFileStart(mod.cCurFile, static_cast<std::size_t>(end));
  if (position < static_cast<std::int64_t>(head.size())) {
    std::copy(head.begin() + position, head.end(), stored.begin());
  }
  return BoxTextOf(stored);
}

std::u16string TextReader::Read(Int16 item, Int16 lang) {
  if (!file_.IsOpen() && RecordOf(document_, item, lang).textLength > 0) {
    file_.Open(mod_.cCurFile);
  }
  return GetTextString(file_, document_, item, lang);
}

std::u16string_view UpToFirstNul(std::u16string_view text) {
  return text.substr(0, text.find(u'\0'));
}

std::u16string WithBoxLineBreaks(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (const char16_t unit : text) {
    if (unit == kLineFeed) {
      out.push_back(kCarriageReturn);
    }
    out.push_back(unit);
  }
  return out;
}

std::u16string WithFileLineBreaks(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != kCarriageReturn || i + 1 == text.size() || text[i + 1] != kLineFeed) {
      out.push_back(text[i]);
    }
  }
  return out;
}

}  // namespace kelvane
