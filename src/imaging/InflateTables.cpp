#include "imaging/InflateTables.h"

#include <algorithm>

namespace kelvane {
namespace {

constexpr unsigned kLongestCode = 15;
constexpr std::size_t kEndOfBlock = 256;

constexpr std::array<std::uint16_t, 29> kLengthBase = {3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                                       31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
constexpr std::array<std::uint8_t, 29> kLengthExtra = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                                       2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
constexpr std::array<std::uint16_t, kDistanceSymbols> kDistanceBase = {
    1,   2,   3,   4,   5,    7,    9,    13,   17,   25,   33,   49,    65,    97,    129,   193,
    257, 385, 513, 769, 1025, 1537, 2049, 3073, 4097, 6145, 8193, 12289, 16385, 24577, 32769, 49153};
constexpr std::array<std::uint8_t, kDistanceSymbols> kDistanceExtra = {
    0, 0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13, 14, 14};

constexpr InflateEntry ValueEntry(unsigned value, unsigned extraBits) {
  return (InflateEntry{value} << 16) | extraBits;
}

constexpr std::array<InflateEntry, kLiteralSymbols> MakeLiteralMeanings() {
  std::array<InflateEntry, kLiteralSymbols> meanings{};
  for (unsigned literal = 0; literal < kEndOfBlock; ++literal) {
    meanings[literal] = kLiteralEntry | ValueEntry(literal, 0);
  }
  meanings[kEndOfBlock] = kSpecialEntry | kEndOfBlockEntry;
  for (std::size_t i = 0; i < kLengthBase.size(); ++i) {
    meanings[kEndOfBlock + 1 + i] = ValueEntry(kLengthBase[i], kLengthExtra[i]);
  }
  // The last two symbols have codes but no length.
  meanings[286] = kSpecialEntry;
  meanings[287] = kSpecialEntry;
  return meanings;
}

constexpr std::array<InflateEntry, kDistanceSymbols> MakeDistanceMeanings() {
  std::array<InflateEntry, kDistanceSymbols> meanings{};
  for (std::size_t i = 0; i < kDistanceSymbols; ++i) {
    meanings[i] = ValueEntry(kDistanceBase[i], kDistanceExtra[i]);
  }
  return meanings;
}

constexpr std::array<InflateEntry, kCodeLengthSymbols> MakeCodeLengthMeanings() {
  std::array<InflateEntry, kCodeLengthSymbols> meanings{};
  for (unsigned symbol = 0; symbol < kCodeLengthSymbols; ++symbol) {
    meanings[symbol] = ValueEntry(symbol, 0);
  }
  return meanings;
}

// The entry of a symbol behind a code of `bits` bits.
constexpr InflateEntry WithCode(InflateEntry meaning, unsigned bits) {
  return meaning + bits + (bits << 8);
}

// The symbols in the order of their codes, and how many there are of each length.
struct SortedSymbols {
  std::array<std::uint16_t, kLongestCode + 1> counts{};
  std::array<std::uint16_t, kLiteralSymbols> symbols;
  std::size_t size = 0;
};

SortedSymbols SortByCode(std::span<const std::uint8_t> lengths) {
  SortedSymbols sorted;
  for (const std::uint8_t length : lengths) {
    ++sorted.counts[length];
  }
  sorted.counts[0] = 0;
  std::array<std::uint16_t, kLongestCode + 2> next{};
  for (std::size_t length = 1; length <= kLongestCode; ++length) {
    next[length + 1] = static_cast<std::uint16_t>(next[length] + sorted.counts[length]);
  }
  sorted.size = next[kLongestCode + 1];
  for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
    if (lengths[symbol] != 0) {
      sorted.symbols[next[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
    }
  }
  return sorted;
}

bool HasTooManyCodes(const SortedSymbols& sorted) {
  int patternsLeft = 1;
  for (std::size_t length = 1; length <= kLongestCode && patternsLeft >= 0; ++length) {
    patternsLeft = patternsLeft * 2 - sorted.counts[length];
  }
  return patternsLeft < 0;
}

// Goes through the symbols with their codes, the shortest and lowest first.
class CodeWalk {
 public:
  CodeWalk(std::span<const std::uint8_t> lengths, const SortedSymbols& sorted) : lengths_(lengths), sorted_(sorted) {
    LengthenCode();
  }

  [[nodiscard]] bool AtEnd() const { return next_ == sorted_.size; }
  [[nodiscard]] unsigned Symbol() const { return sorted_.symbols[next_]; }
  [[nodiscard]] unsigned Code() const { return code_; }
  [[nodiscard]] unsigned Length() const { return length_; }
  // Whether the code is there and begins with `prefix`, a code of `prefixBits` bits.
  [[nodiscard]] bool BeginsWith(unsigned prefix, unsigned prefixBits) const {
    return !AtEnd() && code_ >> (length_ - prefixBits) == prefix;
  }
  void Step() {
    ++next_;
    ++code_;
    LengthenCode();
  }

 private:
  void LengthenCode() {
    if (!AtEnd()) {
      const unsigned length = lengths_[Symbol()];
      code_ <<= length - length_;
      length_ = length;
    }
  }

  std::span<const std::uint8_t> lengths_;
  const SortedSymbols& sorted_;
  std::size_t next_ = 0;
  unsigned code_ = 0;
  unsigned length_ = 0;
};

// The first table grows with the length of the codes: each doubling repeats all shorter codes with both values of the
// bit that is new, and the codes of this length then take their places.
void FillFirstTable(CodeWalk& walk, unsigned primaryBits, const InflateEntry* meanings,
                    std::span<InflateEntry> entries) {
  entries[0] = kSpecialEntry;
  for (unsigned length = 1; length <= primaryBits; ++length) {
    const std::size_t half = std::size_t{1} << (length - 1);
    std::copy_n(entries.data(), half, entries.data() + half);
    for (; !walk.AtEnd() && walk.Length() == length; walk.Step()) {
      entries[ReverseBits(walk.Code(), length)] = WithCode(meanings[walk.Symbol()], length);
    }
  }
}

// Codes with the same first bits stand side by side, the longest last; they share a second table, which is put at
// `end`. Answers its size.
std::size_t AddSecondTable(CodeWalk& walk, unsigned primaryBits, const InflateEntry* meanings,
                           std::span<InflateEntry> entries, std::size_t end) {
  const unsigned prefix = walk.Code() >> (walk.Length() - primaryBits);
  unsigned longest = walk.Length();
  for (CodeWalk ahead = walk; ahead.BeginsWith(prefix, primaryBits); ahead.Step()) {
    longest = ahead.Length();
  }
  const unsigned secondBits = longest - primaryBits;
  const std::span<InflateEntry> second = entries.subspan(end, std::size_t{1} << secondBits);
  std::ranges::fill(second, kSpecialEntry);
  entries[ReverseBits(prefix, primaryBits)] =
      (static_cast<InflateEntry>(end) << 16) | kSpecialEntry | kSecondTableEntry | (secondBits << 8) | primaryBits;
  for (; walk.BeginsWith(prefix, primaryBits); walk.Step()) {
    const unsigned ownBits = walk.Length() - primaryBits;
    const unsigned ownCode = walk.Code() & ((1U << ownBits) - 1);
    for (std::size_t i = ReverseBits(ownCode, ownBits); i < second.size(); i += std::size_t{1} << ownBits) {
      second[i] = WithCode(meanings[walk.Symbol()], ownBits);
    }
  }
  return second.size();
}

}  // namespace

constinit const std::array<InflateEntry, kLiteralSymbols> kLiteralMeanings = MakeLiteralMeanings();
constinit const std::array<InflateEntry, kDistanceSymbols> kDistanceMeanings = MakeDistanceMeanings();
constinit const std::array<InflateEntry, kCodeLengthSymbols> kCodeLengthMeanings = MakeCodeLengthMeanings();

unsigned ReverseBits(unsigned code, unsigned count) {
  code = ((code & 0x5555) << 1) | ((code >> 1) & 0x5555);
  code = ((code & 0x3333) << 2) | ((code >> 2) & 0x3333);
  code = ((code & 0x0F0F) << 4) | ((code >> 4) & 0x0F0F);
  code = ((code & 0x00FF) << 8) | ((code >> 8) & 0x00FF);
  return code >> (16 - count);
}

unsigned BuildDecodeTable(std::span<const std::uint8_t> lengths, const InflateEntry* meanings, unsigned maxPrimaryBits,
                          std::span<InflateEntry> entries) {
  const SortedSymbols sorted = SortByCode(lengths);
  if (HasTooManyCodes(sorted)) {
    return 0;
  }
  unsigned longest = kLongestCode;
  while (longest > 1 && sorted.counts[longest] == 0) {
    --longest;
  }
  const unsigned primaryBits = std::min(longest, maxPrimaryBits);
  CodeWalk walk(lengths, sorted);
  FillFirstTable(walk, primaryBits, meanings, entries);
  std::size_t end = std::size_t{1} << primaryBits;
  while (!walk.AtEnd()) {
    end += AddSecondTable(walk, primaryBits, meanings, entries, end);
  }
  return primaryBits;
}

}  // namespace kelvane
