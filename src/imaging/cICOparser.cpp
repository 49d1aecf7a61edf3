#include "imaging/cICOparser.h"

#include <cmath>
#include <cstring>

#include "common/Int16.h"
#include "imaging/cPNGparser.h"
#include "imaging/modParsers.h"

namespace kelvane {

namespace {

constexpr std::int32_t kHeaderBytes = 6;
constexpr std::int32_t kEntryBytes = 16;
constexpr std::int32_t kDefaultSize = 32;

// Offset of the bit count in a bitmap header.
constexpr std::int32_t kBitCountAt = 14;

// Offsets in a PNG image.
constexpr std::int32_t kPngIhdrAt = 12;
constexpr std::int32_t kPngWidthAt = 16;
constexpr std::int32_t kPngHeightAt = 20;
constexpr std::int32_t kPngDepthAt = 24;
constexpr std::int32_t kPngColourTypeAt = 25;
constexpr std::uint16_t kEndOfIhdr = 21060;  // "DR", which lies where a bitmap header has its bit count
constexpr std::uint8_t kPngSignature[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
constexpr std::uint8_t kIhdr[] = {'I', 'H', 'D', 'R'};

template <std::size_t N>
bool HoldsAt(ByteView bytes, std::int32_t offset, const std::uint8_t (&expected)[N]) {
  return std::memcmp(SpanOf(bytes, offset, N).data(), expected, N) == 0;
}

// One side of a PNG as a directory keeps it; -1 where it can't.
int DirectorySize(std::int32_t pixels) {
  if (pixels == 256) {
    return 0;
  }
  return pixels >= 1 && pixels <= 255 ? pixels : -1;
}

}  // namespace

bool cICOparser::LoadStream(std::span<std::uint8_t> inStream, std::int32_t iconCx, std::int32_t iconCy,
                            c32bppDIB& cHost, std::int32_t /*streamStart*/, std::int32_t streamLength) {
  (void)SpanOf(inStream, 0, streamLength);
  stream_ = inStream.first(static_cast<std::size_t>(streamLength));
  if (!ReadDirectory() || !RepairDirectory()) {
    return false;
  }
  const std::size_t best = FindBestEntry(iconCx < 1 ? kDefaultSize : iconCx, iconCy < 1 ? kDefaultSize : iconCy);
  if (best == 0) {
    return false;
  }
  const Entry& entry = entries_[best];
  if (EntryIsPng(entry)) {
    return cPNGparser().LoadStream(stream_, cHost, entry.dwImageOffset, entry.dwBytesInRes);
  }
  if (!cHost.InitializeDIB(EntryWidth(entry), EntryHeight(entry))) {
    return false;
  }
  RepairBitmapHeader(entry);
  if (!ExpandBits(entry, cHost)) {
    return false;
  }
  ApplyMaskAndAlpha(entry, cHost);
  return true;
}

// The header and the directory. False if this is no icon or cursor, or its images promise more bytes than there are.
bool cICOparser::ReadDirectory() {
  if (stream_.size() < static_cast<std::size_t>(kHeaderBytes)) {
    return false;
  }
  const std::uint16_t idReserved = ReadU16(stream_, 0);
  idType_ = ReadU16(stream_, 2);
  const std::int32_t idCount = ReadU16(stream_, 4);
  if (idCount < 1 || idReserved != 0 || (idType_ != kTypeIcon && idType_ != kTypeCursor)) {
    return false;
  }
  std::int32_t promised = kHeaderBytes + kEntryBytes * idCount;
  if (static_cast<std::size_t>(promised) > stream_.size()) {
    return false;
  }
  entries_.resize(static_cast<std::size_t>(idCount) + 1);
  for (std::int32_t i = 1; i <= idCount; ++i) {
    const std::int32_t at = kHeaderBytes + kEntryBytes * (i - 1);
    Entry& entry = entries_[static_cast<std::size_t>(i)];
    entry.bWidth = stream_[static_cast<std::size_t>(at)];
    entry.bHeight = stream_[static_cast<std::size_t>(at) + 1];
    entry.wPlanes = ReadI16(stream_, at + 4);
    entry.wBitCount = ReadI16(stream_, at + 6);
    entry.dwBytesInRes = ReadI32(stream_, at + 8);
    entry.dwImageOffset = ReadI32(stream_, at + 12);
    promised = AddInt32(promised, entry.dwBytesInRes);
  }
  return promised <= static_cast<std::int64_t>(stream_.size());
}

// Gives every entry the depth that its image has. False if a PNG image is none that can be used: that refuses the file.
bool cICOparser::RepairDirectory() {
  for (std::size_t i = 1; i < entries_.size(); ++i) {
    Entry& entry = entries_[i];
    entry.wPlanes = 1;
    const std::int32_t bitCountAt = AddInt32(entry.dwImageOffset, kBitCountAt);
    const std::uint16_t bitCount = ReadU16(stream_, bitCountAt);
    if (bitCount == kEndOfIhdr) {
      if (!ReadPngEntry(entry)) {
        return false;
      }
    } else if (bitCount != 0) {
      entry.wBitCount = static_cast<std::int16_t>(bitCount);
    } else if (entry.wBitCount != 0) {
      WriteI16(stream_, bitCountAt, entry.wBitCount);
    }
  }
  return true;
}

// Takes size and depth of a PNG image into its entry. A depth of 0 in the directory stays and makes the image unusable.
bool cICOparser::ReadPngEntry(Entry& entry) {
  try {
    entry.wPlanes = kPlanesOfPng;
    const std::int32_t start = entry.dwImageOffset;
    if (!HoldsAt(stream_, start, kPngSignature) || !HoldsAt(stream_, AddInt32(start, kPngIhdrAt), kIhdr)) {
      return false;
    }
    const int width = DirectorySize(SwapLong(ReadI32(stream_, AddInt32(start, kPngWidthAt))));
    const int height = DirectorySize(SwapLong(ReadI32(stream_, AddInt32(start, kPngHeightAt))));
    if (width < 0 || height < 0 || entry.wBitCount == 0) {
      return false;
    }
    entry.bWidth = static_cast<std::uint8_t>(width);
    entry.bHeight = static_cast<std::uint8_t>(height);
    const std::uint8_t depth = At(stream_, std::int64_t{start} + kPngDepthAt);
    const std::uint8_t colourType = At(stream_, std::int64_t{start} + kPngColourTypeAt);
    if (depth == 16 || (depth != 0 && (colourType == 4 || colourType == 6))) {
      entry.wBitCount = 32;
    } else if (depth != 0 && colourType == 2) {
      entry.wBitCount = 24;
    } else {
      entry.wBitCount = depth;
    }
    return entry.wBitCount >= 1;
  } catch (const RuntimeFailure&) {
    return false;
  }
}

// The entry that suits a wanted size best, 0 if there is none. The scores are 32-bit floats, and so are the ties.
std::size_t cICOparser::FindBestEntry(std::int32_t cx, std::int32_t cy) const {
  const std::size_t idCount = entries_.size() - 1;
  if (idCount == 1) {
    return EntryBitCount(entries_[1]) == 0 ? 0 : 1;
  }
  const std::int32_t target = CheckedInt32(std::int64_t{cx} * cy);
  const auto perfect = static_cast<float>(target + 32 / 100.0);
  std::vector<float> scores(entries_.size());
  std::size_t best = idCount;
  for (std::size_t i = idCount; i >= 1; --i) {
    const Entry& entry = entries_[i];
    const std::int32_t bitCount = EntryBitCount(entry);
    if (bitCount == 0) {
      continue;
    }
    const std::int32_t d = target - EntryWidth(entry) * EntryHeight(entry);
    scores[i] = static_cast<float>(100000 - std::abs(d) + (d < 0 ? 1 : 0));
    scores[i] = bitCount < 33 ? static_cast<float>(scores[i] + bitCount / 100.0) : 0.0F;
    // The two figures live on different scales, so this ends the search by coincidence only.
    if (scores[i] == perfect) {
      return i;
    }
    if (scores[i] > scores[best]) {
      best = i;
    }
  }
  return scores[best] == 0 ? 0 : best;
}

}  // namespace kelvane
