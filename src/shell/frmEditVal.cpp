#include "shell/frmEditVal.h"

#include <QFontDatabase>

#include "shell/HexBox.h"

namespace kelvane {

frmEditVal::frmEditVal(QWidget* owner, const std::string& text)
    : Dialog(owner, "frmEditVal", "Change Value (hex)"), txt_(new HexBox(text, this)) {
  QFont digits = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  digits.setPixelSize(16);
  txt_->setFont(digits);
  txt_->setAlignment(Qt::AlignCenter);
  AddRow(txt_);
  AddOkAndCancel();
  setFixedWidth(240);
}

std::string frmEditVal::Text() const {
  return txt_->Text();
}

}  // namespace kelvane
