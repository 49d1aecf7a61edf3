#include "samples/ImageFiles.h"

#include <stdexcept>
#include <zlib.h>

#include "samples/ByteWriter.h"
#include "samples/Quantise.h"

namespace kelvane::sample {

namespace {

std::uint32_t U(int value) {
  return static_cast<std::uint32_t>(value);
}
std::uint32_t SizeOf(const Bytes& bytes) {
  return static_cast<std::uint32_t>(bytes.size());
}

std::size_t PixelAt(int x, int y, int width) {
  return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4;
}

constexpr std::uint32_t kBmpHeader = 54;

// File header and information header in front of `palette` and bottom-up `rows`.
Bytes BmpFile(int width, int height, std::uint32_t bits, const Bytes& palette, const Bytes& rows) {
  Bytes bytes;
  AddText(bytes, "BM");
  AddLittle(bytes, kBmpHeader + SizeOf(palette) + SizeOf(rows), 4);
  AddLittle(bytes, 0, 4);
  AddLittle(bytes, kBmpHeader + SizeOf(palette), 4);
  AddLittle(bytes, 40, 4);
  AddLittle(bytes, U(width), 4);
  AddLittle(bytes, U(height), 4);
  AddLittle(bytes, 1, 2);
  AddLittle(bytes, bits, 2);
  AddLittle(bytes, 0, 4);
  AddLittle(bytes, SizeOf(rows), 4);
  AddLittle(bytes, 2835, 4);  // 72 dots an inch
  AddLittle(bytes, 2835, 4);
  AddLittle(bytes, SizeOf(palette) / 4, 4);
  AddLittle(bytes, 0, 4);
  Append(bytes, palette);
  Append(bytes, rows);
  return bytes;
}

void AddZerosUpTo4(Bytes& bytes) {
  while (bytes.size() % 4 != 0) {
    bytes.push_back(0);
  }
}

// Blue, green, red and, with 4 bytes a pixel, alpha.
Bytes BmpColourRows(ByteView rgba, int width, int height, bool alpha) {
  Bytes rows;
  for (int y = height - 1; y >= 0; --y) {
    for (int x = 0; x < width; ++x) {
      const std::size_t at = PixelAt(x, y, width);
      rows.insert(rows.end(), {rgba[at + 2], rgba[at + 1], rgba[at]});
      if (alpha) {
        rows.push_back(rgba[at + 3]);
      }
    }
    AddZerosUpTo4(rows);
  }
  return rows;
}

void AddPngChunk(Bytes& bytes, std::string_view name, const Bytes& content) {
  AddBig(bytes, SizeOf(content), 4);
  const std::size_t start = bytes.size();
  AddText(bytes, name);
  Append(bytes, content);
  const auto length = static_cast<uInt>(bytes.size() - start);
  AddBig(bytes, static_cast<std::uint32_t>(crc32(crc32(0, nullptr, 0), bytes.data() + start, length)), 4);
}

constexpr std::uint8_t kPngGrey = 0;
constexpr std::uint8_t kPngPalette = 3;
constexpr std::uint8_t kPngRgba = 6;

Bytes PngHeader(int width, int height, std::uint8_t colourType) {
  Bytes bytes = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  Bytes header;
  AddBig(header, U(width), 4);
  AddBig(header, U(height), 4);
  header.insert(header.end(), {8, colourType, 0, 0, 0});
  AddPngChunk(bytes, "IHDR", header);
  return bytes;
}

// Adds the pixels, each row with filter 0 or, with `sub`, as differences to the pixel on its left, and the end.
void FinishPng(Bytes& bytes, ByteView pixels, int width, std::size_t pixelBytes, bool sub) {
  const std::size_t rowBytes = static_cast<std::size_t>(width) * pixelBytes;
  Bytes rows;
  for (std::size_t row = 0; row < pixels.size(); row += rowBytes) {
    rows.push_back(sub ? 1 : 0);
    for (std::size_t i = 0; i < rowBytes; ++i) {
      const int left = sub && i >= pixelBytes ? pixels[row + i - pixelBytes] : 0;
      rows.push_back(static_cast<std::uint8_t>(pixels[row + i] - left));
    }
  }
  Bytes packed(compressBound(static_cast<uLong>(rows.size())));
  auto length = static_cast<uLongf>(packed.size());
  if (compress2(packed.data(), &length, rows.data(), static_cast<uLong>(rows.size()), Z_BEST_COMPRESSION) != Z_OK) {
    throw std::runtime_error("compress2 failed");
  }
  packed.resize(length);
  AddPngChunk(bytes, "IDAT", packed);
  AddPngChunk(bytes, "IEND", {});
}

// Gathers GIF's codes, the lowest bit first, in blocks of up to 255 bytes.
class GifCodes {
 public:
  void Add(std::uint32_t code, int bits) {
    pending_ |= code << count_;
    count_ += bits;
    for (; count_ >= 8; count_ -= 8, pending_ >>= 8) {
      bytes_.push_back(static_cast<std::uint8_t>(pending_));
    }
  }

