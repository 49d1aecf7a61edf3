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

// A text of more bytes than these must lie inside the file, else it is failure 7: so a record that only claims a length
// costs nothing.
inline constexpr std::int32_t kMaxTextBytes = 1 << 16;

// The text of `item` in language `lang`: all its code units, NULs included, each line feed as CR LF; bytes beyond the
// end of the file are zeros, and an odd last byte is left out. Failures: 9 for an item or language without a record, 5
// for a position in front of the file, 6, 7.
[[nodiscard]] std::u16string GetTextString(RcoFile& file, const RcoDocument& document, Int16 item, Int16 lang);

// The same from the document's file, which is opened for it and closed again; for an empty text it isn't touched.
// Failures also those of opening it.
[[nodiscard]] std::u16string GetTextString(const Mod& mod, const RcoDocument& document, Int16 item, Int16 lang);

// The same for many texts, with the file opened once: at the first text that isn't empty.
class TextReader {
 public:
  TextReader(const Mod& mod, const RcoDocument& document) : mod_(mod), document_(document) {}

  [[nodiscard]] std::u16string Read(Int16 item, Int16 lang);

 private:
  const Mod& mod_;
  const RcoDocument& document_;
  RcoFile file_;
};

// What a text box shows of a text: all up to its first NUL.
[[nodiscard]] std::u16string_view UpToFirstNul(std::u16string_view text);

// Each line feed as carriage return and line feed, and each such pair as one line feed.
[[nodiscard]] std::u16string WithBoxLineBreaks(std::u16string_view text);
[[nodiscard]] std::u16string WithFileLineBreaks(std::u16string_view text);

}  // namespace kelvane
