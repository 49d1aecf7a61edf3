#include "Seeds.h"
#include "support/BmpBuilder.h"
#include "support/GifBuilder.h"
#include "support/IcoBuilder.h"
#include "support/PngBuilder.h"

namespace kelvane::fuzz {

std::vector<Bytes> Seeds() {
  using namespace test;
  const Bytes bmp = BuildBmp({.width = 2, .bits = {1, 2, 3, 255, 200, 5, 6, 100}});
  const Bytes icon = BuildIco({.images = {PlainIcoImage(8, 8, 1, 2, 3), PlainIcoImage(8, 32, 1, 2, 3)}});
  const Bytes gif = Join({GifHeader(2, 2, std::vector<GifColour>(4)), GifControl(0),
                          GifImage({.width = 2, .height = 2, .lzw = GifLzwEncode(2, {0, 1, 2, 3})})});
  PngImage image;
  image.width = 4;
  image.height = 4;
  image.samples.assign(64, 200);
  const Bytes png = BuildPng(image);
  std::vector<Bytes> seeds = {bmp, icon, gif, png};
  for (const Bytes& whole : {bmp, icon, gif, png}) {
    seeds.emplace_back(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2));
  }
  IcoImage broken = PlainIcoImage(8, 32, 1, 2, 3);
  WriteU16(broken.data, 14, 7);
  seeds.push_back(BuildIco({.images = {broken}}));
  return seeds;
}

}  // namespace kelvane::fuzz
