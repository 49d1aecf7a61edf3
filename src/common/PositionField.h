// The field txtPos of the dialogs that add something, with the checks that they share.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "common/Int16.h"
#include "common/Mod.h"
#include "common/Prompts.h"

namespace kelvane {

// Whether a typed character of that code reaches txtPos: the digits and ':' (48 to 58), '.' (46) and Backspace (8).
[[nodiscard]] constexpr bool PassesPositionField(int code) {
  return (code >= 48 && code <= 58) || code == 46 || code == 8;
}

// What lblPosInfo says for a list of `lineCount` lines: "(0 to N)".
[[nodiscard]] std::string PositionRangeText(int lineCount);

// What a dialog's cmdOK makes of txtPos: the number that `text` begins with, rounded. Empty when it was refused, with
// the message shown. Taken is what lies from `lowest` to lineCount - 1; so lineCount itself, which lblPosInfo shows, is
// refused. Failure 6 for a number beyond 16 bits.
[[nodiscard]] std::optional<Int16> AcceptPosition(Prompts& prompts, std::string_view text, int lineCount, int lowest);

// Whether a file is open, which the buttons that open these dialogs ask first; otherwise they warn.
[[nodiscard]] bool RequireLoadedFile(Prompts& prompts, const Mod& mod);

}  // namespace kelvane
