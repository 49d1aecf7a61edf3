// Areas of NUL-separated Latin-1 strings: labels and events.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "container/RcoFile.h"

namespace kelvane {

// One string of an area, in UTF-8, and its byte offset in the area.
struct AreaString {
  std::int32_t offset = 0;
  std::string text;
};

// The strings of the `byteLength` bytes at `offset` that aren't empty, in their order; the last one needs no NUL.
// Failures: 9 for a length below 1, 7 for one that no memory is spent on, 5 for a negative offset.
[[nodiscard]] std::vector<AreaString> ReadAreaStrings(RcoFile& file, std::int32_t offset, std::int32_t byteLength);

}  // namespace kelvane
