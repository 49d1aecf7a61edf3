#include "common/Encoding.h"

#include <cstdint>

namespace kelvane {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t character) {
  const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

// The character at `position` of UTF-8 text, moving `position` behind it; kReplacement for one ill-formed byte.
char32_t NextUtf8(std::string_view text, std::size_t& position) {
  const auto byteAt = [text](std::size_t i) -> char32_t { return static_cast<std::uint8_t>(text[i]); };
  const char32_t first = byteAt(position++);
  if (first < 0x80) {
    return first;
  }
  const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
  if (first < 0xC2 || first > 0xF4 || position + more > text.size()) {
    return kReplacement;
  }
  char32_t character = first & (0x3F >> more);
  for (std::size_t i = 0; i < more; ++i) {
    if ((byteAt(position + i) & 0xC0) != 0x80) {
      return kReplacement;
    }
    character = character << 6 | (byteAt(position + i) & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  if (character < kSmallest[more] || character > 0x10FFFF || (character >= 0xD800 && character < 0xE000)) {
    return kReplacement;
  }
  position += more;
  return character;
}

}  // namespace

std::string Latin1ToUtf8(ByteView bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (const std::uint8_t byte : bytes) {
    AppendUtf8(out, byte);
  }
  return out;
}

Bytes Utf8ToLatin1(std::string_view text) {
  Bytes out;
  out.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = NextUtf8(text, position);
    out.push_back(character <= 0xFF ? static_cast<std::uint8_t>(character) : std::uint8_t{'?'});
  }
  return out;
}

std::string Utf16ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t character = text[i];
    if (character >= 0xD800 && character < 0xE000) {
      const bool paired = character < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
      character = paired ? 0x10000 + ((character - 0xD800) << 10) + (text[i + 1] - 0xDC00U) : kReplacement;
      i += paired ? 1U : 0U;
    }
    AppendUtf8(out, character);
  }
  return out;
}

std::u16string Utf8ToUtf16(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = NextUtf8(text, position);
    if (character < 0x10000) {
      out.push_back(static_cast<char16_t>(character));
    } else {
      out.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
    }
  }
  return out;
}

std::filesystem::path PathFromUtf8(std::string_view text) {
  return {std::u8string(reinterpret_cast<const char8_t*>(text.data()), text.size())};
}

std::string PathToUtf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {reinterpret_cast<const char*>(text.data()), text.size()};
}

std::size_t Utf8Length(std::string_view text) {
  std::size_t length = 0;
  for (const char unit : text) {
    length += (static_cast<std::uint8_t>(unit) & 0xC0) != 0x80 ? 1U : 0U;
  }
  return length;
}

std::string_view Utf8DropLast(std::string_view text, std::size_t count) {
  while (count > 0 && !text.empty()) {
    count -= (static_cast<std::uint8_t>(text.back()) & 0xC0) != 0x80 ? 1U : 0U;
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace kelvane
