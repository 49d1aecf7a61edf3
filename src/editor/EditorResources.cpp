#include "common/PositionField.h"
#include "editor/Editor.h"
#include "resources/Extraction.h"
#include "resources/Preview.h"
#include "resources/Replacement.h"

namespace kelvane {

ReplaceContext Editor::Replacing() {
  return {.write = Context(), .pictures = ports_.pictures, .progress = ports_.progress, .refresh = [this] {
            ShowResource();
          }};
}

void Editor::ShowResource() {
  ShowSelectedResource({.mod = mod_,
                        .document = document_,
                        .prompts = ports_.prompts,
                        .pictures = ports_.pictures,
                        .surfaces = {ports_.picPreview, ports_.frmPreview}});
}

void Editor::lst_Click(int row) {
  document_.lst.Select(row);
  ShowResource();
}

void Editor::cmdExtract() {
  CmdExtract(mod_, document_, ports_.prompts);
}

void Editor::cmdExtractAll() {
  CmdExtractAll(mod_, document_, ports_.prompts, ports_.progress);
}

bool Editor::cmdReplace() {
  return CmdReplace(Replacing());
}

void Editor::cmdReplaceAll() {
  CmdReplaceAll(Replacing());
}

std::optional<std::string> Editor::cmdGenRscAdd() {
  if (!RequireLoadedFile(ports_.prompts, mod_)) {
    return std::nullopt;
  }
  const int selected = document_.lst.Selected();
  return selected >= 0 ? std::to_string(selected) : "";
}

bool Editor::frmAddGen_cmdOK(const AddGenFields& fields) {
  return AddGenRsc(fields, Context(), Afterwards());
}

}  // namespace kelvane
