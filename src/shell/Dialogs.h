// What the dialogs have in common.
#pragma once

#include <QBoxLayout>
#include <QDialog>
#include <QPushButton>

namespace kelvane {

// Name, caption, and no question mark in the frame.
void PrepareDialog(QDialog& dialog, const char* name, const QString& caption);

// cmdOK, the default button, and cmdCancel, at the right end of a row. They accept and reject the dialog.
[[nodiscard]] QBoxLayout* OkAndCancel(QDialog& dialog);

}  // namespace kelvane
