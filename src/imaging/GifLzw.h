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

  // A code stands for a string. Strings are kept as pieces of 4 bytes: the last piece, which may be shorter, and the
  // code whose string is all before it.
  struct String {
    std::array<std::uint8_t, 4> lastPiece;
    std::uint16_t before;
    std::uint16_t length;
  };

  void Clear();
  void DecodeAhead(std::size_t enough);
  bool DecodeCode();
  void AddString(std::uint32_t prefix, std::uint8_t last);
  void Emit(std::uint32_t code);

  // The image data without the lengths of its blocks, then zeros that may be read with its last bits.
  Bytes data_;
  std::size_t dataBits_ = 0;
  std::size_t bitPosition_ = 0;
  // The end code, the end of the data and whatever can't be decoded.
  bool ended_ = false;

  std::uint32_t clearCode_;
  std::uint32_t codeBits_ = 0;
  std::uint32_t nextCode_ = 0;
  std::uint32_t previous_ = kNone;
  std::array<String, kMostCodes> strings_;
  std::array<std::uint8_t, kMostCodes> firsts_;

  // What is decoded and not yet read lies from read_ to filled_.
  Bytes decoded_;
  std::size_t read_ = 0;
  std::size_t filled_ = 0;
};

}  // namespace kelvane
