#include "platform/MaskedBmp.h"

#include <algorithm>
#include <array>
#include <bit>

#include "platform/BmpInfo.h"

namespace kelvane {

namespace {

// One colour of a pixel: its bits, and the value from 0 to 255 for each content of the uppermost 8 of them.
class Channel {
 public:
  explicit Channel(std::uint32_t mask) : mask_(mask) {
    if (mask == 0) {
      return;
    }
    // Masks in files are of bits in a row.
    const auto top = static_cast<std::uint32_t>(std::bit_width(mask));
    const std::uint32_t kept = std::min(top - static_cast<std::uint32_t>(std::countr_zero(mask)), 8U);
    shift_ = top - kept;
    for (std::uint32_t value = 0; value < 1U << kept; ++value) {
      std::uint32_t filled = value << (8 - kept);
      for (std::uint32_t known = kept; known < 8; known *= 2) {
        filled |= filled >> known;
      }
      values_[value] = static_cast<std::uint8_t>(filled);
    }
  }

  [[nodiscard]] int Of(std::uint32_t pixel) const { return values_[(pixel & mask_) >> shift_]; }

 private:
  std::uint32_t mask_;
  std::uint32_t shift_ = 0;
  std::array<std::uint8_t, 256> values_{};
};

}  // namespace

QImage ReadMaskedBmp(ByteView file, QSize size, bool isTopDown) {
  const BmpInfo info = ReadBmpInfo(file);
  const Channel red(info.redMask);
  const Channel green(info.greenMask);
  const Channel blue(info.blueMask);
  QImage image(size, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    const std::int64_t row = info.bitsOffset + info.RowBytes(size.width()) * y;
    auto* target = reinterpret_cast<QRgb*>(image.scanLine(isTopDown ? y : image.height() - 1 - y));
    for (std::int64_t x = 0; x < image.width(); ++x) {
      const std::uint32_t pixel = info.bitCount == 16 ? ReadU16(file, row + 2 * x) : ReadU32(file, row + 4 * x);
      target[x] = qRgb(red.Of(pixel), green.Of(pixel), blue.Of(pixel));
    }
  }
  return image;
}

}  // namespace kelvane
