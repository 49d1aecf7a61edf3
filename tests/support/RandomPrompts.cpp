#include "support/RandomPrompts.h"

namespace kelvane::test {

namespace {

// The number in "... (Code: 9) ..."; 0 for another message.
int FailureIn(const std::string& text) {
  const std::string start = "(Code: ";
  const std::size_t at = text.find(start);
  return at == std::string::npos ? 0 : std::stoi(text.substr(at + start.size()));
}

}  // namespace

Answer RandomPrompts::AnswerTo(const Message& message) {
  if (const int failure = FailureIn(message.text); failure != 0) {
    failures_.push_back(failure);
    return pick_(2) == 0 ? Answer::Yes : Answer::No;
  }
  return message.buttons == Buttons::YesNo ? Answer::Yes : Answer::Ok;
}

std::string RandomPrompts::AskText(const std::string& /*prompt*/, const std::string& /*defaultText*/) {
  return std::to_string(pick_(1000)) + ".25";
}

std::optional<std::string> RandomPrompts::ShowEditVal(const std::string& /*text*/) {
  return std::to_string(10000000 + pick_(1000));
}

std::optional<int> RandomPrompts::ShowEditList(const std::vector<std::string>& lines, int /*selected*/) {
  if (lines.empty()) {
    return std::nullopt;
  }
  return static_cast<int>(pick_(static_cast<std::uint32_t>(lines.size())));
}

}  // namespace kelvane::test
