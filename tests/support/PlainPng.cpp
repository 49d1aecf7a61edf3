#include "support/PlainPng.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>
#include <zlib.h>

#include "support/PlainInflate.h"

namespace kelvane::test {
namespace {

struct Refused {};
struct RuntimeError {};

std::uint8_t ByteAt(ByteView bytes, std::size_t index) {
  if (index >= bytes.size()) {
    throw RuntimeError{};
  }
  return bytes[index];
}

std::uint32_t BigEndian(ByteView bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8 | ByteAt(bytes, at + i);
  }
  return value;
}

class Image {
 public:
  Image(ByteView file, bool checkCrcs) : file_(file), checkCrcs_(checkCrcs) {}

  void ReadChunks() {
    constexpr std::array<std::uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    if (file_.size() < 58 || !std::equal(kSignature.begin(), kSignature.end(), file_.begin())) {
      throw Refused{};
    }
    dataArray_ = static_cast<std::int64_t>(file_.size()) / 2 + 1;
    std::int64_t used = 7;
    for (std::size_t at = 8;;) {
      const std::uint32_t length = BigEndian(file_, at);
      used += std::int64_t{length} + 12;
      if (length > 0x7FFFFFFF || used > std::ssize(file_)) {
        throw Refused{};
      }
      at_ = at + 8;
      length_ = length;
      const std::string type(file_.begin() + static_cast<std::ptrdiff_t>(at) + 4,
                             file_.begin() + static_cast<std::ptrdiff_t>(at) + 8);
      if (type == "IEND") {
        break;
      }
      if (length > 0) {
        Dispatch(type);
      }
      at += length + 12;
    }
    if (data_.empty() || rawLength_ == 0) {
      throw Refused{};
    }
  }

  void Inflate() {
    raw_.assign(rawLength_, 0);
    uLongf size = rawLength_;
    if (uncompress(raw_.data(), &size, data_.data(), data_.size()) != Z_OK) {
      data_.resize(static_cast<std::size_t>(dataArray_));
      const PlainInflated inflated = PlainInflate(data_, rawLength_, false);
      if (!inflated.Succeeded()) {
        throw Refused{};
      }
      std::copy(inflated.out.begin(), inflated.out.end(), raw_.begin());
    }
  }

  void Decode(PlainPngResult& result) {
    BuildPalette();
    pixels_.assign(std::size_t{width_} * height_ * 4, 0);
    if (interlaced_) {
      DecodeInterlaced();
    } else {
      const std::size_t rowBytes = RowBytes(width_);
      for (std::size_t y = 0; y < height_; ++y) {
        Unfilter(y * (rowBytes + 1), rowBytes, y > 0);
      }
      for (std::size_t y = 0; y < height_; ++y) {
        ConvertRow(y * (rowBytes + 1) + 1, y, 0, 1);
      }
    }
    result.width = static_cast<std::int32_t>(width_);
    result.height = static_cast<std::int32_t>(height_);
    result.pixels = pixels_;
    result.alpha = (colourType_ != 0 && colourType_ != 3) || transColour_ != -1 || !transparency_.empty();
  }

 private:
  void Dispatch(const std::string& type) {
    try {
      if (type == "IHDR") {
        VerifyCrc();
        ReadHeader();
      } else if (type == "PLTE" && colourType_ != 0 && colourType_ != 4) {
        VerifyCrc();
        if (length_ % 3 != 0) {
          throw Refused{};
        }
        palette_ = Data();
      } else if (type == "IDAT") {
        VerifyCrc();
        Append(data_, Data());
        if (std::ssize(data_) > dataArray_) {
          dataArray_ = std::ssize(data_) + std::ssize(file_) / 4;
        }
      }
    } catch (const RuntimeError&) {
      throw Refused{};
    }
    if (type == "tRNS" && colourType_ != 4 && colourType_ != 6) {
      try {
        VerifyCrc();
        ReadTransparency();
      } catch (...) {
        transColour_ = -1;
      }
    }
  }

