// Puts the user's files in the place of resources of the open file: one by cmdReplace, all that a folder has files for
// by cmdReplaceAll.
#pragma once

#include <functional>
#include <string>

#include "common/Watch.h"
#include "container/GenWrite.h"
#include "imaging/PictureLoader.h"

namespace kelvane {

struct ReplaceContext {
  WriteContext write;
  // Reads images that the parsers don't read themselves; null where there is none.
  PictureLoader* pictures = nullptr;
  Progress& progress;
  // Shows the selected row anew.
  std::function<void()> refresh;
};

// Asks for a file and stores it as the selected row of lst: a bitmap, PNG, icon or GIF becomes a GIM where the resource
// is one, images and models are compressed, everything else goes in as it is. Nothing happens without a selected row.
// What is refused or fails is told; the temporary files are deleted on every way out. True if the resource was
// replaced. Failures: those of reading the file.
bool CmdReplace(const ReplaceContext& context);

// Asks for a folder and stores every file of it that has the name of a resource, as cmdExtractAll writes them. Nothing
// is asked on the way. The open file is read once and written once. Failures: those of reading the files; what was
// replaced before them is stored.
void CmdReplaceAll(const ReplaceContext& context);

}  // namespace kelvane
