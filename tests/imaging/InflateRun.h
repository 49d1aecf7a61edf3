// What the tests of the built-in inflate share.
#pragma once

#include "imaging/InflateBuffer.h"
#include "support/GuardedBytes.h"

namespace kelvane::test {

inline constexpr InflateOutcome kSuccess = {InflateStatus::Ok, false};
inline constexpr InflateOutcome kRuntimeError = {InflateStatus::Ok, true};
inline constexpr InflateOutcome kBadBlock = {InflateStatus::BadBlock, false};
inline constexpr InflateOutcome kBadStoredLength = {InflateStatus::BadStoredLength, false};
inline constexpr InflateOutcome kBadTable = {InflateStatus::BadTable, false};

inline constexpr std::uint8_t kUntouched = 0xEE;

// The outcome, and the destination with what stands in it afterwards. No byte behind the source is read.
struct Inflated {
  InflateOutcome outcome;
  Bytes raw;
};

inline Inflated Inflate(ByteView compressed, std::size_t rawLength, bool allow64K = false) {
  Inflated result;
  result.raw.assign(rawLength, kUntouched);
  const GuardedBytes source(compressed);
  result.outcome = InflateBufferOutcome(result.raw, source.View(), static_cast<std::int32_t>(rawLength), allow64K);
  return result;
}

}  // namespace kelvane::test
