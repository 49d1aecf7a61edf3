#include "imaging/PngFields.h"

#include "common/Int16.h"

namespace kelvane {
namespace {

// 2 to the power of 0 to 8, by which samples are cut out of a byte; failure 9 outside.
std::int32_t PowerOfTwo(std::int32_t exponent) {
  if (exponent < 0 || exponent > 8) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  return 1 << exponent;
}

std::int32_t CountInPass(std::int32_t size, std::int32_t first, std::int32_t step) {
  return size / step + (size % step > first ? 1 : 0);
}

}  // namespace

PngPassSize SizeOfPass(const PngFields& fields, const PngPass& pass) {
  return {CountInPass(fields.pngWidth, pass.firstColumn, pass.columnStep),
          CountInPass(fields.pngHeight, pass.firstRow, pass.rowStep)};
}

PngBitParameters GetBitParameters(const PngFields& fields) {
  const std::int32_t depth = fields.bitDepth;
  switch (fields.colourType) {
    case kPngRgba:
      return {depth * 4, depth / 8 * 4};
    case kPngGreyAlpha:
      return {depth * 2, depth / 8 * 2};
    case kPngRgb:
      return {depth * 3, depth / 8 * 3};
    case kPngGrey:
      return {depth, depth < 8 ? 1 : depth / 8};
    default:
      return {depth, 1};
  }
}

std::int32_t RowBytesFor(std::int32_t pixels, std::int32_t bitsPerPixel) {
  return CheckedInt32(std::int64_t{bitsPerPixel} * pixels + 7) / 8;
}

std::int32_t CalculateRawSize(const PngFields& fields) {
  const std::int32_t sourceBits = GetBitParameters(fields).sourceBits;
  if (fields.interlaceMethod == 0) {
    return CheckedInt32((std::int64_t{RowBytesFor(fields.pngWidth, sourceBits)} + 1) * fields.pngHeight);
  }
  std::int64_t total = 0;
  for (std::size_t i = 0; i < 7; ++i) {
    const PngPassSize size = SizeOfPass(fields, kPngPasses[i]);
    total += std::int64_t{size.height} * (RowBytesFor(size.width, sourceBits) + 1);
  }
  return CheckedInt32(total);
}

PngSample UnpackSample(const PngFields& fields, std::int32_t shiftIndex, std::uint8_t byteValue) {
  const std::int32_t index = byteValue / PowerOfTwo(shiftIndex) & (PowerOfTwo(fields.bitDepth) - 1);
  return {index, {At(fields.palette, index * 3), At(fields.palette, index * 3 + 1), At(fields.palette, index * 3 + 2)}};
}

void BuildDefaultPalette(PngFields& fields) {
  const bool hasPaletteKind = fields.colourType == kPngGrey || fields.colourType == kPngPalette;
  if (!hasPaletteKind || !fields.palette.empty()) {
    return;
  }
  fields.palette.assign(768, 0);
  if (fields.colourType == kPngGrey) {
    const std::int32_t count = PowerOfTwo(fields.bitDepth);
    const std::int32_t step = 255 / (count - 1);
    for (std::int32_t i = 1; i < count; ++i) {
      for (std::int32_t j = 0; j < 3; ++j) {
        At(fields.palette, i * 3 + j) = static_cast<std::uint8_t>(i * step);
      }
    }
  } else if (fields.bitDepth == 1) {
    // One byte too far: entry 1 becomes cyan and entry 2 red. Images without a palette are known by this.
    fields.palette[4] = 255;
    fields.palette[5] = 255;
    fields.palette[6] = 255;
  }
}

}  // namespace kelvane
