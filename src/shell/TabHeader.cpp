#include "shell/TabHeader.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <optional>

namespace kelvane {

namespace {

constexpr int kIconSize = 16;
constexpr int kIconLeft = 5;
constexpr int kCaptionLeft = 27;

QColor Mixed(const QColor& colour, const QColor& other, double share) {
  const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
  return {mix(colour.red(), other.red()), mix(colour.green(), other.green()), mix(colour.blue(), other.blue())};
}

std::optional<TabKey> ArrowOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return TabKey::Left;
    case Qt::Key_Right:
      return TabKey::Right;
    case Qt::Key_Up:
      return TabKey::Up;
    case Qt::Key_Down:
      return TabKey::Down;
    default:
      return std::nullopt;
  }
}

bool IsLeftOrRight(const QMouseEvent& event) {
  return event.button() == Qt::LeftButton || event.button() == Qt::RightButton;
}

}  // namespace

TabHeader::TabHeader(const QIcon& icon, const QString& caption, QWidget* parent)
    : QWidget(parent), icon_(icon), caption_(caption) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(caption);
}

void TabHeader::SetSelected(bool selected) {
  selected_ = selected;
  if (!selected) {
    state_ = TabState::Normal;
  }
  update();
}

void TabHeader::Take(TabEvent event) {
  const TabState old = state_;
  state_ = NextTabState(old, selected_, event);
  if (state_ != old) {
    update();
  }
}

void TabHeader::mousePressEvent(QMouseEvent* event) {
  Take(IsLeftOrRight(*event) ? TabEvent::ButtonDown : TabEvent::Other);
}

void TabHeader::mouseDoubleClickEvent(QMouseEvent* event) {
  // The second press of the right button counts as none.
  Take(event->button() == Qt::LeftButton ? TabEvent::ButtonDown : TabEvent::Other);
}

void TabHeader::mouseReleaseEvent(QMouseEvent* event) {
  Take(IsLeftOrRight(*event) ? TabEvent::ButtonUp : TabEvent::Other);
  if (event->button() == Qt::LeftButton && rect().contains(event->pos())) {
    emit Clicked();
  }
}

void TabHeader::mouseMoveEvent(QMouseEvent* event) {
  // While a button is held the toolkit goes on telling of the mouse outside; there it counts as gone.
  Take(rect().contains(event->pos()) ? TabEvent::MouseMove : TabEvent::MouseLeave);
}

void TabHeader::leaveEvent(QEvent* /*event*/) {
  Take(TabEvent::MouseLeave);
}

void TabHeader::keyPressEvent(QKeyEvent* event) {
  const std::optional<TabKey> key = ArrowOf(event->key());
  if (key) {
    emit KeyPressed(*key);
  } else {
    QWidget::keyPressEvent(event);
  }
}

void TabHeader::focusInEvent(QFocusEvent* event) {
  ShowKeyboardFocus(event->reason() != Qt::MouseFocusReason && event->reason() != Qt::ActiveWindowFocusReason);
}

void TabHeader::focusOutEvent(QFocusEvent* /*event*/) {
  ShowKeyboardFocus(false);
}

void TabHeader::ShowKeyboardFocus(bool shown) {
  if (keyboardFocus_ != shown) {
    keyboardFocus_ = shown;
    update();
  }
}

void TabHeader::PaintFrame(QPainter& painter) const {
  const QColor face = palette().color(QPalette::Button);
  const QColor page = palette().color(QPalette::Window);
  const QColor accent = palette().color(QPalette::Highlight);
  const QColor line = palette().color(QPalette::Mid);
  // The selected header stands higher, and has no line between it and its page.
  const bool selected = state_ == TabState::Selected;
  const QRect frame = rect().adjusted(0, selected ? 0 : 2, -1, selected ? 1 : -1);

  QColor fill = page;
  if (state_ == TabState::Normal) {
    fill = Mixed(face, line, 0.18);
  } else if (state_ == TabState::Hover) {
    fill = Mixed(face, accent, 0.14);
  } else if (state_ == TabState::Pressed) {
    fill = Mixed(face, accent, 0.36);
  }
  painter.setPen(line);
  painter.setBrush(fill);
  painter.drawRect(frame);
  if (state_ == TabState::Selected || state_ == TabState::Hover) {
    painter.fillRect(QRect(frame.left(), frame.top(), frame.width() + 1, 2), accent);
  }
}

void TabHeader::paintEvent(QPaintEvent* /*event*/) {
  state_ = NextTabState(state_, selected_, TabEvent::Other);
  QPainter painter(this);
  PaintFrame(painter);

  const bool selected = state_ == TabState::Selected;
  const int iconTop = height() / 2 - 8 + (selected && isEnabled() ? 1 : 0);
  icon_.paint(&painter, kIconLeft, iconTop, kIconSize, kIconSize, Qt::AlignCenter,
              isEnabled() ? QIcon::Normal : QIcon::Disabled);

  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
  const int captionTop = selected ? 2 : 0;
  painter.drawText(QRect(kCaptionLeft, captionTop, width() - 1 - kCaptionLeft, height() - 1 - captionTop),
                   Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, caption_);
  if (keyboardFocus_) {
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = rect().adjusted(3, 4, -4, -3);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
  }
}

}  // namespace kelvane
