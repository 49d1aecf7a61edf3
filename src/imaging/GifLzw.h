// The decompression of GIF's image data.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "common/Bytes.h"

namespace kelvane {

class GifLzw {
 public:
  // `subBlocks`: the image data behind the byte that tells `codeSize`; it ends with the empty block or with the view.
  // Failure 5 unless `codeSize` is 2 to 8.
  GifLzw(std::int32_t codeSize, ByteView subBlocks);

  // The next `target.size()` indexes. False where the data is broken or ends before them.
  bool Read(std::span<std::uint8_t> target);

 private:
  static constexpr std::uint32_t kMostCodes = 4096;
  static constexpr std::uint32_t kNone = kMostCodes;
  static constexpr std::uint32_t kPieceBytes = 8;

  // A code stands for a string. Strings are kept as pieces of 8 bytes, the first one lowest: the last piece, which may
  // be shorter, and the code whose string is all before it.
  struct String {
    std::uint64_t lastPiece;
    std::uint16_t before;
    std::uint16_t length;
    std::uint8_t first;
  };

  // What changes from code to code.
  struct Progress {
    std::size_t bitPosition = 0;
    std::uint32_t codeBits = 0;
    std::uint32_t nextCode = 0;
    std::uint32_t previous = kNone;
    std::uint8_t* target = nullptr;
  };

  void Clear(Progress& at) const;
  void DecodeAhead(std::size_t enough);
  bool DecodeCode(Progress& at);
  void AddString(Progress& at, std::uint8_t last);
  void Emit(Progress& at, std::uint32_t code) const;

  // The image data without the lengths of its blocks, then zeros that may be read with its last bits.
  Bytes data_;
  std::size_t dataBits_ = 0;
  std::uint32_t clearCode_;
  Progress at_;
  // The end code, the end of the data and whatever can't be decoded.
  bool ended_ = false;
  std::array<String, kMostCodes> strings_;

  // What is decoded and not yet read lies from read_ to filled_.
  Bytes decoded_;
  std::size_t read_ = 0;
  std::size_t filled_ = 0;
};

}  // namespace kelvane
