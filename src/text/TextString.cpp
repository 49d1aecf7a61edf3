#include "text/TextString.h"

#include "common/Bytes.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

namespace {

constexpr char16_t kCarriageReturn = u'\r';
constexpr char16_t kLineFeed = u'\n';

const TextRec& RecordOf(const RcoDocument& document, Int16 item, Int16 lang) {
  return At(At(document.textRsc, lang.Int()), item.Int());
}

}  // namespace

std::u16string GetTextString(RcoFile& file, const RcoDocument& document, Int16 item, Int16 lang) {
  const TextRec& record = RecordOf(document, item, lang);
  if (record.textLength <= 0) {
    return {};
  }
  file.Seek(AddInt32(document.textDataBase, record.textOffset));
  if (record.textLength > kMaxTextBytes && file.Position() + record.textLength > file.Length()) {
    throw RuntimeFailure(FailureCode::OutOfMemory);
  }
  const Bytes bytes = file.ReadBytes(record.textLength);
  std::u16string text(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    text[i] = static_cast<char16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
  }
  return WithBoxLineBreaks(text);
}

std::u16string GetTextString(const Mod& mod, const RcoDocument& document, Int16 item, Int16 lang) {
  return TextReader(mod, document).Read(item, lang);
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
