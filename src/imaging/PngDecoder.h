// From a PNG's image data to pixels, row by row: a row is inflated, its filter undone and its samples converted while
// it is in the cache.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/Bytes.h"
#include "imaging/InflateStream.h"
#include "imaging/PngFields.h"
#include "imaging/PngFilters.h"
#include "imaging/PngPixels.h"
#include "imaging/ZeroBytes.h"
#include "imaging/c32bppDIB.h"

namespace kelvane {

// Hands out inflated bytes. Where the stream yields fewer than are asked for, zeros follow.
class PngRawRows {
 public:
  explicit PngRawRows(InflateStream& stream) : stream_(stream) {}

  // The next `length` bytes, valid until the next call, and kPngRowSlack bytes behind them that may be read. Null where
  // the stream ends before and has failed.
  const std::uint8_t* Take(std::size_t length);
  // The stream has ended and all that it yielded was taken.
  [[nodiscard]] bool OnlyZerosLeft() const { return ended_ && left_ == 0; }
  // Passes over what is left; true if the stream ends well.
  bool Finish();

 private:
  void ReadMore();

  InflateStream& stream_;
  const std::uint8_t* next_ = nullptr;
  std::size_t left_ = 0;
  bool ended_ = false;
  // The last bytes of the stream with zeros behind them, and how many these bytes are and it has room for.
  ZeroBytes padded_;
  std::size_t paddedBytes_ = 0;
  std::size_t paddedRoom_ = 0;
};

enum class PngDecodeResult { Done, InflateFailed, ConversionFailed };

class PngDecoder {
 public:
  // Decodes image data of that description. `fields` must have its palette, if its kind needs one.
  PngDecoder(const PngFields& fields, InflateStream& stream);

  // Makes `image` the decoded picture, its Alpha and ImageType apart. After a failure `image` is of no use. Memory
  // beside the image stays within some rows, and pixels that no data came for are not touched. May throw where memory
  // is short.
  PngDecodeResult Decode(c32bppDIB& image);

 private:
  bool DecodeRows(c32bppDIB& image);
  bool DecodeNonInterlaced();
  bool DecodeInterlaced();
  bool DecodePass(const PngPass& pass, PngPassSize size);
  void BeginRows(std::int32_t pixels);
  // False where the stream fails.
  bool TakeRow();
  void Unfilter(std::uint8_t filter, const std::uint8_t* raw);
  // Whether pixels of samples 0 are zero bytes, as the image is before it is drawn.
  [[nodiscard]] bool ZeroSamplesStayClear() const;
  [[nodiscard]] std::uint8_t* RowOfImage(std::int32_t y) const;

  const PngFields& fields_;
  PngBitParameters bits_;
  PngRawRows rows_;
  PngRowConverter converter_;
  PngFilters filters_;
  std::uint8_t* pixels_ = nullptr;

  // The row at hand and the one above it, without their filter bytes.
  std::size_t rowBytes_ = 0;
  std::uint8_t filter_ = 0;
  ZeroBytes row_;
  ZeroBytes above_;
};

}  // namespace kelvane
