// The dialog that adds a text to all languages.
#pragma once

#include <functional>
#include <string>

#include "shell/Dialogs.h"

namespace kelvane {

class frmAddText : public Dialog {
  Q_OBJECT
 public:
  // Takes the label and the position when OK is pressed; false leaves the dialog open.
  using Accept = std::function<bool(const std::string& label, const std::string& position)>;

  // `lineCount` is that of lstText, `position` what txtPos starts with.
  frmAddText(QWidget* owner, int lineCount, const std::string& position, const Accept& accept);
};

}  // namespace kelvane
