#include "shell/Dialogs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "common/PositionField.h"
#include "shell/Controls.h"
#include "shell/Failure.h"
#include "shell/PositionBox.h"

namespace kelvane {

Dialog::Dialog(QWidget* owner, const char* name, const QString& caption)
    : QDialog(owner), rows_(new QGridLayout(this)) {
  setObjectName(name);
  setWindowTitle(caption);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  rows_->setColumnStretch(1, 1);
  rows_->setSizeConstraint(QLayout::SetMinimumSize);
}

void Dialog::AddRow(QWidget* control) {
  rows_->addWidget(control, rows_->rowCount(), 0, 1, 3);
}

void Dialog::AddField(const char* labelName, const QString& caption, QWidget* control, QWidget* behind) {
  const int row = rows_->rowCount();
  QLabel* label = AddLabel(this, labelName, caption);
  label->setBuddy(control);
  rows_->addWidget(label, row, 0);
  rows_->addWidget(control, row, 1, 1, behind == nullptr ? 2 : 1);
  if (behind != nullptr) {
    rows_->addWidget(behind, row, 2);
  }
}

QLineEdit* Dialog::AddPosition(int lineCount, const std::string& first) {
  auto* box = new PositionBox(this);
  box->setText(QString::fromStdString(first));
  AddField("lblPosDes", "&坐    标:", box,
           AddLabel(this, "lblPosInfo", QString::fromStdString(PositionRangeText(lineCount))));
  return box;
}

void Dialog::AddWarning() {
  AddRow(AddLabel(this, "lblWarn", "NOTE: This feature isn't exactly \"complete\" so expect bugs!!!"));
}

void Dialog::AddButtons(const std::vector<QPushButton*>& buttons) {
  buttons.front()->setDefault(true);
  auto* row = new QHBoxLayout;
  row->setContentsMargins(0, 6, 0, 0);
  row->addStretch();
  for (QPushButton* button : buttons) {
    row->addWidget(button);
  }
  rows_->addLayout(row, rows_->rowCount(), 0, 1, 3);
}

void Dialog::AddGap() {
  rows_->setRowMinimumHeight(rows_->rowCount(), 6);
}

void Dialog::AddHeading(const char* name, const QString& caption) {
  QLabel* heading = AddLabel(this, name, caption);
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  AddRow(heading);
}

void Dialog::AddOkAndCancel(std::function<bool()> accepts) {
  QPushButton* ok = AddButton(this, "cmdOK", "OK");
  QPushButton* cancel = AddButton(this, "cmdCancel", "Cancel");
  connect(ok, &QPushButton::clicked, this, Guarded([this, accepts = std::move(accepts)](bool) {
            if (!accepts || accepts()) {
              accept();
            }
          }));
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  AddButtons({ok, cancel});
}

}  // namespace kelvane
