// Raw deflate streams for tests: by zlib's own calls, and block by block by hand.
#pragma once

#include "common/Bytes.h"

namespace kelvane::test {

// The whole raw stream of `data` at a level of zlib, with as much room as it needs.
[[nodiscard]] Bytes RawDeflate(ByteView data, int level = 9);

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
