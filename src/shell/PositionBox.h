// The text box txtPos.
#pragma once

#include <QLineEdit>

namespace kelvane {

// Drops every typed character that no position is made of.
class PositionBox : public QLineEdit {
 public:
  explicit PositionBox(QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace kelvane
