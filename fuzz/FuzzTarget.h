// What every fuzz target defines, and how it says that something is wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Runs the code under test on one input. It returns 0; whatever is wrong ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace kelvane::fuzz {

// Ends the process where `holds` is false.
inline void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
  }
}

}  // namespace kelvane::fuzz
