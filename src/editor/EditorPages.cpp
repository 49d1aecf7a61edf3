#include "common/PositionField.h"
#include "container/Inserts.h"
#include "editor/Editor.h"
#include "pages/EntryDisplay.h"
#include "pages/EntryEdit.h"

namespace kelvane {

void Editor::lstPage_Click(int row) {
  document_.lstPage.Select(row);
  kelvane::lstPage_Click(mod_, document_);
}

void Editor::lstAnim_Click(int row) {
  document_.lstAnim.Select(row);
  kelvane::lstAnim_Click(mod_, document_);
}

void Editor::lstPageData_Click(int row) {
  document_.lstPageData.Select(row);
}

void Editor::lstAnimData_Click(int row) {
  document_.lstAnimData.Select(row);
}

bool Editor::cmdPageChange() {
  return kelvane::cmdPageChange(mod_, document_, ports_.prompts, ports_.watch);
}

bool Editor::cmdAnimChange() {
  return kelvane::cmdAnimChange(mod_, document_, ports_.prompts, ports_.watch);
}

void Editor::cmdPagePosChange(const std::array<std::string, 13>& txtPageOpt) {
  kelvane::cmdPagePosChange(mod_, document_, ports_.watch, txtPageOpt);
}

std::optional<EditChoices> Editor::ChoicesOfSelectedRow() const {
  return kelvane::ChoicesOfSelectedRow(mod_, document_, ports_.prompts);
}

std::optional<RandomInfo> Editor::cmdOther() {
  if (!RequireLoadedFile(ports_.prompts, mod_)) {
    return std::nullopt;
  }
  return frmOther_Load(mod_);
}

bool Editor::frmAddPage_cmdOK(const AddPageFields& fields) {
  const std::optional<NewPageRsc> page = AcceptAddPage(ports_.prompts, document_, fields);
  if (!page.has_value()) {
    return false;
  }
  InsertPageRsc(*page, Context(), Afterwards());
  return true;
}

}  // namespace kelvane
