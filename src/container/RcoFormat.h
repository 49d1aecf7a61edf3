// The RCO container format as tables: every offset and constant of the file's head, its entries and its general bodies.
//
// All integers are little-endian, all offsets absolute unless told otherwise, and held as signed 32-bit values. The
// regions lie in this order, and the writers rely on it: header, entry tables (image, GMO, VAG, text, page, animation),
// pointer tables (text, image, VAG, GMO, page, animation), text data, label area, event area, data areas (image, VAG,
// GMO).
#pragma once

#include <cstdint>

namespace kelvane::rco {

inline constexpr std::int32_t kMagic = 0x46525000;  // the bytes 00 50 52 46

// hdrVersion
inline constexpr std::int32_t kVersionPlain = 113;  // a plain file; 112 and 0 are read alike
inline constexpr std::int32_t kVersionOlder = 112;
inline constexpr std::int32_t kVersionNone = 0;
inline constexpr std::int32_t kVersionDeflated = 144;  // everything from 164 up to the data areas is deflated

// The header, 164 bytes. A root or area of zero or less is absent.
inline constexpr std::int32_t kHeaderSize = 164;
inline constexpr std::int32_t hdrMagic = 0;
inline constexpr std::int32_t hdrVersion = 4;
inline constexpr std::int32_t hdrHeadCompression = 12;  // 0 once a deflated head is converted
inline constexpr std::int32_t hdrTextRoot = 24;         // negative: no text table
inline constexpr std::int32_t hdrVagRoot = 28;
inline constexpr std::int32_t hdrGmoRoot = 32;
inline constexpr std::int32_t hdrImageRoot = 36;
inline constexpr std::int32_t hdrPageRoot = 48;
inline constexpr std::int32_t hdrAnimRoot = 52;
inline constexpr std::int32_t hdrTextDataOffset = 56;
inline constexpr std::int32_t hdrTextDataLength = 60;  // below 1: no text
inline constexpr std::int32_t hdrLabelOffset = 64;
inline constexpr std::int32_t hdrLabelLength = 68;  // kept as it stands by every change
inline constexpr std::int32_t hdrEventOffset = 72;
inline constexpr std::int32_t hdrEventLength = 76;
// Pairs of offset and byte length.
inline constexpr std::int32_t hdrTextPtrs = 80;
inline constexpr std::int32_t hdrImagePtrs = 88;
inline constexpr std::int32_t hdrVagPtrs = 96;
inline constexpr std::int32_t hdrGmoPtrs = 104;
inline constexpr std::int32_t hdrPagePtrs = 112;
inline constexpr std::int32_t hdrAnimPtrs = 120;
inline constexpr std::int32_t hdrImageData = 128;
inline constexpr std::int32_t hdrVagData = 136;
inline constexpr std::int32_t hdrGmoData = 144;

// The groups of longs in which the header is read and written.
inline constexpr std::int32_t kRootLongsAt = 16;
inline constexpr int kRootLongs = 16;
inline constexpr std::int32_t kPageLongsAt = 48;
inline constexpr int kPageLongs = 8;
inline constexpr std::int32_t kPointerLongsAt = 80;
inline constexpr int kPointerLongs = 12;
inline constexpr std::int32_t kDataAreaLongsAt = 128;
inline constexpr int kDataAreaLongs = 6;
inline constexpr std::int32_t kLabelLongsAt = 64;
inline constexpr int kLabelLongs = 4;

// A deflated head (version 144): behind the header follow the packed and the unpacked length of the block, 4 unread
// bytes, the packed block, and the rest of the file. Only the data areas' offsets count in terms of the packed file.
inline constexpr std::int32_t kPackedLengthAt = 164;
inline constexpr std::int32_t kUnpackedLengthAt = 168;
inline constexpr std::int32_t kPackedBlockAt = 176;
inline constexpr std::int32_t kPackedFieldsSize = 12;  // what the plain form has less in front of the block

// EntryHead, the first 40 bytes of every entry, relative to its start.
inline constexpr std::int32_t kEntryHeadSize = 40;
inline constexpr std::int32_t entryClass = 0;     // 8 bits
inline constexpr std::int32_t entryTable = 1;     // 8 bits: 4 image, 5 GMO, 6 VAG, 8 page
inline constexpr std::int32_t entryLabel = 4;     // relative to hdrLabelOffset; negative: no name
inline constexpr std::int32_t entryHeadSize = 8;  // 40
inline constexpr std::int32_t entrySize = 12;     // whole length, in page and animation tables
inline constexpr std::int32_t entryChildren = 16;
inline constexpr std::int32_t entryNext = 20;    // distance to the next sibling; 0 in the last one
inline constexpr std::int32_t entryPrev = 24;    // distance to the previous sibling
inline constexpr std::int32_t entryParent = 28;  // distance back to the parent

inline constexpr std::uint8_t kTableImage = 4;
inline constexpr std::uint8_t kTableGmo = 5;
inline constexpr std::uint8_t kTableVag = 6;
inline constexpr std::uint8_t kTablePage = 8;

// Body of an image or GMO entry: 16 bytes, or 12 without the unpacked size.
inline constexpr std::int32_t bodyFormat = 40;       // 16 bits
inline constexpr std::int32_t bodyCompression = 42;  // 16 bits; a VAG's number of channels
inline constexpr std::int32_t bodyDataSize = 44;
inline constexpr std::int32_t bodyDataOffset = 48;  // relative to the entry's data area
inline constexpr std::int32_t bodyUnpackedSize = 52;
inline constexpr std::int32_t kGeneralBodySize = 16;
inline constexpr std::int32_t kShortEntrySize = 52;  // an entry of that length or less has no unpacked size

// Body of a VAG entry: 28 bytes.
inline constexpr std::int32_t bodyChannels = 42;  // 16 bits
inline constexpr std::int32_t bodyChannel1Size = 52;
inline constexpr std::int32_t bodyChannel1Offset = 56;
inline constexpr std::int32_t bodyChannel2Size = 60;
inline constexpr std::int32_t bodyChannel2Offset = 64;
inline constexpr std::int32_t kVagBodySize = 28;

// The same fields from a record's entryPos, which is the entry's start + 4.
inline constexpr std::int32_t kEntryPosBias = 4;
constexpr std::int32_t FromEntryPos(std::int32_t entryOffset) {
  return entryOffset - kEntryPosBias;
}

// rscKind of a general resource, and the codes of its format and compression.
inline constexpr int kKindImage = 1;
inline constexpr int kKindVag = 2;
inline constexpr int kKindGmo = 3;
inline constexpr int kFormatPng = 0;
inline constexpr int kFormatJpg = 1;
inline constexpr int kFormatTif = 2;
inline constexpr int kFormatGif = 3;
inline constexpr int kFormatBmp = 4;
inline constexpr int kFormatGim = 5;
inline constexpr int kCompressionNone = 0;
inline constexpr int kCompressionZlib = 1;
inline constexpr int kCompressionRlz = 2;

// Resources start on, and are padded with zero bytes to, a multiple of this many bytes; labels too.
inline constexpr std::int32_t kAlignment = 4;

// Text table: language records stand one behind the other behind the text root's head.
inline constexpr std::int32_t langCode = 40;
inline constexpr std::int32_t langTextCount = 44;
inline constexpr std::int32_t langRecords = 48;  // TextRec array
inline constexpr std::int32_t kTextRecSize = 12;
// TextRec, relative to its start.
inline constexpr std::int32_t textLabel = 0;   // relative to hdrLabelOffset
inline constexpr std::int32_t textLength = 4;  // bytes, NULs included; 0 or less: empty
inline constexpr std::int32_t textOffset = 8;  // relative to hdrTextDataOffset

// Page and animation entries: a body of 32-bit words behind the head. The shortest entry with a body has one word.
inline constexpr std::int32_t kWordSize = 4;
inline constexpr std::int32_t kSmallestWithBody = kEntryHeadSize + kWordSize;

// Page entries with a position block have 13 single-precision floats in front of their other words.
inline constexpr int kPositionWords = 13;

// Types of an animation's operations: the whole word at the entry's start.
inline constexpr std::int32_t kOpPosition = 0x902;
inline constexpr std::int32_t kOpColour = 0x903;
inline constexpr std::int32_t kOpScale = 0x905;
inline constexpr std::int32_t kOpAlpha = 0x906;
inline constexpr std::int32_t kOpDelay = 0x907;
inline constexpr std::int32_t kOpEvent = 0x908;

// A reference pair in a page entry's body: one of these types, then a value.
inline constexpr std::int32_t kRefFirst = 0x400;
inline constexpr std::int32_t kRefLast = 0x40F;
inline constexpr std::int32_t kRefEvent = 0x400;  // byte offset relative to hdrEventOffset
inline constexpr std::int32_t kRefText = 0x401;   // index of a text
inline constexpr std::int32_t kRefImage = 0x402;  // this and the following: file offset of an entry
inline constexpr std::int32_t kRefModel = 0x403;
inline constexpr std::int32_t kRefPageOld = 0x407;
inline constexpr std::int32_t kRefAnim = 0x408;
inline constexpr std::int32_t kRefPage = 0x409;
inline constexpr std::int32_t kBlankType = 0xFFFF;  // with the value -1 a reference to nothing
inline constexpr std::int32_t kBlankValue = -1;

}  // namespace kelvane::rco
