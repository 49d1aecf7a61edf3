// How a command ends.
#pragma once

#include <stdexcept>
#include <string>

namespace kelvane::cli {

enum ExitStatus : int {
  kDone = 0,
  kRefused = 1,  // refused or failed, with a message
  kWrongUsage = 2,
  kFailed = 3,  // a run-time failure without a handler
};

// A refusal in the command line's own words, or without any where a message has told why. Ends with status 1.
class Refusal : public std::runtime_error {
 public:
  explicit Refusal(const std::string& words = "") : std::runtime_error(words) {}
};

// Arguments that don't fit the file or each other. Ends with status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace kelvane::cli
