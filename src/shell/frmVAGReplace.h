// The dialog that asks for the files of a sound.
#pragma once

#include <functional>

#include "common/Prompts.h"
#include "shell/Dialogs.h"

namespace kelvane {

class frmVAGReplace : public Dialog {
  Q_OBJECT
 public:
  // Takes what the dialog holds when OK is pressed; false leaves it open.
  using Accept = std::function<bool(const VagChoice& choice)>;

  // `stereo` tells what the sound is now; `prompts` shows the file dialogs and messages.
  frmVAGReplace(QWidget* owner, bool stereo, Prompts& prompts, const Accept& accept);
};

}  // namespace kelvane
