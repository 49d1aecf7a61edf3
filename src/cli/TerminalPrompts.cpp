#include "cli/TerminalPrompts.h"

#include <charconv>
#include <utility>

#include "cli/Outcome.h"

namespace kelvane::cli {

namespace {

const char* PrefixOf(Icon icon) {
  switch (icon) {
    case Icon::Critical:
      return "error: ";
    case Icon::Exclamation:
      return "warning: ";
    case Icon::Information:
      return "info: ";
    case Icon::Question:
      return "question: ";
  }
  return "";
}

// The one information that isn't about something that was left undone.
constexpr const char* kWorkDone = "完成";

}  // namespace

bool TerminalPrompts::AnswerYes() {
  if (answering_ != Answering::Ask) {
    return answering_ == Answering::Yes;
  }
  std::string line;
  for (;;) {
    err_ << " (yes/no)? " << std::flush;
    if (!std::getline(in_, line) || line == "n" || line == "no") {
      return false;
    }
    if (line == "y" || line == "yes") {
      return true;
    }
  }
}

Answer TerminalPrompts::ShowMessage(const Message& message) {
  err_ << PrefixOf(message.icon) << message.text;
  if (message.buttons == Buttons::Ok) {
    err_ << '\n' << std::flush;
    refused_ = refused_ || message.icon != Icon::Information || message.text != kWorkDone;
    return Answer::Ok;
  }
  const bool yes = AnswerYes();
  err_ << (yes ? " [yes]" : " [no]") << '\n' << std::flush;
  // Going on after a failure doesn't make it a success.
  refused_ = refused_ || !yes || message.icon == Icon::Critical;
  return yes ? Answer::Yes : Answer::No;
}

FileChoice TerminalPrompts::ShowFileDialog(const FileDialog& dialog) {
  if (files_.empty()) {
    return {};
  }
  FileChoice choice = std::move(files_.front());
  files_.pop_front();
  if (!dialog.open && (choice.filterNumber < 1 || choice.filterNumber > static_cast<int>(dialog.filters.size()))) {
    throw UsageError("--as: this resource has the filters 1 to " + std::to_string(dialog.filters.size()));
  }
  return choice;
}

std::filesystem::path TerminalPrompts::BrowseForFolder(const std::string& /*title*/) {
  return folder_;
}

std::string TerminalPrompts::AskText(const std::string& /*prompt*/, const std::string& /*defaultText*/) {
  return value_.value_or(text_);
}

std::optional<std::string> TerminalPrompts::ShowEditVal(const std::string& text) {
  if (!value_.has_value() || value_->empty()) {
    return std::nullopt;
  }
  if (value_->size() != text.size() || value_->find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos) {
    throw UsageError("VALUE: this word takes 8 hexadecimal digits, and is " + text + " now");
  }
  return value_;
}

std::optional<int> TerminalPrompts::ShowEditList(const std::vector<std::string>& lines, int /*selected*/) {
  if (!value_.has_value() || value_->empty()) {
    return std::nullopt;
  }
  int row = -1;
  const char* const end = value_->data() + value_->size();
  const std::from_chars_result parsed = std::from_chars(value_->data(), end, row);
  if (parsed.ec == std::errc::invalid_argument || parsed.ptr != end) {
    throw UsageError("VALUE: this word takes a row of the list of its values, counted from 0");
  }
  if (parsed.ec != std::errc() || row < 0 || row >= static_cast<int>(lines.size())) {
    throw Refusal("VALUE " + *value_ + " is not there: the list has " + std::to_string(lines.size()));
  }
  return row;
}

void TerminalPrompts::ShowVagReplace(bool /*stereo*/, const std::function<bool(const VagChoice&)>& accept) {
  if (vag_.has_value()) {
    accept(*vag_);
  }
}

}  // namespace kelvane::cli
