// The tables of 32-bit offsets by which page and animation entries are found.
#pragma once

#include <cstdint>
#include <vector>

#include "container/RcoFile.h"

namespace kelvane {

// How many pointers a table of `byteLength` bytes holds. Failure 9 for a negative length, 7 for one that no memory is
// spent on (see kMaxArrayBytes).
[[nodiscard]] std::int32_t PointerCount(std::int32_t byteLength);

// The table's pointers in stored order, up to the last one that begins inside the file; those behind it, which read as
// zeros, are left out. Failures: those of PointerCount, 5 for a negative offset.
[[nodiscard]] std::vector<std::int32_t> ReadPointers(RcoFile& file, std::int32_t offset, std::int32_t byteLength);

}  // namespace kelvane
