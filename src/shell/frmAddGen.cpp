#include "shell/frmAddGen.h"

#include "shell/Controls.h"
#include "shell/FileBox.h"

namespace kelvane {

frmAddGen::frmAddGen(QWidget* owner, int lineCount, const std::string& position, Prompts& prompts, const Accept& accept)
    : Dialog(owner, "frmAddGen", "Kelvane Editor - Add General Resource") {
  constexpr const char* kKinds = "*.bmp;*.mig;*.gim;*.vag;*.omg;*.gmo";
  const FileDialog browse{.title = "", .filters = {{"支持文件(" + std::string(kKinds) + ")", kKinds}}};
  const FileBox file = AddFileBox(this, "txtFile", "cmdFileBrowse", browse, prompts);
  AddField("lblFileDes", "&File:", file.box, file.browse);
  const QLineEdit* pos = AddPosition(lineCount, position);
  QLineEdit* label = AddTextBox(this, "txtLabel");
  AddField("lblLabelDes", "&Label Name:", label);
  AddWarning();
  AddOkAndCancel([file, pos, label, accept] {
    return accept(PathOf(*file.box), pos->text().toStdString(), label->text().toStdString());
  });
}

}  // namespace kelvane
