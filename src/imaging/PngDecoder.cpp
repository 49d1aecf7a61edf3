#include "imaging/PngDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace kelvane {
namespace {

constexpr std::size_t kPixelBytes = 4;
constexpr std::uint8_t kHighestFilter = 4;

// Puts `count` pixels `Step` pixels apart.
template <std::size_t Step>
void Scatter(const std::uint8_t* from, std::uint8_t* to, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    std::memcpy(to + i * Step * kPixelBytes, from + i * kPixelBytes, kPixelBytes);
  }
}

void ScatterPixels(const std::uint8_t* from, std::uint8_t* to, std::size_t count, std::int32_t step) {
  switch (step) {
    case 8:
      return Scatter<8>(from, to, count);
    case 4:
      return Scatter<4>(from, to, count);
    default:
      return Scatter<2>(from, to, count);
  }
}

}  // namespace

void PngRawRows::ReadMore() {
  const ByteView run = stream_.Read(left_);
  ended_ = run.size() == left_;
  next_ = run.data();
  left_ = run.size();
}

const std::uint8_t* PngRawRows::Take(std::size_t length) {
  while (left_ < length && !ended_) {
    ReadMore();
  }
  if (left_ >= length) {
    const std::uint8_t* const taken = next_;
    next_ += length;
    left_ -= length;
    return taken;
  }
  if (!stream_.Outcome().Succeeded()) {
    return nullptr;
  }
  if (paddedRoom_ < length) {
    padded_ = ZeroBytes(length + kPngRowSlack);
    paddedRoom_ = length;
  } else {
    std::fill_n(padded_.data(), paddedBytes_, std::uint8_t{0});
  }
  std::copy_n(next_, left_, padded_.data());
  paddedBytes_ = left_;
  left_ = 0;
  return padded_.data();
}

bool PngRawRows::Finish() {
  while (!ended_) {
    left_ = 0;
    ReadMore();
  }
  return stream_.Outcome().Succeeded();
}

PngDecoder::PngDecoder(const PngFields& fields, InflateStream& stream)
    : fields_(fields),
      bits_(GetBitParameters(fields)),
      rows_(stream),
      converter_(fields),
      filters_(PngFiltersFor(bits_.sourceStep)) {}

PngDecodeResult PngDecoder::Decode(c32bppDIB& image) {
  const bool decoded = image.InitializeDIB(fields_.pngWidth, fields_.pngHeight) && DecodeRows(image);
  if (!rows_.Finish()) {
    return PngDecodeResult::InflateFailed;
  }
  return decoded ? PngDecodeResult::Done : PngDecodeResult::ConversionFailed;
}

bool PngDecoder::DecodeRows(c32bppDIB& image) {
  pixels_ = image.BitsPointer();
  return fields_.interlaceMethod == 0 ? DecodeNonInterlaced() : DecodeInterlaced();
}

bool PngDecoder::DecodeNonInterlaced() {
  BeginRows(fields_.pngWidth);
  for (std::int32_t y = 0; y < fields_.pngHeight; ++y) {
    if (rows_.OnlyZerosLeft() && ZeroSamplesStayClear()) {
      return true;
    }
    if (!TakeRow() || !converter_.Convert(row_.data(), RowOfImage(y), static_cast<std::size_t>(fields_.pngWidth))) {
      return false;
    }
  }
  return true;
}

bool PngDecoder::DecodeInterlaced() {
  // The array of a pass is made once, with half the image's rows: an image one pixel high has none, and is refused.
  if (fields_.pngHeight / 2 == 0) {
    return false;
  }
  for (std::size_t i = 0; i < 7; ++i) {
    const PngPassSize size = SizeOfPass(fields_, kPngPasses[i]);
    if (size.width > 0 && size.height > 0 && !DecodePass(kPngPasses[i], size)) {
      return false;
    }
  }
  return true;
}

bool PngDecoder::DecodePass(const PngPass& pass, PngPassSize size) {
  const auto width = static_cast<std::size_t>(size.width);
  const bool contiguous = pass.columnStep == 1;
  Bytes converted(contiguous ? 0 : width * kPixelBytes);
  BeginRows(size.width);
  for (std::int32_t i = 0; i < size.height; ++i) {
    // Unlike in an image that isn't interlaced, an unknown filter is refused.
    if (!TakeRow() || filter_ > kHighestFilter) {
      return false;
    }
    std::uint8_t* const to =
        RowOfImage(pass.firstRow + i * pass.rowStep) + static_cast<std::size_t>(pass.firstColumn) * kPixelBytes;
    if (!converter_.Convert(row_.data(), contiguous ? to : converted.data(), width)) {
      return false;
    }
    if (!contiguous) {
      ScatterPixels(converted.data(), to, width, pass.columnStep);
    }
  }
  return true;
}

void PngDecoder::BeginRows(std::int32_t pixels) {
  rowBytes_ = static_cast<std::size_t>(RowBytesFor(pixels, bits_.sourceBits));
  row_ = ZeroBytes(rowBytes_ + kPngRowSlack);
  above_ = ZeroBytes(rowBytes_ + kPngRowSlack);
}

bool PngDecoder::TakeRow() {
  const std::uint8_t* const raw = rows_.Take(rowBytes_ + 1);
  if (!raw) {
    return false;
  }
  std::swap(row_, above_);
  filter_ = raw[0];
  Unfilter(filter_, raw + 1);
  return true;
}

void PngDecoder::Unfilter(std::uint8_t filter, const std::uint8_t* raw) {
  switch (filter) {
    case 1:
      return filters_.sub(raw, above_.data(), row_.data(), rowBytes_);
    case 2:
      return filters_.up(raw, above_.data(), row_.data(), rowBytes_);
    case 3:
      return filters_.average(raw, above_.data(), row_.data(), rowBytes_);
    case 4:
      return filters_.paeth(raw, above_.data(), row_.data(), rowBytes_);
    default:
      std::memcpy(row_.data(), raw, rowBytes_);
  }
}

bool PngDecoder::ZeroSamplesStayClear() const {
  const std::array<std::uint8_t, 8 + kPngRowSlack> samples{};
  std::array<std::uint8_t, kPixelBytes> pixel{};
  return converter_.Convert(samples.data(), pixel.data(), 1) && pixel == std::array<std::uint8_t, kPixelBytes>{};
}

std::uint8_t* PngDecoder::RowOfImage(std::int32_t y) const {
  return pixels_ +
         static_cast<std::size_t>(fields_.pngHeight - y - 1) * static_cast<std::size_t>(fields_.pngWidth) * kPixelBytes;
}

}  // namespace kelvane
