#include "platform/QtPictureLoader.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QLoggingCategory>
#include <algorithm>
#include <climits>
#include <string_view>
#include <utility>

#include "platform/BmpInfo.h"
#include "platform/MaskedBmp.h"

namespace kelvane {

namespace {

constexpr std::int64_t kMostMebibytes = 1024;

enum class Format { None, Bmp, Jpeg, Gif };

bool BeginsWith(ByteView stream, std::string_view text) {
  return stream.size() >= text.size() &&
         std::equal(text.begin(), text.end(), stream.begin(),
                    [](char wanted, std::uint8_t found) { return static_cast<std::uint8_t>(wanted) == found; });
}

Format FormatOf(ByteView stream) {
  if (BeginsWith(stream, "BM")) {
    return Format::Bmp;
  }
  if (BeginsWith(stream, "\xFF\xD8\xFF")) {
    return Format::Jpeg;
  }
  return BeginsWith(stream, "GIF8") ? Format::Gif : Format::None;
}

const char* NameOf(Format format) {
  switch (format) {
    case Format::Bmp:
      return "bmp";
    case Format::Jpeg:
      return "jpeg";
    default:
      return "gif";
  }
}

// Whether `bytes` of data can hold that many pixels at `most` pixels a byte. Small pictures always pass.
bool CanHold(std::size_t bytes, std::int64_t pixels, std::int64_t most) {
  constexpr std::int64_t kAlways = std::int64_t{1} << 20;
  return pixels <= kAlways || pixels / most <= static_cast<std::int64_t>(bytes);
}

// Rows without compression must be there whole. A run of at most 255 pixels takes 2 bytes.
bool BmpHoldsItsPixels(ByteView stream, QSize size) {
  const BmpInfo info = ReadBmpInfo(stream);
  if (info.HasRuns()) {
    return CanHold(stream.size(), std::int64_t{size.width()} * size.height(), 128);
  }
  return info.bitsOffset + info.RowBytes(size.width()) * size.height() <= static_cast<std::int64_t>(stream.size());
}

// Each 8 by 8 block takes at least a bit. Every scan may walk over all blocks however few bytes it has, so their number
// is limited too; files in the field have about ten.
bool JpegHoldsItsPixels(ByteView stream, QSize size) {
  constexpr std::ptrdiff_t kMostScans = 256;
  std::ptrdiff_t scans = 0;
  for (std::size_t i = 0; i + 1 < stream.size(); ++i) {
    scans += stream[i] == 0xFF && stream[i + 1] == 0xDA ? 1 : 0;
  }
  return scans <= kMostScans && CanHold(stream.size(), std::int64_t{size.width()} * size.height(), 512);
}

// The longest string of a code of 12 bits. The reader takes memory for the whole logical screen.
bool GifHoldsItsPixels(ByteView stream) {
  return CanHold(stream.size(), std::int64_t{ReadU16(stream, 6)} * ReadU16(stream, 8), 2560);
}

bool HoldsItsPixels(Format format, ByteView stream, QSize size) {
  switch (format) {
    case Format::Bmp:
      return BmpHoldsItsPixels(stream, size);
    case Format::Jpeg:
      return JpegHoldsItsPixels(stream, size);
    default:
      return GifHoldsItsPixels(stream);
  }
}

class QtPicture : public Picture {
 public:
  explicit QtPicture(QImage image) : image_(std::move(image)) {}

  [[nodiscard]] PictureType Type() const override { return PictureType::Bitmap; }
  [[nodiscard]] std::int32_t Width() const override { return image_.width(); }
  [[nodiscard]] std::int32_t Height() const override { return image_.height(); }

  void Paint(const Canvas& canvas) const override {
    const bool isDirect = image_.format() == QImage::Format_RGB32 || image_.format() == QImage::Format_ARGB32;
    for (int y = 0; y < image_.height(); ++y) {
      const auto storedRow = static_cast<std::size_t>(canvas.height - 1 - y);
      std::uint8_t* target = canvas.pixels.data() + storedRow * 4 * static_cast<std::size_t>(canvas.width);
      // Row by row, so that a picture of few bits a pixel is never held twice at 32.
      const QImage row =
          isDirect ? QImage() : image_.copy(0, y, image_.width(), 1).convertToFormat(QImage::Format_RGB32);
      PaintRow(reinterpret_cast<const QRgb*>(isDirect ? image_.constScanLine(y) : row.constScanLine(0)), target);
    }
  }

 private:
  // Pixels as the canvas keeps them, with alpha 0.
  void PaintRow(const QRgb* source, std::uint8_t* target) const {
    for (int x = 0; x < image_.width(); ++x, target += 4) {
      target[0] = static_cast<std::uint8_t>(qBlue(source[x]));
      target[1] = static_cast<std::uint8_t>(qGreen(source[x]));
      target[2] = static_cast<std::uint8_t>(qRed(source[x]));
      target[3] = 0;
    }
  }

  QImage image_;
};

}  // namespace

QtPictureLoader::QtPictureLoader() {
  QImageReader::setAllocationLimit(kMostMebibytes);
  // Parsers show nothing; what they can't read, their caller words.
  QLoggingCategory::setFilterRules("qt.gui.imageio*=false");
}

std::unique_ptr<Picture> QtPictureLoader::Load(ByteView stream) {
  const Format format = FormatOf(stream);
  if (format == Format::None) {
    return nullptr;
  }
  QByteArray bytes =
      QByteArray::fromRawData(reinterpret_cast<const char*>(stream.data()), static_cast<qsizetype>(stream.size()));
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, NameOf(format));
  reader.setAutoDetectImageFormat(false);
  // The height of a bitmap that is stored from the top down is negative here.
  const QSize told = reader.size();
  const QSize size(told.width(), told.height() < 0 && told.height() != INT_MIN ? -told.height() : told.height());
  if (size.isEmpty() || std::int64_t{size.width()} * size.height() > kMostMebibytes * 1024 * 1024 / 4 ||
      !HoldsItsPixels(format, stream, size)) {
    return nullptr;
  }
  if (format == Format::Bmp && ReadBmpInfo(stream).HasMasks()) {
    QImage image = ReadMaskedBmp(stream, size, told.height() < 0);
    return image.isNull() ? nullptr : std::make_unique<QtPicture>(std::move(image));
  }
  // The reader keeps an image of the right size and format, so that what broken data leaves out is black.
  QImage image(size, reader.imageFormat());
  image.fill(0);
  if (!reader.read(&image)) {
    return nullptr;
  }
  return std::make_unique<QtPicture>(std::move(image));
}

}  // namespace kelvane
