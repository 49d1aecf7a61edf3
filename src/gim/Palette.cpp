#include "gim/Palette.h"

#include <algorithm>

#include "common/Files.h"
#include "gim/ByteCursor.h"
#include "gim/ColourFinder.h"

namespace kelvane {

namespace {

// An image of more pixels of 32 bits than these takes less room with a palette: (80 + 16 x 4) / 4 and
// (80 + 256 x 4) / 4, the palette's block counted in pixels.
constexpr std::int32_t kFewColours = 16;
constexpr std::int32_t kPixelsForFewColours = 36;
constexpr std::int32_t kPixelsForManyColours = 276;

std::int32_t PixelsOf(const BitmapHeader& header) {
  return CheckedInt32(std::int64_t{header.biWidth} * header.biHeight);
}

// How many pixels are counted at a time.
constexpr std::int64_t kChunkPixels = 8192;

// Counts the colours of the first `pixels` pixels until there are more than a palette holds.
void CountColours(ByteView bytes, std::int64_t pixels, ColourFinder& finder) {
  const std::int64_t whole = std::clamp<std::int64_t>(pixels, 0, static_cast<std::int64_t>(bytes.size() / 4));
  Bytes indexes(kChunkPixels);
  for (std::int64_t i = 0; i < whole; i += kChunkPixels) {
    const std::int64_t chunk = std::min(kChunkPixels, whole - i);
    if (!finder.FindOrAddAll(bytes.subspan(static_cast<std::size_t>(i * 4), static_cast<std::size_t>(chunk * 4)),
                             kPaletteColours, indexes)) {
      return;
    }
  }
  // However many are missing, they are of two colours.
  const std::int64_t missing = std::clamp<std::int64_t>(pixels - whole, 0, kMissingPixels);
  const auto tail = MissingPixels(bytes, static_cast<std::size_t>(whole));
  finder.FindOrAddAll(ByteView(tail).first(static_cast<std::size_t>(missing * 4)), kPaletteColours, indexes);
}

}  // namespace

Int16 FindOrAddColour(std::uint32_t colour, std::vector<std::uint32_t>& palette, Int16& count) {
  const std::size_t known = std::min(count < 1 ? 0 : count.Index(), palette.size());
  const auto end = palette.begin() + static_cast<std::ptrdiff_t>(known);
  const auto found = std::find(palette.begin(), end, colour);
  if (found != end) {
    return count < kPaletteColours ? Int16(found - palette.begin()) : Int16(0);
  }
  return AddColour(colour, palette, count);
}

Int16 AddColour(std::uint32_t colour, std::vector<std::uint32_t>& palette, Int16& count) {
  if (count < 1) {
    At(palette, 0) = colour;
    count = 1;
    return 0;
  }
  Int16 result = 0;
  if (count < kPaletteColours) {
    At(palette, count.Int()) = colour;
    result = count;
  } else if (count < kPaletteOverflowColours) {
    if (palette.size() == kPaletteColours) {
      palette.resize(kPaletteOverflowColours);
    }
    At(palette, count.Int()) = colour;
  }
  ++count;
  return result;
}

bool CountBitmapColours(ByteView bmp, Int16& colours) {
  const BitmapHeader header = ReadBitmapHeader(bmp);
  if (header.biBitCount == 4 || header.biBitCount == 8) {
    return true;
  }
  if (header.biBitCount != 32) {
    return false;
  }
  ByteCursor source(bmp);
  source.Skip(header.bfOffBits);
  std::vector<std::uint32_t> palette(kPaletteColours);
  ColourFinder finder(palette, colours);
  CountColours(source.Take(source.Length()), PixelsOf(header), finder);
  return true;
}

bool CountBitmapColours(const std::filesystem::path& path, Int16& colours, bool quiet, Prompts& prompts) {
  const std::int16_t bits = ReadBitmapHeader(path).biBitCount;
  if (bits == 32) {
    return CountBitmapColours(ReadWholeFile(path), colours);
  }
  if (bits == 4 || bits == 8) {
    return true;
  }
  if (!quiet) {
    Tell(prompts, "The colour depth MUST be 4, 8 or 32 bit!", Icon::Exclamation);
  }
  return false;
}

bool ShouldUsePalette(Int16 colours, const BitmapHeader& header, Int16 impt32bitMode) {
  if (colours > kPaletteColours) {
    return false;
  }
  if (impt32bitMode == 1) {
    return PixelsOf(header) > (colours <= kFewColours ? kPixelsForFewColours : kPixelsForManyColours);
  }
  return impt32bitMode == 0;
}

bool ShouldUsePalette(Int16 colours, const std::filesystem::path& path, Int16 impt32bitMode) {
  const bool bySize = colours <= kPaletteColours && impt32bitMode == 1;
  return ShouldUsePalette(colours, bySize ? ReadBitmapHeader(path) : BitmapHeader{}, impt32bitMode);
}

}  // namespace kelvane
