#include "shell/AnimTab.h"

#include "shell/Controls.h"

namespace kelvane {

AnimTab::AnimTab(QWidget* form, EditorRunner& runner) : TabPage(3, "lstAnim", form, runner) {
  lstAnimData_ = new ListBox("lstAnimData", this);
  cmdAnimChange_ = AddButton(this, "cmdAnimChange", "更  改");
  RunOnChoice(List(), &Editor::lstAnim_Click);
  RunOnChoice(lstAnimData_, &Editor::lstAnimData_Click);
  RunOnClick(cmdAnimChange_, [](Editor& editor) { editor.cmdAnimChange(); });
  connect(lstAnimData_, &ListBox::DoubleClicked, cmdAnimChange_, &QAbstractButton::click);
}

void AnimTab::Refresh(const RcoDocument& document) {
  List()->Show(document.lstAnim);
  lstAnimData_->Show(document.lstAnimData);
  lstAnimData_->setEnabled(document.entries.lstAnimDataEnabled);
  cmdAnimChange_->setEnabled(document.entries.cmdAnimChangeEnabled);
}

}  // namespace kelvane
