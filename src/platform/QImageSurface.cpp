#include "platform/QImageSurface.h"

#include <QPainter>

namespace kelvane {

void QImageSurface::Clear() {
  image_.fill(background_);
}

bool QImageSurface::Blend(const PixelView& source, std::int32_t x, std::int32_t y, std::int32_t width,
                          std::int32_t height, std::uint8_t constantAlpha, bool perPixelAlpha) {
  const QImage drawn = ImageOf(source, perPixelAlpha);
  if (drawn.isNull() || image_.isNull()) {
    return false;
  }
  QPainter painter(&image_);
  painter.setOpacity(constantAlpha / 255.0);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QRect(x, y, width, height), drawn);
  return true;
}

QImage ImageOf(const PixelView& view, bool perPixelAlpha) {
  QImage image(view.width, view.height, perPixelAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  if (image.isNull()) {
    return image;
  }
  const std::uint8_t* source = view.pixels.data();
  for (int y = view.height - 1; y >= 0; --y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < view.width; ++x, source += 4) {
      row[x] = qRgba(source[2], source[1], source[0], perPixelAlpha ? source[3] : 255);
    }
  }
  return image;
}

}  // namespace kelvane
