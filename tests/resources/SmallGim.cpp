#include "resources/SmallGim.h"

#include "gim/ExpectedBitmap.h"
#include "support/GimBuilder.h"

namespace kelvane::test {

Bytes SmallGim(std::uint8_t tint) {
  const std::uint8_t red = static_cast<std::uint8_t>(1 + tint);
  return BuildIndexedGim(4, 2, 8, {0, 1, 1, 0, 1, 1, 0, 0}, {Rgba(red, 2, 3, 4), Rgba(5, 6, 7, 8)});
}

Bytes SmallGimBitmap(std::uint8_t tint) {
  Bytes bytes = HeaderBytes({4, 2, 8, 54 + 1024, 8, 256});
  const std::uint8_t red = static_cast<std::uint8_t>(1 + tint);
  Append(bytes, Bytes{3, 2, red, 4, 7, 6, 5, 8});
  bytes.resize(54 + 1024);
  Append(bytes, Bytes{1, 1, 0, 0, 0, 1, 1, 0});
  return bytes;
}

Bytes SmallGimBitmap32(std::uint8_t tint) {
  const std::uint8_t red = static_cast<std::uint8_t>(1 + tint);
  const Bytes first = {3, 2, red, 4};
  const Bytes second = {7, 6, 5, 8};
  Bytes bytes = HeaderBytes({4, 2, 32, 54, 32, 0xFFFFFFFF});
  for (const Bytes& pixel : {second, second, first, first, first, second, second, first}) {
    Append(bytes, pixel);
  }
  return bytes;
}

}  // namespace kelvane::test
