// Signed 16-bit numbers with checked arithmetic, and checked 32-bit helpers.
//
// Counters, rows and indexes of the editor are 16 bits wide; files rely on a count above 32767 being a failure (6,
// Overflow) and not a wrap.
#pragma once

#include <compare>
#include <cstdint>
#include <limits>

#include "common/RuntimeFailure.h"

namespace kelvane {

class Int16 {
 public:
  constexpr Int16() = default;
  // From any integer; a value outside -32768..32767 is failure 6.
  constexpr Int16(std::int64_t value) : value_(Checked(value)) {}  // NOLINT(google-explicit-constructor)

  // The value, for use as an index or in wider arithmetic.
  [[nodiscard]] constexpr std::int16_t Value() const { return value_; }
  [[nodiscard]] constexpr int Int() const { return value_; }
  // The value as an array index; a negative one is failure 9.
  [[nodiscard]] constexpr std::size_t Index() const {
    if (value_ < 0) {
      throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
    }
    return static_cast<std::size_t>(value_);
  }

  constexpr Int16& operator+=(Int16 other) { return *this = *this + other; }
  constexpr Int16& operator-=(Int16 other) { return *this = *this - other; }
  constexpr Int16& operator++() { return *this += Int16(1); }
  constexpr Int16& operator--() { return *this -= Int16(1); }

  friend constexpr Int16 operator+(Int16 a, Int16 b) { return Int16(std::int64_t{a.value_} + b.value_); }
  friend constexpr Int16 operator-(Int16 a, Int16 b) { return Int16(std::int64_t{a.value_} - b.value_); }
  friend constexpr Int16 operator*(Int16 a, Int16 b) { return Int16(std::int64_t{a.value_} * b.value_); }
  friend constexpr bool operator==(Int16 a, Int16 b) = default;
  friend constexpr std::strong_ordering operator<=>(Int16 a, Int16 b) = default;

 private:
  static constexpr std::int16_t Checked(std::int64_t value) {
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
      throw RuntimeFailure(FailureCode::Overflow);
    }
    return static_cast<std::int16_t>(value);
  }

  std::int16_t value_ = 0;
};

// A 64-bit intermediate result as a signed 32-bit value; outside its range is failure 6.
constexpr std::int32_t CheckedInt32(std::int64_t value) {
  if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
    throw RuntimeFailure(FailureCode::Overflow);
  }
  return static_cast<std::int32_t>(value);
}

// The sum of two signed 32-bit values as one; failure 6 where it doesn't fit.
constexpr std::int32_t AddInt32(std::int32_t a, std::int32_t b) {
  return CheckedInt32(std::int64_t{a} + b);
}

// To the nearest integer, ties to the even one; failure 6 outside signed 32 bits (a NaN included).
std::int32_t RoundToInt32(double value);
// The same for signed 16 bits.
Int16 RoundToInt16(double value);

// `value` rounded up to a multiple of 4, for a value of zero or more.
constexpr std::int32_t RoundUpTo4(std::int32_t value) {
  return value % 4 == 0 ? value : AddInt32(value, 4 - value % 4);
}

}  // namespace kelvane
