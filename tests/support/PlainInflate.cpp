#include "support/PlainInflate.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kelvane::test {
namespace {

struct RuntimeError {};
struct Stop {
  int status;
};

// The number of codes of each length, and the symbols in the order of their codes.
struct Code {
  std::array<unsigned, 16> counts{};
  std::vector<unsigned> symbols;
};

Code CodeOf(const std::vector<unsigned>& lengths) {
  Code code;
  for (unsigned length = 1; length < 16; ++length) {
    for (unsigned symbol = 0; symbol < lengths.size(); ++symbol) {
      if (lengths[symbol] == length) {
        ++code.counts[length];
        code.symbols.push_back(symbol);
      }
    }
  }
  // Of the 32768 patterns of 15 bits a code of n bits takes 2^(15 - n).
  unsigned patterns = 0;
  for (unsigned length = 1; length < 16; ++length) {
    patterns += code.counts[length] << (15 - length);
  }
  if (patterns > 32768) {
    throw Stop{9};
  }
  return code;
}

class Decoder {
 public:
  Decoder(ByteView compressed, std::size_t rawLength, bool allow64K, Bytes& out)
      : compressed_(compressed), rawLength_(rawLength), allow64K_(allow64K), out_(out) {}

  void Run() {
    for (bool final = false; !final;) {
      final = Bits(1) == 1;
      switch (Bits(2)) {
        case 0:
          Stored();
          break;
        case 1:
          Fixed();
          break;
        case 2:
          Dynamic();
          break;
        default:
          throw Stop{-1};
      }
    }
  }

 private:
  unsigned Bits(unsigned count) {
    unsigned value = 0;
    for (unsigned i = 0; i < count; ++i, ++bit_) {
      if (bit_ / 8 >= compressed_.size()) {
        throw RuntimeError{};
      }
      const unsigned byte = compressed_[bit_ / 8];
      value |= (byte >> (bit_ % 8) & 1U) << i;
    }
    return value;
  }

  unsigned Symbol(const Code& code) {
    unsigned bits = 0;
    unsigned first = 0;  // the lowest code of the length
    unsigned index = 0;  // and where its symbol stands
    for (unsigned length = 1; length < 16; ++length) {
      bits = bits << 1 | Bits(1);
      first <<= 1;
      if (bits - first < code.counts[length]) {
        return code.symbols[index + bits - first];
      }
      first += code.counts[length];
      index += code.counts[length];
    }
    throw RuntimeError{};
  }

  void Put(std::uint8_t byte) {
    if (out_.size() == rawLength_) {
      throw RuntimeError{};
    }
    out_.push_back(byte);
  }

  void Stored() {
    bit_ = (bit_ + 7) / 8 * 8;
    std::size_t at = bit_ / 8;
    if (compressed_.size() - at < 4) {
      throw Stop{-1};
    }
    const std::size_t length = Bits(16);
    if (Bits(16) != (length ^ 0xFFFF)) {
      throw Stop{-2};
    }
    at += 4;
    if (length > compressed_.size() - at || length > rawLength_ - out_.size()) {
      throw Stop{-1};
    }
    for (std::size_t i = 0; i < length; ++i) {
      Put(compressed_[at + i]);
    }
    bit_ += length * 8;
  }

  void Fixed() {
    static const Code literals = [] {
      std::vector<unsigned> lengths(288, 8);
      std::fill(lengths.begin() + 144, lengths.begin() + 256, 9U);
      std::fill(lengths.begin() + 256, lengths.begin() + 280, 7U);
      return CodeOf(lengths);
    }();
    static const Code distances = CodeOf(std::vector<unsigned>(32, 5));
    Codes(literals, distances);
  }

  void Dynamic() {
    constexpr std::array<unsigned, 19> kOrder = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
    const unsigned literals = Bits(5) + 257;
    const unsigned distances = Bits(5) + 1;
    const unsigned count = Bits(4) + 4;
    std::vector<unsigned> ownLengths(19);
    for (unsigned i = 0; i < count; ++i) {
      ownLengths[kOrder[i]] = Bits(3);
    }
    const Code own = CodeOf(ownLengths);
    std::vector<unsigned> lengths;
    while (lengths.size() < literals + distances) {
      const unsigned symbol = Symbol(own);
      if (symbol < 16) {
        lengths.push_back(symbol);
        continue;
      }
      const unsigned times = symbol == 16 ? 3 + Bits(2) : symbol == 17 ? 3 + Bits(3) : 11 + Bits(7);
      if ((symbol == 16 && lengths.empty()) || lengths.size() + times > literals + distances) {
        throw Stop{9};
      }
      lengths.insert(lengths.end(), times, symbol == 16 ? lengths.back() : 0);
    }
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(literals);
    const Code literalCode = CodeOf({lengths.begin(), middle});
    Codes(literalCode, CodeOf({middle, lengths.end()}));
  }

  void Codes(const Code& literals, const Code& distances) {
    for (unsigned symbol = Symbol(literals); symbol != 256; symbol = Symbol(literals)) {
      if (symbol < 256) {
        Put(static_cast<std::uint8_t>(symbol));
        continue;
      }
      unsigned length = Length(symbol - 257);
      if (allow64K_ && length == 258) {
        length = Bits(16) + 3;
      }
      const std::size_t distance = Distance(Symbol(distances));
      if (distance > out_.size() || length > rawLength_ - out_.size()) {
        throw RuntimeError{};
      }
      for (unsigned i = 0; i < length; ++i) {
        Put(out_[out_.size() - distance]);
      }
    }
  }

  // Four lengths for each number of extra bits, from 3 on; the last symbol is 258.
  unsigned Length(unsigned symbol) {
    if (symbol > 28) {
      throw RuntimeError{};
    }
    if (symbol == 28) {
      return 258;
    }
    return symbol < 8 ? symbol + 3 : ((4 + symbol % 4) << (symbol / 4 - 1)) + 3 + Bits(symbol / 4 - 1);
  }

  // Two distances for each number of extra bits, from 1 on.
  std::size_t Distance(unsigned symbol) {
    return symbol < 4 ? symbol + 1 : ((2 + symbol % 2) << (symbol / 2 - 1)) + 1 + Bits(symbol / 2 - 1);
  }

  ByteView compressed_;
  std::size_t rawLength_;
  bool allow64K_;
  Bytes& out_;
  std::size_t bit_ = 16;
};

}  // namespace

PlainInflated PlainInflate(ByteView compressed, std::size_t rawLength, bool allow64K) {
  PlainInflated result;
  try {
    Decoder(compressed, rawLength, allow64K, result.out).Run();
  } catch (const RuntimeError&) {
    result.runtimeError = true;
  } catch (const Stop& stop) {
    result.status = stop.status;
  }
  return result;
}

}  // namespace kelvane::test
