// Changing single words of page and animation entries, in place: no size ever changes.
//
// A command asks first; only then comes the backup and the word goes to disk. A cancelled question leaves file, backup
// and watcher alone. Failures have no handler: those of the questions' values leave everything as it was, those
// between backup and write (a line without a record, a place beyond 32 bits, those of the file) leave the file as it
// was, the backup made and the watcher stopped.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/Mod.h"
#include "common/Prompts.h"
#include "common/Watch.h"
#include "container/RcoDocument.h"
#include "pages/EditChoices.h"

namespace kelvane {

// What a row of lstPageData or lstAnimData holds, told by its first characters.
enum class RowKind { Float, Hexadecimal, Reference, Blank };
struct Row {
  RowKind kind = RowKind::Float;
  std::int32_t type = 0;  // of a reference, 0x400 to 0x40F; 0x409 for both types of pages

  bool operator==(const Row&) const = default;
};
[[nodiscard]] Row RowOf(std::string_view text);

// Asks for a value in the hexadecimal dialog. True if it was confirmed; `value` is the new one then.
[[nodiscard]] bool EditHexValue(Prompts& prompts, std::int32_t& value);

// Changes the word of the selected row of lstPageData: of a reference its value, never its type. A blank row is only
// told about. Then the row is written anew and the next one selected. Nothing happens without selections. Whether a
// value was written.
//
// Failures: 5 after a change of a model's, an animation's, a page's or another reference by number; the word is in the
// file then and the date recorded, but the row stays as it was. 6 for a number beyond the singles and those of
// ListChoices; 9 for OK in the list dialog without a row.
bool cmdPageChange(Mod& mod, RcoDocument& document, Prompts& prompts, Watch& watch);

// The same for the selected row of lstAnimData, whose rows are words.
bool cmdAnimChange(Mod& mod, RcoDocument& document, Prompts& prompts, Watch& watch);

// Writes the 13 floats of the position block of the selected line of lstPage, all of them, whichever were changed. Text
// that doesn't begin with a number is 0. The boxes keep what was typed. Failure 9 without a selected line, 6 for a
// number beyond the singles.
void cmdPagePosChange(Mod& mod, RcoDocument& document, Watch& watch, const std::array<std::string, 13>& txtPageOpt);

// What cmdPageChange would list for the selected row of lstPageData; nothing where it asks otherwise, where it only
// tells about a blank row, as is done here too, or where no row is selected. Failures: those of ListChoices.
[[nodiscard]] std::optional<EditChoices> ChoicesOfSelectedRow(const Mod& mod, const RcoDocument& document,
                                                              Prompts& prompts);

}  // namespace kelvane
