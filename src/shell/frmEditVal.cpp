#include "shell/frmEditVal.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "shell/Controls.h"
#include "shell/Dialogs.h"

namespace kelvane {

frmEditVal::frmEditVal(QWidget* owner, const std::string& text) : QDialog(owner), txt_(AddTextBox(this, "txt")) {
  PrepareDialog(*this, "frmEditVal", "Change Value (hex)");
  txt_->setInputMask(">HHHHHHHH;0");
  txt_->setText(QString::fromStdString(text));
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(txt_);
  rows->addLayout(OkAndCancel(*this));
  txt_->setFocus();
}

std::string frmEditVal::Text() const {
  return txt_->text().toStdString();
}

}  // namespace kelvane
