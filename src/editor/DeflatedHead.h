// Files of firmware 2.60, whose region between header and data areas is deflated.
#pragma once

#include "common/Mod.h"
#include "common/Prompts.h"
#include "container/RcoFile.h"

namespace kelvane {

// Turns the open file of version 144 into a plain file of version 113, on disk too, and leaves it open. The .bak is
// made first, whatever the settings say, unless there is one.
//
// False if the block can't be unpacked: that is told, the file is gone under its name, and the .bak holds it. Failures:
// 9 where the packed block or what follows it is empty, 6, 7, and those of files; the file is whole then, old or new.
bool ConvertDeflatedHeader(RcoFile& file, const Mod& mod, Prompts& prompts);

}  // namespace kelvane
