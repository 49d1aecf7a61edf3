// The strings of the texts: read from the file, and as text boxes show them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/Int16.h"
#include "common/Mod.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// The most bytes that a text may claim beyond what the file holds; more is failure 7.
inline constexpr std::int32_t kMaxTextBytes = 1 << 24;

// Reads texts of one document, opening its file at the first text that isn't empty and closing it at the end.
class TextReader {
 public:
  TextReader(const Mod& mod, const RcoDocument& document) : mod_(mod), document_(document) {}

  // The text of `item` in language `lang`: all its code units, NULs included, each line feed as CR LF; bytes beyond the
  // end of the file are zeros, and an odd last byte is left out. Failures: 9 for an item or language without a record,
  // 5 for a position in front of the file, 6, 7, and those of opening the file.
  [[nodiscard]] std::u16string Read(Int16 item, Int16 lang);

 private:
  const Mod& mod_;
  const RcoDocument& document_;
  RcoFile file_;
};

// One text, read by a TextReader of its own.
[[nodiscard]] std::u16string GetTextString(const Mod& mod, const RcoDocument& document, Int16 item, Int16 lang);

// What a text box shows of a text: all up to its first NUL.
[[nodiscard]] std::u16string_view UpToFirstNul(std::u16string_view text);

// Each line feed as carriage return and line feed, and each such pair as one line feed.
[[nodiscard]] std::u16string WithBoxLineBreaks(std::u16string_view text);
[[nodiscard]] std::u16string WithFileLineBreaks(std::u16string_view text);

}  // namespace kelvane
