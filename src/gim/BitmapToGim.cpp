#include "gim/BitmapToGim.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "common/Files.h"
#include "gim/BmpHeader.h"
#include "gim/ColourFinder.h"
#include "gim/GimFormat.h"
#include "gim/GimHeads.h"
#include "gim/GimPadding.h"
#include "gim/Palette.h"
#include "gim/PixelSwap.h"

namespace kelvane {

namespace {

// A 32-bit image beyond this width overflows the 16 bits in which its rows are walked.
constexpr std::int32_t kMaxDirectWidth = 8192;
// An indexed bitmap of as many colours or more gets 8 bits a pixel, one of fewer 4.
constexpr int kColoursFor8Bits = 16;

// `count` bytes of `bytes` from `offset` on, or those of them that are there.
ByteView There(ByteView bytes, std::size_t offset, std::size_t count) {
  const ByteView from = bytes.subspan(std::min(offset, bytes.size()));
  return from.first(std::min(count, from.size()));
}

// Rows that follow each other, the bottom row first, and may be cut off.
struct BottomUpRows {
  ByteView bytes;
  std::size_t rowBytes = 0;
  std::size_t height = 0;

  // Row `y`, counted from the top.
  [[nodiscard]] ByteView Row(std::size_t y) const { return There(bytes, (height - 1 - y) * rowBytes, rowBytes); }
};

// The pixels of the GIM before they are put in order: rows of `rowBytes` bytes, zero behind those of the source.
struct PixelRows {
  BottomUpRows source;
  std::size_t rowBytes = 0;
  std::size_t paddedHeight = 0;
  bool swapped = false;  // red and blue change places

  // Fills `row` with the start of row `y`, counted from the top.
  void Copy(std::size_t y, std::span<std::uint8_t> row) const {
    ByteView there;
    if (y < source.height) {
      there = source.Row(y);
      there = there.first(std::min(there.size(), row.size()));
    }
    std::copy(there.begin(), there.end(), row.begin());
    std::fill(row.begin() + static_cast<std::ptrdiff_t>(there.size()), row.end(), std::uint8_t{0});
    if (swapped) {
      SwapRedAndBlue(row);
    }
  }

