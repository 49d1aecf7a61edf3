#include "shell/ListBox.h"

#include <QHelpEvent>
#include <QToolTip>

namespace kelvane {

ListBox::ListBox(const QString& name, QWidget* parent) : QListView(parent), lines_(this) {
  setObjectName(name);
  setModel(&lines_);
  setUniformItemSizes(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTextElideMode(Qt::ElideRight);
  setTabKeyNavigation(false);
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (!showing_ && Row() >= 0) {
      emit RowChosen(Row());
    }
  });
  connect(this, &QListView::doubleClicked, this, [this] { emit DoubleClicked(); });
}

void ListBox::Show(const ListLines& lines) {
  showing_ = true;
  const int before = Row();
  lines_.Show(lines);
  if (lines.Selected() != Row()) {
    if (lines.Selected() < 0) {
      selectionModel()->clear();
      scrollToTop();
    } else {
      setCurrentIndex(lines_.index(lines.Selected()));
    }
  }
  if (Row() >= 0 && Row() != before) {
    scrollTo(currentIndex());
  }
  showing_ = false;
}

int ListBox::Row() const {
  const QModelIndexList rows = selectionModel()->selectedIndexes();
  return rows.isEmpty() ? -1 : rows.front().row();
}

bool ListBox::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) {
    return QListView::viewportEvent(event);
  }
  // A line that is cut off shows whole under the mouse.
  const auto* help = static_cast<QHelpEvent*>(event);
  const QString text = indexAt(help->pos()).data().toString();
  if (fontMetrics().horizontalAdvance(text) + 8 > viewport()->width()) {
    QToolTip::showText(help->globalPos(), text.toHtmlEscaped(), viewport());
  } else {
    QToolTip::hideText();
  }
  return true;
}

void ListBox::focusInEvent(QFocusEvent* event) {
  QListView::focusInEvent(event);
  if (Row() < 0) {
    // The toolkit makes the first row the current one. Without a selection there is none, so that Down goes to the
    // first.
    selectionModel()->clearCurrentIndex();
  }
}

QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex& index, const QEvent* event) const {
  // Ctrl and a click would take the selection away; here it chooses the row like any click.
  return index.isValid() ? QItemSelectionModel::ClearAndSelect : QListView::selectionCommand(index, event);
}

}  // namespace kelvane
