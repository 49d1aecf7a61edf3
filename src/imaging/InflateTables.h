// The tables of the built-in inflate: which symbol a pattern of upcoming bits begins with.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace kelvane {

// One entry of a decode table, for the bit pattern that is its index:
//   bits 0 to 5    bits to drop: those of the code and of the symbol's extra bits
//   bits 8 to 11   bits of the code alone
//   bits 13 to 15  the flags below
//   bits 16 to 31  the literal; or the base of a length or distance; or the index at which a second table begins
using InflateEntry = std::uint32_t;

inline constexpr InflateEntry kLiteralEntry = InflateEntry{1} << 31;      // in the table of literals and lengths only
inline constexpr InflateEntry kSpecialEntry = InflateEntry{1} << 15;      // one of the next two, or no code at all
inline constexpr InflateEntry kSecondTableEntry = InflateEntry{1} << 14;  // bits 8 to 11: the bits that index it
inline constexpr InflateEntry kEndOfBlockEntry = InflateEntry{1} << 13;

constexpr unsigned BitsToDrop(InflateEntry entry) {
  return entry & 0x3F;
}
constexpr unsigned CodeBits(InflateEntry entry) {
  return (entry >> 8) & 0xF;
}
constexpr unsigned EntryValue(InflateEntry entry) {
  return entry >> 16;
}

inline constexpr std::size_t kLiteralSymbols = 288;
inline constexpr std::size_t kDistanceSymbols = 32;
inline constexpr std::size_t kCodeLengthSymbols = 19;

// What the symbols of an alphabet mean: entries whose code is still of no bits.
extern const std::array<InflateEntry, kLiteralSymbols> kLiteralMeanings;
// The standard's 30 distances and two more, of 14 extra bits, that only a window of 64 kilobytes reaches.
extern const std::array<InflateEntry, kDistanceSymbols> kDistanceMeanings;
// The symbols of the code that the two codes of a block are written in stand for themselves.
extern const std::array<InflateEntry, kCodeLengthSymbols> kCodeLengthMeanings;

// The lowest `count` bits of `code` in reverse order; `count` is 1 to 16.
[[nodiscard]] unsigned ReverseBits(unsigned code, unsigned count);

// A table of 2^primaryBits entries, indexed by that many upcoming bits, followed by second tables for longer codes.
struct DecodeTableView {
  const InflateEntry* entries = nullptr;
  unsigned primaryBits = 0;
};

// Builds the canonical code in which symbol i has lengths[i] bits (0: no code; at most 15) with at most
// `maxPrimaryBits` for the first table. `entries` must hold 2^maxPrimaryBits entries and 2^(15 - maxPrimaryBits) more
// for each symbol. Bit patterns that begin no code get kSpecialEntry alone. Answers the width of the first table, or 0
// if there are more codes than bit patterns.
[[nodiscard]] unsigned BuildDecodeTable(std::span<const std::uint8_t> lengths, const InflateEntry* meanings,
                                        unsigned maxPrimaryBits, std::span<InflateEntry> entries);

// A decode table with its storage.
template <std::size_t Symbols, unsigned MaxPrimaryBits>
class DecodeTable {
 public:
  // False if there are more codes than bit patterns.
  bool Build(std::span<const std::uint8_t> lengths, const InflateEntry* meanings) {
    primaryBits_ = BuildDecodeTable(lengths, meanings, MaxPrimaryBits, entries_);
    return primaryBits_ != 0;
  }
  [[nodiscard]] DecodeTableView View() const { return {entries_.data(), primaryBits_}; }

 private:
  unsigned primaryBits_ = 0;
  std::array<InflateEntry, (std::size_t{1} << MaxPrimaryBits) + (Symbols << (15 - MaxPrimaryBits))> entries_;
};

using LiteralTable = DecodeTable<kLiteralSymbols, 11>;
using DistanceTable = DecodeTable<kDistanceSymbols, 8>;
using CodeLengthTable = DecodeTable<kCodeLengthSymbols, 7>;

}  // namespace kelvane
