// Small RCO files, good and broken, to start fuzzers from.
#pragma once

#include <string>
#include <vector>

#include "support/RcoBuilder.h"

namespace kelvane::test {

struct RcoSeed {
  std::string name;  // fit for a file name, and no other seed's
  Bytes bytes;
};

// A builder with a few entries of every table and every reference, a kilobyte or two long once it is built.
[[nodiscard]] RcoBuilder SmallRcoOfEverything();

// Well-formed files: everything at once, each table alone, all versions, empty tables, mixed pointers.
[[nodiscard]] std::vector<RcoSeed> GoodRcoSeeds();
// Version 144: blocks with and without padding, with an Adler-32, cut off, of garbage, and of lengths that lie.
[[nodiscard]] std::vector<RcoSeed> PackedRcoSeeds();
// The file of everything cut off within each of its regions, and files of a few bytes.
[[nodiscard]] std::vector<RcoSeed> TruncatedRcoSeeds();
// The file of everything with one number changed to what no writer would put there: counts, distances, lengths, offsets
// and pointers that are negative, huge, cyclic or overlapping.
[[nodiscard]] std::vector<RcoSeed> WildRcoSeeds();

// All of them.
[[nodiscard]] std::vector<RcoSeed> RcoSeeds();

}  // namespace kelvane::test
