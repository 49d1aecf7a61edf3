// The lines of a list of the document as a model, so that a list of tens of thousands of rows costs only what it shows.
#pragma once

#include <QAbstractListModel>

#include "container/RcoDocument.h"

namespace kelvane {

class ListLinesModel : public QAbstractListModel {
  Q_OBJECT
 public:
  explicit ListLinesModel(QObject* parent) : QAbstractListModel(parent) {}

  // Shows `lines`, which must outlive the model. Does nothing if they are as they were shown last. A list that keeps
  // its length keeps its place under the eye; any other is reset.
  void Show(const ListLines& lines);

  [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  const ListLines* lines_ = nullptr;
  int shownCount_ = 0;
  unsigned shownRevision_ = 0;
};

}  // namespace kelvane
