#include "support/DeflateBits.h"

#include <algorithm>
#include <array>

namespace kelvane::test {
namespace {

constexpr std::array<std::uint8_t, 19> kOrder = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};

}  // namespace

DeflateBits& DeflateBits::Bits(std::uint32_t value, unsigned count) {
  for (unsigned i = 0; i < count; ++i) {
    if (bitsInLast_ == 0) {
      bytes_.push_back(0);
    }
    bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | (value >> i & 1) << bitsInLast_);
    bitsInLast_ = (bitsInLast_ + 1) % 8;
  }
  return *this;
}

DeflateBits& DeflateBits::Code(std::uint32_t code, unsigned count) {
  for (unsigned i = count; i > 0; --i) {
    Bits(code >> (i - 1), 1);
  }
  return *this;
}

DeflateBits& DeflateBits::Align() {
  bitsInLast_ = 0;
  return *this;
}

DeflateBits& DeflateBits::Byte(std::uint8_t byte) {
  return Bits(byte, 8);
}

DeflateBits& DeflateBits::Block(bool final, unsigned type) {
  return Bits(final ? 1 : 0, 1).Bits(type, 2);
}

DeflateBits& DeflateBits::Stored(ByteView content) {
  const auto length = static_cast<std::uint16_t>(content.size());
  StoredLength(length, static_cast<std::uint16_t>(~length));
  Append(bytes_, content);
  return *this;
}

DeflateBits& DeflateBits::StoredLength(std::uint16_t length, std::uint16_t complement) {
  return Align().Bits(length, 16).Bits(complement, 16);
}

DeflateBits& DeflateBits::FixedSymbol(unsigned symbol) {
  if (symbol < 144) {
    return Code(0x30 + symbol, 8);
  }
  if (symbol < 256) {
    return Code(0x190 + symbol - 144, 9);
  }
  if (symbol < 280) {
    return Code(symbol - 256, 7);
  }
  return Code(0xC0 + symbol - 280, 8);
}

DeflateBits& DeflateBits::FixedDistance(unsigned symbol) {
  return Code(symbol, 5);
}

DeflateBits& DeflateBits::DynamicCounts(unsigned literalCount, unsigned distanceCount,
                                        std::span<const std::uint8_t> codeLengthLengths) {
  Bits(literalCount - 257, 5).Bits(distanceCount - 1, 5).Bits(15, 4);
  for (const std::uint8_t symbol : kOrder) {
    Bits(codeLengthLengths[symbol], 3);
  }
  return *this;
}

DeflateBits& DeflateBits::DynamicHeader(std::span<const std::uint8_t> literalLengths,
                                        std::span<const std::uint8_t> distanceLengths) {
  // The lengths 0 to 15 have codes of 4 bits, each its own number; nothing is repeated.
  std::array<std::uint8_t, 19> codeLengthLengths{};
  std::fill_n(codeLengthLengths.begin(), 16, std::uint8_t{4});
  DynamicCounts(static_cast<unsigned>(literalLengths.size()), static_cast<unsigned>(distanceLengths.size()),
                codeLengthLengths);
  for (const auto lengths : {literalLengths, distanceLengths}) {
    for (const std::uint8_t length : lengths) {
      Code(length, 4);
    }
  }
  return *this;
}

std::vector<std::pair<std::uint32_t, unsigned>> CanonicalCodes(std::span<const std::uint8_t> lengths) {
  std::vector<std::pair<std::uint32_t, unsigned>> codes(lengths.size());
  std::uint32_t code = 0;
  for (unsigned length = 1; length <= 15; ++length) {
    code <<= 1;
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
      if (lengths[symbol] == length) {
        codes[symbol] = {code++, length};
      }
    }
  }
  return codes;
}

}  // namespace kelvane::test
