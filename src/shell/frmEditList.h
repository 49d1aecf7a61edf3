// The dialog "Change Value (list)".
#pragma once

#include <string>
#include <vector>

#include "container/RcoDocument.h"
#include "shell/Dialogs.h"

namespace kelvane {

class ListBox;

class frmEditList : public Dialog {
  Q_OBJECT
 public:
  // `selected` is the row that starts selected, -1 for none.
  frmEditList(QWidget* owner, const std::vector<std::string>& lines, int selected);

  // The selected row, -1 for none.
  [[nodiscard]] int Row() const;

 private:
  ListLines lines_;
  ListBox* lst_;
};

}  // namespace kelvane
