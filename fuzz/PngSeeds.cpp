#include "Seeds.h"
#include "support/DeflateBits.h"
#include "support/PngBuilder.h"

namespace kelvane::fuzz {

namespace {

using namespace test;

PngImage Picture(std::uint8_t colourType, std::uint8_t bitDepth, std::int32_t width, std::int32_t height) {
  PngImage image;
  image.width = width;
  image.height = height;
  image.colourType = colourType;
  image.bitDepth = bitDepth;
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                     static_cast<std::size_t>(PngChannels(colourType));
  for (std::size_t i = 0; i < count; ++i) {
    image.samples.push_back(static_cast<std::uint16_t>(i * i / 3 & ((1U << bitDepth) - 1)));
  }
  image.filter = [](std::int32_t row) { return static_cast<std::uint8_t>((row + 1) % 5); };
  if (colourType == 3) {
    image.palette.emplace();
    for (unsigned i = 0; i < 3U << std::min<unsigned>(bitDepth, 8); ++i) {
      image.palette->push_back(static_cast<std::uint8_t>(i * 37));
    }
  }
  return image;
}

}  // namespace

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  for (const auto& [colourType, depths] : std::initializer_list<std::pair<std::uint8_t, std::vector<std::uint8_t>>>{
           {0, {1, 2, 4, 8, 16}}, {2, {8, 16}}, {3, {1, 2, 4, 8}}, {4, {8, 16}}, {6, {8, 16}}}) {
    for (const std::uint8_t bitDepth : depths) {
      for (const bool interlaced : {false, true}) {
        PngImage image = Picture(colourType, bitDepth, 11, 9);
        image.interlaced = interlaced;
        seeds.push_back(BuildPng(image));
        image.transparency = colourType == 3 ? Bytes{0, 100, 255} : Bytes{0, 1, 0, 2, 0, 3};
        seeds.push_back(BuildPng(image, {.level = 9, .idatBytes = 20}));
      }
    }
  }
  // Depths that the colour type doesn't allow, no palette, a palette too short, unknown filters.
  const Bytes rows(40, 0x5A);
  for (const std::uint8_t colourType : {std::uint8_t{2}, std::uint8_t{3}, std::uint8_t{4}, std::uint8_t{6}}) {
    seeds.push_back(PngFileOf(PngHeaderData(5, 4, 4, colourType), ZlibStream(rows)));
    seeds.push_back(PngFileOf(PngHeaderData(5, 4, 1, colourType, 1), ZlibStream(Bytes(12))));
  }
  PngImage image = Picture(3, 8, 20, 3);
  image.palette->resize(30);
  seeds.push_back(BuildPng(image));
  // Data too short and too long, and streams that only the built-in inflate takes.
  seeds.push_back(PngFileOf(PngHeaderData(9, 9, 8, 6), ZlibStream(Bytes(50, 3))));
  seeds.push_back(PngFileOf(PngHeaderData(2, 2, 8, 6), ZlibStream(Bytes(50, 3))));
  seeds.push_back(PngFileOf(PngHeaderData(2, 1, 8, 0), DeflateBits(1, 2).Block(true, 1).FixedSymbol(0).Take()));
  // Headers, palettes and transparency in unusual orders.
  seeds.push_back(
      PngFileOf({PngChunkOf("tRNS", Bytes{0, 1, 0, 2, 0, 3}), PngChunkOf("IHDR", PngHeaderData(2, 2, 16, 2)),
                 PngChunkOf("tRNS", Bytes{0, 1, 0, 2, 0, 3}), PngChunkOf("IHDR", PngHeaderData(2, 2, 8, 3)),
                 PngChunkOf("IDAT", ZlibStream(Bytes(6))), PngChunkOf("PLTE", Bytes{1, 2, 3}),
                 PngChunkWithCrc("tRNS", Bytes{4}, 5), PngChunkOf("IEND", {})}));
  seeds.push_back(PngFileOf({PngChunkOf("IHDR", PngHeaderData(2, 2, 8, 0)), PngChunkOf("IDAT", ZlibStream(Bytes(6))),
                             PngChunkOf("tEXt", Bytes(3)), PngChunkOf("IEND", Bytes(1))}));
  return seeds;
}

}  // namespace kelvane::fuzz
