// What the header of a BMP file tells of its pixels.
#pragma once

#include <cstdint>

#include "common/Bytes.h"

namespace kelvane {

struct BmpInfo {
  std::int64_t bitsOffset = 0;
  std::int32_t bitCount = 0;
  // 1 and 2: runs of indexes; others: rows one after the other.
  std::int32_t compression = 0;
  // Which bits of a pixel are a colour's; all 0 where it has no masks of its own.
  std::uint32_t redMask = 0;
  std::uint32_t greenMask = 0;
  std::uint32_t blueMask = 0;

  [[nodiscard]] bool HasRuns() const { return compression == 1 || compression == 2; }
  [[nodiscard]] bool HasMasks() const { return (redMask | greenMask | blueMask) != 0; }
  // Bytes of a row of `width` pixels that isn't stored in runs, padded to 4.
  [[nodiscard]] std::int64_t RowBytes(std::int32_t width) const {
    return (std::int64_t{bitCount} * width + 31) / 32 * 4;
  }
};

// Failure 9 where `file` ends within the header.
[[nodiscard]] BmpInfo ReadBmpInfo(ByteView file);

}  // namespace kelvane
