// Questions answered at random, for rows of changes.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/PlainPorts.h"
#include "support/RandomRco.h"

namespace kelvane::test {

// Answers every question at random and takes note of the failures that were asked about.
class RandomPrompts : public AnsweringPrompts {
 public:
  explicit RandomPrompts(const Pick& pick)
      : AnsweringPrompts([this](const Message& message) { return AnswerTo(message); }), pick_(pick) {}

  // The numbers of the failures since the last call, in their order.
  [[nodiscard]] std::vector<int> TakeFailures() { return std::exchange(failures_, {}); }

  std::string AskText(const std::string&, const std::string&) override;
  std::optional<std::string> ShowEditVal(const std::string&) override;
  std::optional<int> ShowEditList(const std::vector<std::string>& lines, int) override;

 private:
  Answer AnswerTo(const Message& message);

  const Pick& pick_;
  std::vector<int> failures_;
};

}  // namespace kelvane::test
