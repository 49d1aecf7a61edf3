// Any bytes as a bitmap. The first byte of an input holds the options.
#include "FuzzTarget.h"
#include "common/RuntimeFailure.h"
#include "gim/BitmapToGim.h"
#include "gim/GimToBitmap.h"
#include "gim/Palette.h"

namespace kelvane {
namespace {

using fuzz::Require;

constexpr int kConvert32 = 1;
constexpr int kFirstColTrans = 2;
constexpr int kTiled = 4;

// Larger images than this may lack memory on the way back.
constexpr std::size_t kRoundTripBytes = std::size_t{1} << 20;
// Rows of more bytes can't be read back.
constexpr std::int32_t kRoundTripWidth = 8188;

// A GIM that isn't indexed comes back from a bitmap of its own as it was.
void CheckRoundTrip(const Bytes& gim, Int16 pixelOrder) {
  const GimConversion bitmap = GimToBitmap(gim, false);
  Require(bitmap.ok && bitmap.written.has_value(), "what was written can be read");
  Require(BitmapToGim(*bitmap.written, false, pixelOrder, false) == gim, "a round trip changes nothing");
}

void CheckCount(ByteView bmp, bool converted) {
  Int16 colours = 0;
  Require(CountBitmapColours(bmp, colours), "a bitmap of 32 bits is counted");
  Require(colours >= 1 && colours <= 257, "the count ends at 257");
  if (ReadBitmapHeader(bmp).bfOffBits == kBitmapHeaderSize) {
    Require(converted == (colours < 256), "up to 255 colours are indexed");
  }
}

void Run(ByteView bmp, int options) {
  const bool convert32 = (options & kConvert32) != 0;
  const Int16 pixelOrder = (options & kTiled) != 0 ? 1 : 0;
  const std::optional<Bytes> gim = BitmapToGim(bmp, convert32, pixelOrder, (options & kFirstColTrans) != 0);
  const BitmapHeader header = ReadBitmapHeader(bmp);
  if (convert32 && header.biBitCount == 32) {
    CheckCount(bmp, gim.has_value());
  } else if (gim && gim->size() <= kRoundTripBytes && header.biWidth <= kRoundTripWidth) {
    CheckRoundTrip(*gim, pixelOrder);
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  try {
    kelvane::Run(kelvane::ByteView(data + 1, size - 1), data[0]);
  } catch (...) {
    (void)kelvane::CurrentFailure();  // a run-time failure is a result; anything else ends the process
  }
  return 0;
}
