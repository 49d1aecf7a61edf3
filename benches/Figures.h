// Figures of a bench: what we do beside what a user would otherwise take, on the same bytes in one run.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kelvane::bench {

struct Figure {
  std::string name;
  std::function<void()> ours;
  std::function<void()> beside;
  // The most that ours may take, as a multiple of the other; 0 where there is no aim.
  double aim = 0;
  // Runs before every run of either side and isn't measured.
  std::function<void()> prepare = {};
  // Measures the time that goes by and not that of the processor: for work that waits for a disk.
  bool waits = false;
};

// Keeps the compiler from leaving out the work that made `value`.
void Use(const void* value);

// Measures both sides of every figure in turns, many times over, and prints a line per figure: its name, our best time,
// the ratio of the best times, and the aim. The arguments are those of Google Benchmark. The result is for main: 0.
int RunFigures(int argc, char** argv, const std::vector<Figure>& figures);

}  // namespace kelvane::bench
