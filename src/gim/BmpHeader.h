// The 54-byte header of BMP files: file header and info header in one.
#pragma once

#include <cstdint>
#include <filesystem>

#include "common/Bytes.h"

namespace kelvane {

inline constexpr std::int32_t kBitmapHeaderSize = 54;
inline constexpr std::int32_t kRgbQuadSize = 4;

struct BitmapHeader {
  std::int16_t bfType = 0x4D42;  // "BM"
  std::int32_t bfSize = 0;
  std::int32_t bfReserved = 0;
  std::int32_t bfOffBits = kBitmapHeaderSize;  // where the pixels begin
  std::int32_t biSize = 40;
  std::int32_t biWidth = 0;   // pixels
  std::int32_t biHeight = 0;  // rows; positive: the bottom row first
  std::int16_t biPlanes = 1;
  std::int16_t biBitCount = 0;
  std::int32_t biCompression = 0;
  std::int32_t biSizeImage = 0;  // bytes of pixels
  std::int32_t biXPelsPerMeter = 0;
  std::int32_t biYPelsPerMeter = 0;
  std::int32_t biClrUsed = 0;
  std::int32_t biClrImportant = 0;

  bool operator==(const BitmapHeader&) const = default;
};

// The header that `bmp` begins with. No field is checked; bytes beyond the end read as zeros.
[[nodiscard]] BitmapHeader ReadBitmapHeader(ByteView bmp);
// The same for a file. Failures: those of ReadFileStart.
[[nodiscard]] BitmapHeader ReadBitmapHeader(const std::filesystem::path& path);

// Appends the header's 54 bytes.
void AppendBitmapHeader(Bytes& bytes, const BitmapHeader& header);

// Bytes of a row as GIM and BMP files are exchanged: bits x width / 8, rounded to the nearest integer with ties to the
// even one, then rounded up to a multiple of 4. So a 4-bit row of 9 pixels takes 4 bytes and one of 1 pixel none; files
// in the field are written and read so.
[[nodiscard]] std::int32_t BitmapRowBytes(std::int32_t bits, std::int32_t width);

}  // namespace kelvane
