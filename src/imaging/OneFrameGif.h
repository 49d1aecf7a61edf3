// The picture of a GIF that holds one frame, by colour indexes.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "common/Bytes.h"
#include "imaging/GifLzw.h"

namespace kelvane {

class OneFrameGif {
 public:
  // `gif`: header, logical screen, global table if any, graphic control if any, one image. It must outlive the object.
  // Failure 9 where it ends too early, 5 for a code size that GIF doesn't have.
  explicit OneFrameGif(ByteView gif);

  [[nodiscard]] std::int32_t Width() const { return width_; }
  [[nodiscard]] std::int32_t Height() const { return height_; }
  // Three bytes a colour, red first: the local table if there is one.
  [[nodiscard]] ByteView Table() const { return table_; }

  // The indexes of the next row in the file's order; `indexes` is as long as the picture is wide. False where the data
  // is broken or ends too early.
  bool ReadRow(std::span<std::uint8_t> indexes) { return lzw_->Read(indexes); }
  // The row, counted from the top, that is the file's nth, counted from 0. They differ in an interlaced picture.
  [[nodiscard]] std::int32_t RowOf(std::int32_t n) const;

 private:
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
  bool interlaced_ = false;
  ByteView table_;
  std::optional<GifLzw> lzw_;
};

}  // namespace kelvane
