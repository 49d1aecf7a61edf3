#include "imaging/cBMPparser.h"

#include <algorithm>
#include <cstring>

#include "common/Int16.h"
#include "imaging/Premultiply.h"
#include "imaging/modParsers.h"

namespace kelvane {

namespace {

// Offsets of the fields of a BMP file that are looked at, from its first byte.
constexpr std::int64_t kSignatureAt = 0;
constexpr std::int64_t kBitsOffsetAt = 10;
constexpr std::int64_t kWidthAt = 18;
constexpr std::int64_t kHeightAt = 22;
constexpr std::int64_t kBitCountAt = 28;
constexpr std::int64_t kCompressionAt = 30;
constexpr std::int16_t kSignature = 19778;  // "BM"

// The screen's resolution: 1,440 twips are an inch.
constexpr double kTwipsPerPixelX = 15;
constexpr double kTwipsPerPixelY = 15;

// What the file holds beyond its rows; negative where it is too short for its header, or the sum overflows.
std::int32_t BytesLeftOver(std::int32_t fileEnd, std::int32_t bitCount, std::int32_t width, std::int32_t height,
                           std::int32_t bitsOffset) {
  try {
    const std::int32_t rows = CheckedInt32(height < 0 ? -std::int64_t{height} : height);
    const std::int32_t bits = CheckedInt32(std::int64_t{AlignedRowBytes(bitCount, width)} * rows);
    return CheckedInt32(std::int64_t{fileEnd} - AddInt32(bits, bitsOffset));
  } catch (const RuntimeFailure&) {
    return -1;
  }
}

// One block copy. One that would begin before the stream is passed over, and its pixels stay zero.
void CopyPixels(ByteView inStream, std::int64_t from, std::span<std::uint8_t> target) {
  if (from >= 0) {
    std::memcpy(target.data(), inStream.data() + from, target.size());
  }
}

// `inStream` reaches as far as the pixels that begin at `bitsOffset`, which may lie before it.
void CopyTopDown(ByteView inStream, std::int32_t bitsOffset, c32bppDIB& cHost) {
  const auto rowBytes = static_cast<std::size_t>(cHost.ScanWidth());
  const std::int32_t height = cHost.Height();
  for (std::int32_t y = 0; y < height; ++y) {
    CopyPixels(inStream, bitsOffset + std::int64_t{cHost.ScanWidth()} * (height - y - 1),
               cHost.Pixels().subspan(static_cast<std::size_t>(y) * rowBytes, rowBytes));
  }
}

// What a metafile didn't draw still has alpha 255 and becomes transparent; what it drew becomes opaque. True if
// anything became transparent.
bool MakeUndrawnTransparent(std::span<std::uint8_t> pixels) {
  bool hasAlpha = false;
  for (std::size_t i = 0; i + 4 <= pixels.size(); i += 4) {
    if (pixels[i + 3] == 255) {
      std::fill_n(pixels.begin() + static_cast<std::ptrdiff_t>(i), 4, std::uint8_t{0});
      hasAlpha = true;
    } else {
      pixels[i + 3] = 255;
    }
  }
  return hasAlpha;
}

}  // namespace

bool cBMPparser::LoadStream(ByteView inStream, c32bppDIB& cHost, std::int32_t streamStart, std::int32_t streamLength) {
  DirectRoad road = DirectRoad::Closed;
  try {
    road = LoadDirectly(inStream, cHost, streamStart, streamLength);
  } catch (const RuntimeFailure&) {
    road = DirectRoad::Closed;
  }
  if (road == DirectRoad::NoSize) {
    return false;
  }
  // A bitmap that a parser before this one left behind is not loaded over.
  if (cHost.handle() != nullptr) {
    return road == DirectRoad::Loaded;
  }
  try {
    return ConvertstdPicTo32bpp(ArrayToPicture(cHost.Pictures(), inStream, streamStart, streamLength).get(), cHost);
  } catch (const std::exception&) {
    cHost.DestroyDIB();
    return false;
  }
}

cBMPparser::DirectRoad cBMPparser::LoadDirectly(ByteView inStream, c32bppDIB& cHost, std::int32_t streamStart,
                                                std::int32_t streamLength) {
  const ByteView file = SpanOf(inStream, streamStart, streamLength);
  if (ReadI16(file, kSignatureAt) != kSignature) {
    return DirectRoad::Closed;
  }
  if (std::ssize(file) < kHeightAt + 4) {
    return DirectRoad::NoSize;
  }
  const std::int32_t bitCount = ReadU16(file, kBitCountAt);
  const std::int32_t width = ReadI32(file, kWidthAt);
  const std::int32_t height = ReadI32(file, kHeightAt);
  if (width < 1 || height == 0) {
    return DirectRoad::NoSize;
  }
  const std::int32_t bitsOffset = ReadI32(file, kBitsOffsetAt);
  const std::int32_t fileEnd = AddInt32(streamStart, streamLength);
  if (BytesLeftOver(fileEnd, bitCount, width, height, bitsOffset) < 0 || bitCount != 32 ||
      ReadI32(file, kCompressionAt) != 0) {
    return DirectRoad::Closed;
  }
  if (!cHost.InitializeDIB(width, height)) {
    return DirectRoad::Closed;
  }
  if (height < 0) {
    CopyTopDown(inStream, bitsOffset, cHost);
  } else {
    CopyPixels(inStream, bitsOffset, cHost.Pixels());
  }
  const AlphaChannel channel = ClassifyAlphaChannel(cHost.Pixels(), cHost.Width(), cHost.Height(), true);
  cHost.Alpha(channel.hasAlpha, ParserKey());
  cHost.ImageType(channel.imageKind, ParserKey());
  return DirectRoad::Loaded;
}

bool cBMPparser::ConvertstdPicTo32bpp(const Picture* stdPic, c32bppDIB& cHost) {
  if (stdPic == nullptr || static_cast<std::int32_t>(stdPic->Type()) <= 0) {
    return false;
  }
  if (!cHost.InitializeDIB(stdPic->Width(), stdPic->Height())) {
    return false;
  }
  const PictureType type = stdPic->Type();
  const bool isMetafile = type == PictureType::Metafile || type == PictureType::EnhancedMetafile;
  if (isMetafile) {
    std::ranges::fill(cHost.Pixels(), std::uint8_t{255});
  }
  stdPic->Paint(*cHost.LoadDIBinDC(true));
  (void)cHost.LoadDIBinDC(false);

  AlphaChannel channel;
  if (isMetafile) {
    channel.hasAlpha = MakeUndrawnTransparent(cHost.Pixels());
    channel.imageKind = type == PictureType::Metafile ? ImageKind::Metafile : ImageKind::EnhancedMetafile;
  } else {
    channel = ClassifyAlphaChannel(cHost.Pixels(), cHost.Width(), cHost.Height(), true);
  }
  cHost.ImageType(channel.imageKind, ParserKey());
  cHost.Alpha(channel.hasAlpha, ParserKey());
  return true;
}

std::int32_t cBMPparser::HimetricToPixels(std::int32_t hiMetric, bool bHorizontal) {
  const double twips = CheckedInt32(std::int64_t{hiMetric} * 1440) / 2540.0;
  return RoundToInt32(twips / (bHorizontal ? kTwipsPerPixelX : kTwipsPerPixelY));
}

AlphaChannel cBMPparser::ClassifyAlphaChannel(std::span<std::uint8_t> pixels, std::int32_t width, std::int32_t height,
                                              bool bPreMultiply) {
  enum class State { Undecided, NotPremultiplied, Decided };
  State state = State::Undecided;
  std::int64_t transparent = 0;
  for (std::size_t i = 0; i + 4 <= pixels.size() && state != State::Decided; i += 4) {
    const std::uint8_t alpha = pixels[i + 3];
    const std::uint8_t brightest = std::max({pixels[i], pixels[i + 1], pixels[i + 2]});
    if (alpha == 0) {
      ++transparent;
      if (brightest != 0) {
        state = State::NotPremultiplied;
      }
    } else if (state == State::NotPremultiplied || (alpha != 255 && brightest > alpha)) {
      state = State::Decided;
    }
  }
  if (transparent == std::int64_t{width} * height) {
    return {.hasAlpha = false, .imageKind = ImageKind::BitmapWithoutAlpha};
  }
  if (state == State::Undecided) {
    // A wholly opaque bitmap ends here too, and counts as one with alpha.
    return {.hasAlpha = true, .imageKind = ImageKind::PremultipliedBitmap};
  }
  if (bPreMultiply) {
    Premultiply(pixels, pixels);
  }
  return {.hasAlpha = true, .imageKind = ImageKind::BitmapWithAlpha};
}

}  // namespace kelvane
