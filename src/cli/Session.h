// One run of the command line: its options and streams, and the editor that a command works on.
#pragma once

#include <filesystem>
#include <istream>
#include <ostream>
#include <string>

#include "cli/Outcome.h"
#include "cli/Table.h"
#include "cli/TerminalPrompts.h"
#include "editor/Editor.h"
#include "platform/QtPictureLoader.h"

namespace kelvane::cli {

struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  bool inIsTerminal = false;
  bool errIsTerminal = false;
};

struct Options {
  bool yes = false;
  bool no = false;
  bool json = false;
  bool noBackup = false;
  bool noCompression = false;
  bool firstColourTransparent = false;
  bool expert = false;
  int import32 = 0;  // 0 ask, 1 auto, 2 always
};

// A folder for the process's temporary files, removed at the end.
class ProcessFolder {
 public:
  ProcessFolder();
  ProcessFolder(const ProcessFolder&) = delete;
  ProcessFolder& operator=(const ProcessFolder&) = delete;
  ~ProcessFolder();
  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// The watcher has nothing to watch for a single command.
class NoWatch : public Watch {
 public:
  void Start() override {}
  void Stop() override {}
};

// A bar on the error stream, where that is a terminal.
class ProgressBar : public Progress {
 public:
  ProgressBar(std::ostream& err, bool visible) : err_(err), visible_(visible) {}
  void Show(int done, int total) override;

 private:
  std::ostream& err_;
  bool visible_;
};

class Session {
 public:
  Session(const Options& options, const Streams& streams);

  // Opens the file; a Refusal without words where it was refused, since a message has told why.
  void Open(const std::string& file);
  // Selects a row of a list for a command. A Refusal for a row that the list doesn't have.
  void RequireRow(const ListLines& list, int row, const char* name) const;

  [[nodiscard]] Editor& App() { return editor_; }
  [[nodiscard]] const RcoDocument& Document() const { return editor_.Document(); }
  [[nodiscard]] TerminalPrompts& Prompts() { return prompts_; }
  [[nodiscard]] const Options& Opts() const { return options_; }
  [[nodiscard]] const Streams& Io() const { return streams_; }
  [[nodiscard]] Mod& State() { return editor_.State(); }
  [[nodiscard]] const std::filesystem::path& Folder() const { return folder_.Path(); }

  // Prints a listing in the form that was asked for.
  void Print(const Table& table) const;
  // Tells a false result of a single step in the words of the editor's command.
  void TellFailure(const std::string& text);

 private:
  const Options& options_;
  Streams streams_;
  ProcessFolder folder_;
  TerminalPrompts prompts_;
  NoWatch watch_;
  ProgressBar progress_;
  QtPictureLoader pictures_;
  Editor editor_;
};

}  // namespace kelvane::cli
