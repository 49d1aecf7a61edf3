#include "shell/frmEditList.h"

#include <QVBoxLayout>

#include "shell/Dialogs.h"
#include "shell/ListBox.h"

namespace kelvane {

frmEditList::frmEditList(QWidget* owner, const std::vector<std::string>& lines, int selected)
    : QDialog(owner), lst_(new ListBox("lst", this)) {
  PrepareDialog(*this, "frmEditList", "Change Value (list)");
  for (const std::string& line : lines) {
    lines_.Add(line);
  }
  lines_.Select(selected >= 0 && selected < lines_.Count() ? selected : -1);

  auto* rows = new QVBoxLayout(this);
  rows->addWidget(lst_);
  rows->addLayout(OkAndCancel(*this));
  resize(360, 400);
  lst_->Show(lines_);
  lst_->setFocus();
  connect(lst_, &ListBox::DoubleClicked, this, &QDialog::accept);
}

int frmEditList::Row() const {
  return lst_->Row();
}

}  // namespace kelvane
