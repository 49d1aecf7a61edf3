#include "gim/GimToBitmap.h"

#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "common/FileWriter.h"
#include "common/Files.h"
#include "common/Int16.h"
#include "common/RuntimeFailure.h"
#include "common/TempFiles.h"
#include "gim/BmpHeader.h"
#include "gim/GimReader.h"
#include "gim/PixelSwap.h"
#include "gim/RowExpander.h"

namespace kelvane {

namespace {

// Readers look at neither biClrUsed nor at biSizeImage, which leaves the padding of rows out.
BitmapHeader HeaderOf(const GimPicture& picture, bool direct) {
  const double pixels = static_cast<double>(picture.width.Int()) * picture.height.Int();
  BitmapHeader header;
  header.biWidth = picture.width.Int();
  header.biHeight = picture.height.Int();
  if (direct) {
    header.biBitCount = 32;
    header.biSizeImage = RoundToInt32(pixels * 4);
    header.biClrUsed = -1;
  } else {
    const double colours = std::exp2(picture.bits.Int());
    header.biBitCount = picture.bits.Value();
    header.biSizeImage = RoundToInt32(pixels * picture.bits.Int() / 8.0);
    header.biClrUsed = RoundToInt32(colours);
    header.bfOffBits = kBitmapHeaderSize + (picture.hasPalette ? RoundToInt32(colours * kRgbQuadSize) : 0);
  }
  header.bfSize = AddInt32(header.bfOffBits, header.biSizeImage);
  return header;
}

void AppendLongs(Bytes& bitmap, std::span<const std::uint32_t> longs) {
  const auto bytes = std::as_bytes(longs);
  Append(bitmap, ByteView(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

// The rows as they are, the bottom row first. What a row lacks up to a multiple of 4 bytes is taken from the pixels
// that pad it in the GIM, and is zero where there are none.
void AppendRows(Bytes& bitmap, const GimPicture& picture) {
  const Int16 rowBytes = BitmapRowBytes(picture.bits.Int(), picture.width.Int());
  RequireArraySize(rowBytes.Int());
  const std::size_t wanted = rowBytes.Index();
  bitmap.reserve(bitmap.size() + wanted * picture.height.Index());
  GimRows rows(picture.pixels);
  for (std::int32_t y = picture.height.Int() - 1; y >= 0; --y) {
    const ByteView row = rows.Row(y);
    const std::size_t start = bitmap.size();
    Append(bitmap, row.first(std::min(wanted, row.size())));
    bitmap.resize(start + wanted);
    if (picture.bits == 32) {
      SwapRedAndBlue(std::span(bitmap).subspan(start));
    }
  }
}

// How many bytes of a row are expanded: width x bits / 8 - 1 is rounded, ties to even, to the last of them. So a 4-bit
// row whose width leaves 3 when divided by 4 keeps its last pixel 0; files in the field are made so.
std::size_t ExpandedBytes(const GimPicture& picture) {
  return static_cast<std::size_t>(RoundToInt32(picture.bits.Int() / 8.0 * picture.width.Int() - 1)) + 1;
}

// Every pixel by its colour, rows bottom first. Answers false where there is no palette. Depths other than 4 and 8 come
// out as zeros.
bool AppendExpanded(Bytes& bitmap, const GimPicture& picture) {
  if (!picture.hasPalette) {
    return false;
  }
  const std::size_t width = picture.width.Index();
  const std::size_t pixelBytes = width * picture.height.Index() * 4;
  RequireArraySize(static_cast<std::int64_t>(pixelBytes));
  const std::size_t rowBytes = width * 4;
  if (picture.bits != 4 && picture.bits != 8) {
    bitmap.resize(bitmap.size() + pixelBytes);
    return true;
  }
  const std::size_t count = ExpandedBytes(picture);
  RowExpander expander(picture.palette, picture.bits.Int());
  bitmap.reserve(bitmap.size() + pixelBytes + 4);
  GimRows rows(picture.pixels);
  for (std::int32_t y = picture.height.Int() - 1; y >= 0; --y) {
    const std::size_t start = bitmap.size();
    bitmap.resize(start + rowBytes + 4);  // a last byte may hold one pixel more than the row
    expander.Expand(rows.Row(y).first(count), bitmap.data() + start);
    bitmap.resize(start + rowBytes);
  }
  return true;
}

bool WriteBitmap(Bytes& bitmap, const GimPicture& picture, bool force32) {
  AppendBitmapHeader(bitmap, HeaderOf(picture, force32 || picture.bits == 32));
  if (force32 && picture.bits != 32) {
    return AppendExpanded(bitmap, picture);
  }
  if (!force32 && picture.hasPalette) {
    AppendLongs(bitmap, picture.palette);
  }
  AppendRows(bitmap, picture);
  return true;
}

}  // namespace

GimConversion GimToBitmap(ByteView gim, bool force32) {
  GimConversion conversion;
  try {
    const std::optional<GimPicture> picture = ReadGim(gim);
    if (picture) {
      Bytes& bitmap = conversion.written.emplace();
      conversion.ok = WriteBitmap(bitmap, *picture, force32);
    }
  } catch (...) {
    (void)CurrentFailure();  // a run-time failure is a false result; anything else goes on
  }
  return conversion;
}

bool GimBytesToBitmap(ByteView gim, const std::filesystem::path& dstPath, bool force32,
                      const std::filesystem::path& tempFolder) {
  const TempFiles tempS({tempFolder / "tempS.gim"});
  try {
    const GimConversion conversion = GimToBitmap(gim, force32);
    if (conversion.written) {
      FileWriter destination;
      destination.Replace(dstPath);
      destination.Write(*conversion.written);
      destination.Close();
    }
    return conversion.ok;
  } catch (...) {
    (void)CurrentFailure();
    return false;
  }
}

bool GimToBitmap(const std::filesystem::path& srcPath, const std::filesystem::path& dstPath, bool force32,
                 const std::filesystem::path& tempFolder) {
  Bytes gim;
  try {
    gim = ReadWholeFile(srcPath);
  } catch (...) {
    (void)CurrentFailure();  // a file that can't be read has no signature either
  }
  return GimBytesToBitmap(gim, dstPath, force32, tempFolder);
}

}  // namespace kelvane
