#include "shell/GeneralTab.h"

#include <QPushButton>

#include "common/Encoding.h"
#include "shell/Controls.h"
#include "shell/frmAddGen.h"

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
  StandOut();
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
  const auto add = [this, container](const char* name, const char* caption, auto command) {
    connect(AddButton(container, name, caption), &QPushButton::clicked, this,
            [this, command] { runner_.Run([command](Editor& editor) { (editor.*command)(); }); });
  };
  add("cmdExtract", "提    取", &Editor::cmdExtract);
  add("cmdReplace", "替    换", &Editor::cmdReplace);
  add("cmdExtractAll", "提取全部", &Editor::cmdExtractAll);
  add("cmdReplaceAll", "替换全部", &Editor::cmdReplaceAll);
  QPushButton* addGen = AddButton(container, "cmdGenRscAdd", "Add...");
  connect(addGen, &QPushButton::clicked, this, &GeneralTab::AddResource);
  cmdGenRscAdd_ = addGen;

  connect(List(), &ListBox::RowChosen, this,
          [this](int row) { runner_.Run([row](Editor& editor) { editor.lst_Click(row); }); });
  connect(picPreview_, &PictureBox::Clicked, this, &GeneralTab::OpenPreview);
  connect(preview_, &frmPreview::ColourChosen, this, &GeneralTab::TakeColour);
}

void GeneralTab::AddResource() {
  runner_.Run([this](Editor& editor) {
    const std::optional<std::string> position = editor.cmdGenRscAdd();
    if (position) {
      frmAddGen(window(), editor.Document().lst.Count(), *position, editor.Asking(),
                [&editor](const std::filesystem::path& file, const std::string& typed, const std::string& label) {
                  return editor.frmAddGen_cmdOK({.txtFile = PathToUtf8(file), .txtPos = typed, .txtLabel = label});
                })
          .exec();
    }
  });
}

void GeneralTab::OpenPreview() {
  preview_->SetBackground(picPreview_->Background());
  preview_->Open();
  Redraw();
}

void GeneralTab::TakeColour(const QColor& colour) {
  picPreview_->SetBackground(colour);
  preview_->SetBackground(colour);
  StandOut();
  Redraw();
}

void GeneralTab::StandOut() {
  QPalette palette = lblPreviewFail_->palette();
  palette.setColor(QPalette::WindowText, qGray(picPreview_->Background().rgb()) < 128 ? Qt::white : Qt::black);
  lblPreviewFail_->setPalette(palette);
}

void GeneralTab::Redraw() {
  runner_.Run([](Editor& editor) { editor.lst_Click(editor.Document().lst.Selected()); });
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
