#include "resources/TestPicture.h"

#include "support/GimBuilder.h"
#include "support/PlainBmp.h"
#include "support/PngBuilder.h"

namespace kelvane::test {

namespace {

constexpr int kWidth = 16;

}  // namespace

TestPicture::TestPicture(int colours, int height, int tint) : colours_(colours), height_(height), tint_(tint) {}

TestPicture::Colour TestPicture::ColourOf(std::uint32_t index) const {
  return {static_cast<std::uint8_t>(index), static_cast<std::uint8_t>(100 + (index >> 8U)),
          static_cast<std::uint8_t>(7 + tint_)};
}

std::vector<std::uint32_t> TestPicture::Indexes() const {
  std::vector<std::uint32_t> indexes;
  for (int row = height_ - 1; row >= 0; --row) {
    for (int x = 0; x < kWidth; ++x) {
      indexes.push_back(static_cast<std::uint32_t>((row * kWidth + x) % colours_));
    }
  }
  return indexes;
}

std::vector<std::uint32_t> TestPicture::GimPalette() const {
  std::vector<std::uint32_t> palette;
  for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(colours_); ++i) {
    const Colour colour = ColourOf(i);
    palette.push_back(Rgba(colour.red, colour.green, colour.blue));
  }
  palette.resize(256);
  return palette;
}

Bytes TestPicture::Bmp32() const {
  std::vector<std::uint32_t> pixels;
  for (const std::uint32_t index : Indexes()) {
    const Colour colour = ColourOf(index);
    pixels.push_back(Bgra(colour.blue, colour.green, colour.red));
  }
  return BuildBmp32(kWidth, height_, pixels);
}

Bytes TestPicture::Png() const {
  PngImage image;
  image.width = kWidth;
  image.height = height_;
  for (const std::uint32_t index : Indexes()) {
    const Colour colour = ColourOf(index);
    for (const std::uint8_t sample : {colour.red, colour.green, colour.blue, std::uint8_t{255}}) {
      image.samples.push_back(sample);
    }
  }
  return BuildPng(image);
}

Bytes TestPicture::Bmp8() const {
  std::vector<std::uint32_t> palette;
  for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(colours_); ++i) {
    const Colour colour = ColourOf(i);
    palette.push_back(Bgra(colour.blue, colour.green, colour.red));
  }
  palette.resize(256);
  return BuildBmp8(kWidth, height_, Indexes(), palette);
}

Bytes TestPicture::DirectGim() const {
  std::vector<std::uint32_t> pixels;
  for (const std::uint32_t index : Indexes()) {
    const Colour colour = ColourOf(index);
    pixels.push_back(Rgba(colour.red, colour.green, colour.blue));
  }
  return BuildRgbaGim(kWidth, height_, pixels);
}

Bytes TestPicture::IndexedGim() const {
  return BuildIndexedGim(kWidth, height_, 8, Indexes(), GimPalette());
}

Bytes TestPicture::IndexedGimWithoutFirstColour() const {
  std::vector<std::uint32_t> palette = GimPalette();
  palette[Indexes().front()] = 0;
  return BuildIndexedGim(kWidth, height_, 8, Indexes(), palette);
}

}  // namespace kelvane::test
