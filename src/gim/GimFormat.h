// The GIM image format as tables: every offset and constant of the signature, the block heads and the pixel layout.
//
// All integers are little-endian. A file is a signature, the heads of a root and of a picture block, and behind them
// the palette and the image block in either order. Tools name such files .gim or, since the signature reads backwards,
// .mig.
#pragma once

#include <array>
#include <cstdint>

namespace kelvane::gim {

// Signature, 16 bytes; the last four are zeros and not compared.
inline constexpr std::array<std::uint8_t, 12> kSignature = {'M', 'I', 'G', '.', '0', '0', '.', '1', 'P', 'S', 'P', 0};
inline constexpr std::int32_t kSignatureSize = 16;

// Signature, root head and picture head: the first palette or image block follows them.
inline constexpr std::int32_t kFileHeadSize = 48;
inline constexpr std::int32_t kRootHeadAt = 16;
inline constexpr std::int32_t kPictureHeadAt = 32;

// The start of every block, relative to it. Root and picture consist of this much.
inline constexpr std::int32_t kBlockHeadSize = 16;
inline constexpr std::int32_t blockId = 0;     // 16 bits
inline constexpr std::int32_t blockFlags = 2;  // 16 bits
inline constexpr std::int32_t blockSize = 4;   // length of the block from its start
inline constexpr std::int32_t blockNext = 8;   // distance to the next block
inline constexpr std::int32_t blockData = 12;  // distance to the block's contents

inline constexpr std::int16_t kRootId = 2;
inline constexpr std::int16_t kPictureId = 3;
inline constexpr std::int16_t kImageId = 4;
inline constexpr std::int16_t kPaletteId = 5;

inline constexpr std::int16_t kFlagsIndexed = 0;
inline constexpr std::int16_t kFlagsDirect = 0x10;

// Head of a palette or image block, 80 bytes, relative to the block's start.
inline constexpr std::int32_t kDataBlockHeadSize = 80;
inline constexpr std::int32_t infoPixelFormat = 20;   // 16 bits
inline constexpr std::int32_t infoPixelOrder = 22;    // 16 bits: 0 linear, else tiled
inline constexpr std::int32_t infoWidth = 24;         // 16 bits: pixels, or colours of a palette
inline constexpr std::int32_t infoHeight = 26;        // 16 bits
inline constexpr std::int32_t infoBitsPerPixel = 28;  // 16 bits
inline constexpr std::int32_t infoPitchAlign = 30;    // 16 bits: rows are padded to a multiple of so many bytes
inline constexpr std::int32_t infoPixelStart = 40;    // distance of the data from kPixelStartBase
inline constexpr std::int32_t infoPixelEnd = 48;      // blockSize - 16

inline constexpr std::int32_t kPixelStartBase = 32;
inline constexpr std::int32_t kPixelStart = 48;  // data right behind the head
inline constexpr std::int32_t kPixelEndLess = 16;

inline constexpr std::int16_t kFormatDirect = 3;    // 32-bit pixels
inline constexpr std::int16_t kFormatIndexed4 = 4;  // 4-bit indexes
inline constexpr std::int16_t kFormatIndexed8 = 5;  // 8-bit indexes

inline constexpr std::int16_t kPitchAlign = 16;  // what is written
inline constexpr std::int32_t kTileRows = 8;     // a tile is pitchAlign bytes wide and so many rows high
inline constexpr std::int32_t kTileBytes = kPitchAlign * kTileRows;

// Fields of a palette or image block that are the same in every file that is written; what they don't name is 0 or
// depends on the image. Firmware tools expect them exactly so.
struct FixedField {
  std::int32_t offset;
  std::int32_t width;  // in bytes
  std::int16_t inPalette;
  std::int16_t inImage;
};
inline constexpr std::array<FixedField, 12> kFixedFields = {{
    {blockData, 4, 16, 16},
    {16, 4, 48, 48},  // size of the fields from here on
    {infoPitchAlign, 2, kPitchAlign, kPitchAlign},
    {32, 2, 1, 8},  // rows that the height is padded to
    {34, 2, 2, 2},
    {infoPixelStart, 4, kPixelStart, kPixelStart},
    {44, 4, 64, 64},
    {56, 2, 2, 1},
    {58, 2, 1, 1},
    {60, 2, 3, 3},
    {62, 2, 1, 1},
    {64, 4, 64, 64},
}};

// The root's size is that of both blocks and the file head without the signature, its low four bits cleared. The
// picture's is less by its own head, and without a palette by 64 more: files are written so, and nothing reads it.
inline constexpr std::int32_t kRootSizeMask = ~15;
inline constexpr std::int32_t kPictureLess = 16;
inline constexpr std::int32_t kPictureLessDirect = 80;

}  // namespace kelvane::gim
