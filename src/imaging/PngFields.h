// What a PNG's chunks say, and the sizes that follow from it.
#pragma once

#include <array>
#include <cstdint>

#include "common/Bytes.h"

namespace kelvane {

enum PngColourType : std::uint8_t {
  kPngGrey = 0,
  kPngRgb = 2,
  kPngPalette = 3,
  kPngGreyAlpha = 4,
  kPngRgba = 6,
};

struct PngFields {
  // From IHDR.
  std::int32_t pngWidth = 0;
  std::int32_t pngHeight = 0;
  std::uint8_t bitDepth = 0;
  std::uint8_t colourType = 0;
  std::uint8_t interlaceMethod = 0;
  // 3 bytes an entry: red, green, blue. Empty: never given.
  Bytes palette;
  // The data of tRNS. Empty: never given.
  Bytes transparency;
  // -1: no transparency. Otherwise the grey index or RGB colour that is transparent, and 0 for a palette whose entries
  // have their alpha in `transparency`.
  std::int32_t transColour = -1;
};

// Rows and columns of a pass of an interlaced image; the eighth stands for an image that isn't interlaced.
struct PngPass {
  std::int32_t firstRow;
  std::int32_t firstColumn;
  std::int32_t rowStep;
  std::int32_t columnStep;
};
inline constexpr std::array<PngPass, 8> kPngPasses = {
    {{0, 0, 8, 8}, {0, 4, 8, 8}, {4, 0, 8, 4}, {0, 2, 4, 4}, {2, 0, 4, 2}, {0, 1, 2, 2}, {1, 0, 2, 1}, {0, 0, 1, 1}}};

struct PngPassSize {
  std::int32_t width;
  std::int32_t height;
};
// Pixels of a pass; either size may be 0.
[[nodiscard]] PngPassSize SizeOfPass(const PngFields& fields, const PngPass& pass);

struct PngBitParameters {
  std::int32_t sourceBits;  // of a pixel
  // Bytes from a pixel to the next, which is also the distance that filters look back. 0 where several pixels or
  // samples share a byte though the colour type allows no such depth.
  std::int32_t sourceStep;
};
[[nodiscard]] PngBitParameters GetBitParameters(const PngFields& fields);

// Bytes of so many pixels, the last one filled up. Failure 6 where the bits don't fit in signed 32 bits.
[[nodiscard]] std::int32_t RowBytesFor(std::int32_t pixels, std::int32_t bitsPerPixel);

// Bytes that the image data holds when it is inflated, filter bytes included. A pass that has no columns counts a byte
// for each of its rows all the same, so this may be a few too many. Failure 6 beyond signed 32 bits.
[[nodiscard]] std::int32_t CalculateRawSize(const PngFields& fields);

struct PngSample {
  std::int32_t index;
  std::array<std::uint8_t, 3> colour;  // red, green, blue
};
// The sample of `bitDepth` bits that stands `shiftIndex` bits above the lowest of `byteValue`, and its entry in the
// palette. Failure 9 for a depth or shift beyond 8, and where the palette has no such entry.
[[nodiscard]] PngSample UnpackSample(const PngFields& fields, std::int32_t shiftIndex, std::uint8_t byteValue);

// Gives a grey or palette image without a palette the one it is shown with. Failure 9 for grey of 16 bits, which is
// left with a black one.
void BuildDefaultPalette(PngFields& fields);

}  // namespace kelvane
