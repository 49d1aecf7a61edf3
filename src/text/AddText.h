// The checks of the dialog that adds a text to all languages.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "common/Int16.h"
#include "common/Prompts.h"
#include "container/RcoDocument.h"

namespace kelvane {

// What txtPos of the dialog starts with: the selected text's number, or nothing.
[[nodiscard]] std::string FirstAddTextPosition(const RcoDocument& document);

// cmdOK of the dialog: where InsertTextRsc is to put a new text of that label, or nothing if the input was refused;
// then the message was shown and the dialog stays. A text can't be appended behind the last one. Failure 6 for a
// position beyond 16 bits.
[[nodiscard]] std::optional<Int16> AcceptAddText(Prompts& prompts, const RcoDocument& document, std::string_view label,
                                                 std::string_view position);

}  // namespace kelvane
