#include "support/GimBuilder.h"

#include <algorithm>
#include <stdexcept>

namespace kelvane::test {

namespace {

constexpr int kHeadLength = 80;
constexpr int kTileRows = 8;

int RoundedUp(int value, int multiple) {
  return (value + multiple - 1) / multiple * multiple;
}

void PutU16(Bytes& bytes, std::size_t offset, std::uint32_t value) {
  bytes.at(offset) = static_cast<std::uint8_t>(value);
  bytes.at(offset + 1) = static_cast<std::uint8_t>(value >> 8);
}

void PutU32(Bytes& bytes, std::size_t offset, std::uint32_t value) {
  PutU16(bytes, offset, value);
  PutU16(bytes, offset + 2, value >> 16);
}

// What differs between the heads of palette and image blocks.
struct HeadFields {
  std::uint32_t blockId;
  std::uint32_t pixelFormat;
  std::uint32_t pixelOrder;
  int width;
  int height;
  int bits;
  int pitchAlign;
  std::uint32_t heightAlign;
  int pixelStart;
  std::uint32_t reserved56;
};

Bytes Block(const HeadFields& fields, const Bytes& data, const Bytes& behind) {
  const std::size_t dataAt = 32 + static_cast<std::size_t>(fields.pixelStart);
  const std::size_t length = dataAt + data.size() + behind.size();
  Bytes block(std::max<std::size_t>(kHeadLength, dataAt), 0);
  PutU16(block, 0, fields.blockId);
  PutU32(block, 4, static_cast<std::uint32_t>(length));
  PutU32(block, 8, static_cast<std::uint32_t>(length));
  PutU32(block, 12, 16);
  PutU32(block, 16, 48);
  PutU16(block, 20, fields.pixelFormat);
  PutU16(block, 22, fields.pixelOrder);
  PutU16(block, 24, static_cast<std::uint32_t>(fields.width));
  PutU16(block, 26, static_cast<std::uint32_t>(fields.height));
  PutU16(block, 28, static_cast<std::uint32_t>(fields.bits));
  PutU16(block, 30, static_cast<std::uint32_t>(fields.pitchAlign));
  PutU16(block, 32, fields.heightAlign);
  PutU16(block, 34, 2);
  PutU32(block, 40, static_cast<std::uint32_t>(fields.pixelStart));
  PutU32(block, 44, 64);
  PutU32(block, 48, static_cast<std::uint32_t>(length - 16));
  PutU16(block, 56, fields.reserved56);
  PutU16(block, 58, 1);
  PutU16(block, 60, 3);
  PutU16(block, 62, 1);
  PutU32(block, 64, 64);
  block.resize(std::max(block.size(), length));
  std::copy(data.begin(), data.end(), block.begin() + static_cast<std::ptrdiff_t>(dataAt));
  std::copy(behind.begin(), behind.end(), block.begin() + static_cast<std::ptrdiff_t>(dataAt + data.size()));
  block.resize(length);
  return block;
}

// Where pixel (x, y) begins in the data, counted in bits.
std::size_t BitOfPixel(const GimImageBlock& image, int paddedWidth, int x, int y) {
  const int rowBits = paddedWidth * image.bits;
  if (!image.tiled) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(rowBits) + static_cast<std::size_t>(x * image.bits);
  }
  const int tileRowBits = image.pitchAlign * 8;
  const int tile = y / kTileRows * (rowBits / tileRowBits) + x * image.bits / tileRowBits;
  const int inTile = y % kTileRows * tileRowBits + x * image.bits % tileRowBits;
  return static_cast<std::size_t>(tile) * static_cast<std::size_t>(tileRowBits * kTileRows) +
         static_cast<std::size_t>(inTile);
}

void PutPixel(Bytes& data, std::size_t bit, int bits, std::uint32_t value) {
  const std::size_t byte = bit / 8;
  switch (bits) {
    case 4:
      data.at(byte) = static_cast<std::uint8_t>(bit % 8 == 0 ? (data.at(byte) & 0xF0) | (value & 0x0F)
                                                             : (data.at(byte) & 0x0F) | (value & 0x0F) << 4);
      break;
    case 8:
      data.at(byte) = static_cast<std::uint8_t>(value);
      break;
    case 16:
      PutU16(data, byte, value);
      break;
    default:
      PutU32(data, byte, value);
      break;
  }
}

Bytes PixelData(const GimImageBlock& image) {
  const int paddedWidth = RoundedUp(image.width, image.pitchAlign * 8 / image.bits);
  const int paddedHeight = image.tiled ? RoundedUp(image.height, kTileRows) : image.height;
  Bytes data(static_cast<std::size_t>(paddedHeight) * static_cast<std::size_t>(paddedWidth * image.bits / 8));
  for (int y = 0; y < paddedHeight; ++y) {
    for (int x = 0; x < paddedWidth; ++x) {
      const bool inside = x < image.width && y < image.height;
      const std::size_t pixel =
          static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(x);
      PutPixel(data, BitOfPixel(image, paddedWidth, x, y), image.bits, inside ? image.pixels.at(pixel) : image.padding);
    }
  }
  return data;
}

std::uint32_t PixelFormatOf(int bits) {
  switch (bits) {
    case 4:
      return 4;
    case 8:
      return 5;
    case 16:
      return 1;
    default:
      return 3;
  }
}

}  // namespace

