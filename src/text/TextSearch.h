// The search for a text.
#pragma once

#include "common/Mod.h"
#include "common/Prompts.h"
#include "container/RcoDocument.h"

namespace kelvane {

// Asks for a pattern and selects the next text of the selected language that holds a match, behind the selection and,
// if there was one, on from the first text up to and including it. Case is ignored. True if one was selected; false for
// an empty list, an empty answer or nothing found, which is told. Failures: 9 without a selected language, those of
// reading the texts, and, once a text is read, 93 for an invalid pattern.
bool cmdTextSearch(const Mod& mod, RcoDocument& document, Prompts& prompts);

}  // namespace kelvane
