// The dialog that adds a page entry. No control of the main form opens it.
#pragma once

#include <functional>

#include "pages/AddPage.h"
#include "shell/Dialogs.h"

namespace kelvane {

class frmAddPage : public Dialog {
  Q_OBJECT
 public:
  // Takes what the dialog holds when OK is pressed; false leaves it open.
  using Accept = std::function<bool(const AddPageFields& fields)>;

  // `lineCount` is that of lstPage.
  frmAddPage(QWidget* owner, int lineCount, const Accept& accept);
};

}  // namespace kelvane
