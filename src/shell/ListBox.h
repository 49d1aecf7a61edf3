// A list with one selected row at most, showing lines of the document.
#pragma once

#include <QListView>

#include "shell/ListLinesModel.h"

namespace kelvane {

class ListBox : public QListView {
  Q_OBJECT
 public:
  ListBox(const QString& name, QWidget* parent);

  // Shows the lines and their selected row; the row is brought into sight if it changed. Emits nothing.
  void Show(const ListLines& lines);
  // -1: none.
  [[nodiscard]] int Row() const;

 signals:
  // The user chose another row.
  void RowChosen(int row);
  void DoubleClicked();

 protected:
  bool viewportEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

 private:
  ListLinesModel lines_;
  bool showing_ = false;
};

}  // namespace kelvane
