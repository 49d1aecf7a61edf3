#include "shell/QtProgress.h"

namespace kelvane {

QtProgress::QtProgress(QWidget* parent) : QProgressBar(parent) {
  setObjectName("barProgress");
  setTextVisible(false);
  hide();
}

void QtProgress::Show(int done, int total) {
  setMaximum(total);
  setValue(done);
  setVisible(done < total);
  if (isVisible()) {
    repaint();
  }
}

}  // namespace kelvane
