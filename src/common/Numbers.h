// Numbers as texts and texts as numbers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kelvane {

// Upper-case hexadecimal without leading zeros, as a negative number's two's complement: -1 is "FFFFFFFF" as 32 bits
// and "FFFF" as 16 bits.
[[nodiscard]] std::string HexOf(std::int32_t value);
[[nodiscard]] std::string HexOf(std::int16_t value);
[[nodiscard]] std::string HexOf(std::uint32_t value);

// `padChar` repeated (width - length of text) times, then `text`. A text longer than `width` is failure 5.
[[nodiscard]] std::string PadLeft(std::string_view text, int width, char padChar);

// The value of `text` read as hexadecimal digits, up to the first character that is none. With `asLong` up to 8 digits
// give a signed 32-bit value; otherwise up to 4 digits give a signed 16-bit one. More digits are failure 6.
[[nodiscard]] std::int32_t HexToValue(std::string_view text, bool asLong);

// The number that `text` begins with, 0 if it begins with none: blanks, TABs and line feeds are passed over, then a
// sign, decimal digits with a full stop, and an exponent after e, E, d or D. "&H" and "&O" begin hexadecimal and octal
// numbers.
[[nodiscard]] double LeadingNumber(std::string_view text);

// The nearest single-precision value; failure 6 beyond the largest one.
[[nodiscard]] float SingleOf(double value);

}  // namespace kelvane
