// Bitmaps as GimToBitmap is to write them, put together from numbers that a test states.
#pragma once

#include <cstdint>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

struct ExpectedHeader {
  std::uint32_t width;
  std::uint32_t height;
  std::uint32_t bits;
  std::uint32_t offBits;
  std::uint32_t sizeImage;
  std::uint32_t clrUsed;
};

inline Bytes HeaderBytes(const ExpectedHeader& header) {
  Bytes bytes(54);
  bytes[0] = 'B';
  bytes[1] = 'M';
  WriteU32(bytes, 2, header.offBits + header.sizeImage);
  WriteU32(bytes, 10, header.offBits);
  WriteU32(bytes, 14, 40);
  WriteU32(bytes, 18, header.width);
  WriteU32(bytes, 22, header.height);
  WriteU16(bytes, 26, 1);
  WriteU16(bytes, 28, static_cast<std::uint16_t>(header.bits));
  WriteU32(bytes, 34, header.sizeImage);
  WriteU32(bytes, 46, header.clrUsed);
  return bytes;
}

// The header of every bitmap of 32 bits.
inline Bytes Header32(std::uint32_t width, std::uint32_t height) {
  return HeaderBytes({width, height, 32, 54, width * height * 4, 0xFFFFFFFF});
}

inline Bytes Joined(const std::vector<Bytes>& parts) {
  Bytes all;
  for (const Bytes& part : parts) {
    Append(all, part);
  }
  return all;
}

// The bytes of longs.
inline Bytes Longs(const std::vector<std::uint32_t>& values) {
  Bytes bytes(values.size() * 4);
  for (std::size_t i = 0; i < values.size(); ++i) {
    WriteU32(bytes, static_cast<std::int64_t>(i) * 4, values[i]);
  }
  return bytes;
}

}  // namespace kelvane::test
