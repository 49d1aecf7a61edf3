// Lower case, independent of locales.
#pragma once

#include <string>
#include <string_view>

namespace kelvane {

// The lower-case form of a UTF-16 code unit, one unit for one: Latin, Greek, Cyrillic, Armenian, and the letter-like
// symbols and numerals that have cases. Any other unit is itself.
[[nodiscard]] char16_t LowerCase(char16_t unit);
[[nodiscard]] std::u16string LowerCase(std::u16string_view text);

}  // namespace kelvane
