#include "gim/Palette.h"

#include <algorithm>
#include <cstring>

#include "common/Files.h"
#include "gim/ByteCursor.h"

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

// The pixel that `bytes` begin with; what is missing is zero.
std::uint32_t PixelAt(ByteView bytes) {
  std::uint32_t pixel = 0;
  std::memcpy(&pixel, bytes.data(), std::min<std::size_t>(bytes.size(), 4));
  return pixel;
}

// Calls `visit` for the pixels in their order, a run of like ones once, until it answers false. Behind the end of
// `bytes` all pixels are 0, however many are wanted.
template <class Visit>
void VisitColours(ByteView bytes, std::int64_t pixels, Visit&& visit) {
  if (pixels < 1) {
    return;
  }
  const std::int64_t there = std::min(pixels, static_cast<std::int64_t>((bytes.size() + 3) / 4));
  std::uint32_t last = 0;
  for (std::int64_t i = 0; i < there; ++i) {
    const std::uint32_t pixel = PixelAt(bytes.subspan(static_cast<std::size_t>(i) * 4));
    if ((i == 0 || pixel != last) && !visit(pixel)) {
      return;
    }
    last = pixel;
  }
  if (there < pixels) {
    visit(0);
  }
}

}  // namespace

Int16 FindOrAddColour(std::uint32_t colour, std::vector<std::uint32_t>& palette, Int16& count) {
  if (count < 1) {
    At(palette, 0) = colour;
    count = 1;
    return 0;
  }
  const auto end = palette.begin() + static_cast<std::ptrdiff_t>(std::min(count.Index(), palette.size()));
  const auto found = std::find(palette.begin(), end, colour);
  if (found != end) {
    return count < kPaletteColours ? Int16(found - palette.begin()) : Int16(0);
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

ColourFinder::ColourFinder(std::vector<std::uint32_t>& palette, Int16& count) : palette_(palette), count_(count) {
  const std::int32_t known = std::min<std::int32_t>({count.Int(), kPaletteColours, static_cast<int>(palette.size())});
  for (std::int32_t i = 0; i < known; ++i) {
    Remember(palette[static_cast<std::size_t>(i)], i);
  }
}

void ColourFinder::Remember(std::uint32_t colour, std::int32_t index) {
  Slot& slot = slots_[SlotOf(colour)];
  if (slot.index < 0) {  // of like entries the first counts
    slot = {.colour = colour, .index = index};
  }
}

Int16 ColourFinder::Add(std::uint32_t colour) {
  const Int16 index = FindOrAddColour(colour, palette_, count_);
  if (count_ <= kPaletteColours) {
    Remember(colour, index.Int());
  }
  return index;
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
  const ByteView pixels = source.Take(source.Length());
  VisitColours(pixels, PixelsOf(header), [&](std::uint32_t pixel) {
    finder.FindOrAdd(pixel);
    return colours <= kPaletteColours;
  });
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
