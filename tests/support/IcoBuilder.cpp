#include "support/IcoBuilder.h"

namespace kelvane::test {

namespace {

std::size_t RowBytes(std::int32_t bitCount, std::int32_t width) {
  return static_cast<std::size_t>((bitCount * width + 31) / 32 * 4);
}

}  // namespace

Bytes BuildIcoBitmap(const IcoBitmap& bitmap) {
  Bytes image(40);
  WriteI32(image, 0, bitmap.headerBytes);
  WriteI32(image, 4, bitmap.width);
  WriteI32(image, 8, 2 * bitmap.height);
  WriteU16(image, 12, 1);
  WriteU16(image, 14, bitmap.bitCount);
  WriteI32(image, 16, bitmap.compression);
  WriteI32(image, 20, static_cast<std::int32_t>(bitmap.xorBits.size() + bitmap.andMask.size()));
  Append(image, bitmap.palette);
  Append(image, bitmap.xorBits);
  Append(image, bitmap.andMask);
  return image;
}

Bytes BuildIco(const IcoSpec& spec) {
  Bytes file(6 + 16 * spec.images.size());
  WriteU16(file, 0, spec.reserved);
  WriteU16(file, 2, spec.type);
  WriteU16(file, 4, spec.count.value_or(static_cast<std::uint16_t>(spec.images.size())));
  std::int64_t at = 6;
  for (const IcoImage& image : spec.images) {
    file[static_cast<std::size_t>(at)] = image.width;
    file[static_cast<std::size_t>(at) + 1] = image.height;
    WriteU16(file, at + 4, image.planes);
    WriteU16(file, at + 6, image.bitCount);
    WriteI32(file, at + 8, image.bytesInRes.value_or(static_cast<std::int32_t>(image.data.size())));
    WriteI32(file, at + 12, image.imageOffset.value_or(static_cast<std::int32_t>(file.size())));
    Append(file, image.data);
    at += 16;
  }
  return file;
}

IcoImage PlainIcoImage(std::int32_t side, std::uint16_t bitCount, std::uint8_t blue, std::uint8_t green,
                       std::uint8_t red, std::uint8_t alpha) {
  IcoBitmap bitmap{.width = side, .height = side, .bitCount = bitCount};
  const std::size_t rows = static_cast<std::size_t>(side);
  const std::size_t rowBytes = RowBytes(bitCount, side);
  if (bitCount <= 8) {
    bitmap.palette.resize(std::size_t{4} << bitCount);
    bitmap.palette[4] = blue;
    bitmap.palette[5] = green;
    bitmap.palette[6] = red;
    // Index 1 in every pixel of a byte.
    bitmap.xorBits.assign(rows * rowBytes, static_cast<std::uint8_t>(bitCount == 1 ? 0xFF : bitCount == 4 ? 0x11 : 1));
  } else {
    bitmap.xorBits.resize(rows * rowBytes);
    const std::size_t pixelBytes = bitCount / 8U;
    for (std::size_t y = 0; y < rows; ++y) {
      for (std::size_t x = 0; x < rows; ++x) {
        std::uint8_t* pixel = bitmap.xorBits.data() + y * rowBytes + x * pixelBytes;
        if (pixelBytes == 2) {
          WriteU16({pixel, 2}, 0, static_cast<std::uint16_t>((red >> 3) << 10 | (green >> 3) << 5 | blue >> 3));
          continue;
        }
        pixel[0] = blue;
        pixel[1] = green;
        pixel[2] = red;
        if (pixelBytes == 4) {
          pixel[3] = alpha;
        }
      }
    }
  }
  bitmap.andMask.resize(rows * RowBytes(1, side));
  const auto directorySize = static_cast<std::uint8_t>(side);  // 256 is told as 0
  return {.width = directorySize, .height = directorySize, .bitCount = bitCount, .data = BuildIcoBitmap(bitmap)};
}

}  // namespace kelvane::test