  [[nodiscard]] Bytes Blocks() {
    if (count_ > 0) {
      Add(0, 8 - count_);
    }
    Bytes blocks;
    for (std::size_t at = 0; at < bytes_.size(); at += 255) {
      const std::size_t length = std::min<std::size_t>(255, bytes_.size() - at);
      blocks.push_back(static_cast<std::uint8_t>(length));
      Append(blocks, ByteView(bytes_).subspan(at, length));
    }
    blocks.push_back(0);
    return blocks;
  }

 private:
  Bytes bytes_;
  std::uint32_t pending_ = 0;
  int count_ = 0;
};

// Literals of 9 bits. The decoder's table would need 10 from its 512th code on; a clear comes well before.
Bytes GifLiterals(const std::vector<std::uint8_t>& indexes) {
  constexpr std::uint32_t kClear = 256;
  constexpr std::uint32_t kEnd = 257;
  constexpr int kBits = 9;
  constexpr std::size_t kBetweenClears = 250;
  GifCodes codes;
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    if (i % kBetweenClears == 0) {
      codes.Add(kClear, kBits);
    }
    codes.Add(indexes[i], kBits);
  }
  codes.Add(kEnd, kBits);
  return codes.Blocks();
}

constexpr std::uint8_t kGifTransparent = 255;

// Indexes and colours with all transparent pixels under the last index.
IndexedPixels GifPixels(ByteView rgba, int width) {
  Bytes opaque(rgba.begin(), rgba.end());
  for (std::size_t at = 0; at < opaque.size(); at += 4) {
    opaque[at + 3] = 0xFF;
  }
  IndexedPixels pixels = Quantise(opaque, width, kGifTransparent);
  pixels.colours.resize(256);
  for (std::size_t pixel = 0; pixel < pixels.indexes.size(); ++pixel) {
    if (rgba[pixel * 4 + 3] < 128) {
      pixels.indexes[pixel] = kGifTransparent;
    }
  }
  return pixels;
}

void AddTiffField(Bytes& bytes, std::uint32_t tag, std::uint32_t type, std::uint32_t count, std::uint32_t value) {
  AddLittle(bytes, tag, 2);
  AddLittle(bytes, type, 2);
  AddLittle(bytes, count, 4);
  AddLittle(bytes, value, 4);
}

}  // namespace

Bytes Bmp24(ByteView rgba, int width, int height) {
  return BmpFile(width, height, 24, {}, BmpColourRows(rgba, width, height, false));
}

Bytes Bmp32(ByteView rgba, int width, int height) {
  return BmpFile(width, height, 32, {}, BmpColourRows(rgba, width, height, true));
}

Bytes Bmp8(ByteView rgba, int width, int height) {
  const IndexedPixels pixels = Quantise(rgba, width, 256);
  Bytes palette;
  for (const Rgba8& colour : pixels.colours) {
    palette.insert(palette.end(), {colour[2], colour[1], colour[0], 0});
  }
  palette.resize(std::size_t{256} * 4);
  Bytes rows;
  for (int y = height - 1; y >= 0; --y) {
    const std::size_t start = PixelAt(0, y, width) / 4;
    Append(rows, ByteView(pixels.indexes).subspan(start, static_cast<std::size_t>(width)));
    AddZerosUpTo4(rows);
  }
  return BmpFile(width, height, 8, palette, rows);
}

