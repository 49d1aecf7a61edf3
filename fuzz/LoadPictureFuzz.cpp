// Any bytes as an image of any kind, twice into one object.
#include "CheckImage.h"
#include "FuzzTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvane;
  c32bppDIB image;
  bool first = false;
  for (int time = 0; time < 2; ++time) {
    Bytes stream(data, data + size);
    const bool loaded = image.LoadPicture_Stream(stream, 0, 0);
    if (loaded) {
      fuzz::CheckImage(image);
    }
    fuzz::Require(time == 0 || loaded == first, "what loads once loads twice");
    first = loaded;
  }
  return 0;
}
