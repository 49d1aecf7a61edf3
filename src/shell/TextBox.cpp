#include "shell/TextBox.h"

#include <QKeyEvent>
#include <QTextDocument>

#include "shell/BoxText.h"

namespace kelvane {

TextBox::TextBox(QWidget* parent) : QPlainTextEdit(parent) {
  setObjectName("txt");
  setTabChangesFocus(true);
  setAcceptDrops(false);  // a file dropped on it goes to the page below
}

void TextBox::SetText(std::u16string_view text) {
  setPlainText(ToDocument(text));
}

std::u16string TextBox::Text() const {
  return FromDocument(document()->toRawText());
}

void TextBox::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isEnter && (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier))) {
    textCursor().insertBlock();
    ensureCursorVisible();
  } else if (isEnter || event->key() == Qt::Key_Escape) {
    event->ignore();
  } else {
    QPlainTextEdit::keyPressEvent(event);
  }
}

}  // namespace kelvane
