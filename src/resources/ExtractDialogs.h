// What the save dialog of cmdExtract offers for each kind of resource.
#pragma once

#include <vector>

#include "common/Int16.h"
#include "common/Prompts.h"

namespace kelvane {

// What becomes of a resource's bytes on their way to the user's file.
enum class ExportMode {
  Bitmap32 = 1,  // a bitmap, forced to 32 bits
  Bitmap = 2,    // a bitmap of the image's own depth
  Raw = 3,       // as stored
  Unpacked = 4,  // inflated, if it is deflated
};

struct ExtractDialog {
  int kind = 0;    // rscKind
  int format = 0;  // rscFormat of an image; not looked at for the other kinds
  std::string title;
  std::string defaultExt;
  std::vector<FileFilter> filters;
  std::vector<ExportMode> modes;  // one for each filter

  // The mode of a filter, counted from 1. A number that the dialog doesn't have counts as the nearest that it has.
  [[nodiscard]] ExportMode ModeOf(int filterNumber) const;
};

// The dialog for a resource; null for an image of a format that has none.
[[nodiscard]] const ExtractDialog* ExtractDialogFor(Int16 rscKind, Int16 rscFormat);

}  // namespace kelvane
