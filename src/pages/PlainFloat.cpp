#include "pages/PlainFloat.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "common/Numbers.h"

namespace kelvane {

namespace {

constexpr int kDigits = 7;
// The powers of ten of the first digit that are written without an exponent.
constexpr int kSmallestFixed = -5;
constexpr int kLargestFixed = kDigits - 1;

// A finite value's digits without trailing zeros, and the power of ten of the first of them.
struct Digits {
  std::string digits;
  int power = 0;
};

Digits DigitsOf(double magnitude) {
  std::array<char, 32> text{};  // "d.dddddde+XX"
  const std::to_chars_result end =
      std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::scientific, kDigits - 1);
  const std::string_view all(text.data(), static_cast<std::size_t>(end.ptr - text.data()));
  const std::size_t exponent = all.find('e');
  Digits result;
  result.digits.append(all.substr(0, 1)).append(all.substr(2, exponent - 2));
  result.digits.erase(result.digits.find_last_not_of('0') + 1);
  result.power = std::atoi(std::string(all.substr(exponent + 1)).c_str());
  return result;
}

std::string FixedText(const Digits& value) {
  if (value.power < 0) {
    return "0." + std::string(static_cast<std::size_t>(-value.power - 1), '0') + value.digits;
  }
  const std::size_t whole = static_cast<std::size_t>(value.power) + 1;
  if (value.digits.size() <= whole) {
    return value.digits + std::string(whole - value.digits.size(), '0');
  }
  return value.digits.substr(0, whole) + "." + value.digits.substr(whole);
}

std::string ExponentText(const Digits& value) {
  std::string text = value.digits.substr(0, 1);
  if (value.digits.size() > 1) {
    text += "." + value.digits.substr(1);
  }
  return text + (value.power < 0 ? "E-" : "E+") + PadLeft(std::to_string(std::abs(value.power)), 2, '0');
}

}  // namespace

std::string FloatText(float value) {
  if (std::isnan(value)) {
    return "NaN";
  }
  const std::string sign = std::signbit(value) ? "-" : "";
  if (std::isinf(value)) {
    return sign + "Infinity";
  }
  if (value == 0) {
    return sign + "0";
  }
  const Digits digits = DigitsOf(std::fabs(double{value}));
  const bool fixed = digits.power >= kSmallestFixed && digits.power <= kLargestFixed;
  return sign + (fixed ? FixedText(digits) : ExponentText(digits));
}

bool IsPlainFloat(std::int32_t word) {
  const float x = std::bit_cast<float>(word);
  if (!std::isfinite(x)) {
    return false;
  }
  constexpr double kPlaces = 1e5;
  const double rounded = std::nearbyint(double{x} * kPlaces) / kPlaces;  // ties to even
  // Both compare as singles, so that 0.1 is a decimal. A column for the sign in front of the text changes nothing in
  // what is read back.
  return static_cast<float>(rounded) == x && static_cast<float>(LeadingNumber(FloatText(x))) == x;
}

std::string HexWordText(std::int32_t word) {
  return "0x" + PadLeft(HexOf(word), 8, '0');
}

}  // namespace kelvane
