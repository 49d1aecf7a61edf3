// Parts of raw deflate streams for tests, put together by hand.
#pragma once

#include "common/Bytes.h"

namespace kelvane::test {

// A block that stores up to 65,535 bytes as they are; it begins on a byte and ends on one.
[[nodiscard]] Bytes StoredBlock(ByteView data, bool last);

// Bits in a stream's order: numbers low bit first, codes high bit first.
class BitWriter {
 public:
  void Put(unsigned value, int bits);
  void PutCode(unsigned code, int bits);
  [[nodiscard]] const Bytes& Written() const { return bytes_; }

 private:
  Bytes bytes_;
  int used_ = 8;  // bits of the last byte
};

}  // namespace kelvane::test
