#include "platform/BmpInfo.h"

namespace kelvane {

namespace {

// Offsets from the file's first byte.
constexpr std::int64_t kBitsOffsetAt = 10;
constexpr std::int64_t kHeaderBytesAt = 14;
constexpr std::int64_t kCoreBitCountAt = 24;
constexpr std::int64_t kBitCountAt = 28;
constexpr std::int64_t kCompressionAt = 30;
constexpr std::int64_t kMasksAt = 54;
constexpr std::uint32_t kCoreHeaderBytes = 12;
constexpr std::int32_t kBitFields = 3;
constexpr std::int32_t kBitFieldsWithAlpha = 6;

}  // namespace

BmpInfo ReadBmpInfo(ByteView file) {
  BmpInfo info;
  info.bitsOffset = ReadU32(file, kBitsOffsetAt);
  if (ReadU32(file, kHeaderBytesAt) == kCoreHeaderBytes) {
    info.bitCount = ReadU16(file, kCoreBitCountAt);
    return info;
  }
  info.bitCount = ReadU16(file, kBitCountAt);
  info.compression = ReadI32(file, kCompressionAt);
  if (info.bitCount != 16 && info.bitCount != 32) {
    return info;
  }
  if (info.compression == kBitFields || info.compression == kBitFieldsWithAlpha) {
    info.redMask = ReadU32(file, kMasksAt);
    info.greenMask = ReadU32(file, kMasksAt + 4);
    info.blueMask = ReadU32(file, kMasksAt + 8);
  } else if (info.bitCount == 16) {
    info.redMask = 0x7C00;
    info.greenMask = 0x03E0;
    info.blueMask = 0x001F;
  }
  return info;
}

}  // namespace kelvane
