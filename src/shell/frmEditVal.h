// The dialog "Change Value (hex)".
#pragma once

#include <QDialog>
#include <string>

class QLineEdit;

namespace kelvane {

class frmEditVal : public QDialog {
  Q_OBJECT
 public:
  // `text` is what the field starts with: 8 hexadecimal digits.
  frmEditVal(QWidget* owner, const std::string& text);

  [[nodiscard]] std::string Text() const;

 private:
  QLineEdit* txt_;
};

}  // namespace kelvane
