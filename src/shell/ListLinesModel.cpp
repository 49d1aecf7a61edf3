#include "shell/ListLinesModel.h"

namespace kelvane {

void ListLinesModel::Show(const ListLines& lines) {
  const bool same = lines_ == &lines;
  if (same && shownRevision_ == lines.Revision()) {
    return;
  }
  if (same && shownCount_ == lines.Count() && shownCount_ > 0) {
    shownRevision_ = lines.Revision();
    emit dataChanged(index(0), index(shownCount_ - 1));
    return;
  }
  beginResetModel();
  lines_ = &lines;
  shownCount_ = lines.Count();
  shownRevision_ = lines.Revision();
  endResetModel();
}

int ListLinesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : shownCount_;
}

QVariant ListLinesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || lines_ == nullptr || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) {
    return {};
  }
  return QString::fromStdString(lines_->Text(index.row()));
}

}  // namespace kelvane
