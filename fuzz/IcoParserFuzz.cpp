// Any bytes as an icon file. The first two are the wanted size.
#include "CheckImage.h"
#include "FuzzTarget.h"
#include "common/RuntimeFailure.h"
#include "imaging/cICOparser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvane;
  if (size < 2) {
    return 0;
  }
  Bytes stream(data + 2, data + size);
  c32bppDIB image;
  try {
    if (cICOparser().LoadStream(stream, data[0], data[1], image, 0, static_cast<std::int32_t>(stream.size()))) {
      fuzz::CheckImage(image);
      fuzz::Require(image.Width() == image.Height() || image.ImageType() == ImageKind::Png, "icons are square");
    }
  } catch (...) {
    static_cast<void>(CurrentFailure());
  }
  return 0;
}