  [[nodiscard]] Bytes Data() const {
    const auto first = file_.begin() + static_cast<std::ptrdiff_t>(at_);
    return {first, first + static_cast<std::ptrdiff_t>(length_)};
  }

  void VerifyCrc() const {
    std::uint32_t stored = 0;
    for (std::size_t i = at_ + length_; i < at_ + length_ + 4; ++i) {
      stored = stored << 8 | (i < file_.size() ? file_[i] : 0U);
    }
    if (checkCrcs_ && stored != 0 && stored != crc32(0, file_.data() + at_ - 4, static_cast<uInt>(length_ + 4))) {
      throw Refused{};
    }
  }

  void ReadHeader() {
    rawLength_ = 0;
    const ByteView fields = file_.subspan(at_);
    width_ = BigEndian(fields, 0);
    height_ = BigEndian(fields, 4);
    bitDepth_ = ByteAt(fields, 8);
    colourType_ = ByteAt(fields, 9);
    interlaced_ = ByteAt(fields, 12) != 0;
    const bool sized = width_ >= 1 && width_ <= 0x7FFFFFFF && height_ >= 1 && height_ <= 0x7FFFFFFF;
    const bool known =
        (bitDepth_ == 1 || bitDepth_ == 2 || bitDepth_ == 4 || bitDepth_ == 8 || bitDepth_ == 16) &&
        (colourType_ == 0 || colourType_ == 2 || colourType_ == 3 || colourType_ == 4 || colourType_ == 6) &&
        fields[10] == 0 && fields[11] == 0 && fields[12] <= 1;
    constexpr std::uint64_t kMost = 0x7FFFFFFF;
    if (!sized || !known || std::uint64_t{width_} * 32 + 31 > kMost || std::uint64_t{width_} * 4 * height_ > kMost ||
        std::uint64_t{width_} * SourceBits() + 7 > kMost) {
      throw Refused{};
    }
    std::uint64_t total = 0;
    if (!interlaced_) {
      total = std::uint64_t{height_} * (RowBytes(width_) + 1);
    }
    for (std::size_t pass = 0; interlaced_ && pass < 7; ++pass) {
      total += std::uint64_t{PassHeight(pass)} * (RowBytes(PassWidth(pass)) + 1);
    }
    if (total > kMost) {
      throw Refused{};
    }
    rawLength_ = static_cast<std::size_t>(total);
  }

  void ReadTransparency() {
    transparency_ = Data();
    if (colourType_ == 0 && bitDepth_ == 16) {
      transColour_ = ByteAt(transparency_, 1);
    } else if (colourType_ == 0) {
      if (bitDepth_ == 0) {
        throw RuntimeError{};
      }
      const unsigned index = Sample(ByteAt(transparency_, 1), 8 / bitDepth_ - 1);
      (void)PaletteColour(index);
      transColour_ = static_cast<std::int32_t>(index);
    } else if (colourType_ == 2) {
      transColour_ = ByteAt(transparency_, 1) << 16 | ByteAt(transparency_, 3) << 8 | ByteAt(transparency_, 5);
    } else {
      transparency_.resize(std::max<std::size_t>(transparency_.size(), 256), 255);
      transColour_ = 0;
    }
  }

  [[nodiscard]] unsigned Channels() const {
    return colourType_ == 6 ? 4 : colourType_ == 4 ? 2 : colourType_ == 2 ? 3 : 1;
  }
  [[nodiscard]] unsigned SourceBits() const { return bitDepth_ * Channels(); }
  [[nodiscard]] std::size_t RowBytes(std::size_t pixels) const { return (pixels * SourceBits() + 7) / 8; }
  // Bytes from a pixel to the next.
  [[nodiscard]] std::size_t Step() const {
    return colourType_ == 3 ? 1 : std::max<std::size_t>(1, bitDepth_ / 8 * Channels());
  }

