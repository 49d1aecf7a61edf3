#include "gim/GimHeads.h"

#include <algorithm>
#include <array>

#include "gim/GimFormat.h"

namespace kelvane {

namespace {

std::int16_t FlagsOf(const GimHeads& heads) {
  return heads.usePalette ? gim::kFlagsIndexed : gim::kFlagsDirect;
}

std::int32_t PaletteBlockSize(const GimHeads& heads) {
  return heads.usePalette ? PaletteColours(heads.outBits) * 4 + gim::kDataBlockHeadSize : 0;
}

std::int32_t ImageBlockSize(const GimHeads& heads) {
  const double pixels = static_cast<double>(heads.paddedHeight.Int()) * heads.paddedWidth.Int();
  return AddInt32(RoundToInt32(pixels * heads.outBits.Int() / 8.0), gim::kDataBlockHeadSize);
}

void AppendBlockHead(Bytes& gim, std::int16_t id, std::int16_t flags, std::int32_t size) {
  std::array<std::uint8_t, gim::kBlockHeadSize> head{};
  WriteI16(head, gim::blockId, id);
  WriteI16(head, gim::blockFlags, flags);
  WriteI32(head, gim::blockSize, size);
  WriteI32(head, gim::blockNext, gim::kBlockHeadSize);
  WriteI32(head, gim::blockData, gim::kBlockHeadSize);
  Append(gim, head);
}

// What differs between palette and image blocks beside the fixed fields.
struct DataBlock {
  std::int16_t id;
  std::int16_t flags;
  std::int32_t size;
  std::int16_t pixelFormat;
  std::int16_t pixelOrder;
  std::int16_t width;
  std::int16_t height;
  std::int16_t bits;
};

void AppendDataBlockHead(Bytes& gim, const DataBlock& block) {
  std::array<std::uint8_t, gim::kDataBlockHeadSize> head{};
  for (const gim::FixedField& field : gim::kFixedFields) {
    const std::int16_t value = block.id == gim::kPaletteId ? field.inPalette : field.inImage;
    WriteI16(head, field.offset, value);  // all of them fit 16 bits; the upper half of a long stays 0
  }
  WriteI16(head, gim::blockId, block.id);
  WriteI16(head, gim::blockFlags, block.flags);
  WriteI32(head, gim::blockSize, block.size);
  WriteI32(head, gim::blockNext, block.size);
  WriteI16(head, gim::infoPixelFormat, block.pixelFormat);
  WriteI16(head, gim::infoPixelOrder, block.pixelOrder);
  WriteI16(head, gim::infoWidth, block.width);
  WriteI16(head, gim::infoHeight, block.height);
  WriteI16(head, gim::infoBitsPerPixel, block.bits);
  WriteI32(head, gim::infoPixelEnd, block.size - gim::kPixelEndLess);
  Append(gim, head);
}

// By the bitmap's depth and not by what is written: an indexed 32-bit bitmap is of format 5, with 4 bits too.
std::int16_t PixelFormatOf(const GimHeads& heads) {
  if (heads.outBits == 32) {
    return gim::kFormatDirect;
  }
  return heads.sourceBits == 4 ? gim::kFormatIndexed4 : gim::kFormatIndexed8;
}

}  // namespace

std::int32_t PaletteColours(Int16 bits) {
  return 1 << bits.Int();
}

void AppendFileHead(Bytes& gim, const GimHeads& heads) {
  const std::int32_t blocks = AddInt32(ImageBlockSize(heads), PaletteBlockSize(heads));
  const std::int32_t rootSize = AddInt32(blocks, gim::kFileHeadSize - gim::kSignatureSize) & gim::kRootSizeMask;
  std::array<std::uint8_t, gim::kSignatureSize> signature{};
  std::copy(gim::kSignature.begin(), gim::kSignature.end(), signature.begin());
  Append(gim, signature);
  AppendBlockHead(gim, gim::kRootId, FlagsOf(heads), rootSize);
  AppendBlockHead(gim, gim::kPictureId, FlagsOf(heads),
                  rootSize - (heads.usePalette ? gim::kPictureLess : gim::kPictureLessDirect));
}

void AppendPaletteHead(Bytes& gim, const GimHeads& heads) {
  AppendDataBlockHead(gim, {.id = gim::kPaletteId,
                            .flags = FlagsOf(heads),
                            .size = PaletteBlockSize(heads),
                            .pixelFormat = gim::kFormatDirect,
                            .pixelOrder = 0,
                            .width = static_cast<std::int16_t>(PaletteColours(heads.outBits)),
                            .height = 1,
                            .bits = 32});
}

void AppendImageHead(Bytes& gim, const GimHeads& heads) {
  AppendDataBlockHead(gim, {.id = gim::kImageId,
                            .flags = FlagsOf(heads),
                            .size = ImageBlockSize(heads),
                            .pixelFormat = PixelFormatOf(heads),
                            .pixelOrder = heads.pixelOrder.Value(),
                            .width = heads.width.Value(),
                            .height = heads.height.Value(),
                            .bits = heads.outBits.Value()});
}

}  // namespace kelvane
