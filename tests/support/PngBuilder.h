// Writes PNG files from samples, for tests, benches and fuzz corpora: every colour type, depth, filter and interlacing,
// and chunks that are not as they should be.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

struct PngImage {
  std::int32_t width = 1;
  std::int32_t height = 1;
  std::uint8_t bitDepth = 8;
  std::uint8_t colourType = 6;
  bool interlaced = false;
  // Row after row from the top, the samples of a pixel side by side.
  std::vector<std::uint16_t> samples;
  // The filter of a row, counted from 0 in its pass. Beyond 4 the row is written unfiltered behind that number.
  std::function<std::uint8_t(std::int32_t row)> filter;
  // The data of PLTE and tRNS.
  std::optional<Bytes> palette;
  std::optional<Bytes> transparency;
};

struct PngBuild {
  int level = 6;
  // The most bytes of image data in an IDAT; 0: all in one.
  std::size_t idatBytes = 0;
};

// Samples of a pixel: 1 to 4.
[[nodiscard]] int PngChannels(std::uint8_t colourType);
// Filtered rows with their filter bytes, pass after pass.
[[nodiscard]] Bytes PngRawData(const PngImage& image);
// The whole file.
[[nodiscard]] Bytes BuildPng(const PngImage& image, const PngBuild& build = {});

// The parts of a file.
[[nodiscard]] Bytes PngSignature();
[[nodiscard]] Bytes PngChunkOf(std::string_view type, ByteView data);
[[nodiscard]] Bytes PngChunkWithCrc(std::string_view type, ByteView data, std::uint32_t crc);
[[nodiscard]] Bytes PngHeaderData(std::int32_t width, std::int32_t height, std::uint8_t bitDepth,
                                  std::uint8_t colourType, std::uint8_t interlaceMethod = 0);
[[nodiscard]] Bytes ZlibStream(ByteView raw, int level = 6);
// The signature and then the chunks as they are.
[[nodiscard]] Bytes PngFileOf(const std::vector<Bytes>& chunks);
// The signature, IHDR with that data, one IDAT with that data, IEND.
[[nodiscard]] Bytes PngFileOf(ByteView headerData, ByteView imageData);

}  // namespace kelvane::test
