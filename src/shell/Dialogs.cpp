#include "shell/Dialogs.h"

#include "shell/Controls.h"

namespace kelvane {

void PrepareDialog(QDialog& dialog, const char* name, const QString& caption) {
  dialog.setObjectName(name);
  dialog.setWindowTitle(caption);
  dialog.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

QBoxLayout* OkAndCancel(QDialog& dialog) {
  QPushButton* ok = AddButton(&dialog, "cmdOK", "OK");
  QPushButton* cancel = AddButton(&dialog, "cmdCancel", "Cancel");
  ok->setDefault(true);
  QObject::connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(ok);
  row->addWidget(cancel);
  return row;
}

}  // namespace kelvane
