// A picture in memory as something that an image object draws on.
#pragma once

#include <QColor>
#include <QImage>

#include "imaging/Surface.h"

namespace kelvane {

class QImageSurface : public Surface {
 public:
  // Draws on `image`, which must outlive the surface and can be of any format that can be painted on.
  QImageSurface(QImage& image, const QColor& background) : image_(image), background_(background) {}

  void Clear() override;
  bool Blend(const PixelView& source, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
             std::uint8_t constantAlpha, bool perPixelAlpha) override;

 private:
  QImage& image_;
  QColor background_;
};

// A view as a picture, top row first. With `perPixelAlpha` its colours count as premultiplied, else it is opaque. Null
// where there is no memory for it.
[[nodiscard]] QImage ImageOf(const PixelView& view, bool perPixelAlpha);

}  // namespace kelvane
