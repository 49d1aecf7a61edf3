// Writes GIF files, well-formed or broken on purpose.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

// One colour of a table.
struct GifColour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
};

struct GifFrame {
  std::uint16_t left = 0;
  std::uint16_t top = 0;
  std::uint16_t width = 1;
  std::uint16_t height = 1;
  bool interlaced = false;
  // 2, 4, 8 and so on up to 256 colours; none: no local table.
  std::vector<GifColour> table = {};
  std::uint8_t codeSize = 2;
  // The compressed indexes in the file's order of rows; see GifLzwEncode.
  Bytes lzw = {};
};

// Blocks, to be put behind one another.
[[nodiscard]] Bytes GifHeader(std::uint16_t screenWidth, std::uint16_t screenHeight,
                              const std::vector<GifColour>& globalTable, const std::string& signature = "GIF89a");
// `transIndex` -1: no transparency.
[[nodiscard]] Bytes GifControl(int transIndex);
[[nodiscard]] Bytes GifComment(const std::string& text);
[[nodiscard]] Bytes GifApplication(const std::string& name, const Bytes& data);
[[nodiscard]] Bytes GifImage(const GifFrame& frame);
[[nodiscard]] Bytes GifTrailer();
[[nodiscard]] Bytes Join(const std::vector<Bytes>& blocks);

// Content as a chain of sub-blocks of at most `most` bytes, with its terminator.
[[nodiscard]] Bytes GifSubBlocks(const Bytes& content, std::size_t most = 255);

struct GifLzwOptions {
  bool clearFirst = true;
  // When all 4096 codes are given out: clear and begin anew, or go on without new ones.
  bool clearWhenFull = true;
  bool endCode = true;
};

[[nodiscard]] Bytes GifLzwEncode(std::uint8_t codeSize, const Bytes& indexes, const GifLzwOptions& options = {});

// Packs codes of growing size, lowest bits first. The sizes follow from where clear codes stand.
class GifCodeWriter {
 public:
  explicit GifCodeWriter(std::uint32_t bits) : bits_(bits) {}

  void SetBits(std::uint32_t bits) { bits_ = bits; }
  void Write(std::uint32_t code);
  // The bytes so far, the last one filled up with zero bits.
  [[nodiscard]] const Bytes& Written() const { return bytes_; }

 private:
  std::uint32_t bits_;
  std::size_t bitPosition_ = 0;
  Bytes bytes_;
};

}  // namespace kelvane::test
