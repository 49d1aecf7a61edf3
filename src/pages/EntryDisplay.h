// What the tabs show of the entry whose line is selected in lstPage or lstAnim: the rows of its words and, for page
// entries that have one, the boxes of the position block.
//
// The rows are a contract: editing tells the kind of a row by its first characters, and the place of its word by the
// rows above it.
#pragma once

#include <cstdint>
#include <string_view>

#include "common/Mod.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// Whether page entries of that type begin with the 13 floats of the position block. Their type alone decides.
[[nodiscard]] bool HasPositionBlock(std::int32_t type);

// What rows of a reference of that type begin with, blank included, as in "[event] "; empty for a type that is shown by
// number.
[[nodiscard]] std::string_view ReferencePrefix(std::int32_t type);
inline constexpr std::string_view kBlankRow = "[blank]";

// Adds the row of a word that is no part of a reference: FloatText of a plain float, else 8 hexadecimal digits.
void AddValueRow(std::int32_t value, ListLines& list);

// Rebuild the display from the line that is selected, reading the file anew. An entry without a body leaves its list
// empty and everything else as it was. A reference that leads out of the file is no failure: its row shows what
// ReadLabel says there. Failures: those of opening the file; 9 for a line without a record, and for an entry of a type
// with a position block that has fewer than 13 words (the boxes are then filled as far as they go, and lstPageData is
// empty); 6 for a body beyond 32 bits and for words beyond number 32767; 7 for a body that no memory is spent on.
void lstPage_Click(const Mod& mod, RcoDocument& document);
void lstAnim_Click(const Mod& mod, RcoDocument& document);

// What they do once the file is open and the list is cleared. A line must be selected.
void ShowPageEntry(RcoFile& file, RcoDocument& document);
void ShowAnimEntry(RcoFile& file, RcoDocument& document);

}  // namespace kelvane
