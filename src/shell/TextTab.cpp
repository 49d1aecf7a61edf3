#include "shell/TextTab.h"

#include <QComboBox>

#include "shell/Controls.h"
#include "shell/frmAddText.h"

namespace kelvane {

TextTab::TextTab(QWidget* form, EditorRunner& runner) : TabPage(1, "lstText", form, runner) {
  auto* container = new QWidget(this);
  container->setObjectName("picTextContainer");
  AddLabel(container, "lblTextLangDes", "语    言:");
  cboTextLang_ = new QComboBox(container);
  cboTextLang_->setObjectName("cboTextLang");
  lblTxtIdx_ = AddLabel(container, "lblTxtIdx");
  txt_ = new TextBox(container);
  AddLabel(container, "lblTextTip", "提示:使用Shift+Enter或者Ctrl+Enter可以换行")->setWordWrap(true);
  cmdTextChange_ = AddButton(container, "cmdTextChange", "&更 改");
  cmdTextReset_ = AddButton(container, "cmdTextReset", "&重 设");
  cmdTextSearch_ = AddButton(container, "cmdTextSearch", "搜索文本");
  cmdTextRscAdd_ = AddButton(container, "cmdTextRscAdd", "Add...");
  AddButton(container, "cmdTextExport", "   Export List...", Drawing::ExportList);
  AddButton(container, "cmdTextImport", "   Import List...", Drawing::ImportList);
  Connect();
}

void TextTab::Connect() {
  RunOnChoice(List(), &Editor::lstText_Click);
  connect(cboTextLang_, &QComboBox::activated, this,
          [this](int row) { runner_.Run([row](Editor& editor) { editor.cboTextLang_Click(row); }); });
  RunOnClick(cmdTextChange_, [this](Editor& editor) { editor.cmdTextChange(txt_->Text()); });
  RunOnClick(cmdTextReset_, [](Editor& editor) { editor.cmdTextReset(); });
  RunOnClick(cmdTextSearch_, [](Editor& editor) { editor.cmdTextSearch(); });
  RunOnClick(cmdTextRscAdd_, [this](Editor& editor) { AddText(editor); });
}

void TextTab::AddText(Editor& editor) {
  const std::optional<std::string> position = editor.cmdTextRscAdd();
  if (position) {
    frmAddText(
        window(), editor.Document().lstText.Count(), *position,
        [&editor](const std::string& label, const std::string& typed) { return editor.frmAddText_cmdOK(label, typed); })
        .exec();
  }
}

void TextTab::Refresh(const RcoDocument& document) {
  List()->Show(document.lstText);
  ShowLanguages(document.cboTextLang);
  ShowText(document.text);
}

void TextTab::ShowLanguages(const ListLines& languages) {
  if (shownLanguages_ != languages.Revision()) {
    shownLanguages_ = languages.Revision();
    cboTextLang_->clear();
    for (const std::string& language : languages.Lines()) {
      cboTextLang_->addItem(QString::fromStdString(language));
    }
  }
  cboTextLang_->setCurrentIndex(languages.Selected());
}

void TextTab::ShowText(const TextDisplay& display) {
  lblTxtIdx_->setText(QString::fromStdString(display.lblTxtIdx));
  txt_->setEnabled(display.enabled);
  cmdTextChange_->setEnabled(display.enabled);
  cmdTextReset_->setEnabled(display.enabled);
  if (shownText_ != display.txtRevision) {
    shownText_ = display.txtRevision;
    txt_->SetText(display.txt);
  }
  if (shownSelectAll_ != display.selectAllRevision) {
    shownSelectAll_ = display.selectAllRevision;
    txt_->selectAll();
    txt_->setFocus();
  }
}

void TextTab::ShowExpert(bool expert) {
  cmdTextRscAdd_->setVisible(expert);
}

}  // namespace kelvane
