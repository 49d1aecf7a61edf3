// What the open dialog of cmdReplace offers for each kind of resource.
#pragma once

#include "common/Int16.h"
#include "common/Prompts.h"

namespace kelvane {

// The dialog for an image or model; null for an image of a format that has none, and for a sound, whose dialog is its
// own.
[[nodiscard]] const FileDialog* ReplaceDialogFor(Int16 rscKind, Int16 rscFormat);

}  // namespace kelvane
