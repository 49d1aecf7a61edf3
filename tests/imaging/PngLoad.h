// What the tests of the PNG parser share: loading from bytes, looking at pixels, small pictures.
#pragma once

#include <array>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>

#include "imaging/cPNGparser.h"
#include "support/PngBuilder.h"
#include "support/TempFolder.h"

namespace kelvane::test {

using Values = std::initializer_list<std::uint8_t>;

// Blue, green, red, alpha.
using Pixel = std::array<std::uint8_t, 4>;

inline constexpr Pixel kClear = {0, 0, 0, 0};
inline constexpr Pixel kBlack = {0, 0, 0, 255};
inline constexpr Pixel kWhite = {255, 255, 255, 255};

constexpr Pixel Grey(std::uint8_t value) {
  return {value, value, value, 255};
}
constexpr Pixel Rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  return {blue, green, red, 255};
}

// The pixels of an image, row after row from the top.
inline std::vector<Pixel> PixelsOf(const c32bppDIB& image) {
  std::vector<Pixel> pixels;
  for (std::int32_t y = image.Height() - 1; y >= 0; --y) {
    for (std::int32_t x = 0; x < image.Width(); ++x) {
      const std::uint8_t* const pixel =
          image.BitsPointer() + static_cast<std::ptrdiff_t>(y) * image.ScanWidth() + static_cast<std::ptrdiff_t>(x) * 4;
      pixels.push_back({pixel[0], pixel[1], pixel[2], pixel[3]});
    }
  }
  return pixels;
}

// A PNG of 5 by 4 opaque pixels, that loads.
inline Bytes SoundPng() {
  PngImage image{
      .width = 5, .height = 4, .colourType = 2, .samples = {}, .filter = {}, .palette = {}, .transparency = {}};
  for (std::uint16_t i = 0; i < 60; ++i) {
    image.samples.push_back(i);
  }
  return BuildPng(image);
}

// A load into an object that holds another picture already, so that it shows what a failure leaves.
struct Load {
  bool loaded = false;
  std::unique_ptr<c32bppDIB> host = std::make_unique<c32bppDIB>();

  [[nodiscard]] std::vector<Pixel> Pixels() const { return PixelsOf(*host); }
  // The picture that was there before is there still.
  [[nodiscard]] bool Untouched() const { return host->Width() == 5 && host->Height() == 4 && host->Alpha(); }
  [[nodiscard]] bool Emptied() const { return host->handle() == nullptr && host->Width() == 0; }
};

inline Load LoadPng(ByteView bytes, cPNGparser::DllLookup lookup = {}) {
  Load load;
  const Bytes before = SoundPng();
  EXPECT_TRUE(cPNGparser().LoadStream(before, *load.host, 0, static_cast<std::int32_t>(before.size())));
  load.loaded = cPNGparser(std::move(lookup)).LoadStream(bytes, *load.host, 0, static_cast<std::int32_t>(bytes.size()));
  return load;
}

// A picture of one row, not interlaced.
inline PngImage OneRow(std::uint8_t colourType, std::uint8_t bitDepth, std::vector<std::uint16_t> samples) {
  PngImage image;
  image.width = static_cast<std::int32_t>(samples.size()) / PngChannels(colourType);
  image.colourType = colourType;
  image.bitDepth = bitDepth;
  image.samples = std::move(samples);
  return image;
}

inline constexpr std::uint32_t kWrongCrc = 0x12345678;

// Chunks of a picture of one grey pixel of value 7.
inline Bytes Ihdr(std::uint8_t bitDepth = 8, std::uint8_t colourType = 0) {
  return PngChunkOf("IHDR", PngHeaderData(1, 1, bitDepth, colourType));
}
inline Bytes IdatData() {
  return ZlibStream(Bytes{0, 7});
}
inline Bytes Idat() {
  return PngChunkOf("IDAT", IdatData());
}
inline Bytes Iend() {
  return PngChunkOf("IEND", {});
}

inline void ExpectGrey7(const Load& load) {
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Grey(7)});
}

inline void ExpectRefusedUntouched(const std::vector<Bytes>& chunks, const char* what = "") {
  const Load load = LoadPng(PngFileOf(chunks));
  EXPECT_FALSE(load.loaded) << what;
  EXPECT_TRUE(load.Untouched()) << what;
}

inline bool LoadsAsFile(const Bytes& bytes) {
  const TempFolder folder;
  c32bppDIB host;
  return cPNGparser().LoadFile(folder.Write("picture.png", bytes), host);
}

inline Load LoadImage(const PngImage& image) {
  return LoadPng(BuildPng(image));
}

inline std::vector<Pixel> PixelsOfImage(const PngImage& image) {
  const Load load = LoadImage(image);
  EXPECT_TRUE(load.loaded);
  return load.Pixels();
}

// A file of that header whose image data, not yet deflated, is `raw`.
inline Bytes PngOfRaw(std::int32_t width, std::int32_t height, std::uint8_t bitDepth, std::uint8_t colourType,
                      const Bytes& raw, std::uint8_t interlaceMethod = 0) {
  return PngFileOf(PngHeaderData(width, height, bitDepth, colourType, interlaceMethod), ZlibStream(raw));
}

}  // namespace kelvane::test
