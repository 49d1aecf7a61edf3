// Samples of PNG rows as premultiplied pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "imaging/PngFields.h"

namespace kelvane {

// Turns `count` pixels' samples into 4 bytes a pixel: blue, green, red, alpha. Of 16-bit samples only the high byte
// counts. Colours are multiplied by alpha / 255, truncated. Up to kPngRowSlack bytes behind the samples are read.
using ConvertPixels = void (*)(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count);

struct PngPixelKernels {
  ConvertPixels grey8;  // a sample is the colour
  ConvertPixels greyAlpha8;
  ConvertPixels greyAlpha16;
  ConvertPixels rgb8;
  ConvertPixels rgb16;
  ConvertPixels rgba8;
  ConvertPixels rgba16;
};
// The fastest that this processor has.
[[nodiscard]] const PngPixelKernels& BestPngPixelKernels();
// The same without instructions of a particular processor.
[[nodiscard]] const PngPixelKernels& PortablePngPixelKernels();

// Converts rows of one image.
class PngRowConverter {
 public:
  explicit PngRowConverter(const PngFields& fields);

  // Converts the `count` pixels of a row whose filter is undone; a pixel of alpha 0 becomes all zero. False where a
  // pixel has no colour: its index lies outside the palette, or the kind of image has no conversion.
  [[nodiscard]] bool Convert(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) const;

 private:
  using Pixel = std::uint32_t;  // 4 bytes in the order of memory

  static Pixel PixelOf(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha);
  void PrepareIndexed(const PngFields& fields);
  void PrepareRgbKeys(const PngFields& fields);

  bool ConvertIndexes8(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) const;
  bool ConvertPackedIndexes(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) const;
  bool ClearTransparentColour(std::uint8_t* pixels, std::size_t count) const;

  enum class Way {
    None,     // no conversion: every row fails
    Nothing,  // samples that no colour type allows: pixels stay as they are
    Samples,
    Indexes8,
    PackedIndexes,
  };
  Way way_ = Way::None;
  unsigned bitDepth_ = 0;

  ConvertPixels convertSamples_ = nullptr;

  // Colours by index, and how many indexes have one. With less than 8 bits, the pixels of each possible byte.
  std::vector<Pixel> colours_;
  std::size_t usableColours_ = 0;

  // RGB: the colour that is transparent, as an opaque pixel, and the second one that 16-bit images have.
  bool hasKey_ = false;
  bool lacksSecondKey_ = false;
  Pixel key_ = 0;
  Pixel secondKey_ = 0;
};

}  // namespace kelvane
