#include "gim/GimReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "gim/ByteCursor.h"
#include "gim/GimFormat.h"
#include "gim/PixelSwap.h"

namespace kelvane {

namespace {

using BlockHead = std::array<std::uint8_t, gim::kDataBlockHeadSize>;

// From behind a block's data of `dataBytes` to the block's end, by the block's own size.
void SkipRestOfBlock(ByteCursor& source, const BlockHead& head, double dataBytes) {
  const double left = static_cast<double>(ReadI32(head, gim::blockSize)) - ReadI32(head, gim::infoPixelStart) -
                      gim::kPixelStartBase - dataBytes;
  source.Skip(RoundToInt32(left));
}

// Answers false where the colours haven't 32 bits.
bool ReadPaletteBlock(ByteCursor& source, const BlockHead& head, GimPicture& picture) {
  picture.hasPalette = true;
  if (ReadI16(head, gim::infoBitsPerPixel) != 32) {
    return false;
  }
  const std::int64_t paletteBytes = std::int64_t{ReadI16(head, gim::infoWidth)} * 4;
  Bytes colours = AllocateBytes(paletteBytes);
  const ByteView there = source.Take(paletteBytes);
  std::copy(there.begin(), there.end(), colours.begin());
  SwapRedAndBlue(colours);
  picture.palette.resize(colours.size() / 4);
  std::memcpy(picture.palette.data(), colours.data(), colours.size());
  SkipRestOfBlock(source, head, static_cast<double>(paletteBytes));
  return true;
}

void ReadImageBlock(ByteCursor& source, const BlockHead& head, GimPicture& picture) {
  picture.bits = ReadI16(head, gim::infoBitsPerPixel);
  picture.width = ReadI16(head, gim::infoWidth);
  picture.height = ReadI16(head, gim::infoHeight);
  const Int16 pitchAlign = ReadI16(head, gim::infoPitchAlign);
  const Int16 pixelOrder = ReadI16(head, gim::infoPixelOrder);
  if (picture.width < 1 || picture.height < 1) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  const GimPadding padding = ComputeGimPadding(picture.width, picture.height, pitchAlign, pixelOrder, picture.bits);

  const double bytesOfRow = picture.bits.Int() / 8.0 * padding.paddedWidth.Int();
  GimPixels& pixels = picture.pixels;
  pixels.rowBytes = RoundToInt16(RoundToInt32(bytesOfRow - 1) + 1).Int();
  pixels.tileWidth = pixelOrder == 0 ? 0 : pitchAlign.Int();
  if (pixels.rowBytes < 1 || (pixels.tileWidth != 0 && pixels.rowBytes % pixels.tileWidth != 0)) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  const std::int64_t dataBytes = std::int64_t{padding.paddedHeight.Int()} * pixels.rowBytes;
  RequireArraySize(dataBytes);
  pixels.data = source.Take(dataBytes);
  SkipRestOfBlock(source, head, padding.paddedHeight.Int() * bytesOfRow);
}

// Answers false for a palette that can't be used.
bool ReadBlock(ByteCursor& source, GimPicture& picture) {
  const BlockHead head = source.Read<gim::kDataBlockHeadSize>();
  source.Skip(std::int64_t{ReadI32(head, gim::infoPixelStart)} - gim::kPixelStart);
  switch (ReadI16(head, gim::blockId)) {
    case gim::kPaletteId:
      return ReadPaletteBlock(source, head, picture);
    case gim::kImageId:
      ReadImageBlock(source, head, picture);
      return true;
    default:
      return true;  // not skipped by its size: what follows its head is taken for the next block
  }
}

// Cuts the palette to what the image's depth asks for, or fills it with zeros. The count has 16 bits, so that a depth
// above 14 has no palette: failure 6.
void FitPalette(GimPicture& picture) {
  const double wanted = std::exp2(picture.bits.Int());
  if (static_cast<double>(picture.palette.size()) != wanted) {
    picture.palette.resize(RoundToInt16(wanted).Index());
  }
}

// Puts the rows of the tiles that lie side by side behind each other. A width that the compiler knows makes the copies
// single instructions.
template <class Width>
void PlaceTiles(const std::uint8_t* tiles, std::size_t rowBytes, Width tileWidth, std::uint8_t* band) {
  for (std::size_t x0 = 0; x0 < rowBytes; x0 += tileWidth) {
    for (std::size_t j = 0; j < gim::kTileRows; ++j, tiles += tileWidth) {
      std::memcpy(band + j * rowBytes + x0, tiles, tileWidth);
    }
  }
}

}  // namespace

std::optional<GimPicture> ReadGim(ByteView gim) {
  ByteCursor source(gim);
  const auto fileHead = source.Read<gim::kFileHeadSize>();
  if (!std::equal(gim::kSignature.begin(), gim::kSignature.end(), fileHead.begin())) {
    return std::nullopt;
  }
  GimPicture picture;
  if (!ReadBlock(source, picture)) {
    return std::nullopt;
  }
  if (std::int64_t{source.Position()} + 1 < source.Length() && !ReadBlock(source, picture)) {
    return std::nullopt;
  }
  if (picture.hasPalette) {
    FitPalette(picture);
  }
  return picture;
}

ByteView GimRows::Row(std::int32_t y) {
  const std::size_t rowBytes = static_cast<std::size_t>(pixels_.rowBytes);
  if (pixels_.tileWidth == 0) {
    return Data(std::int64_t{y} * pixels_.rowBytes, rowBytes);
  }
  if (y / gim::kTileRows != bandNumber_) {
    LoadBand(y / gim::kTileRows);
  }
  return ByteView(band_).subspan(static_cast<std::size_t>(y % gim::kTileRows) * rowBytes, rowBytes);
}

ByteView GimRows::Data(std::int64_t offset, std::size_t count) {
  const ByteView from = pixels_.data.subspan(std::min(static_cast<std::size_t>(offset), pixels_.data.size()));
  if (from.size() >= count) {
    return from.first(count);
  }
  filled_.assign(count, 0);
  std::copy(from.begin(), from.end(), filled_.begin());
  return filled_;
}

void GimRows::LoadBand(std::int32_t band) {
  const std::size_t rowBytes = static_cast<std::size_t>(pixels_.rowBytes);
  const std::size_t tileWidth = static_cast<std::size_t>(pixels_.tileWidth);
  const std::size_t bandBytes = rowBytes * gim::kTileRows;
  const std::uint8_t* tiles = Data(static_cast<std::int64_t>(bandBytes) * band, bandBytes).data();
  band_.resize(bandBytes);
  if (tileWidth == gim::kPitchAlign) {
    PlaceTiles(tiles, rowBytes, std::integral_constant<std::size_t, gim::kPitchAlign>(), band_.data());
  } else {
    PlaceTiles(tiles, rowBytes, tileWidth, band_.data());
  }
  bandNumber_ = band;
}

}  // namespace kelvane
