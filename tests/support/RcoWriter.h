// Puts a described file's bytes where its layout has room for them.
#pragma once

#include "support/RcoLayout.h"

namespace kelvane::test {

// The plain form. Failures: std::invalid_argument for a reference or pointer to what isn't there.
[[nodiscard]] Bytes WriteRco(const RcoDescription& description, const RcoLayout& layout);

// The same file with a deflated head; fills layout.packed.
[[nodiscard]] Bytes PackHead(const RcoDescription& description, const Bytes& plain, RcoLayout& layout);

}  // namespace kelvane::test
