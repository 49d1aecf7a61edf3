#include "PeakMemory.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace kelvane::bench {

namespace {

// A line of the process's status, in bytes.
std::int64_t Status(const std::string& field) {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word) {
    if (word == field) {
      std::int64_t kibibytes = 0;
      status >> kibibytes;
      return kibibytes * 1024;
    }
  }
  throw std::runtime_error("no " + field);
}

std::int64_t PeakOf(const std::function<void()>& work) {
  malloc_trim(0);                               // what is free already would hide what the work takes
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins anew
  const std::int64_t before = Status("VmRSS:");
  work();
  return Status("VmHWM:") - before;
}

}  // namespace

void PrintPeakMemory(const std::string& name, std::int64_t bytes, const std::function<void()>& work) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child < 0) {
    throw std::runtime_error("no child process");
  }
  if (child == 0) {
    const auto peak = static_cast<double>(PeakOf(work));
    std::printf("%-56s %8.1f MiB  ratio %6.2f\n", name.c_str(), peak / (1 << 20), peak / static_cast<double>(bytes));
    std::fflush(stdout);
    _exit(0);
  }
  int status = 0;
  if (waitpid(child, &status, 0) != child || status != 0) {
    throw std::runtime_error("the child process failed");
  }
}

}  // namespace kelvane::bench
