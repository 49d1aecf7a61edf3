// Names in the label area, and names as parts of file names.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "container/RcoFile.h"

namespace kelvane {

// The NUL-terminated Latin-1 name at `position`, as UTF-8: "<No label>" for a position below 0 and "<Error retrieving
// label>" where no NUL stands among the 255 bytes read. The file's position stays where it was.
[[nodiscard]] std::string ReadLabel(RcoFile& file, std::int32_t position);

// A label as part of a file name: each path separator becomes '_', and so does each full stop of "." and "..", so that
// a name from a file never leads out of the folder that the user chose.
[[nodiscard]] std::string FileNameOfLabel(std::string_view label);

}  // namespace kelvane
