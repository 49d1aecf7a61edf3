#include "imaging/InflateFast.h"

#include <bit>
#include <cstring>

namespace kelvane {
namespace {

inline std::uint64_t LowBits(std::uint64_t bits, unsigned count) {
  return bits & ((std::uint64_t{1} << count) - 1);
}

inline std::uint64_t Load64(const std::uint8_t* from) {
  std::uint64_t value;
  std::memcpy(&value, from, sizeof value);
  if constexpr (std::endian::native == std::endian::big) {
    value = __builtin_bswap64(value);
  }
  return value;
}

// Repeats the `distance` bytes before `out`, for `length` bytes and up to 40 more.
inline void CopyMatch(std::uint8_t* out, unsigned length, unsigned distance) {
  const std::uint8_t* from = out - distance;
  const std::uint8_t* const end = out + length;
  if (distance >= 16) {
    std::memcpy(out, from, 16);
    std::memcpy(out + 16, from + 16, 16);
    while (out + 32 < end) {
      out += 32;
      from += 32;
      std::memcpy(out, from, 16);
      std::memcpy(out + 16, from + 16, 16);
    }
    return;
  }
  if (distance >= 8) {
    do {
      std::memcpy(out, from, 8);
      out += 8;
      from += 8;
    } while (out < end);
    return;
  }
  // Eight bytes of the pattern, stored at steps that are a multiple of its length.
  std::uint64_t pattern = 0;
  for (unsigned i = 0, j = 0; i < 8; ++i) {
    pattern |= std::uint64_t{from[j]} << (8 * i);
    j = j + 1 == distance ? 0 : j + 1;
  }
  if constexpr (std::endian::native == std::endian::big) {
    pattern = __builtin_bswap64(pattern);
  }
  const unsigned step = 8 - 8 % distance;
  do {
    std::memcpy(out, &pattern, 8);
    out += step;
  } while (out < end);
}

[[gnu::always_inline]] inline FastInflate::Stop RunRounds(FastInflate& state) {
  const std::uint8_t* in = state.in;
  const std::uint8_t* const inLimit = state.inLimit;
  std::uint8_t* out = state.out;
  const std::uint8_t* const outLimit = state.outLimit;
  std::uint64_t bits = state.bits;
  unsigned count = state.bitCount;
  const InflateEntry* const literals = state.literals.entries;
  const unsigned literalBits = state.literals.primaryBits;
  const InflateEntry* const distances = state.distances.entries;
  const unsigned distanceBits = state.distances.primaryBits;
  auto stop = FastInflate::Stop::Limit;

  // Afterwards there are at least 56 bits. What stands above `count` are bits of the bytes from `in` on, too.
  const auto refill = [&]() __attribute__((always_inline)) {
    bits |= Load64(in) << count;
    in += (63 - count) >> 3;
    count |= 56;
  };
  const auto drop = [&](unsigned n) __attribute__((always_inline)) {
    bits >>= n;
    count -= n;
  };
  // Drops a literal's code and writes it.
  const auto put = [&](InflateEntry literal) __attribute__((always_inline)) {
    drop(BitsToDrop(literal));
    *out++ = static_cast<std::uint8_t>(EntryValue(literal));
  };
  // Drops a length or distance with its extra bits.
  const auto take = [&](InflateEntry entry) __attribute__((always_inline)) {
    const auto extra = static_cast<unsigned>(LowBits(bits, BitsToDrop(entry)) >> CodeBits(entry));
    drop(BitsToDrop(entry));
    return EntryValue(entry) + extra;
  };
  const auto mayGoOn = [&]() __attribute__((always_inline)) {
    return in <= inLimit && out < outLimit;
  };

  if (!mayGoOn()) {
    return stop;
  }
  refill();
  // A round begins with its entry looked up, before the refill: neither need wait for the other.
  InflateEntry entry = literals[LowBits(bits, literalBits)];
  for (;; refill()) {
    if (entry & kLiteralEntry) {
      put(entry);
      entry = literals[LowBits(bits, literalBits)];
      if (entry & kLiteralEntry) {
        put(entry);
        entry = literals[LowBits(bits, literalBits)];
      }
    }
    if (entry & kSecondTableEntry) {
      drop(BitsToDrop(entry));
      entry = literals[EntryValue(entry) + LowBits(bits, CodeBits(entry))];
    }
    if (entry & kLiteralEntry) {
      put(entry);
      entry = literals[LowBits(bits, literalBits)];
      if (!mayGoOn()) {
        break;
      }
      continue;
    }
    if (entry & kSpecialEntry) {
      stop = entry & kEndOfBlockEntry ? FastInflate::Stop::EndOfBlock : FastInflate::Stop::Corrupt;
      drop(BitsToDrop(entry));
      break;
    }
    const unsigned length = take(entry);
    refill();
    entry = distances[LowBits(bits, distanceBits)];
    if (entry & kSecondTableEntry) {
      drop(BitsToDrop(entry));
      entry = distances[EntryValue(entry) + LowBits(bits, CodeBits(entry))];
    }
    if (entry & kSpecialEntry) {
      stop = FastInflate::Stop::Corrupt;
      break;
    }
    const unsigned distance = take(entry);
    if (distance > out - state.oldest) {
      stop = FastInflate::Stop::Corrupt;
      break;
    }
    entry = literals[LowBits(bits, literalBits)];
    CopyMatch(out, length, distance);
    out += length;
    if (!mayGoOn()) {
      break;
    }
  }
  state.in = in;
  state.out = out;
  state.bits = LowBits(bits, count);
  state.bitCount = count;
  return stop;
}

FastInflate::Stop RunAnywhere(FastInflate& state) {
  return RunRounds(state);
}

#if defined(__x86_64__)
// The same instructions with shifts by a variable that cost one step instead of three.
[[gnu::target("bmi,bmi2")]] FastInflate::Stop RunWithBmi2(FastInflate& state) {
  return RunRounds(state);
}

const auto kRunRounds = __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("bmi") ? RunWithBmi2 : RunAnywhere;
#else
const auto kRunRounds = RunAnywhere;
#endif

}  // namespace

FastInflate::Stop FastInflate::Run() {
  return kRunRounds(*this);
}

}  // namespace kelvane
