// The ports for programs that run without a script: fuzz targets and benches.
#pragma once

#include <functional>
#include <utility>

#include "common/Prompts.h"
#include "common/Watch.h"

namespace kelvane::test {

// Messages are answered by a function, and every dialog is cancelled.
class AnsweringPrompts : public Prompts {
 public:
  explicit AnsweringPrompts(std::function<Answer(const Message&)> answer) : answer_(std::move(answer)) {}

  Answer ShowMessage(const Message& message) override { return answer_(message); }
  FileChoice ShowFileDialog(const FileDialog& /*dialog*/) override { return {}; }
  std::filesystem::path BrowseForFolder(const std::string& /*title*/) override { return {}; }
  std::string AskText(const std::string& /*prompt*/, const std::string& /*defaultText*/) override { return {}; }
  std::optional<std::string> ShowEditVal(const std::string& /*text*/) override { return std::nullopt; }
  std::optional<int> ShowEditList(const std::vector<std::string>& /*lines*/, int /*selected*/) override {
    return std::nullopt;
  }
  void ShowVagReplace(bool /*stereo*/, const std::function<bool(const VagChoice&)>& /*accept*/) override {}

 private:
  std::function<Answer(const Message&)> answer_;
};

// The same, with a folder for the folder dialog.
class FolderPrompts : public AnsweringPrompts {
 public:
  FolderPrompts(std::filesystem::path folder, std::function<Answer(const Message&)> answer)
      : AnsweringPrompts(std::move(answer)), folder_(std::move(folder)) {}

  std::filesystem::path BrowseForFolder(const std::string& /*title*/) override { return folder_; }

 private:
  std::filesystem::path folder_;
};

class IdleWatch : public Watch {
 public:
  void Start() override {}
  void Stop() override {}
};

class IdleProgress : public Progress {
 public:
  void Show(int /*done*/, int /*total*/) override {}
};

}  // namespace kelvane::test
