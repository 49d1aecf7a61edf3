#include "resources/SmallGim.h"

#include "support/GimBuilder.h"

namespace kelvane::test {

namespace {

void AppendLong(Bytes& bytes, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

Bytes Header(std::uint32_t offBits, std::uint32_t sizeImage, std::uint8_t bits, std::uint32_t colours) {
  Bytes bytes = {'B', 'M'};
  AppendLong(bytes, offBits + sizeImage);
  AppendLong(bytes, 0);
  AppendLong(bytes, offBits);
  AppendLong(bytes, 40);
  AppendLong(bytes, 4);  // width
  AppendLong(bytes, 2);  // height
  Append(bytes, Bytes{1, 0, bits, 0});
  AppendLong(bytes, 0);
  AppendLong(bytes, sizeImage);
  AppendLong(bytes, 0);
  AppendLong(bytes, 0);
  AppendLong(bytes, colours);
  AppendLong(bytes, 0);
  return bytes;
}

}  // namespace

Bytes SmallGim(std::uint8_t tint) {
  const std::uint8_t red = static_cast<std::uint8_t>(1 + tint);
  return BuildIndexedGim(4, 2, 8, {0, 1, 1, 0, 1, 1, 0, 0}, {Rgba(red, 2, 3, 4), Rgba(5, 6, 7, 8)});
}

Bytes SmallGimBitmap(std::uint8_t tint) {
  Bytes bytes = Header(54 + 1024, 8, 8, 256);
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
  Bytes bytes = Header(54, 32, 32, 0xFFFFFFFF);
  for (const Bytes& pixel : {second, second, first, first, first, second, second, first}) {
    Append(bytes, pixel);
  }
  return bytes;
}

}  // namespace kelvane::test
