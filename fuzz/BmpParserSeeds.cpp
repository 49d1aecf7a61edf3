#include "Seeds.h"
#include "support/BmpBuilder.h"

namespace kelvane::fuzz {

std::vector<Bytes> Seeds() {
  using test::BuildBmp;
  const Bytes opaque = {1, 2, 3, 255, 4, 5, 6, 255};
  const Bytes soft = {200, 10, 10, 128, 0, 0, 0, 0};
  const Bytes dark = {1, 0, 0, 0, 0, 0, 0, 0};
  std::vector<Bytes> seeds;
  for (const Bytes& bits : {opaque, soft, dark}) {
    seeds.push_back(BuildBmp({.width = 2, .bits = bits}));
    seeds.push_back(BuildBmp({.width = 1, .height = -2, .bits = bits}));
  }
  seeds.push_back(BuildBmp({.width = 2, .bitCount = 24, .bits = opaque}));
  seeds.push_back(BuildBmp({.width = 2, .bitCount = 8, .palette = Bytes(1024), .bits = {1, 0, 0, 0}}));
  seeds.push_back(BuildBmp({.width = 2, .compression = 3, .palette = Bytes(12, 1), .bits = opaque}));
  seeds.push_back(BuildBmp({.width = 2, .bits = {1, 2, 3}}));
  seeds.push_back(BuildBmp({.width = 0, .bits = opaque}));
  seeds.push_back(BuildBmp({.width = 60000, .height = 60000, .bits = opaque}));
  seeds.push_back(BuildBmp({.width = 2, .bits = opaque, .bitsOffset = -8}));
  // What the loader is to make a picture of: a type, a width and a height.
  for (const std::uint8_t type : {std::uint8_t{2}, std::uint8_t{3}, std::uint8_t{4}, std::uint8_t{5}}) {
    seeds.push_back({type, 2, 2, 0, 1, 2, 3, 255, 4, 5, 6, 255});
  }
  return seeds;
}

}  // namespace kelvane::fuzz
