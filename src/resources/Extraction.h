// Takes resources out of the open file: one by cmdExtract, all by cmdExtractAll.
#pragma once

#include <string>

#include "common/Mod.h"
#include "common/Prompts.h"
#include "common/Watch.h"
#include "container/RcoDocument.h"

namespace kelvane {

// The extension, without a full stop, of an image of that rscFormat; empty for a format that has none.
[[nodiscard]] std::string ExtensionForImageType(Int16 format);

// The label in a row of lst, which stands behind a prefix such as "[GIM] "; empty for a row that the list doesn't have.
[[nodiscard]] std::string LabelOfRow(const RcoDocument& document, int row);

// Asks where to save the selected row of lst, and as what; writes it there and tells what failed. Nothing happens
// without a selected row. Failures: those of DecompressFile on what is stored, with the temporary files gone.
void CmdExtract(const Mod& mod, const RcoDocument& document, Prompts& prompts);

// Asks for a folder and writes all resources there under their labels. What can't be converted is passed over in
// silence. Failures: those of DecompressFile on what is stored; what was written before them stays.
void CmdExtractAll(const Mod& mod, const RcoDocument& document, Prompts& prompts, Progress& progress);

}  // namespace kelvane
