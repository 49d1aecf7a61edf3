#include "shell/AnimTab.h"

#include "shell/Controls.h"

namespace kelvane {

AnimTab::AnimTab(QWidget* form, EditorRunner& runner) : TabPage(3, "lstAnim", form, runner) {
  lstAnimData_ = new ListBox("lstAnimData", this);
  cmdAnimChange_ = AddButton(this, "cmdAnimChange", "更  改");
}

void AnimTab::Refresh(const RcoDocument& document) {
  List()->Show(document.lstAnim);
  lstAnimData_->Show(document.lstAnimData);
  lstAnimData_->setEnabled(document.entries.lstAnimDataEnabled);
  cmdAnimChange_->setEnabled(document.entries.cmdAnimChangeEnabled);
}

}  // namespace kelvane
