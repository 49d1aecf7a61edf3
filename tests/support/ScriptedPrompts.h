// The ports as tests see them: questions answered by a script, timers and progress that only take note.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "common/Prompts.h"
#include "common/RuntimeFailure.h"
#include "common/Watch.h"

namespace kelvane::test {

// Answers the expected questions in their order. An unexpected question fails the test, and so does an expected one
// that has not come by the end.
class ScriptedPrompts : public Prompts {
 public:
  ScriptedPrompts() = default;
  ScriptedPrompts(const ScriptedPrompts&) = delete;
  ScriptedPrompts& operator=(const ScriptedPrompts&) = delete;
  ~ScriptedPrompts() override;

  // A message box, compared in every field.
  void Expect(Message message, Answer answer);
  // A message with an OK button.
  void ExpectTell(std::string text, Icon icon);
  // The question of the handler for unexpected failures, with the failure's code.
  void ExpectUnknownFailure(FailureCode code, Answer answer);
  // A file dialog; `check` may look at what it was asked with.
  void ExpectFileDialog(FileChoice choice, std::function<void(const FileDialog&)> check = {});
  void ExpectFolder(std::string title, std::filesystem::path folder);
  // The input box, compared in prompt and default; an empty answer is Cancel.
  void ExpectInput(std::string prompt, std::string defaultText, std::string answer);
  // The hexadecimal dialog, compared in the text that it starts with; no answer is Cancel.
  void ExpectEditVal(std::string text, std::optional<std::string> answer);
  // The list dialog, compared in lines and selection; the answer is a row, -1 for OK without one, or none for Cancel.
  void ExpectEditList(std::vector<std::string> lines, int selected, std::optional<int> answer);
  // The sound dialog, compared in the shape that it starts with. OK is pressed with one choice after the other until
  // one is accepted, which must be the last; the dialog is cancelled where none is.
  void ExpectVagReplace(bool stereo, std::vector<VagChoice> choices);

  Answer ShowMessage(const Message& message) override;
  FileChoice ShowFileDialog(const FileDialog& dialog) override;
  std::filesystem::path BrowseForFolder(const std::string& title) override;
  std::string AskText(const std::string& prompt, const std::string& defaultText) override;
  std::optional<std::string> ShowEditVal(const std::string& text) override;
  std::optional<int> ShowEditList(const std::vector<std::string>& lines, int selected) override;
  void ShowVagReplace(bool stereo, const std::function<bool(const VagChoice&)>& accept) override;

 private:
  struct ExpectedMessage {
    Message message;
    Answer answer;
  };
  struct ExpectedFile {
    FileChoice choice;
    std::function<void(const FileDialog&)> check;
  };
  struct ExpectedFolder {
    std::string title;
    std::filesystem::path folder;
  };
  struct ExpectedInput {
    std::string prompt;
    std::string defaultText;
    std::string answer;
  };
  struct ExpectedEditVal {
    std::string text;
    std::optional<std::string> answer;
  };
  struct ExpectedEditList {
    std::vector<std::string> lines;
    int selected;
    std::optional<int> answer;
  };
  struct ExpectedVagReplace {
    bool stereo;
    std::vector<VagChoice> choices;
  };
  using Expected = std::variant<ExpectedMessage, ExpectedFile, ExpectedFolder, ExpectedInput, ExpectedEditVal,
                                ExpectedEditList, ExpectedVagReplace>;

  // The next expected question if it is of that type; otherwise the test fails and the result is null.
  template <class Type>
  const Type* Next(const std::string& asked);

  std::deque<Expected> script_;
  Expected current_;
};

// Takes note of whether the timer runs and of every call, as "start" and "stop".
class ScriptedWatch : public Watch {
 public:
  void Start() override;
  void Stop() override;
  [[nodiscard]] bool Running() const { return running_; }
  [[nodiscard]] const std::vector<std::string>& Calls() const { return calls_; }

 private:
  bool running_ = false;
  std::vector<std::string> calls_;
};

// Takes note of what was shown.
class ScriptedProgress : public Progress {
 public:
  void Show(int done, int total) override { shown_.emplace_back(done, total); }
  [[nodiscard]] const std::vector<std::pair<int, int>>& Shown() const { return shown_; }

 private:
  std::vector<std::pair<int, int>> shown_;
};

}  // namespace kelvane::test
