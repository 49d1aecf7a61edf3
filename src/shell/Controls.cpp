#include "shell/Controls.h"

namespace kelvane {

QString IndexedName(const char* name, int index) {
  return QString("%1(%2)").arg(name).arg(index);
}

QLabel* AddLabel(QWidget* parent, const char* name, const QString& caption) {
  auto* label = new QLabel(caption, parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QPushButton* AddButton(QWidget* parent, const char* name, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(name);
  button->setAutoDefault(false);
  return button;
}

QPushButton* AddButton(QWidget* parent, const char* name, const QString& caption, Drawing icon) {
  QPushButton* button = AddButton(parent, name, caption);
  button->setIcon(DrawnIcon(icon));
  button->setIconSize({16, 16});
  return button;
}

QCheckBox* AddCheckBox(QWidget* parent, const char* name, const QString& caption) {
  auto* box = new QCheckBox(caption, parent);
  box->setObjectName(name);
  return box;
}

QLineEdit* AddTextBox(QWidget* parent, const QString& name) {
  auto* box = new QLineEdit(parent);
  box->setObjectName(name);
  return box;
}

}  // namespace kelvane
