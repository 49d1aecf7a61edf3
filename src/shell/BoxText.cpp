#include "shell/BoxText.h"

#include <array>
#include <cstddef>

namespace kelvane {

namespace {

constexpr char16_t kParagraph = 0x2029;
constexpr char16_t kFirstCarrier = 0xFDE0;
// What the document would not keep, each carried by kFirstCarrier + its index. The carriers themselves don't occur in
// texts: the standard keeps them out of interchange.
constexpr std::array<char16_t, 5> kCarried = {u'\r', u'\n', kParagraph, 0xFDD0, 0xFDD1};

char16_t Carried(char16_t unit) {
  for (std::size_t i = 0; i < kCarried.size(); ++i) {
    if (kCarried[i] == unit) {
      return static_cast<char16_t>(kFirstCarrier + i);
    }
  }
  return unit;
}

char16_t Restored(char16_t unit) {
  return unit >= kFirstCarrier && unit < kFirstCarrier + kCarried.size()
             ? kCarried[static_cast<std::size_t>(unit - kFirstCarrier)]
             : unit;
}

}  // namespace

QString ToDocument(std::u16string_view text) {
  QString document;
  document.reserve(static_cast<qsizetype>(text.size()));
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
      document.append(u'\n');
      ++i;
    } else {
      document.append(QChar(Carried(text[i])));
    }
  }
  return document;
}

std::u16string FromDocument(const QString& raw) {
  std::u16string text;
  text.reserve(static_cast<std::size_t>(raw.size()));
  for (const QChar character : raw) {
    const char16_t unit = character.unicode();
    if (unit == kParagraph) {
      text += u"\r\n";
    } else {
      text.push_back(Restored(unit));
    }
  }
  return text;
}

}  // namespace kelvane
