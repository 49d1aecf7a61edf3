// Questions on the command line: message boxes go to the error stream, and every dialog has its answer beforehand.
#pragma once

#include <deque>
#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "common/Prompts.h"

namespace kelvane::cli {

// How questions are answered.
enum class Answering {
  Ask,  // on the terminal
  Yes,
  No,
};

class TerminalPrompts : public Prompts {
 public:
  TerminalPrompts(Answering answering, std::istream& in, std::ostream& err)
      : answering_(answering), in_(in), err_(err) {}

  // The answers of dialogs to come. A dialog without one counts as cancelled.
  void AnswerFile(FileChoice choice) { files_.push_back(std::move(choice)); }
  void AnswerFolder(std::filesystem::path folder) { folder_ = std::move(folder); }
  void AnswerText(std::string text) { text_ = std::move(text); }
  // The answer of whichever dialog asks for a word: the input box's text, 8 hexadecimal digits, or a row. Empty:
  // Cancel.
  void AnswerValue(std::string value) { value_ = std::move(value); }
  void AnswerVag(VagChoice choice) { vag_ = std::move(choice); }
  // From here on questions are answered so, whatever was set before.
  void AnswerQuestions(Answering answering) { answering_ = answering; }

  // Whether every answer to a file dialog was asked for.
  [[nodiscard]] bool FilesAsked() const { return files_.empty(); }

  // Whether a message has told of a refusal or a failure, or a question was answered with No.
  [[nodiscard]] bool Refused() const { return refused_; }

  Answer ShowMessage(const Message& message) override;
  // A UsageError where the filter that was asked for isn't one of the dialog's.
  FileChoice ShowFileDialog(const FileDialog& dialog) override;
  std::filesystem::path BrowseForFolder(const std::string& title) override;
  std::string AskText(const std::string& prompt, const std::string& defaultText) override;
  // A UsageError for what isn't 8 hexadecimal digits.
  std::optional<std::string> ShowEditVal(const std::string& text) override;
  // A UsageError for what is no number, a Refusal for a line that isn't there.
  std::optional<int> ShowEditList(const std::vector<std::string>& lines, int selected) override;
  void ShowVagReplace(bool stereo, const std::function<bool(const VagChoice&)>& accept) override;

 private:
  [[nodiscard]] bool AnswerYes();

  Answering answering_;
  std::istream& in_;
  std::ostream& err_;
  std::deque<FileChoice> files_;
  std::filesystem::path folder_;
  std::string text_;
  std::optional<std::string> value_;
  std::optional<VagChoice> vag_;
  bool refused_ = false;
};

}  // namespace kelvane::cli
