// The toolkit's readers of BMP, JPEG and GIF.
#pragma once

#include "imaging/PictureLoader.h"

namespace kelvane {

// Reads a BMP of any depth or compression, a JPEG and the first frame of a GIF, known by their first bytes. What is
// transparent in them is lost. A picture takes at most 1 GiB as 32-bit pixels; one whose header promises more pixels
// than the bytes behind it can hold is refused before any memory is taken for it.
class QtPictureLoader : public PictureLoader {
 public:
  QtPictureLoader();

  [[nodiscard]] std::unique_ptr<Picture> Load(ByteView stream) override;
};

}  // namespace kelvane
