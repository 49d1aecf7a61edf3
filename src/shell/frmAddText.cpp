#include "shell/frmAddText.h"

#include "shell/Controls.h"

namespace kelvane {

frmAddText::frmAddText(QWidget* owner, int lineCount, const std::string& position, const Accept& accept)
    : Dialog(owner, "frmAddText", "Kelvane Editor - Add Text Resource") {
  QLineEdit* label = AddTextBox(this, "txtLabel");
  AddField("lblLabelDes", "&Label Name:", label);
  const QLineEdit* pos = AddPosition(lineCount, position);
  AddWarning();
  AddOkAndCancel([label, pos, accept] { return accept(label->text().toStdString(), pos->text().toStdString()); });
}

}  // namespace kelvane
