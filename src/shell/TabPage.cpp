#include "shell/TabPage.h"

#include <QAbstractButton>

#include "shell/Controls.h"

namespace kelvane {

TabPage::TabPage(int index, const char* listName, QWidget* form, EditorRunner& runner)
    : QWidget(form), runner_(runner), list_(new ListBox(listName, form)) {
  setObjectName(IndexedName("picTab", index));
}

void TabPage::setVisible(bool visible) {
  QWidget::setVisible(visible);
  list_->setVisible(visible);
}

void TabPage::ShowExpert(bool /*expert*/) {}

void TabPage::RunOnClick(QAbstractButton* button, const Command& command) {
  connect(button, &QAbstractButton::clicked, this, [this, command] { runner_.Run(command); });
}

void TabPage::RunOnChoice(ListBox* list, void (Editor::*command)(int row)) {
  connect(list, &ListBox::RowChosen, this,
          [this, command](int row) { runner_.Run([command, row](Editor& editor) { (editor.*command)(row); }); });
}

}  // namespace kelvane
