// The dialog "Random Info": raw lists of the open file.
#pragma once

#include "pages/RandomInfo.h"
#include "shell/Dialogs.h"

namespace kelvane {

class frmOther : public Dialog {
  Q_OBJECT
 public:
  frmOther(QWidget* owner, RandomInfo info);

 private:
  // A list and its caption.
  struct Shown {
    const char* label;
    const char* caption;
    const char* list;
    const ListLines* lines;
    bool enabled;
  };
  // Two lists side by side, under their captions.
  void AddLists(const Shown& left, const Shown& right);

  RandomInfo info_;
};

}  // namespace kelvane
