// The pixels of a chosen icon image: its bits expanded to 32 bits, then its mask or alpha channel applied.
#include <algorithm>
#include <array>
#include <cstring>

#include "common/Int16.h"
#include "imaging/Premultiply.h"
#include "imaging/cICOparser.h"
#include "imaging/modParsers.h"

namespace kelvane {

namespace {

// Offsets in the bitmap header that an image begins with.
constexpr std::int32_t kHeaderBytes = 40;
constexpr std::int32_t kWidthAt = 4;
constexpr std::int32_t kHeightAt = 8;
constexpr std::int32_t kCompressionAt = 16;
constexpr std::int32_t kSizeImageAt = 20;
constexpr std::int32_t kXPelsPerMeterAt = 24;
constexpr std::int32_t kYPelsPerMeterAt = 28;
constexpr std::int32_t kColoursUsedAt = 32;

// Blue, green, red and alpha.
using Pixel = std::array<std::uint8_t, 4>;

bool IsDepth(std::int32_t bitCount) {
  return bitCount == 1 || bitCount == 4 || bitCount == 8 || bitCount == 16 || bitCount == 24 || bitCount == 32;
}

// 5 bits as 8: the upper bits again below the lower ones.
std::uint8_t FromFiveBits(std::uint32_t value) {
  return static_cast<std::uint8_t>(value << 3 | value >> 2);
}

void ExpandIndexes(const std::uint8_t* bits, std::uint32_t bitCount, const std::array<Pixel, 256>& colours,
                   std::uint8_t* target, std::size_t width) {
  const std::uint32_t mask = (1U << bitCount) - 1;
  std::uint32_t shift = 8;
  for (std::size_t x = 0; x < width; ++x) {
    shift -= bitCount;
    std::memcpy(target + 4 * x, colours[*bits >> shift & mask].data(), 4);
    if (shift == 0) {
      shift = 8;
      ++bits;
    }
  }
}

void ExpandRow(const std::uint8_t* bits, std::uint32_t bitCount, const std::array<Pixel, 256>& colours,
               std::uint8_t* target, std::size_t width) {
  switch (bitCount) {
    case 16:
      for (std::size_t x = 0; x < width; ++x) {
        const std::uint32_t value = bits[2 * x] | std::uint32_t{bits[2 * x + 1]} << 8;
        target[4 * x] = FromFiveBits(value & 31);
        target[4 * x + 1] = FromFiveBits(value >> 5 & 31);
        target[4 * x + 2] = FromFiveBits(value >> 10 & 31);
      }
      break;
    case 24:
      for (std::size_t x = 0; x < width; ++x) {
        std::memcpy(target + 4 * x, bits + 3 * x, 3);
      }
      break;
    case 32:
      std::memcpy(target, bits, 4 * width);
      break;
    default:
      ExpandIndexes(bits, bitCount, colours, target, width);
  }
}

}  // namespace

// Takes out of the header what only icons keep there. The caller's bytes change.
void cICOparser::RepairBitmapHeader(const Entry& entry) {
  const std::int32_t start = entry.dwImageOffset;
  (void)SpanOf(stream_, start, kHeaderBytes);
  const std::int32_t coloursUsed = EntryColoursUsed(entry);
  WriteI32(stream_, start + kHeightAt, EntryHeight(entry));
  WriteI32(stream_, start + kSizeImageAt, 0);
  WriteI32(stream_, start + kXPelsPerMeterAt, 0);
  WriteI32(stream_, start + kYPelsPerMeterAt, 0);
  WriteI32(stream_, start + kColoursUsedAt, coloursUsed);
}

// Turns the image's bits into 32-bit pixels of the host. An image narrower than the host leaves the rest of each row
// zero, of a wider one only the left part shows. False, the host being all zero, for a header or a depth that bitmaps
// don't have and for bits that don't lie inside the stream.
bool cICOparser::ExpandBits(const Entry& entry, c32bppDIB& cHost) const {
  const std::int32_t start = entry.dwImageOffset;
  const std::int32_t headerBytes = ReadI32(stream_, start);
  const std::int32_t biWidth = ReadI32(stream_, start + kWidthAt);
  const std::int32_t bitCount = EntryBitCount(entry);
  if (headerBytes < kHeaderBytes || biWidth < 1 || ReadI32(stream_, start + kCompressionAt) != 0 ||
      !IsDepth(bitCount)) {
    return false;
  }
  const std::int64_t bitsAt = XorBitsOffset(entry);
  const std::int64_t rowBytes = (std::int64_t{bitCount} * biWidth + 31) / 32 * 4;
  if (bitsAt + rowBytes * cHost.Height() > static_cast<std::int64_t>(stream_.size())) {
    return false;
  }
  std::array<Pixel, 256> colours{};
  if (bitCount <= 8) {
    const std::int32_t most = 1 << bitCount;
    const std::int32_t used = ReadI32(stream_, start + kColoursUsedAt);
    const auto count = static_cast<std::size_t>(used < 1 ? most : std::min(used, most));
    for (std::size_t i = 0; i < count; ++i) {
      std::memcpy(colours[i].data(), stream_.data() + start + headerBytes + 4 * i, 3);
    }
  }
  const auto width = static_cast<std::size_t>(std::min(biWidth, cHost.Width()));
  for (std::int32_t y = 0; y < cHost.Height(); ++y) {
    ExpandRow(stream_.data() + bitsAt + rowBytes * y, static_cast<std::uint32_t>(bitCount), colours,
              cHost.BitsPointer() + std::int64_t{cHost.ScanWidth()} * y, width);
  }
  return true;
}

void cICOparser::ApplyMaskAndAlpha(const Entry& entry, c32bppDIB& cHost) const {
  if (EntryBitCount(entry) == 32) {
    ApplyAlphaChannel(entry, cHost);
    cHost.ImageType(idType_ == kTypeIcon ? ImageKind::IconWithAlpha : ImageKind::CursorWithAlpha, ParserKey());
    cHost.Alpha(true, ParserKey());
  } else {
    const bool anyTransparent = ApplyAndMask(entry, cHost);
    cHost.ImageType(idType_ == kTypeIcon ? ImageKind::Icon : ImageKind::Cursor, ParserKey());
    cHost.Alpha(anyTransparent, ParserKey());
  }
}

// Pixels whose mask bit is set become all zero, the others opaque. True if any bit was set.
bool cICOparser::ApplyAndMask(const Entry& entry, c32bppDIB& cHost) const {
  const std::int32_t rowBytes = AlignedRowBytes(1, cHost.Width());
  const ByteView mask = SpanOf(stream_, AndMaskOffset(entry), rowBytes * cHost.Height());
  bool anySet = false;
  std::uint8_t* pixel = cHost.BitsPointer();
  for (std::int32_t y = 0; y < cHost.Height(); ++y) {
    const std::uint8_t* row = mask.data() + std::ptrdiff_t{rowBytes} * y;
    for (std::int32_t x = 0; x < cHost.Width(); ++x, pixel += 4) {
      if ((row[x / 8] << (x % 8) & 0x80) != 0) {
        std::memset(pixel, 0, 4);
        anySet = true;
      } else {
        pixel[3] = 255;
      }
    }
  }
  return anySet;
}

// The source's alpha is walked in step with the host's pixels, whatever the length of the source's rows.
void cICOparser::ApplyAlphaChannel(const Entry& entry, c32bppDIB& cHost) const {
  const std::span<std::uint8_t> pixels = cHost.Pixels();
  Premultiply(pixels, SpanOf(stream_, XorBitsOffset(entry), static_cast<std::int32_t>(pixels.size())));
}

std::int32_t cICOparser::EntryHeight(const Entry& entry) {
  return entry.bHeight == 0 ? 256 : entry.bHeight;
}

// The height's byte too: icons are square, and one that isn't loads as a square of its height.
std::int32_t cICOparser::EntryWidth(const Entry& entry) {
  return EntryHeight(entry);
}

bool cICOparser::EntryIsPng(const Entry& entry) {
  return entry.wPlanes == kPlanesOfPng;
}

std::int32_t cICOparser::EntryBitCount(const Entry& entry) {
  return entry.wBitCount;
}

// The sizes of both masks come from the directory's bytes as they stand, 0 for 256 included.
std::int32_t cICOparser::XorMaskSize(const Entry& entry) {
  return AlignedRowBytes(entry.bWidth, entry.wBitCount) * entry.bHeight;
}

std::int32_t cICOparser::AndMaskSize(const Entry& entry) {
  return AlignedRowBytes(entry.bWidth, 1) * entry.bHeight;
}

// How many colours the image's bytes leave room for; 0 for images without a palette.
std::int32_t cICOparser::EntryColoursUsed(const Entry& entry) const {
  if (EntryBitCount(entry) >= 9) {
    return 0;
  }
  const std::int32_t headerBytes = At(stream_, entry.dwImageOffset);
  const std::int32_t others = XorMaskSize(entry) + AndMaskSize(entry) + headerBytes;
  return CheckedInt32(std::int64_t{entry.dwBytesInRes} - others) / 4;
}

// A full palette is assumed even where the image has a shorter one, whose pixels are then shifted.
std::int32_t cICOparser::XorBitsOffset(const Entry& entry) const {
  const std::int32_t palette = EntryBitCount(entry) < 16 ? 4 << EntryBitCount(entry) : 0;
  return AddInt32(AddInt32(entry.dwImageOffset, ReadI32(stream_, entry.dwImageOffset)), palette);
}

// The mask is found from the image's end.
std::int32_t cICOparser::AndMaskOffset(const Entry& entry) {
  return AddInt32(AddInt32(entry.dwImageOffset, entry.dwBytesInRes), -AndMaskSize(entry));
}

}  // namespace kelvane
