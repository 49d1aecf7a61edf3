// What the tests of the icon parser share: loading, looking at what was chosen, small images.
#pragma once

#include "imaging/Fakes.h"
#include "imaging/cICOparser.h"
#include "support/IcoBuilder.h"
#include "support/PngBuilder.h"

namespace kelvane::test {

// Where the header of the first image lies in a file of that many images.
constexpr std::int64_t HeaderAt(std::int64_t images) {
  return 6 + 16 * images;
}

inline bool Load(c32bppDIB& image, Bytes& file, std::int32_t iconCx = 0, std::int32_t iconCy = 0) {
  return cICOparser().LoadStream(file, iconCx, iconCy, image, 0, static_cast<std::int32_t>(file.size()));
}

// Whether a file loads.
inline bool Loads(const IcoSpec& spec) {
  Bytes file = BuildIco(spec);
  c32bppDIB image;
  return Load(image, file);
}

// The first pixel, blue green red alpha, of what is chosen among the images; empty where nothing is.
inline Bytes Chosen(const std::vector<IcoImage>& images, std::int32_t iconCx = 0, std::int32_t iconCy = 0) {
  Bytes file = BuildIco({.images = images});
  c32bppDIB image;
  return Load(image, file, iconCx, iconCy) ? PixelsOf(image.Pixels().first(4)) : Bytes();
}

// An image of 32 bits whose pixels are all blue green red 7 7 `red`.
inline IcoImage Marked(std::int32_t side, std::uint8_t red, std::uint16_t bitCount = 32) {
  return PlainIcoImage(side, bitCount, 7, 7, red);
}

inline Bytes Mark(std::uint8_t red) {
  return {7, 7, red, 255};
}

inline IcoImage Png(std::int32_t width, std::int32_t height, std::uint8_t bitDepth = 8, std::uint8_t colourType = 6) {
  PngImage png;
  png.width = width;
  png.height = height;
  png.bitDepth = bitDepth;
  png.colourType = colourType;
  png.samples.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                         static_cast<std::size_t>(PngChannels(colourType)),
                     static_cast<std::uint16_t>((1U << bitDepth) - 1));
  if (colourType == 3) {
    png.palette = Bytes(std::size_t{3} << bitDepth, 99);
  }
  return {.width = static_cast<std::uint8_t>(width),
          .height = static_cast<std::uint8_t>(height),
          .bitCount = 32,
          .data = BuildPng(png)};
}

}  // namespace kelvane::test
