#include "shell/HexBox.h"

#include <QKeyEvent>
#include <optional>

namespace kelvane {

namespace {

std::optional<HexField::Key> KeyOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return HexField::Key::Left;
    case Qt::Key_Right:
      return HexField::Key::Right;
    case Qt::Key_Delete:
      return HexField::Key::Delete;
    case Qt::Key_Home:
      return HexField::Key::Home;
    case Qt::Key_End:
      return HexField::Key::End;
    case Qt::Key_Up:
      return HexField::Key::Up;
    case Qt::Key_Down:
      return HexField::Key::Down;
    default:
      return std::nullopt;
  }
}

bool BelongsToTheDialog(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Escape ||
         event.modifiers().testFlag(Qt::AltModifier) || event.text().isEmpty();
}

}  // namespace

HexBox::HexBox(const std::string& text, QWidget* parent) : QLineEdit(parent) {
  setObjectName("txt");
  setAttribute(Qt::WA_InputMethodEnabled, false);  // what it composes would not come as keys
  field_.Repair(QString::fromStdString(text).toStdU16String(), 0);
  ShowField();
  connect(this, &QLineEdit::textChanged, this, [this] { Repair(); });
}

std::string HexBox::Text() const {
  return QString::fromStdU16String(field_.Text()).toStdString();
}

void HexBox::Repair() {
  if (!showing_) {
    field_.Repair(text().toStdU16String(), hasSelectedText() ? selectionStart() : cursorPosition());
    ShowField();
  }
}

void HexBox::ShowField() {
  showing_ = true;
  const QString shown = QString::fromStdU16String(field_.Text());
  if (text() != shown) {
    setText(shown);
  }
  setSelection(field_.Cursor(), 1);
  showing_ = false;
}

void HexBox::keyPressEvent(QKeyEvent* event) {
  const std::optional<HexField::Key> key = KeyOf(event->key());
  if (key) {
    field_.KeyDown(*key);
    ShowField();
  } else if (event->key() == Qt::Key_Insert) {
    QLineEdit::keyPressEvent(event);  // with Shift it pastes, with Ctrl it copies
  } else if (BelongsToTheDialog(*event)) {
    event->ignore();
  } else if (!event->modifiers().testFlag(Qt::ControlModifier)) {
    field_.KeyPress(event->text().front().unicode());
    ShowField();
  }
}

void HexBox::keyReleaseEvent(QKeyEvent* event) {
  QLineEdit::keyReleaseEvent(event);
  Repair();
}

void HexBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  // Coming by Tab the toolkit selects the whole text; the cursor stays where it was.
  ShowField();
}

void HexBox::mousePressEvent(QMouseEvent* event) {
  QLineEdit::mousePressEvent(event);
  Repair();
}

void HexBox::mouseMoveEvent(QMouseEvent* event) {
  QLineEdit::mouseMoveEvent(event);
  Repair();
}

void HexBox::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  Repair();
}

void HexBox::mouseDoubleClickEvent(QMouseEvent* event) {
  QLineEdit::mouseDoubleClickEvent(event);
  Repair();
}

}  // namespace kelvane
