#include "imaging/PngPixels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kelvane {
namespace {

constexpr std::size_t kPixelBytes = 4;

constexpr std::uint8_t Premultiply(std::uint8_t colour, std::uint8_t alpha) {
  return static_cast<std::uint8_t>(colour * alpha / 255);
}

}  // namespace

PngRowConverter::PngRowConverter(const PngFields& fields) : bitDepth_(fields.bitDepth) {
  const PngPixelKernels& kernels = BestPngPixelKernels();
  const bool wide = bitDepth_ == 16;
  if (fields.colourType == kPngGrey || fields.colourType == kPngPalette) {
    if (!wide) {
      PrepareIndexed(fields);
    }
    return;
  }
  if (bitDepth_ < 8) {
    way_ = Way::Nothing;
    return;
  }
  way_ = Way::Samples;
  switch (fields.colourType) {
    case kPngRgba:
      convertSamples_ = wide ? kernels.rgba16 : kernels.rgba8;
      break;
    case kPngGreyAlpha:
      convertSamples_ = wide ? kernels.greyAlpha16 : kernels.greyAlpha8;
      break;
    default:
      convertSamples_ = wide ? kernels.rgb16 : kernels.rgb8;
      PrepareRgbKeys(fields);
  }
}

PngRowConverter::Pixel PngRowConverter::PixelOf(std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                                                std::uint8_t alpha) {
  const std::array<std::uint8_t, kPixelBytes> bytes = {Premultiply(blue, alpha), Premultiply(green, alpha),
                                                       Premultiply(red, alpha), alpha};
  Pixel pixel;
  std::memcpy(&pixel, bytes.data(), sizeof pixel);
  return pixel;
}

void PngRowConverter::PrepareIndexed(const PngFields& fields) {
  const std::size_t indexes = std::size_t{1} << bitDepth_;
  const bool hasAlphas = fields.colourType == kPngPalette && fields.transColour != -1;
  usableColours_ = std::min(indexes, fields.palette.size() / 3);
  if (hasAlphas) {
    usableColours_ = std::min(usableColours_, fields.transparency.size());
  }
  std::vector<Pixel> colours(indexes);
  bool isGreyScale = usableColours_ == 256;
  for (std::size_t i = 0; i < usableColours_; ++i) {
    const std::uint8_t* const rgb = fields.palette.data() + i * 3;
    std::uint8_t alpha = 255;
    if (hasAlphas) {
      alpha = fields.transparency[i];
    } else if (fields.colourType == kPngGrey && static_cast<std::int32_t>(i) == fields.transColour) {
      alpha = 0;
    }
    colours[i] = PixelOf(rgb[0], rgb[1], rgb[2], alpha);
    const auto grey = static_cast<std::uint8_t>(i);
    isGreyScale = isGreyScale && colours[i] == PixelOf(grey, grey, grey, 255);
  }
  if (isGreyScale) {
    way_ = Way::Samples;
    convertSamples_ = BestPngPixelKernels().grey8;
  } else if (bitDepth_ == 8) {
    way_ = Way::Indexes8;
    colours_ = std::move(colours);
  } else {
    way_ = Way::PackedIndexes;
    const std::size_t perByte = 8 / bitDepth_;
    colours_.resize(256 * perByte);
    for (std::size_t i = 0; i < colours_.size(); ++i) {
      const std::size_t shift = 8 - bitDepth_ * (i % perByte + 1);
      colours_[i] = colours[i / perByte >> shift & (indexes - 1)];
    }
  }
}

void PngRowConverter::PrepareRgbKeys(const PngFields& fields) {
  hasKey_ = fields.transColour != -1;
  if (!hasKey_) {
    return;
  }
  const auto colour = static_cast<std::uint32_t>(fields.transColour);
  key_ = PixelOf(static_cast<std::uint8_t>(colour >> 16), static_cast<std::uint8_t>(colour >> 8),
                 static_cast<std::uint8_t>(colour), 255);
  secondKey_ = key_;
  if (bitDepth_ == 16) {
    // Both halves of the 16-bit samples of the transparent colour are compared with the high half of a pixel's.
    lacksSecondKey_ = fields.transparency.size() < 5;
    if (!lacksSecondKey_) {
      secondKey_ = PixelOf(fields.transparency[0], fields.transparency[2], fields.transparency[4], 255);
    }
  }
}

bool PngRowConverter::Convert(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) const {
  switch (way_) {
    case Way::None:
      return false;
    case Way::Nothing:
      return true;
    case Way::Samples:
      convertSamples_(samples, pixels, count);
      return !hasKey_ || ClearTransparentColour(pixels, count);
    case Way::Indexes8:
      return ConvertIndexes8(samples, pixels, count);
    case Way::PackedIndexes:
      return ConvertPackedIndexes(samples, pixels, count);
  }
  return false;
}

bool PngRowConverter::ConvertIndexes8(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) const {
  if (usableColours_ < 256) {
    std::uint8_t highest = 0;
    for (std::size_t i = 0; i < count; ++i) {
      highest = std::max(highest, samples[i]);
    }
    if (highest >= usableColours_) {
      return false;
    }
  }
  const Pixel* const colours = colours_.data();
  for (std::size_t i = 0; i < count; ++i) {
    std::memcpy(pixels + i * kPixelBytes, &colours[samples[i]], kPixelBytes);
  }
  return true;
}

bool PngRowConverter::ConvertPackedIndexes(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) const {
  const std::size_t perByte = 8 / bitDepth_;
  const std::size_t mask = (std::size_t{1} << bitDepth_) - 1;
  if (usableColours_ <= mask) {
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t byte = samples[i / perByte];
      if ((byte >> (8 - bitDepth_ * (i % perByte + 1)) & mask) >= usableColours_) {
        return false;
      }
    }
  }
  const auto expand = [&](auto perByteConstant) {
    constexpr std::size_t kPerByte = decltype(perByteConstant)::value;
    for (std::size_t i = 0; i < count / kPerByte; ++i) {
      std::memcpy(pixels + i * kPerByte * kPixelBytes, &colours_[samples[i] * kPerByte], kPerByte * kPixelBytes);
    }
  };
  switch (bitDepth_) {
    case 1:
      expand(std::integral_constant<std::size_t, 8>());
      break;
    case 2:
      expand(std::integral_constant<std::size_t, 4>());
      break;
    default:
      expand(std::integral_constant<std::size_t, 2>());
  }
  const std::size_t whole = count / perByte;
  if (count % perByte != 0) {
    std::memcpy(pixels + whole * perByte * kPixelBytes, &colours_[samples[whole] * perByte],
                count % perByte * kPixelBytes);
  }
  return true;
}

bool PngRowConverter::ClearTransparentColour(std::uint8_t* pixels, std::size_t count) const {
  bool otherColours = false;
  for (std::size_t i = 0; i < count; ++i) {
    Pixel pixel;
    std::memcpy(&pixel, pixels + i * kPixelBytes, sizeof pixel);
    const bool transparent = pixel == key_ || pixel == secondKey_;
    otherColours |= pixel != key_;
    pixel = transparent ? 0 : pixel;
    std::memcpy(pixels + i * kPixelBytes, &pixel, sizeof pixel);
  }
  return !lacksSecondKey_ || !otherColours;
}

}  // namespace kelvane
