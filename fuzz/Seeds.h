// The inputs that a fuzz target starts from.
#pragma once

#include <vector>

#include "common/Bytes.h"

namespace kelvane::fuzz {

// Defined once for every target.
[[nodiscard]] std::vector<Bytes> Seeds();

}  // namespace kelvane::fuzz
