#include "text/TextList.h"

#include <string>

#include "text/TextString.h"

namespace kelvane {

void lstText_Click(const Mod& mod, RcoDocument& document) {
  const int item = document.lstText.Selected();
  if (item < 0) {
    ShowNoText(document);
    return;
  }
  TextDisplay& display = document.text;
  display.lblTxtIdx = "项目 #" + std::to_string(item);
  display.enabled = true;
  display.txt = UpToFirstNul(GetTextString(mod, document, Int16(item), Int16(document.cboTextLang.Selected())));
  ++display.txtRevision;
}

void ShowNoText(RcoDocument& document) {
  document.text.lblTxtIdx.clear();
  document.text.enabled = false;
}

void cboTextLang_Click(const Mod& mod, RcoDocument& document) {
  lstText_Click(mod, document);
}

void SelectText(const Mod& mod, RcoDocument& document, int row) {
  document.lstText.Select(row);
  lstText_Click(mod, document);
}

void SelectTextLang(const Mod& mod, RcoDocument& document, int row) {
  document.cboTextLang.Select(row);
  cboTextLang_Click(mod, document);
}

}  // namespace kelvane
