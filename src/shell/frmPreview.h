// The window that shows the selected image large.
#pragma once

#include "shell/PictureBox.h"

namespace kelvane {

// Draws nothing while it is closed.
class frmPreview : public PictureBox {
  Q_OBJECT
 public:
  explicit frmPreview(QWidget* form);

  // The flag previewOpen.
  [[nodiscard]] bool IsOpen() const { return previewOpen_; }
  void Open();

  void Clear() override;
  bool Blend(const PixelView& source, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
             std::uint8_t constantAlpha, bool perPixelAlpha) override;

 signals:
  // The user chose a background colour.
  void ColourChosen(QColor colour);

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  bool previewOpen_ = false;
};

}  // namespace kelvane
