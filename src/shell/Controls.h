// Controls by their names.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>

#include "shell/Icons.h"

namespace kelvane {

// The name of an element of an array of controls, as in txtPageOpt(12).
[[nodiscard]] QString IndexedName(const char* name, int index);

// All of these are children of `parent`, which owns them. Buttons take no Enter of their own: the forms decide what it
// presses.
QLabel* AddLabel(QWidget* parent, const char* name, const QString& caption = {});
QPushButton* AddButton(QWidget* parent, const char* name, const QString& caption);
QPushButton* AddButton(QWidget* parent, const char* name, const QString& caption, Drawing icon);
QCheckBox* AddCheckBox(QWidget* parent, const char* name, const QString& caption);
QLineEdit* AddTextBox(QWidget* parent, const QString& name);

}  // namespace kelvane
