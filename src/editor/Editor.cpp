#include "editor/Editor.h"

#include <algorithm>
#include <system_error>

#include "common/Encoding.h"
#include "common/Files.h"
#include "common/RuntimeFailure.h"
#include "container/Inserts.h"
#include "editor/DroppedFile.h"
#include "editor/OpenRcoFile.h"

namespace kelvane {

namespace {

// True for as long as it lives.
class Flagged {
 public:
  explicit Flagged(bool& flag) : flag_(flag) { flag_ = true; }
  Flagged(const Flagged&) = delete;
  Flagged& operator=(const Flagged&) = delete;
  ~Flagged() { flag_ = false; }

 private:
  bool& flag_;
};

std::string WithoutQuotes(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) {
    return {};
  }
  std::string clean = text.substr(first, text.find_last_not_of(' ') - first + 1);
  std::erase(clean, '"');
  return clean;
}

bool IsExpert(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text == "expert";
}

}  // namespace

Editor::Editor(const std::filesystem::path& programFolder, const Ports& ports) : ports_(ports) {
  mod_.cAppPath = programFolder / "";  // ends in a separator
}

void Editor::TakeCommandLine(const std::string& commandLine) {
  const std::string clean = WithoutQuotes(commandLine);
  if (IsExpert(clean)) {
    mod_.cExpert = true;
  }
  if (!clean.empty() && FileExists(PathFromUtf8(clean))) {
    OpenRcoFile(PathFromUtf8(commandLine));
  }
}

void Editor::OpenRcoFile(const std::filesystem::path& path) {
  kelvane::OpenRcoFile(path, mod_, document_, ports_);
}

void Editor::cmdOpen() {
  const FileChoice choice = ports_.prompts.ShowFileDialog(
      {.title = "选择一个RCO文件", .filters = {{"RCO文件(*.rco)", "*.rco"}, {"所有文件(*.*)", "*.*"}}});
  if (!choice.path.empty()) {
    OpenRcoFile(choice.path);
  }
}

void Editor::timDetectChange() {
  if (inTick_) {
    return;  // a question of this very handler is still open
  }
  const Flagged flagged(inTick_);
  // Not FileExists: a name may hold '*' or '?', and another file that matches is none of this one.
  std::error_code error;
  if (!std::filesystem::exists(mod_.cCurFile, error)) {
    Tell(ports_.prompts, "当前RCO文件已被删除！", Icon::Exclamation);
    OpenRcoFile({});
    return;
  }
  if (mod_.cNoUpdatChk || DateOfFile(mod_.cCurFile) == mod_.cFileDate) {
    return;
  }
  const bool reload = Ask(ports_.prompts, "当前文件已被其它程序修改，是否重新加载？", Icon::Exclamation);
  OpenRcoFile(reload ? mod_.cCurFile : std::filesystem::path());
}

void Editor::DropFiles(const std::vector<std::filesystem::path>& files) {
  const std::filesystem::path file = DroppedFile(files, ports_.prompts);
  if (!file.empty()) {
    OpenRcoFile(file);
  }
}

WriteContext Editor::Context() {
  return {.mod = mod_, .document = document_, .prompts = ports_.prompts, .watch = ports_.watch};
}

AfterInsert Editor::Afterwards() {
  return {.reopen = [this] { OpenRcoFile(mod_.cCurFile); }, .selectLine = [this](Int16 row) { lst_Click(row.Int()); }};
}

}  // namespace kelvane
