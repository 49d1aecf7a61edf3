// Reads 32-bit uncompressed BMP files itself, since the toolkit's reader would lose their alpha, and hands everything
// else to that reader.
#pragma once

#include <cstdint>
#include <span>

#include "common/Bytes.h"
#include "imaging/PictureLoader.h"
#include "imaging/c32bppDIB.h"

namespace kelvane {

// What the alpha bytes of a 32-bit source mean.
struct AlphaChannel {
  bool hasAlpha = false;
  ImageKind imageKind = ImageKind::None;

  bool operator==(const AlphaChannel&) const = default;
};

class cBMPparser {
 public:
  // Fills `cHost` from `streamLength` bytes of `inStream` from `streamStart` on. The offset of the bits that a direct
  // read takes from the file counts from the start of `inStream`, and pixels that would lie before it stay zero. False:
  // nothing usable; never throws a RuntimeFailure.
  bool LoadStream(ByteView inStream, c32bppDIB& cHost, std::int32_t streamStart, std::int32_t streamLength);

  // Paints `stdPic` into `cHost`. False without a picture and where there is no memory for its pixels. Throws what
  // the picture's painting throws.
  bool ConvertstdPicTo32bpp(const Picture* stdPic, c32bppDIB& cHost);

  // Hundredths of a millimetre as pixels on a screen of 96 to the inch, rounded to the nearest, ties to even. Failure 6
  // above 1,491,308.
  [[nodiscard]] static std::int32_t HimetricToPixels(std::int32_t hiMetric, bool bHorizontal);

  // Tells what the alpha bytes of `pixels` (4 bytes each, blue, green, red, alpha, width times height of them) mean.
  // With `bPreMultiply` colours that turn out not to be premultiplied become so.
  static AlphaChannel ClassifyAlphaChannel(std::span<std::uint8_t> pixels, std::int32_t width, std::int32_t height,
                                           bool bPreMultiply);

 private:
  enum class DirectRoad { Loaded, NoSize, Closed };
  DirectRoad LoadDirectly(ByteView inStream, c32bppDIB& cHost, std::int32_t streamStart, std::int32_t streamLength);
};

}  // namespace kelvane
