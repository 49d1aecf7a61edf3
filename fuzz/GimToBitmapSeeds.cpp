#include "Seeds.h"
#include "support/GimBuilder.h"

namespace kelvane::fuzz {

namespace {

using namespace test;
using Values = std::vector<std::uint32_t>;

Values Counted(std::size_t count, std::uint32_t limit) {
  Values values(count);
  for (std::size_t i = 0; i < count; ++i) {
    values[i] = static_cast<std::uint32_t>(i) % limit;
  }
  return values;
}

GimImageBlock ImageOf(int bits, bool tiled) {
  return {.width = 19, .height = 9, .bits = bits, .pixels = Counted(171, bits == 4 ? 16 : 171), .tiled = tiled};
}

}  // namespace

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  for (const bool tiled : {false, true}) {
    for (const int bits : {4, 8, 16, 32}) {
      seeds.push_back(GimBuilder().Image(ImageOf(bits, tiled)).Build());
    }
    for (const int bits : {4, 8}) {
      const GimPaletteBlock palette = {.colours = Counted(bits == 4 ? 16 : 256, 256)};
      seeds.push_back(GimBuilder().Palette(palette).Image(ImageOf(bits, tiled)).Build());
      seeds.push_back(GimBuilder().Image(ImageOf(bits, tiled)).Palette(palette).Build());
    }
  }
  GimImageBlock moved = ImageOf(8, true);
  moved.pixelStart = 64;
  moved.behind = Bytes(16);
  moved.pitchAlign = 4;
  seeds.push_back(GimBuilder().Palette({.colours = {1, 2, 3}, .pixelStart = 40, .behind = {1}}).Image(moved).Build());
  seeds.push_back(GimBuilder().Other(0xFF).Image(ImageOf(32, false)).Build());
  seeds.push_back(GimBuilder().Image(ImageOf(32, false)).Raw({5, 0}).Build());
  seeds.push_back(GimBuilder().Build());
  Bytes cut = GimBuilder().Image(ImageOf(32, true)).Build();
  cut.resize(cut.size() / 2);
  seeds.push_back(cut);
  return seeds;
}

}  // namespace kelvane::fuzz
