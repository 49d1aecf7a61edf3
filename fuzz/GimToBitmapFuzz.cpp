// Any bytes as a GIM file, in both modes.
#include <algorithm>

#include "FuzzTarget.h"
#include "gim/BmpHeader.h"
#include "gim/GimToBitmap.h"

namespace kelvane {
namespace {

using fuzz::Require;

void Check(const GimConversion& conversion, bool force32) {
  Require(!conversion.ok || conversion.written.has_value(), "a bitmap that was written is there");
  if (!conversion.written || conversion.written->empty()) {
    Require(!conversion.ok, "a bitmap that was written has a header");
    return;
  }
  const Bytes& bitmap = *conversion.written;
  Require(bitmap.size() >= kBitmapHeaderSize, "the header is written whole");
  const BitmapHeader header = ReadBitmapHeader(ByteView(bitmap));
  Require(header.bfType == 0x4D42 && header.biSize == 40 && header.biPlanes == 1, "the header is a bitmap's");
  Require(header.bfSize == header.bfOffBits + header.biSizeImage, "the header's sizes agree");
  if (!conversion.ok) {
    return;
  }
  Require(header.biWidth > 0 && header.biHeight > 0, "the bitmap has pixels");
  Require(!force32 || header.biBitCount == 32, "32 bits come out where they are asked for");
  const std::int64_t row =
      header.biBitCount == 32 ? std::int64_t{header.biWidth} * 4 : BitmapRowBytes(header.biBitCount, header.biWidth);
  Require(static_cast<std::int64_t>(bitmap.size()) == header.bfOffBits + row * header.biHeight,
          "the bitmap is as long as its rows");
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const kelvane::ByteView gim(data, size);
  for (const bool force32 : {false, true}) {
    kelvane::Check(kelvane::GimToBitmap(gim, force32), force32);
  }
  return 0;
}
