// What the selection of a general resource shows: its number, its picture, size, compression and places.
#pragma once

#include <array>

#include "common/Mod.h"
#include "common/Prompts.h"
#include "container/RcoDocument.h"
#include "imaging/PictureLoader.h"
#include "imaging/Surface.h"

namespace kelvane {

struct PreviewContext {
  const Mod& mod;
  RcoDocument& document;
  Prompts& prompts;
  // Reads images that the parsers don't read themselves; null where there is none.
  PictureLoader* pictures = nullptr;
  // picPreview, and frmPreview while it is open; null where there is none.
  std::array<Surface*, 2> surfaces{};
};

// The selection of lst changed, or what it selects did. An image is exported, unpacked and drawn anew each time; sounds
// and models show no picture. What can't be shown is told by the display alone. Failures: those of DecompressFile on
// what is stored. The temporary files that it made are deleted on every way out.
void ShowSelectedResource(const PreviewContext& context);

}  // namespace kelvane