  static constexpr std::array<std::array<std::size_t, 4>, 7> kPasses = {
      {{0, 0, 8, 8}, {0, 4, 8, 8}, {4, 0, 8, 4}, {0, 2, 4, 4}, {2, 0, 4, 2}, {0, 1, 2, 2}, {1, 0, 2, 1}}};
  [[nodiscard]] std::size_t PassHeight(std::size_t pass) const {
    return (height_ + kPasses[pass][2] - 1 - kPasses[pass][0]) / kPasses[pass][2];
  }
  [[nodiscard]] std::size_t PassWidth(std::size_t pass) const {
    return (width_ + kPasses[pass][3] - 1 - kPasses[pass][1]) / kPasses[pass][3];
  }

  void BuildPalette() {
    if ((colourType_ != 0 && colourType_ != 3) || !palette_.empty()) {
      return;
    }
    palette_.assign(768, 0);
    if (colourType_ == 3 && bitDepth_ == 1) {
      palette_[4] = palette_[5] = palette_[6] = 255;
    }
    if (colourType_ == 0 && bitDepth_ <= 8) {
      const std::size_t count = std::size_t{1} << bitDepth_;
      for (std::size_t i = 1; i < count; ++i) {
        std::fill_n(palette_.begin() + static_cast<std::ptrdiff_t>(i * 3), 3,
                    static_cast<std::uint8_t>(i * (255 / (count - 1))));
      }
    }
  }

  [[nodiscard]] unsigned Sample(std::uint8_t byte, unsigned shift) const {
    if (bitDepth_ > 8) {
      throw RuntimeError{};
    }
    return unsigned{byte} >> shift & ((1U << bitDepth_) - 1);
  }

  [[nodiscard]] std::array<std::uint8_t, 3> PaletteColour(std::size_t index) const {
    return {ByteAt(palette_, index * 3), ByteAt(palette_, index * 3 + 1), ByteAt(palette_, index * 3 + 2)};
  }

  void DecodeInterlaced() {
    if (height_ == 1) {
      throw RuntimeError{};
    }
    std::size_t at = 0;
    for (std::size_t pass = 0; pass < 7; ++pass) {
      const std::size_t rows = PassHeight(pass);
      if (rows == 0 || PassWidth(pass) == 0) {
        continue;
      }
      const std::size_t rowBytes = RowBytes(PassWidth(pass));
      for (std::size_t row = 0; row < rows; ++row) {
        if (raw_[at + row * (rowBytes + 1)] > 4) {
          throw RuntimeError{};
        }
        Unfilter(at + row * (rowBytes + 1), rowBytes, row > 0);
      }
      const auto& [firstRow, firstColumn, rowStep, columnStep] = kPasses[pass];
      for (std::size_t row = 0; row < rows; ++row) {
        ConvertRow(at + row * (rowBytes + 1) + 1, firstRow + row * rowStep, firstColumn, columnStep);
      }
      at += rows * (rowBytes + 1);
    }
  }

  // Undoes the filter of the row whose filter byte stands at `at`, in place.
  void Unfilter(std::size_t at, std::size_t rowBytes, bool hasAbove) {
    const std::size_t step = Step();
    for (std::size_t i = 0; i < rowBytes; ++i) {
      std::uint8_t& byte = raw_[at + 1 + i];
      const int left = i < step ? 0 : raw_[at + 1 + i - step];
      const int above = hasAbove ? raw_[at - rowBytes + i] : 0;
      const int corner = hasAbove && i >= step ? raw_[at - rowBytes + i - step] : 0;
      const int estimate = left + above - corner;
      switch (raw_[at]) {
        case 1:
          byte = static_cast<std::uint8_t>(byte + left);
          break;
        case 2:
          byte = static_cast<std::uint8_t>(byte + above);
          break;
        case 3:
          byte = static_cast<std::uint8_t>(byte + (left + above) / 2);
          break;
        case 4: {
          const int toLeft = std::abs(estimate - left);
          const int toAbove = std::abs(estimate - above);
          const int toCorner = std::abs(estimate - corner);
          const int nearest = toLeft <= toAbove && toLeft <= toCorner ? left : toAbove <= toCorner ? above : corner;
          byte = static_cast<std::uint8_t>(byte + nearest);
          break;
        }
        default:
          break;
      }
    }
  }

