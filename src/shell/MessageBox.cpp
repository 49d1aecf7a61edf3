#include "shell/MessageBox.h"

#include <QMessageBox>

namespace kelvane {

namespace {

QMessageBox::Icon IconOf(Icon icon) {
  switch (icon) {
    case Icon::Exclamation:
      return QMessageBox::Warning;
    case Icon::Critical:
      return QMessageBox::Critical;
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::Question:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButton ButtonOf(Answer answer) {
  switch (answer) {
    case Answer::Yes:
      return QMessageBox::Yes;
    case Answer::No:
      return QMessageBox::No;
    case Answer::Ok:
      break;
  }
  return QMessageBox::Ok;
}

}  // namespace

Answer ShowMessageBox(QWidget* owner, const Message& message) {
  QMessageBox box(owner);
  box.setWindowTitle("Kelvane Editor");
  box.setTextFormat(Qt::PlainText);
  box.setText(QString::fromStdString(message.text));
  box.setIcon(IconOf(message.icon));
  if (message.buttons == Buttons::Ok) {
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return Answer::Ok;
  }
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
  box.setDefaultButton(ButtonOf(message.defaultAnswer));
  return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

}  // namespace kelvane
