#include <iostream>
#include <unistd.h>

#include "cli/Cli.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const kelvane::cli::Streams streams{.in = std::cin,
                                      .out = std::cout,
                                      .err = std::cerr,
                                      .inIsTerminal = isatty(STDIN_FILENO) != 0,
                                      .errIsTerminal = isatty(STDERR_FILENO) != 0};
  return kelvane::cli::RunCli(std::vector<std::string>(argv + 1, argv + argc), streams);
}
