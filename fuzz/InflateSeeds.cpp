#include <zlib.h>

#include "Seeds.h"
#include "support/DeflateBits.h"
#include "support/PngBuilder.h"

namespace kelvane::fuzz {

namespace {

using namespace test;

// A destination of `rawLength` bytes for a stream.
Bytes Input(std::size_t rawLength, ByteView stream, bool allow64K = false) {
  const bool large = rawLength >= 4096;
  const std::size_t size = large ? (rawLength + 7) / 8 : rawLength;
  Bytes input = {static_cast<std::uint8_t>(size >> 8), static_cast<std::uint8_t>(size),
                 static_cast<std::uint8_t>((large ? 0xA0 : 0) | (allow64K ? 1 : 0))};
  Append(input, stream);
  return input;
}

Bytes Content(std::size_t size, unsigned shades) {
  Bytes content(size);
  std::uint32_t seed = shades;
  for (std::size_t i = 0; i < size; ++i) {
    seed = seed * 1664525 + 1013904223;
    content[i] = i > 600 && i / 100 % 3 == 0 ? content[i - 577] : static_cast<std::uint8_t>((seed >> 24) % shades);
  }
  return content;
}

}  // namespace

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  for (const int level : {0, 1, 9}) {
    for (const unsigned shades : {2U, 40U, 256U}) {
      for (const std::size_t size : {std::size_t{1}, std::size_t{900}, std::size_t{5000}}) {
        seeds.push_back(Input(size, ZlibStream(Content(size, shades), level)));
      }
    }
  }
  seeds.push_back(Input(400000, ZlibStream(Bytes(400000, 'x'), 9)));
  // Codes of all lengths, so that second tables are used.
  Bytes literals(288);
  for (std::size_t i = 0; i < 14; ++i) {
    literals[i * 7] = static_cast<std::uint8_t>(i + 1);
  }
  literals[256] = literals[270] = 15;
  const auto codes = CanonicalCodes(literals);
  DeflateBits bits;
  bits.Block(true, 2).DynamicHeader(literals, Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 15});
  for (std::size_t i = 0; i < 100; ++i) {
    const auto& [code, length] = codes[i % 14 * 7];
    bits.Code(code, length);
  }
  bits.Code(codes[270].first, codes[270].second).Bits(1, 2).Code(0, 1);
  bits.Code(codes[256].first, codes[256].second);
  seeds.push_back(Input(200, bits.Take()));
  // The distances that no standard stream has, and lengths of 16 bits.
  const Bytes stored(60000, 7);
  seeds.push_back(Input(60300, DeflateBits()
                                   .Block(false, 0)
                                   .Stored(stored)
                                   .Block(true, 1)
                                   .FixedSymbol(285)
                                   .FixedDistance(31)
                                   .Bits(5000, 14)
                                   .FixedEnd()
                                   .Take()));
  seeds.push_back(Input(
      70000,
      DeflateBits().Block(true, 1).FixedSymbol('a').FixedSymbol(285).Bits(60000, 16).FixedDistance(0).FixedEnd().Take(),
      true));
  // Ends of every kind.
  seeds.push_back(Input(9, DeflateBits().Block(true, 3).Take()));
  seeds.push_back(Input(9, DeflateBits().Block(true, 0).StoredLength(3, 3).Take()));
  seeds.push_back(Input(9, DeflateBits().Block(true, 1).FixedSymbol('a').FixedSymbol(286).FixedEnd().Take()));
  seeds.push_back(Input(0, DeflateBits().Block(false, 1).FixedEnd().Block(true, 1).FixedEnd().Take()));
  return seeds;
}

}  // namespace kelvane::fuzz
