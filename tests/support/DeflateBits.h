// Writes deflate streams bit by bit, right or wrong, for tests and fuzz corpora of inflate.
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

class DeflateBits {
 public:
  // Begins with the 2 bytes of a zlib header.
  explicit DeflateBits(std::uint8_t first = 0x78, std::uint8_t second = 0x9C) : bytes_{first, second} {}

  // The lowest `count` bits of `value`, the lowest first.
  DeflateBits& Bits(std::uint32_t value, unsigned count);
  // A code of `count` bits, its highest bit first.
  DeflateBits& Code(std::uint32_t code, unsigned count);
  // Zero bits up to the next byte.
  DeflateBits& Align();
  DeflateBits& Byte(std::uint8_t byte);

  // 0 stored, 1 fixed codes, 2 dynamic codes.
  DeflateBits& Block(bool final, unsigned type);
  // A stored block's lengths and bytes; `complement` other than the right one for a broken block.
  DeflateBits& Stored(ByteView content);
  DeflateBits& StoredLength(std::uint16_t length, std::uint16_t complement);

  // A symbol of the fixed literal and length code, 0 to 287, and of the fixed distance code, 0 to 31.
  DeflateBits& FixedSymbol(unsigned symbol);
  DeflateBits& FixedDistance(unsigned symbol);
  DeflateBits& FixedEnd() { return FixedSymbol(256); }

  // The header of a dynamic block: lengths of 257 to 288 literal and length codes and of 1 to 32 distance codes, each
  // written as it is, in 4 bits.
  DeflateBits& DynamicHeader(std::span<const std::uint8_t> literalLengths,
                             std::span<const std::uint8_t> distanceLengths);
  // The counts that such a header begins with, followed by the lengths of the 19 codes for lengths.
  DeflateBits& DynamicCounts(unsigned literalCount, unsigned distanceCount,
                             std::span<const std::uint8_t> codeLengthLengths);

  // What was written, the last byte filled up with zeros.
  [[nodiscard]] Bytes Take() const { return bytes_; }

 private:
  Bytes bytes_;
  unsigned bitsInLast_ = 0;  // 0: none or all
};

// The canonical code of each symbol: the code, highest bit first, and its bits.
[[nodiscard]] std::vector<std::pair<std::uint32_t, unsigned>> CanonicalCodes(std::span<const std::uint8_t> lengths);

}  // namespace kelvane::test
