#include "shell/frmPreview.h"

#include <QColorDialog>
#include <QMouseEvent>

namespace kelvane {

frmPreview::frmPreview(QWidget* form) : PictureBox("frmPreview", form) {
  setWindowFlags(Qt::Window);
  setWindowTitle("Preview (Right-click to change BG colour)");
  resize(500, 320);  // the firmware's screen, 480 by 272, and a margin
}

void frmPreview::Open() {
  previewOpen_ = true;
  show();
  raise();
  activateWindow();
}

void frmPreview::Clear() {
  if (previewOpen_) {
    PictureBox::Clear();
  }
}

bool frmPreview::Blend(const PixelView& source, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                       std::uint8_t constantAlpha, bool perPixelAlpha) {
  return previewOpen_ && PictureBox::Blend(source, x, y, width, height, constantAlpha, perPixelAlpha);
}

void frmPreview::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::RightButton) {
    return;
  }
  const QColor colour = QColorDialog::getColor(Background(), this, {}, QColorDialog::DontUseNativeDialog);
  if (colour.isValid()) {
    emit ColourChosen(colour);
  }
}

void frmPreview::closeEvent(QCloseEvent* event) {
  // What it shows next it is told when it opens again.
  PictureBox::Clear();
  previewOpen_ = false;
  PictureBox::closeEvent(event);
}

}  // namespace kelvane