Bytes PngRgba(ByteView rgba, int width, int height) {
  Bytes bytes = PngHeader(width, height, kPngRgba);
  FinishPng(bytes, rgba, width, 4, true);
  return bytes;
}

Bytes PngIndexed(ByteView rgba, int width, int height) {
  const IndexedPixels pixels = Quantise(rgba, width, 256);
  Bytes colours;
  Bytes alphas;
  for (const Rgba8& colour : pixels.colours) {
    colours.insert(colours.end(), {colour[0], colour[1], colour[2]});
    alphas.push_back(colour[3]);
  }
  Bytes bytes = PngHeader(width, height, kPngPalette);
  AddPngChunk(bytes, "PLTE", colours);
  AddPngChunk(bytes, "tRNS", alphas);
  FinishPng(bytes, pixels.indexes, width, 1, false);
  return bytes;
}

Bytes PngGrey(ByteView rgba, int width, int height) {
  Bytes grey;
  for (std::size_t at = 0; at < rgba.size(); at += 4) {
    grey.push_back(static_cast<std::uint8_t>((299 * rgba[at] + 587 * rgba[at + 1] + 114 * rgba[at + 2]) / 1000));
  }
  Bytes bytes = PngHeader(width, height, kPngGrey);
  FinishPng(bytes, grey, width, 1, true);
  return bytes;
}

Bytes Gif(ByteView rgba, int width, int height) {
  const IndexedPixels pixels = GifPixels(rgba, width);
  Bytes bytes;
  AddText(bytes, "GIF89a");
  AddLittle(bytes, U(width), 2);
  AddLittle(bytes, U(height), 2);
  bytes.insert(bytes.end(), {0xF7, 0, 0});  // a table of 256 colours
  for (const Rgba8& colour : pixels.colours) {
    bytes.insert(bytes.end(), {colour[0], colour[1], colour[2]});
  }
  bytes.insert(bytes.end(), {0x21, 0xF9, 4, 1, 0, 0, kGifTransparent, 0});
  bytes.push_back(0x2C);
  AddLittle(bytes, 0, 4);
  AddLittle(bytes, U(width), 2);
  AddLittle(bytes, U(height), 2);
  bytes.insert(bytes.end(), {0, 8});  // no table of its own; codes begin at 8 bits and 1
  Append(bytes, GifLiterals(pixels.indexes));
  bytes.push_back(0x3B);
  return bytes;
}

Bytes Tiff(ByteView rgba, int width, int height) {
  constexpr std::uint32_t kFields = 9;
  constexpr std::uint32_t kDirectory = 8;
  constexpr std::uint32_t kBitsPerSample = kDirectory + 2 + kFields * 12 + 4;
  constexpr std::uint32_t kStrip = kBitsPerSample + 6;
  constexpr std::uint32_t kShort = 3;
  constexpr std::uint32_t kLong = 4;
  Bytes bytes = {'I', 'I', 42, 0};
  AddLittle(bytes, kDirectory, 4);
  AddLittle(bytes, kFields, 2);
  AddTiffField(bytes, 256, kLong, 1, U(width));
  AddTiffField(bytes, 257, kLong, 1, U(height));
  AddTiffField(bytes, 258, kShort, 3, kBitsPerSample);
  AddTiffField(bytes, 259, kShort, 1, 1);  // no compression
  AddTiffField(bytes, 262, kShort, 1, 2);  // red, green, blue
  AddTiffField(bytes, 273, kLong, 1, kStrip);
  AddTiffField(bytes, 277, kShort, 1, 3);  // samples a pixel
  AddTiffField(bytes, 278, kLong, 1, U(height));
  AddTiffField(bytes, 279, kLong, 1, U(width) * U(height) * 3);
  AddLittle(bytes, 0, 4);
  for (int sample = 0; sample < 3; ++sample) {
    AddLittle(bytes, 8, 2);
  }
  for (std::size_t at = 0; at < rgba.size(); at += 4) {
    bytes.insert(bytes.end(), {rgba[at], rgba[at + 1], rgba[at + 2]});
  }
  return bytes;
}

}  // namespace kelvane::sample
