#include "Seeds.h"
#include "support/IcoBuilder.h"
#include "support/PngBuilder.h"

namespace kelvane::fuzz {

namespace {

using namespace test;

IcoImage PngEntry() {
  PngImage png;
  png.width = 4;
  png.height = 4;
  png.samples.assign(64, 200);
  return {.width = 4, .height = 4, .bitCount = 32, .data = BuildPng(png)};
}

// A file, asked for with that size.
Bytes Asked(std::uint8_t size, const IcoSpec& spec) {
  Bytes input = {size, size};
  Append(input, BuildIco(spec));
  return input;
}

}  // namespace

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  std::vector<IcoImage> all;
  for (const int bitCount : {1, 4, 8, 16, 24, 32}) {
    const IcoImage image = PlainIcoImage(8, static_cast<std::uint16_t>(bitCount), 10, 20, 30, 128);
    seeds.push_back(Asked(0, {.images = {image}}));
    seeds.push_back(Asked(0, {.type = 2, .images = {image}}));
    all.push_back(image);
  }
  seeds.push_back(Asked(0, {.images = {PngEntry()}}));
  all.push_back(PngEntry());
  seeds.push_back(Asked(4, {.images = all}));
  seeds.push_back(Asked(8, {.images = all}));

  IcoImage odd = PlainIcoImage(8, 32, 1, 2, 3);
  odd.imageOffset = 1000000;
  seeds.push_back(Asked(0, {.images = {odd}}));
  odd.imageOffset = -1;
  seeds.push_back(Asked(0, {.images = {odd}}));
  odd = PlainIcoImage(8, 32, 1, 2, 3);
  odd.bytesInRes = 0;
  seeds.push_back(Asked(0, {.images = {odd}}));
  odd = PlainIcoImage(8, 8, 1, 2, 3);
  odd.width = 3;
  seeds.push_back(Asked(0, {.images = {odd}}));
  odd = PlainIcoImage(8, 8, 1, 2, 3);
  odd.width = odd.height = 0;
  seeds.push_back(Asked(0, {.images = {odd}}));
  seeds.push_back(Asked(0, {.images = {}, .count = 9}));
  return seeds;
}

}  // namespace kelvane::fuzz
