// The options dialog.
#pragma once

#include <QCheckBox>
#include <QRadioButton>
#include <array>
#include <filesystem>

#include "common/Mod.h"
#include "shell/Dialogs.h"

namespace kelvane {

class frmOpt : public Dialog {
  Q_OBJECT
 public:
  // Shows the settings of `mod`. OK takes them over into `mod`, writes them to `settings` and closes; a file that can't
  // be written is a failure without a handler. Cancel touches nothing.
  frmOpt(QWidget* owner, Mod& mod, const std::filesystem::path& settings);

 private:
  void TakeOver(Mod& mod) const;

  QCheckBox* chkFirstAlpha_;
  std::array<QRadioButton*, 3> opt32bitImport_{};
  QCheckBox* chkNoCompression_;
  QCheckBox* chkNoBak_;
};

}  // namespace kelvane
