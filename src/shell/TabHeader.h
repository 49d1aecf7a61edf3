// One header of the tab strip, picTabSel(i): an icon and a caption in four states.
#pragma once

#include <QIcon>
#include <QWidget>

#include "shell/modTabs.h"

namespace kelvane {

class TabHeader : public QWidget {
  Q_OBJECT
 public:
  TabHeader(const QIcon& icon, const QString& caption, QWidget* parent);

  // What it was told to be; its look follows with the next repaint.
  void SetSelected(bool selected);
  [[nodiscard]] bool IsSelected() const { return selected_; }
  [[nodiscard]] TabState State() const { return state_; }
  [[nodiscard]] const QString& Caption() const { return caption_; }

 signals:
  void Clicked();
  void KeyPressed(kelvane::TabKey key);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  // Takes an event to the next state; repaints if it is another one.
  void Take(TabEvent event);
  void ShowKeyboardFocus(bool shown);
  void PaintFrame(QPainter& painter) const;

  QIcon icon_;
  QString caption_;
  TabState state_ = TabState::Normal;
  bool selected_ = false;
  bool keyboardFocus_ = false;
};

}  // namespace kelvane
