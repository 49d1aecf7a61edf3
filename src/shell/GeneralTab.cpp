#include "shell/GeneralTab.h"

#include "shell/Controls.h"

namespace kelvane {

GeneralTab::GeneralTab(QWidget* form, EditorRunner& runner, PictureBox* picPreview, frmPreview* preview)
    : TabPage(0, "lst", form, runner), picPreview_(picPreview), preview_(preview) {
  auto* container = new QWidget(this);
  container->setObjectName("picGenContainer");
  AddDisplay(container);
  AddCommands(container);
}

void GeneralTab::AddDisplay(QWidget* container) {
  lblGenItemNo_ = AddLabel(container, "lblGenItemNo");
  picPreview_->setParent(container);
  picPreview_->setContentsMargins(1, 1, 1, 1);
  picPreview_->setCursor(Qt::PointingHandCursor);
  lblPreviewFail_ = AddLabel(picPreview_, "lblPreviewFail", "Invalid Icon");
  lblPreviewFail_->setAlignment(Qt::AlignCenter);
  lblPreviewFail_->setAttribute(Qt::WA_TransparentForMouseEvents);
  chkRes_ = AddCheckBox(container, "chkRes", "Check1");
  lblDim_ = AddLabel(container, "lblDim");
  AddLabel(container, "lblGenComprDes", "压缩状况:");
  lblGenCompr_ = AddLabel(container, "lblGenCompr");
  lblGenOffsetEntryDes_ = AddLabel(container, "lblGenOffsetEntryDes", "Entry at:");
  lblGenOffsetEntry_ = AddLabel(container, "lblGenOffsetEntry");
  lblGenOffsetDataDes_ = AddLabel(container, "lblGenOffsetDataDes", "Data at:");
  lblGenOffsetData_ = AddLabel(container, "lblGenOffsetData");

  connect(chkRes_, &QCheckBox::toggled, this, [this](bool checked) {
    picPreview_->SetOutlineVisible(checked);
    preview_->SetOutlineVisible(checked);
  });
}

void GeneralTab::AddCommands(QWidget* container) {
  AddButton(container, "cmdExtract", "提    取");
  AddButton(container, "cmdReplace", "替    换");
  AddButton(container, "cmdExtractAll", "提取全部");
  AddButton(container, "cmdReplaceAll", "替换全部");
  cmdGenRscAdd_ = AddButton(container, "cmdGenRscAdd", "Add...");
}

void GeneralTab::Refresh(const RcoDocument& document) {
  List()->Show(document.lst);
  const GeneralDisplay& display = document.general;
  lblGenItemNo_->setText(QString::fromStdString(display.lblGenItemNo));
  lblDim_->setText(QString::fromStdString(display.lblDim));
  lblGenCompr_->setText(QString::fromStdString(display.lblGenCompr));
  lblGenOffsetEntry_->setText(QString::fromStdString(display.lblGenOffsetEntry));
  lblGenOffsetData_->setText(QString::fromStdString(display.lblGenOffsetData));
  lblPreviewFail_->setVisible(display.lblPreviewFailVisible);
  const QSize outline(display.shpResWidth, display.shpResHeight);
  picPreview_->SetOutline(outline);
  preview_->SetOutline(outline);
}

void GeneralTab::ShowExpert(bool expert) {
  for (QWidget* control :
       {cmdGenRscAdd_, static_cast<QWidget*>(lblGenOffsetEntryDes_), static_cast<QWidget*>(lblGenOffsetEntry_),
        static_cast<QWidget*>(lblGenOffsetDataDes_), static_cast<QWidget*>(lblGenOffsetData_)}) {
    control->setVisible(expert);
  }
}

}  // namespace kelvane
