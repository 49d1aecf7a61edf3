// The bar that shows how far a long command is.
#pragma once

#include <QProgressBar>

#include "common/Watch.h"

namespace kelvane {

// Paints itself at once and lets no event in, so that nothing can come between the steps of a command. It hides at the
// last step; a command that fails half way leaves it to the form.
class QtProgress : public QProgressBar, public Progress {
 public:
  explicit QtProgress(QWidget* parent);

  void Show(int done, int total) override;
};

}  // namespace kelvane
