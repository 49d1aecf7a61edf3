// The list of texts and the choice of a language: what a selection shows.
#pragma once

#include "common/Mod.h"
#include "container/RcoDocument.h"

namespace kelvane {

// The selection of lstText changed: lblTxtIdx, txt and what is enabled follow it. Without a selection txt keeps its
// text. Failures: those of reading the text; a file of one language shows without a selected language, so that
// selecting a text of it is failure 9.
void lstText_Click(const Mod& mod, RcoDocument& document);
// What it shows without a selection.
void ShowNoText(RcoDocument& document);
// The language changed.
void cboTextLang_Click(const Mod& mod, RcoDocument& document);

// Select a line, as a click on it does; -1 takes the selection away. Failure 5 for a row that isn't there.
void SelectText(const Mod& mod, RcoDocument& document, int row);
void SelectTextLang(const Mod& mod, RcoDocument& document, int row);

}  // namespace kelvane
