// Any bytes as a BMP file, with a loader that paints what the bytes say.
#include <algorithm>

#include "CheckImage.h"
#include "FuzzTarget.h"
#include "imaging/cBMPparser.h"

namespace kelvane {
namespace {

using fuzz::Require;

// A picture whose type, size and pixels are the bytes that it was made of.
class BytesPicture : public Picture {
 public:
  explicit BytesPicture(ByteView bytes) : bytes_(bytes.begin(), bytes.end()) {}

  [[nodiscard]] PictureType Type() const override { return static_cast<PictureType>(bytes_[0] % 6 - 1); }
  [[nodiscard]] std::int32_t Width() const override { return bytes_[1]; }
  [[nodiscard]] std::int32_t Height() const override { return bytes_[2]; }
  void Paint(const Canvas& canvas) const override {
    if (bytes_[0] >= 240) {
      throw RuntimeFailure(FailureCode::DeviceIoError);
    }
    std::copy_n(bytes_.begin(), std::min(bytes_.size(), canvas.pixels.size()), canvas.pixels.begin());
  }

 private:
  Bytes bytes_;
};

class BytesPictures : public PictureLoader {
 public:
  std::unique_ptr<Picture> Load(ByteView stream) override {
    return stream.size() < 3 ? nullptr : std::make_unique<BytesPicture>(stream);
  }
};

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvane;
  BytesPictures pictures;
  for (PictureLoader* const loader : {static_cast<PictureLoader*>(nullptr), static_cast<PictureLoader*>(&pictures)}) {
    c32bppDIB image(loader);
    if (cBMPparser().LoadStream({data, size}, image, 0, static_cast<std::int32_t>(size))) {
      fuzz::CheckImage(image);
      Require(image.BmpBytes().size() == image.Pixels().size() + 54, "an image that was loaded can be saved");
    }
  }
  return 0;
}
