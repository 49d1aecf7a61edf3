#include "shell/frmOther.h"

#include <utility>

#include "shell/Controls.h"
#include "shell/ListBox.h"

namespace kelvane {

frmOther::frmOther(QWidget* owner, RandomInfo info)
    : Dialog(owner, "frmOther", "Kelvane Editor - Random Info"), info_(std::move(info)) {
  AddHeading("lblSec1", "Page/Anim Tables (unsorted)");
  AddLists({"lblPageDes", "\"Page/Dialog\" table", "lstPage", &info_.lstPage, info_.lstPageEnabled},
           {"lblAnimDes", "\"Anim\" table", "lstAnim", &info_.lstAnim, info_.lstAnimEnabled});
  AddGap();
  AddHeading("lblSec2", "Text Data");
  AddLists({"lblLabelDes", "Label Data (all)", "lstLabel", &info_.lstLabel, true},
           {"lblNativeDes", "\"native:/\" Data", "lstNative", &info_.lstNative, true});
  QPushButton* close = AddButton(this, "cmdClose", "Close");
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  AddButtons({close});
  resize(560, 520);
}

void frmOther::AddLists(const Shown& left, const Shown& right) {
  auto* pair = new QGridLayout;
  Rows()->addLayout(pair, Rows()->rowCount(), 0, 1, 3);
  int column = 0;
  for (const Shown& shown : {left, right}) {
    QLabel* label = AddLabel(this, shown.label, shown.caption);
    auto* list = new ListBox(shown.list, this);
    list->Show(*shown.lines);
    label->setEnabled(shown.enabled);
    list->setEnabled(shown.enabled);
    pair->addWidget(label, 0, column);
    pair->addWidget(list, 1, column);
    pair->setColumnStretch(column++, 1);
  }
}

}  // namespace kelvane
