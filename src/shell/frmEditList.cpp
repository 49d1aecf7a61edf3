#include "shell/frmEditList.h"

#include "shell/ListBox.h"

namespace kelvane {

frmEditList::frmEditList(QWidget* owner, const std::vector<std::string>& lines, int selected)
    : Dialog(owner, "frmEditList", "Change Value (list)"), lst_(new ListBox("lst", this)) {
  for (const std::string& line : lines) {
    lines_.Add(line);
  }
  lines_.Select(selected >= 0 && selected < lines_.Count() ? selected : -1);
  AddRow(lst_);
  AddOkAndCancel();
  resize(360, 400);
  lst_->Show(lines_);
  connect(lst_, &ListBox::DoubleClicked, this, &QDialog::accept);
}

int frmEditList::Row() const {
  return lst_->Row();
}

}  // namespace kelvane
