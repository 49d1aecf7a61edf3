// Reads icon and cursor files: repairs the directory, picks the image closest to a wanted size and applies its masks.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "common/Bytes.h"
#include "imaging/c32bppDIB.h"

namespace kelvane {

class cICOparser {
 public:
  // Fills `cHost` from the first `streamLength` bytes of `inStream`; `streamStart` plays no part. `iconCx` and `iconCy`
  // are the wanted size in pixels; below 1 means 32. Bitmap headers inside the stream are repaired in place, so the
  // caller's bytes change. False: no icon, or its image can't be read; the host may hold a bitmap of zeros then.
  // Failures: 6 and 9 for sizes and offsets that lead outside the stream.
  bool LoadStream(std::span<std::uint8_t> inStream, std::int32_t iconCx, std::int32_t iconCy, c32bppDIB& cHost,
                  std::int32_t streamStart, std::int32_t streamLength);

 private:
  static constexpr std::uint16_t kTypeIcon = 1;
  static constexpr std::uint16_t kTypeCursor = 2;
  // Marks an entry whose image is a PNG.
  static constexpr std::int16_t kPlanesOfPng = 255;

  // One image of the directory; the fields from wPlanes on as they are repaired.
  struct Entry {
    std::uint8_t bWidth = 0;
    std::uint8_t bHeight = 0;
    std::int16_t wPlanes = 0;
    std::int16_t wBitCount = 0;
    std::int32_t dwBytesInRes = 0;
    std::int32_t dwImageOffset = 0;
  };

  bool ReadDirectory();
  bool RepairDirectory();
  bool ReadPngEntry(Entry& entry);
  [[nodiscard]] std::size_t FindBestEntry(std::int32_t cx, std::int32_t cy) const;
  void RepairBitmapHeader(const Entry& entry);
  [[nodiscard]] bool ExpandBits(const Entry& entry, c32bppDIB& cHost) const;
  void ApplyMaskAndAlpha(const Entry& entry, c32bppDIB& cHost) const;
  [[nodiscard]] bool ApplyAndMask(const Entry& entry, c32bppDIB& cHost) const;
  void ApplyAlphaChannel(const Entry& entry, c32bppDIB& cHost) const;

  [[nodiscard]] static std::int32_t EntryHeight(const Entry& entry);
  [[nodiscard]] static std::int32_t EntryWidth(const Entry& entry);
  [[nodiscard]] static bool EntryIsPng(const Entry& entry);
  [[nodiscard]] static std::int32_t EntryBitCount(const Entry& entry);
  [[nodiscard]] static std::int32_t XorMaskSize(const Entry& entry);
  [[nodiscard]] static std::int32_t AndMaskSize(const Entry& entry);
  [[nodiscard]] std::int32_t EntryColoursUsed(const Entry& entry) const;
  [[nodiscard]] std::int32_t XorBitsOffset(const Entry& entry) const;
  [[nodiscard]] static std::int32_t AndMaskOffset(const Entry& entry);

  std::span<std::uint8_t> stream_;
  std::uint16_t idType_ = 0;
  // Counted from 1; the first one is unused.
  std::vector<Entry> entries_;
};

}  // namespace kelvane
