// The port to the toolkit's readers of pictures: bytes in, a picture that can paint itself out.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "common/Bytes.h"

namespace kelvane {

// Pixels to paint on: 4 bytes a pixel in the order blue, green, red, alpha; rows bottom first, without padding.
struct Canvas {
  std::span<std::uint8_t> pixels;
  std::int32_t width = 0;
  std::int32_t height = 0;
};

enum class PictureType : std::int32_t { None = 0, Bitmap = 1, Metafile = 2, Icon = 3, EnhancedMetafile = 4 };

class Picture {
 public:
  virtual ~Picture() = default;

  [[nodiscard]] virtual PictureType Type() const = 0;
  // In pixels.
  [[nodiscard]] virtual std::int32_t Width() const = 0;
  [[nodiscard]] virtual std::int32_t Height() const = 0;
  // Paints the whole picture over the whole canvas, which is as large as the picture. Each pixel that is painted gets
  // alpha 0; a metafile leaves the pixels that it doesn't draw as they were. Throws where it can't paint.
  virtual void Paint(const Canvas& canvas) const = 0;
};

class PictureLoader {
 public:
  virtual ~PictureLoader() = default;

  // The picture in `stream`, null where it is none that the toolkit reads. PNG and icons are never read here. May
  // throw.
  [[nodiscard]] virtual std::unique_ptr<Picture> Load(ByteView stream) = 0;
};

}  // namespace kelvane