GimBuilder& GimBuilder::Image(const GimImageBlock& image) {
  const bool knownDepth = image.bits == 4 || image.bits == 8 || image.bits == 16 || image.bits == 32;
  if (!knownDepth || image.pitchAlign < 1 || image.pitchAlign * 8 % image.bits != 0 || image.width < 1 ||
      image.height < 1 || image.pixelStart < 0 ||
      image.pixels.size() != static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height)) {
    throw std::invalid_argument("GimImageBlock");
  }
  const HeadFields fields = {.blockId = 4,
                             .pixelFormat = PixelFormatOf(image.bits),
                             .pixelOrder = image.tiled ? 1U : 0U,
                             .width = image.width,
                             .height = image.height,
                             .bits = image.bits,
                             .pitchAlign = image.pitchAlign,
                             .heightAlign = 8,
                             .pixelStart = image.pixelStart,
                             .reserved56 = 1};
  heads_.push_back(blocks_.size());
  Append(blocks_, Block(fields, PixelData(image), image.behind));
  return *this;
}

GimBuilder& GimBuilder::Palette(const GimPaletteBlock& palette) {
  if (palette.pixelStart < 0) {
    throw std::invalid_argument("GimPaletteBlock");
  }
  const HeadFields fields = {.blockId = 5,
                             .pixelFormat = 3,
                             .pixelOrder = 0,
                             .width = static_cast<int>(palette.colours.size()),
                             .height = 1,
                             .bits = 32,
                             .pitchAlign = 16,
                             .heightAlign = 1,
                             .pixelStart = palette.pixelStart,
                             .reserved56 = 2};
  Bytes data(palette.colours.size() * 4);
  for (std::size_t i = 0; i < palette.colours.size(); ++i) {
    PutU32(data, i * 4, palette.colours[i]);
  }
  heads_.push_back(blocks_.size());
  Append(blocks_, Block(fields, data, palette.behind));
  hasPalette_ = true;
  return *this;
}

GimBuilder& GimBuilder::Other(std::uint16_t blockId, const Bytes& content) {
  const HeadFields fields = {.blockId = blockId,
                             .pixelFormat = 0,
                             .pixelOrder = 0,
                             .width = 0,
                             .height = 0,
                             .bits = 0,
                             .pitchAlign = 0,
                             .heightAlign = 0,
                             .pixelStart = 48,
                             .reserved56 = 0};
  heads_.push_back(blocks_.size());
  Append(blocks_, Block(fields, content, {}));
  return *this;
}

GimBuilder& GimBuilder::Raw(const Bytes& bytes) {
  Append(blocks_, bytes);
  return *this;
}

Bytes GimBuilder::Build() const {
  const std::uint32_t flags = hasPalette_ ? 0 : 0x10;
  const std::uint32_t rootSize = static_cast<std::uint32_t>(32 + blocks_.size()) & ~std::uint32_t{15};
  Bytes file = {'M', 'I', 'G', '.', '0', '0', '.', '1', 'P', 'S', 'P', 0, 0, 0, 0, 0};
  file.resize(48);
  PutU16(file, 16, 2);
  PutU16(file, 18, flags);
  PutU32(file, 20, rootSize);
  PutU32(file, 24, 16);
  PutU32(file, 28, 16);
  PutU16(file, 32, 3);
  PutU16(file, 34, flags);
  PutU32(file, 36, hasPalette_ ? rootSize - 16 : rootSize - 80);
  PutU32(file, 40, 16);
  PutU32(file, 44, 16);
  Append(file, blocks_);
  for (const std::size_t head : heads_) {
    PutU16(file, 48 + head + 2, flags);
  }
  return file;
}

Bytes BuildRgbaGim(int width, int height, const std::vector<std::uint32_t>& pixels, bool tiled) {
  return GimBuilder().Image({.width = width, .height = height, .pixels = pixels, .tiled = tiled}).Build();
}

Bytes BuildIndexedGim(int width, int height, int bits, const std::vector<std::uint32_t>& indexes,
                      const std::vector<std::uint32_t>& colours, bool tiled) {
  return GimBuilder()
      .Palette({.colours = colours})
      .Image({.width = width, .height = height, .bits = bits, .pixels = indexes, .tiled = tiled})
      .Build();
}

}  // namespace kelvane::test
