// The ports that the floors above hand in.
#pragma once

#include "common/Prompts.h"
#include "common/Watch.h"
#include "imaging/PictureLoader.h"
#include "imaging/Surface.h"

namespace kelvane {

struct Ports {
  Prompts& prompts;
  Watch& watch;
  Progress& progress;
  // What a selected image is drawn on: the picture box of tab 0 and, while it is open, the big preview window. Null
  // where there is none.
  Surface* picPreview = nullptr;
  Surface* frmPreview = nullptr;
  // Reads images that the parsers don't read themselves; null where there is none.
  PictureLoader* pictures = nullptr;
};

}  // namespace kelvane
