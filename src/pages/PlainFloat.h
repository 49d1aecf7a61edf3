// Words as numbers: which of them are shown as decimals, and how.
#pragma once

#include <cstdint>
#include <string>

namespace kelvane {

// A single-precision value with at most 7 significant digits: no trailing zeros, no leading blank, a full stop only
// when needed, and an exponent from 1E+07 and below 0.00001 on, as in 1.5E-07. LeadingNumber reads it back to the same
// single whenever 7 digits can tell it. "NaN", "Infinity" and "-Infinity" read back as 0.
[[nodiscard]] std::string FloatText(float value);

// Whether a word looks like a decimal that somebody wrote: as a single it has at most 5 decimal places, and its
// FloatText reads back to it. The file doesn't say what a word is; small integers and flags come out false.
[[nodiscard]] bool IsPlainFloat(std::int32_t word);

// "0x" and 8 upper-case hexadecimal digits.
[[nodiscard]] std::string HexWordText(std::int32_t word);

}  // namespace kelvane
