// Changing one text in one language.
#pragma once

#include <cstdint>
#include <string_view>

#include "common/Mod.h"
#include "common/Watch.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// Stores `txt` as the text of `item` in language `lang` in the open file, and moves all that lies behind it, in the
// file and in the records. labelBase stays. Gives the growth in bytes. Line breaks of `txt` may be CR LF or LF. Where
// the strings don't lie in the order of their records, bytes between them are repeated or lost; files made by the
// firmware's tools have them in order. Failures, before anything is changed: 9 for a text or language without a record,
// where the text's place is 0 or less and where what follows it isn't inside the file; 5; 7. Afterwards: 6 for an
// offset that leaves 32 bits.
std::int32_t ChangeText(RcoFile& file, RcoDocument& document, int lang, int item, std::u16string_view txt);

// Stores `txt`, the content of the text box, as the selected text in the selected language, and goes on to the next
// text. Does nothing without a selected text. Failures: those of the backup; those of the file and of ChangeText, which
// leave the watcher stopped.
void cmdTextChange(Mod& mod, RcoDocument& document, Watch& watch, std::u16string_view txt);

// Shows the selected text anew from the file. Does nothing without a selected text.
void cmdTextReset(const Mod& mod, RcoDocument& document);

}  // namespace kelvane
