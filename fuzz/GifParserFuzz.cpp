// Any bytes as a GIF file.
#include "CheckImage.h"
#include "FuzzTarget.h"
#include "imaging/cGIFparser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvane;
  using fuzz::Require;
  c32bppDIB image;
  if (!cGIFparser().LoadStream({data, size}, image, 0, static_cast<std::int32_t>(size))) {
    Require(image.handle() == nullptr, "a GIF that is refused leaves the host empty");
    return 0;
  }
  fuzz::CheckImage(image);
  Require(image.ImageType() == ImageKind::Gif, "what was read is a GIF");
  const ByteView pixels = image.Pixels();
  for (std::size_t i = 3; i < pixels.size(); i += 4) {
    Require(pixels[i] == 0 || (pixels[i] == 255 && image.Alpha()), "pixels are opaque or not there");
  }
  return 0;
}
