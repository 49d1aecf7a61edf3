#include "shell/PictureBox.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace kelvane {

namespace {

// value * weight / 255, rounded.
std::uint32_t Weighed(std::uint32_t value, std::uint32_t weight) {
  return (value * weight + 127) / 255;
}

std::uint32_t Channel(std::uint32_t source, std::uint32_t weight, std::uint32_t below, std::uint32_t alpha) {
  return std::min<std::uint32_t>(255, Weighed(source, weight) + Weighed(below, 255 - alpha));
}

// One pixel, blue first, over what is below it.
QRgb Over(const std::uint8_t* pixel, std::uint32_t constantAlpha, bool perPixelAlpha, QRgb below) {
  const std::uint32_t alpha = Weighed(perPixelAlpha ? pixel[3] : 255U, constantAlpha);
  const auto mix = [&](std::uint8_t source, int under) {
    return static_cast<int>(Channel(source, constantAlpha, static_cast<std::uint32_t>(under), alpha));
  };
  return qRgb(mix(pixel[2], qRed(below)), mix(pixel[1], qGreen(below)), mix(pixel[0], qBlue(below)));
}

}  // namespace

PictureBox::PictureBox(const QString& name, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
}

void PictureBox::SetBackground(const QColor& colour) {
  background_ = colour;
  update();
}

void PictureBox::SetOutline(const QSize& size) {
  outline_ = size;
  update();
}

void PictureBox::SetOutlineVisible(bool visible) {
  outlineVisible_ = visible;
  update();
}

void PictureBox::Clear() {
  picture_ = QImage();
  update();
}

void PictureBox::GrowTo(const QSize& size) {
  if (picture_.width() >= size.width() && picture_.height() >= size.height()) {
    return;
  }
  QImage larger(picture_.size().expandedTo(size), QImage::Format_RGB32);
  larger.fill(background_);
  if (!picture_.isNull()) {
    QPainter(&larger).drawImage(0, 0, picture_);
  }
  picture_ = larger;
}

bool PictureBox::Blend(const PixelView& source, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                       std::uint8_t constantAlpha, bool perPixelAlpha) {
  const QRect target = QRect(x, y, width, height) & QRect(0, 0, kMaxSide, kMaxSide);
  const std::size_t sourceBytes =
      static_cast<std::size_t>(std::max(source.width, 0)) * 4 * static_cast<std::size_t>(std::max(source.height, 0));
  if (width < 1 || height < 1 || sourceBytes == 0 || source.pixels.size() < sourceBytes) {
    return false;
  }
  if (target.isEmpty()) {
    return true;
  }
  GrowTo({target.right() + 1, target.bottom() + 1});
  for (int row = target.top(); row <= target.bottom(); ++row) {
    const std::int64_t fromTop = std::int64_t{row - y} * source.height / height;
    const std::uint8_t* line = source.pixels.data() + static_cast<std::size_t>(source.height - 1 - fromTop) *
                                                          static_cast<std::size_t>(source.width) * 4;
    auto* out = reinterpret_cast<QRgb*>(picture_.scanLine(row));
    for (int column = target.left(); column <= target.right(); ++column) {
      const std::int64_t from = std::int64_t{column - x} * source.width / width;
      out[column] = Over(line + from * 4, constantAlpha, perPixelAlpha, out[column]);
    }
  }
  update();
  return true;
}

void PictureBox::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!contentsMargins().isNull()) {
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
  const QRect contents = contentsRect();
  painter.setClipRect(contents);
  painter.fillRect(contents, background_);
  painter.drawImage(contents.topLeft(), picture_);
  if (outlineVisible_ && !outline_.isEmpty()) {
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(QRect(contents.topLeft(), outline_ - QSize(1, 1)));
  }
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->pos())) {
    emit Clicked();
  }
}

}  // namespace kelvane
