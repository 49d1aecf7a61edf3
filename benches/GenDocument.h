// A document's general resources, for the benches of commands that work on all of them.
#pragma once

#include "common/Mod.h"
#include "common/Prompts.h"
#include "container/RcoDocument.h"

namespace kelvane::bench {

// Answers what only tells. A question comes after a failure only, and then a figure would be worth nothing: it throws.
Answer AnswerOf(const Message& message);

// Takes the resources of the file `mod.cCurFile` into `document`, and nothing else.
void OpenGenRsc(const Mod& mod, RcoDocument& document);

}  // namespace kelvane::bench