  // The start of row `y`, as long as `row`: in the source where it lies there as it is wanted, otherwise in `row`.
  [[nodiscard]] const std::uint8_t* Start(std::size_t y, std::span<std::uint8_t> row) const {
    if (!swapped && y < source.height) {
      if (const ByteView there = source.Row(y); there.size() >= row.size()) {
        return there.data();
      }
    }
    Copy(y, row);
    return row.data();
  }
};

void AppendLinear(Bytes& gim, const PixelRows& rows) {
  std::size_t at = gim.size();
  gim.resize(at + rows.paddedHeight * rows.rowBytes);
  for (std::size_t y = 0; y < rows.paddedHeight; ++y, at += rows.rowBytes) {
    rows.Copy(y, std::span(gim).subspan(at, rows.rowBytes));
  }
}

// `columns` tiles a band; they may reach less far than the rows do.
void AppendTiled(Bytes& gim, const PixelRows& rows, std::size_t columns) {
  constexpr std::size_t kTileWidth = gim::kPitchAlign;
  const std::size_t bandRow = columns * kTileWidth;
  Bytes band(bandRow * gim::kTileRows);
  std::size_t at = gim.size();
  gim.resize(at + rows.paddedHeight * bandRow);
  std::array<const std::uint8_t*, gim::kTileRows> starts{};
  for (std::size_t y0 = 0; y0 < rows.paddedHeight; y0 += gim::kTileRows) {
    for (std::size_t j = 0; j < gim::kTileRows; ++j) {
      starts[j] = rows.Start(y0 + j, std::span(band).subspan(j * bandRow, bandRow));
    }
    for (std::size_t x0 = 0; x0 < bandRow; x0 += kTileWidth) {
      for (std::size_t j = 0; j < gim::kTileRows; ++j, at += kTileWidth) {
        std::memcpy(gim.data() + at, starts[j] + x0, kTileWidth);
      }
    }
  }
}

// A bitmap on its way to a GIM.
struct Conversion {
  GimHeads heads;
  std::vector<std::uint32_t> palette;  // as the bitmap keeps it
  PixelRows rows;
  Bytes indexes;  // what the rows are taken from once a 32-bit bitmap is indexed
};

GimHeads HeadsOf(const BitmapHeader& header, bool convert32, Int16 pixelOrder) {
  GimHeads heads;
  heads.usePalette = header.biBitCount != 32 || convert32;
  heads.sourceBits = header.biBitCount;
  heads.outBits = header.biBitCount;
  heads.pixelOrder = pixelOrder;
  heads.width = header.biWidth;
  heads.height = header.biHeight;
  // By the bitmap's depth also where the image is going to be indexed.
  const GimPadding padding =
      ComputeGimPadding(heads.width, heads.height, gim::kPitchAlign, pixelOrder, heads.sourceBits);
  heads.paddedWidth = padding.paddedWidth;
  heads.paddedHeight = padding.paddedHeight;
  return heads;
}

// The palette behind the header, always as long as the depth allows, whatever the bitmap says of it.
std::vector<std::uint32_t> ReadPalette(ByteView bmp, Int16 bits) {
  std::vector<std::uint32_t> palette(static_cast<std::size_t>(PaletteColours(bits)));
  const ByteView there = There(bmp, kBitmapHeaderSize, palette.size() * kRgbQuadSize);
  std::memcpy(palette.data(), there.data(), there.size());
  return palette;
}

// Sets the rows up over `pixels`, which follow palette or header.
void SizeRows(Conversion& work, ByteView pixels) {
  const GimHeads& heads = work.heads;
  const std::int64_t rowBytes = std::int64_t{heads.paddedWidth.Int()} * heads.sourceBits.Int() / 8;
  if (heads.width < 1 || heads.height < 1) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  RequireArraySize(rowBytes * heads.paddedHeight.Int());
  work.rows.rowBytes = static_cast<std::size_t>(rowBytes);
  work.rows.paddedHeight = heads.paddedHeight.Index();
  work.rows.source = {.bytes = pixels, .rowBytes = 0, .height = heads.height.Index()};
}

// An index for each of `count` pixels of 32 bits, in their order, and their colours in `palette`. Nothing as soon as
// there are 256 colours.
std::optional<Bytes> IndexPixels(ByteView pixels, std::size_t count, std::vector<std::uint32_t>& palette,
                                 Int16& palCount) {
  Bytes indexes = AllocateBytes(static_cast<std::int64_t>(count));
  ColourFinder finder(palette, palCount);
  const std::size_t whole = std::min(count, pixels.size() / 4);
  if (!finder.FindOrAddAll(pixels.first(whole * 4), kPaletteColours - 1, indexes)) {
    return std::nullopt;
  }
  const auto rest = std::span(indexes).subspan(whole);
  const std::size_t missing = std::min(rest.size(), kMissingPixels);
  const auto tail = MissingPixels(pixels, whole);
  if (!finder.FindOrAddAll(ByteView(tail).first(missing * 4), kPaletteColours - 1, rest)) {
    return std::nullopt;
  }
  if (rest.size() > missing) {
    std::fill(rest.begin() + kMissingPixels, rest.end(), rest[kMissingPixels - 1]);
  }
  return indexes;
}

// Puts an index of one byte in place of every pixel; the rows keep their length. Answers false for too many colours.
bool IndexRows(Conversion& work) {
  GimHeads& heads = work.heads;
  work.palette.resize(kPaletteColours);
  Int16 palCount = 0;
  std::optional<Bytes> indexes =
      IndexPixels(work.rows.source.bytes, heads.width.Index() * heads.height.Index(), work.palette, palCount);
  if (!indexes) {
    return false;
  }
  heads.outBits = palCount >= kColoursFor8Bits ? 8 : 4;
  work.palette.resize(static_cast<std::size_t>(PaletteColours(heads.outBits)));
  work.indexes = std::move(*indexes);
  work.rows.source.bytes = work.indexes;
  work.rows.source.rowBytes = heads.width.Index();
  return true;
}

// The rows as they are; those of 32 bits change the order of their bytes.
void TakeRows(Conversion& work) {
  const GimHeads& heads = work.heads;
  const std::int32_t rowBytes = BitmapRowBytes(heads.sourceBits.Int(), heads.width.Int());
  RequireArraySize(rowBytes);
  work.rows.source.rowBytes = static_cast<std::size_t>(rowBytes);
  work.rows.swapped = heads.sourceBits == 32;
  if (work.rows.swapped && heads.paddedWidth > kMaxDirectWidth) {
    throw RuntimeFailure(FailureCode::Overflow);
  }
}

// Makes the colour of the top left pixel transparent black wherever it is used. Of a 4-bit byte the lower half counts.
void ClearFirstColour(Conversion& work) {
  std::array<std::uint8_t, 1> first{};
  work.rows.Copy(0, first);
  work.palette[work.heads.sourceBits == 4 ? first[0] & 0x0F : first[0]] = 0;
}

void AppendPalette(Bytes& gim, const std::vector<std::uint32_t>& palette) {
  const std::size_t start = gim.size();
  gim.resize(start + palette.size() * kRgbQuadSize);
  std::memcpy(gim.data() + start, palette.data(), palette.size() * kRgbQuadSize);
  SwapRedAndBlue(std::span(gim).subspan(start));
}

Bytes BuildGim(const Conversion& work) {
  const GimHeads& heads = work.heads;
  Bytes gim;
  AppendFileHead(gim, heads);
  if (heads.usePalette) {
    AppendPaletteHead(gim, heads);
    AppendPalette(gim, work.palette);
  }
  AppendImageHead(gim, heads);
  if (heads.pixelOrder == 0) {
    AppendLinear(gim, work.rows);
  } else {
    const std::size_t written = heads.outBits.Index() * heads.paddedWidth.Index() / 8;
    AppendTiled(gim, work.rows, (written + gim::kPitchAlign - 1) / gim::kPitchAlign);
  }
  return gim;
}

}  // namespace

std::optional<Bytes> BitmapToGim(ByteView bmp, bool convert32, Int16 pixelOrder, bool firstColTrans) {
  const BitmapHeader header = ReadBitmapHeader(bmp);
  Conversion work;
  work.heads = HeadsOf(header, convert32, pixelOrder);
  const bool indexed = header.biBitCount == 4 || header.biBitCount == 8;
  if (indexed) {
    work.palette = ReadPalette(bmp, header.biBitCount);
  } else if (header.biBitCount != 32) {
    return std::nullopt;
  }
  const std::size_t pixelsAt = kBitmapHeaderSize + work.palette.size() * kRgbQuadSize;
  SizeRows(work, bmp.subspan(std::min(pixelsAt, bmp.size())));
  if (indexed || !convert32) {
    TakeRows(work);
  } else if (!IndexRows(work)) {
    return std::nullopt;
  }
  if (firstColTrans && indexed) {
    ClearFirstColour(work);
  }
  return BuildGim(work);
}

bool BitmapToGim(const std::filesystem::path& srcPath, const std::filesystem::path& dstPath, bool convert32,
                 Int16 pixelOrder, bool firstColTrans) {
  const std::optional<Bytes> gim = BitmapToGim(ReadWholeFile(srcPath), convert32, pixelOrder, firstColTrans);
  if (!gim) {
    return false;
  }
  DeleteFileIfThere(dstPath);
  WriteWholeFile(dstPath, *gim);
  return true;
}

}  // namespace kelvane
