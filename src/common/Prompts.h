// The port for every question to the user. The window answers with dialogs, the command line with options and the
// terminal, tests with a script. Texts are UTF-8.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelvane {

enum class Icon { Exclamation, Critical, Information, Question };
enum class Buttons { Ok, YesNo };
enum class Answer { Ok, Yes, No };

struct Message {
  std::string text;
  Icon icon = Icon::Exclamation;
  Buttons buttons = Buttons::Ok;
  // The button that Enter presses.
  Answer defaultAnswer = Answer::Ok;

  bool operator==(const Message&) const = default;
};

// One filter of a file dialog: a label, and patterns joined by ';' such as "*.bmp;*.png".
struct FileFilter {
  std::string label;
  std::string pattern;

  bool operator==(const FileFilter&) const = default;
};

struct FileDialog {
  std::string title = {};
  std::vector<FileFilter> filters = {};
  // Where the dialog starts: a folder or a file in it; empty is the current folder.
  std::filesystem::path initialDir = {};
  // True for a dialog that opens an existing file, false for one that saves and asks before it overwrites.
  bool open = true;
  // Extension, without its full stop, for a name that is typed without one.
  std::string defaultExt = {};
};

struct FileChoice {
  // Empty: cancelled.
  std::filesystem::path path;
  // After a save dialog the number of the filter that was picked, counted from 1; 0 when cancelled.
  int filterNumber = 0;
};

// What the sound dialog asks for: the file of the left channel, and in stereo that of the right one.
struct VagChoice {
  std::filesystem::path left;
  std::filesystem::path right;
  bool stereo = false;
};

class Prompts {
 public:
  virtual ~Prompts() = default;

  // Shows a message box and returns the button that closed it.
  virtual Answer ShowMessage(const Message& message) = 0;
  virtual FileChoice ShowFileDialog(const FileDialog& dialog) = 0;
  // A folder of the file system; empty: cancelled.
  virtual std::filesystem::path BrowseForFolder(const std::string& title) = 0;
  // The input box: one line of text that starts as `defaultText`. Empty: cancelled, or nothing was typed.
  virtual std::string AskText(const std::string& prompt, const std::string& defaultText) = 0;
  // The dialog frmEditVal, whose field starts as `text`, 8 hexadecimal digits. The field's text; nothing: cancelled.
  virtual std::optional<std::string> ShowEditVal(const std::string& text) = 0;
  // The dialog frmEditList, with row `selected` of `lines` selected, -1 for none. The row that was selected when OK was
  // pressed, -1 for none; nothing: cancelled.
  virtual std::optional<int> ShowEditList(const std::vector<std::string>& lines, int selected) = 0;
  // The dialog frmVAGReplace for a sound that is stereo or mono now. OK hands what was chosen to `accept`; the dialog
  // stays open until that answers true or it is cancelled.
  virtual void ShowVagReplace(bool stereo, const std::function<bool(const VagChoice&)>& accept) = 0;
};

// Shows a message with an OK button only.
inline void Tell(Prompts& prompts, std::string text, Icon icon) {
  prompts.ShowMessage({.text = std::move(text), .icon = icon, .buttons = Buttons::Ok, .defaultAnswer = Answer::Ok});
}

// Asks with Yes and No; true for Yes.
inline bool Ask(Prompts& prompts, std::string text, Icon icon, Answer defaultAnswer = Answer::Yes) {
  return prompts.ShowMessage(
             {.text = std::move(text), .icon = icon, .buttons = Buttons::YesNo, .defaultAnswer = defaultAnswer}) ==
         Answer::Yes;
}

}  // namespace kelvane
