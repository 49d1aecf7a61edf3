// Runs of the command line within the test, on files built for it.
#pragma once

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "cli/Cli.h"
#include "common/Files.h"
#include "support/RcoBuilder.h"
#include "support/TempFolder.h"

namespace kelvane::test {

struct CliResult {
  int status = 0;
  std::string out;
  std::string err;
};

class CliFixture : public ::testing::Test {
 protected:
  // One run; `input` is standard input. With `terminal` questions are asked there.
  static CliResult Run(std::vector<std::string> arguments, const std::string& input = "", bool terminal = false) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    const int status = cli::RunCli(
        std::move(arguments), {.in = in, .out = out, .err = err, .inIsTerminal = terminal, .errIsTerminal = false});
    return {status, out.str(), err.str()};
  }

  // Writes a file into the test's folder and gives its path as text.
  [[nodiscard]] std::string File(const std::string& name, ByteView content) const {
    return folder.Write(name, content).string();
  }

  TempFolder folder;
};

}  // namespace kelvane::test