  void ConvertRow(std::size_t at, std::size_t y, std::size_t firstColumn, std::size_t columnStep) {
    unsigned shift = 8U - std::min<unsigned>(bitDepth_, 8);
    for (std::size_t x = firstColumn; x < width_; x += columnStep) {
      std::array<std::uint8_t, 3> rgb{};
      const unsigned alpha = ConvertPixel(at, shift, rgb);
      if (alpha != 0) {
        const std::size_t to = ((height_ - y - 1) * width_ + x) * 4;
        for (std::size_t i = 0; i < 3; ++i) {
          pixels_[to + i] = static_cast<std::uint8_t>(rgb[2 - i] * alpha / 255);
        }
        pixels_[to + 3] = static_cast<std::uint8_t>(alpha);
      }
      if (bitDepth_ >= 8) {
        at += Step();
      } else if (shift != 0) {
        shift -= bitDepth_;
      } else {
        ++at;
        shift = 8U - bitDepth_;
      }
    }
  }

  // The alpha of the pixel whose samples stand at `at`, and its colour, not yet multiplied.
  unsigned ConvertPixel(std::size_t at, unsigned shift, std::array<std::uint8_t, 3>& rgb) const {
    const std::size_t size = bitDepth_ / 8;
    if (colourType_ == 0 || colourType_ == 3) {
      const unsigned index = Sample(raw_[at], shift);
      rgb = PaletteColour(index);
      if (colourType_ == 3) {
        return transColour_ == -1 ? 255U : ByteAt(transparency_, index);
      }
      return static_cast<std::int32_t>(index) == transColour_ ? 0 : 255;
    }
    if (size == 0) {
      return 0;
    }
    if (colourType_ == 4) {
      rgb = {raw_[at], raw_[at], raw_[at]};
      return raw_[at + size];
    }
    rgb = {raw_[at], raw_[at + size], raw_[at + 2 * size]};
    if (colourType_ == 6) {
      return raw_[at + 3 * size];
    }
    if (transColour_ == -1) {
      return 255;
    }
    if ((rgb[0] << 16 | rgb[1] << 8 | rgb[2]) == transColour_) {
      return 0;
    }
    const bool isHighHalf =
        size == 2 && rgb == std::array<std::uint8_t, 3>{ByteAt(transparency_, 0), ByteAt(transparency_, 2),
                                                        ByteAt(transparency_, 4)};
    return isHighHalf ? 0 : 255;
  }

  ByteView file_;
  bool checkCrcs_;
  std::size_t at_ = 0;  // of the data of the chunk at hand
  std::size_t length_ = 0;

  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  unsigned bitDepth_ = 0;
  unsigned colourType_ = 0;
  bool interlaced_ = false;
  std::size_t rawLength_ = 0;
  Bytes palette_;
  Bytes transparency_;
  std::int32_t transColour_ = -1;
  Bytes data_;
  std::int64_t dataArray_ = 0;

  Bytes raw_;
  Bytes pixels_;
};

}  // namespace

PlainPngResult PlainPng(ByteView file, bool checkCrcs) {
  PlainPngResult result;
  Image image(file, checkCrcs);
  try {
    image.ReadChunks();
    image.Inflate();
  } catch (...) {
    return result;
  }
  try {
    image.Decode(result);
    result.end = PlainPngResult::End::Loaded;
  } catch (...) {
    result.end = PlainPngResult::End::Emptied;
  }
  return result;
}

}  // namespace kelvane::test
