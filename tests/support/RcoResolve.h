// What references and pointers hold once the places of a file are known.
#pragma once

#include "support/RcoLayout.h"

namespace kelvane::test {

// The second word of a reference pair. Failures: std::invalid_argument for a target that the file doesn't hold and for
// a type that can have none.
[[nodiscard]] std::int32_t ValueOf(const RcoDescription& description, const RcoLayout& layout,
                                   const Reference& reference);

// The positions that a table's pointers may hold, by entry number.
[[nodiscard]] std::vector<std::int32_t> EntryPositions(const RcoLayout& layout, RcoTable table);

}  // namespace kelvane::test
