#include "shell/frmAddPage.h"

#include <QComboBox>

#include "shell/Controls.h"

namespace kelvane {

frmAddPage::frmAddPage(QWidget* owner, int lineCount, const Accept& accept)
    : Dialog(owner, "frmAddPage", "Kelvane Editor - Add Page Resource") {
  QLineEdit* label = AddTextBox(this, "txtLabel");
  AddField("lblLabelDes", "&Label Name:", label);
  const QLineEdit* pos = AddPosition(lineCount, "");
  QLineEdit* depth = AddTextBox(this, "txtDepth");
  AddField("lblDepthDes", "&Depth:", depth);
  auto* kinds = new QComboBox(this);
  kinds->setObjectName("cboID");
  for (const std::string_view kind : kPageKinds) {
    kinds->addItem(QString::fromUtf8(kind.data(), static_cast<qsizetype>(kind.size())));
  }
  kinds->setCurrentIndex(-1);
  AddField("lblIDDes", "&ID:", kinds);
  AddWarning();
  AddOkAndCancel([label, pos, depth, kinds, accept] {
    return accept({.txtLabel = label->text().toStdString(),
                   .txtPos = pos->text().toStdString(),
                   .txtDepth = depth->text().toStdString(),
                   .cboID = kinds->currentIndex()});
  });
}

}  // namespace kelvane
