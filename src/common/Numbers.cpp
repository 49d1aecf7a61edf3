#include "common/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "common/RuntimeFailure.h"

namespace kelvane {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

int DigitValue(char character) {
  if (character >= '0' && character <= '9') {
    return character - '0';
  }
  if (character >= 'A' && character <= 'F') {
    return character - 'A' + 10;
  }
  if (character >= 'a' && character <= 'f') {
    return character - 'a' + 10;
  }
  return 99;
}

// "&H..." and "&O...", behind the ampersand and its letter: 16 bits signed up to 4 hexadecimal digits, else 32.
double LeadingRadix(std::string_view digits, int base) {
  std::uint32_t value = 0;
  for (const char character : digits) {
    if (character == ' ') {
      continue;
    }
    const int digit = DigitValue(character);
    if (digit >= base) {
      break;
    }
    const std::uint64_t next =
        std::uint64_t{value} * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digit);
    if (next > std::numeric_limits<std::uint32_t>::max()) {
      throw RuntimeFailure(FailureCode::Overflow);
    }
    value = static_cast<std::uint32_t>(next);
  }
  return value <= 0xFFFF ? static_cast<std::int16_t>(value) : static_cast<std::int32_t>(value);
}

// Whether a number that no double holds is too large and not too near to 0: by the power of ten of its first digit that
// isn't 0. `number` is digits with a full stop, perhaps behind a minus, and perhaps an exponent behind an e.
bool IsTooLarge(std::string_view number) {
  const std::size_t end = std::min(number.find('e'), number.size());
  const std::string_view digits = number.substr(0, end);
  const std::size_t first = digits.find_first_not_of("-0.");
  if (first == std::string_view::npos) {
    return false;
  }
  const std::size_t stop = std::min(digits.find('.'), digits.size());
  const std::int64_t power = static_cast<std::int64_t>(stop) - static_cast<std::int64_t>(first);
  std::string_view exponent = number.substr(std::min(end + 1, number.size()));
  if (exponent.starts_with('+')) {
    exponent.remove_prefix(1);
  }
  std::int32_t value = 0;
  const std::from_chars_result parsed = std::from_chars(exponent.data(), exponent.data() + exponent.size(), value);
  if (parsed.ec == std::errc::result_out_of_range) {
    return !exponent.starts_with('-');
  }
  return power + value > 0;
}

}  // namespace

std::string HexOf(std::uint32_t value) {
  std::array<char, 8> digits{};
  std::size_t first = digits.size();
  do {
    digits[--first] = kHexDigits[value & 0xF];
    value >>= 4;
  } while (value != 0);
  return {digits.data() + first, digits.size() - first};
}

std::string HexOf(std::int32_t value) {
  return HexOf(static_cast<std::uint32_t>(value));
}

std::string HexOf(std::int16_t value) {
  return HexOf(std::uint32_t{static_cast<std::uint16_t>(value)});
}

std::string PadLeft(std::string_view text, int width, char padChar) {
  const int pad = width - static_cast<int>(text.size());
  if (pad < 0) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  return std::string(static_cast<std::size_t>(pad), padChar).append(text);
}

std::int32_t HexToValue(std::string_view text, bool asLong) {
  std::uint32_t value = 0;
  const std::uint32_t limit = asLong ? 0x0FFFFFFF : 0x0FFF;
  for (const char character : text) {
    const int digit = DigitValue(character);
    if (digit > 15) {
      break;
    }
    if (value > limit) {
      throw RuntimeFailure(FailureCode::Overflow);
    }
    value = value << 4 | static_cast<std::uint32_t>(digit);
  }
  return asLong ? static_cast<std::int32_t>(value) : static_cast<std::int16_t>(value);
}

double LeadingNumber(std::string_view text) {
  // Blanks count for nothing wherever they stand: "1 2" is 12.
  std::string packed;
  for (const char character : text) {
    if (character != ' ' && character != '\t' && character != '\n' && character != '\r') {
      packed.push_back(character);
    }
  }
  if (packed.size() >= 2 && packed[0] == '&') {
    const char letter = packed[1];
    if (letter == 'H' || letter == 'h') {
      return LeadingRadix(std::string_view(packed).substr(2), 16);
    }
    if (letter == 'O' || letter == 'o') {
      return LeadingRadix(std::string_view(packed).substr(2), 8);
    }
  }
  // Cut out sign, digits, full stop and exponent, so that the converter sees no "inf", "nan" or "0x".
  std::string number;
  std::size_t at = 0;
  bool digits = false;
  if (at < packed.size() && (packed[at] == '+' || packed[at] == '-')) {
    if (packed[at] == '-') {
      number.push_back('-');
    }
    ++at;
  }
  for (bool stop = false; at < packed.size(); ++at) {
    const char character = packed[at];
    if (character >= '0' && character <= '9') {
      digits = true;
    } else if (character == '.' && !stop) {
      stop = true;
    } else {
      break;
    }
    number.push_back(character);
  }
  if (!digits) {
    return 0;
  }
  if (at < packed.size() && std::string_view("eEdD").find(packed[at]) != std::string_view::npos) {
    std::string exponent = "e";
    std::size_t next = at + 1;
    if (next < packed.size() && (packed[next] == '+' || packed[next] == '-')) {
      exponent.push_back(packed[next++]);
    }
    while (next < packed.size() && packed[next] >= '0' && packed[next] <= '9') {
      exponent.push_back(packed[next++]);
    }
    if (exponent.back() >= '0' && exponent.back() <= '9') {
      number += exponent;
    }
  }
  double value = 0;
  const std::from_chars_result parsed = std::from_chars(number.data(), number.data() + number.size(), value);
  if (parsed.ec != std::errc::result_out_of_range) {
    return value;
  }
  // Out of range is either too near to 0, which is 0, or too large.
  if (IsTooLarge(number)) {
    throw RuntimeFailure(FailureCode::Overflow);
  }
  return 0;
}

float SingleOf(double value) {
  // Half way from the largest single to what would be the next one: rounding goes beyond from here on.
  constexpr double kFirstTooLarge = 0x1.ffffffp127;
  if (!(std::fabs(value) < kFirstTooLarge)) {
    throw RuntimeFailure(FailureCode::Overflow);
  }
  return static_cast<float>(value);
}

}  // namespace kelvane
