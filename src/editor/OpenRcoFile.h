// Opening and closing the document.
#pragma once

#include <filesystem>

#include "common/Mod.h"
#include "container/RcoDocument.h"
#include "editor/Ports.h"

namespace kelvane {

// With a path: opens that file and fills the document from it, asking before a deflated head is converted. A file that
// is refused leaves the document as it was; an unexpected failure is asked about, statement by statement, and what was
// filled so far stays. With an empty path: closes the document. Never fails with a path.
void OpenRcoFile(const std::filesystem::path& path, Mod& mod, RcoDocument& document, const Ports& ports);

}  // namespace kelvane
