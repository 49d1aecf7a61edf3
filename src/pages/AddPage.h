// The dialog that adds a page entry: its list of kinds, the words that a new entry begins with, and the checks of
// cmdOK.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/Prompts.h"
#include "container/Inserts.h"
#include "container/RcoDocument.h"

namespace kelvane {

// The lines of cboID; a line's index + 1 is the class of the new entry. The entry's type is 0x800 + class, although the
// lines say 0x900 + class.
inline constexpr std::array<std::string_view, 25> kPageKinds = {
    "0x901 (page)",  "0x902 (plane)",  "0x903 (button)", "0x904 (xmenu)", "0x905 (list)",         "0x906 (xlist)",
    "0x907",         "0x908 (scroll)", "0x909 (mlist)",  "0x90A (mitem)", "0x90B <non-existant>", "0x90C (item_xlist)",
    "0x90D (text)",  "0x90E (model)",  "0x90F (spin?)",  "0x910 (spin?)", "0x911 (item_spin?)",   "0x912 (group)",
    "0x913 (llist)", "0x914 (litem)",  "0x915 (edit)",   "0x916 (clock)", "0x917 (ilist)",        "0x918 (iitem)",
    "0x919 (icon)"};

// The body of a new entry of the kind at that index of cboID. Empty for all kinds but the first two, with which
// InsertPageRsc fails.
[[nodiscard]] std::vector<std::int32_t> NewPageWords(int cboID);

// What the dialog's controls hold when cmdOK is pressed; cboID is -1 without a selection.
struct AddPageFields {
  std::string txtLabel;
  std::string txtPos;
  std::string txtDepth;
  int cboID = -1;
};

// cmdOK of the dialog: what InsertPageRsc is to put in. Nothing if the input was refused; then the message was shown
// and the dialog stays. An empty label isn't refused; the first place and the one behind the last line are. Failure 6
// for a position or depth beyond 16 bits.
[[nodiscard]] std::optional<NewPageRsc> AcceptAddPage(Prompts& prompts, const RcoDocument& document,
                                                      const AddPageFields& fields);

}  // namespace kelvane
