#include "editor/Editor.h"
#include "text/TextEdit.h"
#include "text/TextList.h"
#include "text/TextSearch.h"

namespace kelvane {

void Editor::lstText_Click(int row) {
  SelectText(mod_, document_, row);
}

void Editor::cboTextLang_Click(int row) {
  SelectTextLang(mod_, document_, row);
}

void Editor::cmdTextChange(std::u16string_view txt) {
  kelvane::cmdTextChange(mod_, document_, ports_.watch, txt);
}

void Editor::cmdTextReset() {
  kelvane::cmdTextReset(mod_, document_);
}

bool Editor::cmdTextSearch() {
  return kelvane::cmdTextSearch(mod_, document_, ports_.prompts);
}

}  // namespace kelvane
