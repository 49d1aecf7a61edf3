// The inner loop of the built-in inflate, for where both ends are far: it reads the source 8 bytes at a time and copies
// matches in wide steps that overshoot.
#pragma once

#include <cstdint>

#include "imaging/InflateTables.h"

namespace kelvane {

// A round reads less than this from where it starts.
inline constexpr std::int64_t kFastSourceARound = 16;
// A round writes at most 3 literals and a match of 258 bytes, and behind them some bytes that don't count.
inline constexpr std::int64_t kFastBytesARound = 3 + 258;
// What a round may write behind the place where it starts.
inline constexpr std::int64_t kFastSlack = kFastBytesARound + 48;

// The loop's state, and the rounds that it does: one begins as long as `in` is not behind `inLimit` and `out` is before
// `outLimit`. At `inLimit` there must be kFastSourceARound bytes left, and kFastSlack bytes of room at `outLimit`.
struct FastInflate {
  enum class Stop {
    Limit,
    EndOfBlock,
    Corrupt,  // bits that are no code, a symbol without a length, or a distance that reaches before `oldest`
  };

  const std::uint8_t* in;
  const std::uint8_t* inLimit;
  std::uint8_t* out;
  const std::uint8_t* outLimit;
  const std::uint8_t* oldest;  // the first byte that matches may reach
  std::uint64_t bits;          // the next `bitCount` bits, the first lowest; above them zeros
  unsigned bitCount;           // at most 63
  DecodeTableView literals;
  DecodeTableView distances;

  Stop Run();
};

}  // namespace kelvane
