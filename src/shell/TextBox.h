// The text box txt: several lines of plain text. Enter and Esc belong to the form's default and cancel buttons; a line
// break is typed with Shift+Enter or Ctrl+Enter.
#pragma once

#include <QPlainTextEdit>
#include <string>
#include <string_view>

namespace kelvane {

class TextBox : public QPlainTextEdit {
 public:
  explicit TextBox(QWidget* parent);

  // With CR LF line breaks.
  void SetText(std::u16string_view text);
  [[nodiscard]] std::u16string Text() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace kelvane
