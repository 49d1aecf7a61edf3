// The command line of `kelvane`.
#pragma once

#include <string>
#include <vector>

#include "cli/Session.h"

namespace kelvane::cli {

// Runs one command line, without the program's name, and gives the exit status.
int RunCli(std::vector<std::string> arguments, const Streams& streams);

}  // namespace kelvane::cli
