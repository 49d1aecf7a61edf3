// How much memory a piece of work takes at most.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kelvane::bench {

// Runs `work` in a child process, and prints by how much the child's memory rose at most, in MiB and as a ratio to
// `bytes`, the bytes that the work is about.
void PrintPeakMemory(const std::string& name, std::int64_t bytes, const std::function<void()>& work);

}  // namespace kelvane::bench
