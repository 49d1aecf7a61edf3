// A picture box: what an image object draws on in the window.
#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

#include "imaging/Surface.h"

namespace kelvane {

// Pixels of images are pixels at 100%. The picture begins at the top left corner of the contents rectangle; what lies
// outside it, or beyond kMaxSide, isn't shown. A box with contents margins draws a frame in them.
class PictureBox : public QWidget, public Surface {
  Q_OBJECT
 public:
  // No screen shows more of a picture, and a header that promises more costs no memory.
  static constexpr int kMaxSide = 8192;

  PictureBox(const QString& name, QWidget* parent);

  [[nodiscard]] const QColor& Background() const { return background_; }
  // Takes effect where nothing is drawn; what is drawn keeps the colour that it was blended with.
  void SetBackground(const QColor& colour);

  // The outline shpRes; a width or height of 0 shows none.
  void SetOutline(const QSize& size);
  void SetOutlineVisible(bool visible);

  void Clear() override;
  bool Blend(const PixelView& source, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
             std::uint8_t constantAlpha, bool perPixelAlpha) override;

  // What was drawn since the last Clear, as far as it reaches; the rest is background.
  [[nodiscard]] const QImage& Picture() const { return picture_; }

 signals:
  void Clicked();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void GrowTo(const QSize& size);

  QColor background_ = Qt::white;
  QImage picture_;
  QSize outline_;
  bool outlineVisible_ = false;
};

}  // namespace kelvane
