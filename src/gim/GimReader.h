// What a GIM file holds, read block by block.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/Bytes.h"
#include "common/Int16.h"
#include "gim/GimPadding.h"

namespace kelvane {

// The data of an image block as they lie in the file.
struct GimPixels {
  // Those bytes of the data that are there; a file may be cut off.
  ByteView data;
  std::int32_t rowBytes = 0;  // of a padded row
  // Width of a tile in bytes, a divisor of rowBytes; 0 where rows follow each other.
  std::int32_t tileWidth = 0;
};

struct GimPicture {
  // 0 in all of them where the file has no image block.
  Int16 bits;
  Int16 width;
  Int16 height;
  GimPixels pixels;

  bool hasPalette = false;
  // 2^bits colours as bitmaps keep them: the bytes blue, green, red, alpha.
  std::vector<std::uint32_t> palette;
};

// Reads the signature and at most two blocks behind the head. Nothing for a wrong signature and for a palette whose
// colours haven't 32 bits. The pixels stay in `gim`. Failures of bad fields: 5, 6, 7, 9, 11.
[[nodiscard]] std::optional<GimPicture> ReadGim(ByteView gim);

// The rows of an image one by one, tiles put together.
class GimRows {
 public:
  explicit GimRows(const GimPixels& pixels) : pixels_(pixels) {}

  // Row `y`, counted from the top: rowBytes bytes, zeros where the file is cut off. It stays until the next call.
  [[nodiscard]] ByteView Row(std::int32_t y);

 private:
  // `count` bytes of the data from `offset` on, filled with zeros.
  ByteView Data(std::int64_t offset, std::size_t count);
  void LoadBand(std::int32_t band);

  const GimPixels& pixels_;
  Bytes filled_;  // data that aren't there whole
  Bytes band_;    // the rows of one row of tiles
  std::int32_t bandNumber_ = -1;
};

}  // namespace kelvane
