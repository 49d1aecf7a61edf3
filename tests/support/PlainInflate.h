// An inflate as plain as can be, bit by bit and byte by byte, to hold the built-in one against.
#pragma once

#include <cstddef>

#include "common/Bytes.h"

namespace kelvane::test {

struct PlainInflated {
  int status = 0;             // 0, -1, -2 or 9
  bool runtimeError = false;  // instead of a status
  Bytes out;                  // what was written, whatever the end

  [[nodiscard]] bool Succeeded() const { return status == 0 && !runtimeError; }
};

// Decodes a zlib stream into at most `rawLength` bytes. The header's 2 bytes and the checksum are not looked at. With
// `allow64K` a length of 258 is replaced by 16 more bits and 3.
[[nodiscard]] PlainInflated PlainInflate(ByteView compressed, std::size_t rawLength, bool allow64K);

}  // namespace kelvane::test
