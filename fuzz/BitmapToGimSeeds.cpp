#include "Seeds.h"
#include "support/PlainBmp.h"

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

Bytes WithOptions(std::uint8_t options, const Bytes& bmp) {
  Bytes seed = {options};
  Append(seed, bmp);
  return seed;
}

}  // namespace

std::vector<Bytes> Seeds() {
  const Values palette = Counted(256, 256);
  const PlainBmp fourBits = {.width = 9,
                             .height = 3,
                             .bits = 4,
                             .palette = Counted(16, 16),
                             .rows = {{0x12, 0x34, 0x56, 0x78, 0x90}, {1, 2, 3, 4, 5}, {6, 7, 8, 9, 10}}};
  const std::vector<Bytes> bitmaps = {
      BuildBmp(fourBits),
      BuildBmp8(19, 9, Counted(171, 171), palette),
      BuildBmp32(19, 9, Counted(171, 171)),
      BuildBmp32(19, 9, Counted(171, 10)),
      BuildBmp32(20, 15, Counted(300, 255)),
      BuildBmp32(20, 15, Counted(300, 256)),
      BuildBmp32(20, 15, Counted(300, 300)),
      BuildBmp({.width = 2, .height = 1, .bits = 24, .rows = {{1, 2, 3, 4, 5, 6}}}),
      BuildBmp({.width = 2, .height = -1, .rows = {Bytes(8)}}),
  };
  std::vector<Bytes> seeds;
  for (const Bytes& bmp : bitmaps) {
    for (const std::uint8_t options : {std::uint8_t{0}, std::uint8_t{4}, std::uint8_t{5}, std::uint8_t{6}}) {
      seeds.push_back(WithOptions(options, bmp));
    }
  }
  return seeds;
}

}  // namespace kelvane::fuzz
