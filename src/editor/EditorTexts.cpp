#include "common/PositionField.h"
#include "container/Inserts.h"
#include "editor/Editor.h"
#include "text/AddText.h"
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

std::optional<std::string> Editor::cmdTextRscAdd() {
  if (!RequireLoadedFile(ports_.prompts, mod_)) {
    return std::nullopt;
  }
  return FirstAddTextPosition(document_);
}

bool Editor::frmAddText_cmdOK(const std::string& label, const std::string& position) {
  const std::optional<Int16> accepted = AcceptAddText(ports_.prompts, document_, label, position);
  if (!accepted) {
    return false;
  }
  InsertTextRsc(*accepted, label, Context(), Afterwards());
  return true;
}

}  // namespace kelvane
