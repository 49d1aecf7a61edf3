// Changing one text in one language.
#pragma once

#include <string_view>

#include "common/Mod.h"
#include "common/Watch.h"
#include "container/RcoDocument.h"

namespace kelvane {

// Stores `txt`, the content of the text box, as the selected text in the selected language, moves all that lies behind
// it, and goes on to the next text. Line breaks of `txt` may be CR LF or LF. Does nothing without a selected text.
// Where the strings don't lie in the order of their records, bytes between them are repeated or lost; files made by the
// firmware's tools have them in order. Failures, which leave the watcher stopped: those of the backup and the file; 9
// where the text's place is 0 or less, or that of what follows it isn't inside the file; 9 without a selected language;
// 5, 6, 7.
void cmdTextChange(Mod& mod, RcoDocument& document, Watch& watch, std::u16string_view txt);

// Shows the selected text anew from the file. Does nothing without a selected text.
void cmdTextReset(const Mod& mod, RcoDocument& document);

}  // namespace kelvane
