#include "shell/PageTab.h"

#include <QEvent>

#include "shell/Controls.h"

namespace kelvane {

PageTab::PageTab(QWidget* form, EditorRunner& runner) : TabPage(2, "lstPage", form, runner) {
  picPagePos_ = new QWidget(this);
  picPagePos_->setObjectName("picPagePos");
  picPagePos_->hide();
  AddPositionBlock();
  lstPageData_ = new ListBox("lstPageData", this);
  lstPageData_->installEventFilter(this);
  cmdPageChange_ = AddButton(this, "cmdPageChange", "更改数值");
  Connect();
}

void PageTab::AddPositionBlock() {
  struct Caption {
    const char* name;
    const char* text;
  };
  static constexpr std::array<Caption, 17> kCaptions = {{{"lblPagePosDes", "坐    标:"},
                                                         {"lblPagePosX", "X:"},
                                                         {"lblPagePosY", "Y:"},
                                                         {"lblPageScaleObj", "对象比例:"},
                                                         {"lblPageChannel", "RGB颜色/Alpha透明通道:"},
                                                         {"lblPageChannelR", "R:"},
                                                         {"lblPageChannelG", "G:"},
                                                         {"lblPageChannelB", "B:"},
                                                         {"lblPageChannelA", "A:"},
                                                         {"lblPageDim", "分辨率:"},
                                                         {"lblPageDimW", "W:"},
                                                         {"lblPageDimH", "H:"},
                                                         {"lblPageUnknown", "未知数值:"},
                                                         {"lblPageStretch", "拉伸:"},
                                                         {"lblPageStretchW", "W:"},
                                                         {"lblPageStretchH", "H:"},
                                                         {"lblPageScale", "原始比例:"}}};
  for (const Caption& caption : kCaptions) {
    AddLabel(picPagePos_, caption.name, caption.text);
  }
  for (std::size_t i = 0; i < txtPageOpt_.size(); ++i) {
    txtPageOpt_[i] = AddTextBox(picPagePos_, IndexedName("txtPageOpt", static_cast<int>(i)));
    txtPageOpt_[i]->installEventFilter(this);
  }
  cmdPagePosChange_ = AddButton(picPagePos_, "cmdPagePosChange", "Set");
}

void PageTab::Connect() {
  RunOnChoice(List(), &Editor::lstPage_Click);
  RunOnChoice(lstPageData_, &Editor::lstPageData_Click);
  RunOnClick(cmdPageChange_, [](Editor& editor) { editor.cmdPageChange(); });
  connect(lstPageData_, &ListBox::DoubleClicked, cmdPageChange_, &QAbstractButton::click);
  RunOnClick(cmdPagePosChange_, [this](Editor& editor) { editor.cmdPagePosChange(TypedPositions()); });
}

std::array<std::string, 13> PageTab::TypedPositions() const {
  std::array<std::string, 13> typed;
  for (std::size_t i = 0; i < typed.size(); ++i) {
    typed[i] = txtPageOpt_[i]->text().toStdString();
  }
  return typed;
}

void PageTab::Refresh(const RcoDocument& document) {
  const EntryDisplay& display = document.entries;
  List()->Show(document.lstPage);
  lstPageData_->Show(document.lstPageData);
  lstPageData_->setEnabled(display.lstPageDataEnabled);
  cmdPageChange_->setEnabled(display.cmdPageChangeEnabled);
  picPagePos_->setVisible(display.picPagePosVisible);
  if (shownPositions_ != display.txtPageOptRevision) {
    shownPositions_ = display.txtPageOptRevision;
    for (std::size_t i = 0; i < txtPageOpt_.size(); ++i) {
      txtPageOpt_[i]->setText(QString::fromStdString(display.txtPageOpt[i]));
      txtPageOpt_[i]->setCursorPosition(0);
    }
  }
}

bool PageTab::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    emit WantsDefault(watched == lstPageData_ ? "cmdPageChange" : "cmdPagePosChange");
  }
  return TabPage::eventFilter(watched, event);
}

}  // namespace kelvane
