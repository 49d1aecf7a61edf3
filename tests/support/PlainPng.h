// A PNG reader as plain as can be, to hold the parser against: all data is inflated into one array, filters are undone
// in it, and pixels are converted one by one. It knows nothing of the parser but the rules that both follow.
#pragma once

#include <cstdint>

#include "common/Bytes.h"

namespace kelvane::test {

struct PlainPngResult {
  enum class End {
    Refused,  // the host is as it was
    Emptied,  // the pixels couldn't be converted
    Loaded,
  };
  End end = End::Refused;
  std::int32_t width = 0;
  std::int32_t height = 0;
  bool alpha = false;
  // 4 bytes a pixel: blue, green, red, alpha; the bottom row first.
  Bytes pixels;
};

// Reads a PNG from memory. `checkCrcs` as if zlib were there.
[[nodiscard]] PlainPngResult PlainPng(ByteView file, bool checkCrcs);

}  // namespace kelvane::test
