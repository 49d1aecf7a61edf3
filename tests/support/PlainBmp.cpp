#include "support/PlainBmp.h"

#include <stdexcept>

namespace kelvane::test {

namespace {

void AppendLong(Bytes& bytes, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

void AppendWord(Bytes& bytes, std::uint32_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

void RequirePixels(int width, int height, std::size_t count) {
  if (width < 0 || height < 0 || count != static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
    throw std::invalid_argument("pixels of a bitmap");
  }
}

}  // namespace

Bytes BuildBmp(const PlainBmp& bmp) {
  Bytes pixels;
  for (auto row = bmp.rows.rbegin(); row != bmp.rows.rend(); ++row) {
    Append(pixels, *row);
    pixels.resize((pixels.size() + 3) / 4 * 4);
  }
  const std::size_t offBits = 54 + bmp.palette.size() * 4 + bmp.gap.size();
  Bytes file = {'B', 'M'};
  AppendLong(file, static_cast<std::uint32_t>(offBits + pixels.size()));
  AppendLong(file, 0);
  AppendLong(file, static_cast<std::uint32_t>(offBits));
  AppendLong(file, 40);
  AppendLong(file, static_cast<std::uint32_t>(bmp.width));
  AppendLong(file, static_cast<std::uint32_t>(bmp.height));
  AppendWord(file, 1);
  AppendWord(file, static_cast<std::uint32_t>(bmp.bits));
  AppendLong(file, 0);
  AppendLong(file, static_cast<std::uint32_t>(pixels.size()));
  AppendLong(file, 0);
  AppendLong(file, 0);
  AppendLong(file, static_cast<std::uint32_t>(bmp.palette.size()));
  AppendLong(file, 0);
  for (const std::uint32_t colour : bmp.palette) {
    AppendLong(file, colour);
  }
  Append(file, bmp.gap);
  Append(file, pixels);
  return file;
}

Bytes BuildBmp32(int width, int height, const std::vector<std::uint32_t>& pixels) {
  RequirePixels(width, height, pixels.size());
  PlainBmp bmp = {.width = width, .height = height};
  std::size_t next = 0;
  for (int y = 0; y < height; ++y) {
    Bytes row;
    for (int x = 0; x < width; ++x) {
      AppendLong(row, pixels[next++]);
    }
    bmp.rows.push_back(row);
  }
  return BuildBmp(bmp);
}

Bytes BuildBmp8(int width, int height, const std::vector<std::uint32_t>& indexes,
                const std::vector<std::uint32_t>& palette) {
  RequirePixels(width, height, indexes.size());
  PlainBmp bmp = {.width = width, .height = height, .bits = 8, .palette = palette};
  std::size_t next = 0;
  for (int y = 0; y < height; ++y) {
    Bytes row;
    for (int x = 0; x < width; ++x) {
      row.push_back(static_cast<std::uint8_t>(indexes[next++]));
    }
    bmp.rows.push_back(row);
  }
  return BuildBmp(bmp);
}

}  // namespace kelvane::test
