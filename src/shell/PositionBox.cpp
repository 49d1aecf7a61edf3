#include "shell/PositionBox.h"

#include <QKeyEvent>

#include "common/PositionField.h"

namespace kelvane {

namespace {

// Keys that type nothing, although the toolkit gives some of them a character.
bool TypesNothing(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Delete:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
      return true;
    default:
      return event.text().isEmpty();
  }
}

}  // namespace

PositionBox::PositionBox(QWidget* parent) : QLineEdit(parent) {
  setObjectName("txtPos");
  setAttribute(Qt::WA_InputMethodEnabled, false);  // what it composes would not come as keys
}

void PositionBox::keyPressEvent(QKeyEvent* event) {
  if (TypesNothing(*event) || PassesPositionField(event->text().front().unicode())) {
    QLineEdit::keyPressEvent(event);
  }
}

}  // namespace kelvane
