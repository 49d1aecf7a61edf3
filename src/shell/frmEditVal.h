// The dialog "Change Value (hex)".
#pragma once

#include <string>

#include "shell/Dialogs.h"

namespace kelvane {

class HexBox;

class frmEditVal : public Dialog {
  Q_OBJECT
 public:
  // `text` is what the field starts with: 8 hexadecimal digits.
  frmEditVal(QWidget* owner, const std::string& text);

  [[nodiscard]] std::string Text() const;

 private:
  HexBox* txt_;
};

}  // namespace kelvane
