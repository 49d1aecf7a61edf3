// The text box of frmEditVal: 8 hexadecimal digits that are typed over.
#pragma once

#include <QLineEdit>
#include <string>

#include "pages/HexField.h"

namespace kelvane {

// Passes what happens to it on to a HexField and shows that: its text, and its cursor as a selection of one character.
class HexBox : public QLineEdit {
  Q_OBJECT
 public:
  HexBox(const std::string& text, QWidget* parent);

  [[nodiscard]] std::string Text() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void Repair();
  void ShowField();

  HexField field_;
  bool showing_ = false;
};

}  // namespace kelvane
