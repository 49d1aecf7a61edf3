// RCO files of everything at random, for rows of changes.
#pragma once

#include <cstdint>
#include <functional>

#include "support/RcoBuilder.h"

namespace kelvane::test {

// A number from 0 up to but not including the one given, which is above 0.
using Pick = std::function<std::uint32_t(std::uint32_t)>;

// A file of a few entries of some of the tables, such as firmware files are: all but operations have labels, there is
// an event, sounds have room for their channels, and the first text has a string. Operations belong to the last
// animation.
[[nodiscard]] RcoBuilder RandomRco(const Pick& pick);

// Up to `longest` bytes, at least one.
[[nodiscard]] Bytes RandomBytes(const Pick& pick, std::uint32_t longest);
[[nodiscard]] std::u16string RandomText(const Pick& pick);

}  // namespace kelvane::test
