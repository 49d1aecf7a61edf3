// GIM to bitmap and back, of a screen of 480 x 272 pixels, beside copying the bytes that go in and those that come out.
#include <random>

#include "Figures.h"
#include "common/Files.h"
#include "gim/BitmapToGim.h"
#include "gim/GimToBitmap.h"
#include "gim/Palette.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"

namespace kelvane::bench {

namespace {

using Values = std::vector<std::uint32_t>;

constexpr int kWidth = 480;
constexpr int kHeight = 272;
constexpr double kPlainAim = 3;
constexpr double kIndexedAim = 6;

// Pixels without any order, which are the hardest to look up.
Values RandomPixels(std::uint32_t limit) {
  std::mt19937 random(1);
  Values values(static_cast<std::size_t>(kWidth) * kHeight);
  for (std::uint32_t& value : values) {
    value = limit == 0 ? static_cast<std::uint32_t>(random()) : static_cast<std::uint32_t>(random()) % limit;
  }
  return values;
}

// `count` colours anywhere in the colour space.
Values RandomColours(std::size_t count) {
  std::mt19937 random(2);
  Values colours(count);
  for (std::uint32_t& colour : colours) {
    colour = static_cast<std::uint32_t>(random());
  }
  return colours;
}

Bytes GimOf(int bits) {
  if (bits == 32) {
    return test::BuildRgbaGim(kWidth, kHeight, RandomPixels(0));
  }
  const std::uint32_t colours = bits == 4 ? 16 : 256;
  return test::BuildIndexedGim(kWidth, kHeight, bits, RandomPixels(colours), RandomColours(colours));
}

// A 32-bit bitmap of `colours` colours in any order.
Bytes BitmapOfColours(std::uint32_t colours) {
  const Values palette = RandomColours(colours);
  Values pixels = RandomPixels(colours);
  for (std::uint32_t& pixel : pixels) {
    pixel = palette[pixel];
  }
  return test::BuildBmp32(kWidth, kHeight, pixels);
}

void Copy(const Bytes& in, const Bytes& out) {
  const Bytes first(in);
  Use(first.data());
  const Bytes second(out);
  Use(second.data());
}

Figure ToBitmap(int bits, bool force32) {
  const Bytes gim = GimOf(bits);
  const Bytes bitmap = GimToBitmap(gim, force32).written.value_or(Bytes{});
  return {.name = "GimToBitmap, " + std::to_string(bits) + " bits, " + (force32 ? "forced to 32" : "depth kept"),
          .ours = [=] { Use(GimToBitmap(gim, force32).written->data()); },
          .beside = [=] { Copy(gim, bitmap); },
          .aim = kPlainAim};
}

Figure ToGim(const std::string& what, const Bytes& bitmap, bool convert32, double aim) {
  const Bytes gim = BitmapToGim(bitmap, convert32, 1, false).value_or(Bytes{});
  return {.name = "BitmapToGim, " + what,
          .ours = [=] { Use(BitmapToGim(bitmap, convert32, 1, false).value_or(Bytes{}).data()); },
          .beside = [=] { Copy(bitmap, gim); },
          .aim = aim};
}

Figure Count(std::uint32_t colours) {
  const Bytes bitmap = BitmapOfColours(colours);
  return {.name = "CountBitmapColours, " + std::to_string(colours) + " colours, beside copying in",
          .ours =
              [=] {
                Int16 count = 0;
                CountBitmapColours(bitmap, count);
                Use(&count);
              },
          .beside = [=] { Copy(bitmap, {}); }};
}

}  // namespace

}  // namespace kelvane::bench

int main(int argc, char** argv) {
  using namespace kelvane::bench;
  std::vector<Figure> figures;
  for (const int bits : {4, 8, 32}) {
    figures.push_back(ToBitmap(bits, false));
    figures.push_back(ToBitmap(bits, true));
  }
  const kelvane::Bytes bitmap8 = kelvane::test::BuildBmp8(kWidth, kHeight, RandomPixels(256), RandomColours(256));
  figures.push_back(ToGim("8 bits", bitmap8, false, kPlainAim));
  figures.push_back(ToGim("32 bits", BitmapOfColours(256), false, kPlainAim));
  figures.push_back(ToGim("indexed, 255 colours", BitmapOfColours(255), true, kIndexedAim));
  // The 256th colour ends it: nothing comes out, here and beside.
  figures.push_back(ToGim("indexed, 256 colours (refused)", BitmapOfColours(256), true, kIndexedAim));
  figures.push_back(Count(256));
  return RunFigures(argc, argv, figures);
}
