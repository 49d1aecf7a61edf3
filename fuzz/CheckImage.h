// What holds of every image that was loaded.
#pragma once

#include "FuzzTarget.h"
#include "imaging/c32bppDIB.h"

namespace kelvane::fuzz {

inline void CheckImage(const c32bppDIB& image) {
  Require(image.handle() != nullptr && image.Width() > 0 && image.Height() > 0, "an image that was loaded has pixels");
  Require(image.ImageType() != ImageKind::None, "an image that was loaded has a kind");
  if (!image.Alpha()) {
    return;
  }
  const ByteView pixels = image.Pixels();
  for (std::size_t i = 0; i < pixels.size(); i += 4) {
    const std::uint8_t alpha = pixels[i + 3];
    Require(pixels[i] <= alpha && pixels[i + 1] <= alpha && pixels[i + 2] <= alpha, "colours are premultiplied");
  }
}

}  // namespace kelvane::fuzz
