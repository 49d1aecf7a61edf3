// One open document and every command on it.
//
// The window and the command line call these methods and then show what the document's records, lines and displays say.
// A button's command bears the button's name, as in cmdExtract(); what follows the choice of a row in a list bears the
// list's, as in lst_Click(row), where -1 takes the selection away; what the user has typed comes as an argument. A
// failure without a handler leaves as a RuntimeFailure.
//
// The class is one, its commands are defined by subject: Editor.cpp opens, closes and watches; EditorResources.cpp,
// EditorTexts.cpp and EditorPages.cpp hold the commands of the tabs.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/Mod.h"
#include "container/RcoDocument.h"
#include "editor/Ports.h"
#include "pages/AddPage.h"
#include "pages/EditChoices.h"
#include "pages/RandomInfo.h"
#include "resources/AddResource.h"
#include "resources/Replacement.h"

namespace kelvane {

struct AfterInsert;
struct WriteContext;

class Editor {
 public:
  // `programFolder` holds the temporary files and the settings. The ports must outlive the editor.
  Editor(const std::filesystem::path& programFolder, const Ports& ports);

  [[nodiscard]] const RcoDocument& Document() const { return document_; }
  [[nodiscard]] const Mod& State() const { return mod_; }
  // For the settings of the options dialog and of the command line's options.
  [[nodiscard]] Mod& State() { return mod_; }

  // For dialogs that ask on their own.
  [[nodiscard]] Prompts& Asking() { return ports_.prompts; }

  // Opening, closing, watching.

  // What the program was started with, as one text: "expert" turns expert mode on; the name of an existing file opens
  // it. The test looks at the text trimmed and without its quotes, the opening takes it as it stands: so a path with
  // blanks opens, and one that still holds quotes fails in the opening.
  void TakeCommandLine(const std::string& commandLine);
  // Opens a file, or closes the document where `path` is empty.
  void OpenRcoFile(const std::filesystem::path& path);
  void cmdOpen();
  // One tick of the watcher: tells of an open file that was deleted, asks about one that was changed.
  void timDetectChange();
  // A drop of files: the first one is opened if it exists.
  void DropFiles(const std::vector<std::filesystem::path>& files);

  // General resources.

  // The choice of a resource, which is drawn. Failures: those of DecompressFile on what is stored.
  void lst_Click(int row);
  // What a selected resource is drawn on from now on, in the place of picPreview; null: nothing.
  void DrawOn(Surface* picPreview) { ports_.picPreview = picPreview; }
  // Saves the selected resource where the user chooses, or all of them in a folder. Failures as above.
  void cmdExtract();
  void cmdExtractAll();
  // Stores a file of the user's choice as the selected resource, and answers whether it did, or what a folder has for
  // any of them. Failures: those of reading the files.
  bool cmdReplace();
  void cmdReplaceAll();
  // The button that opens frmAddGen: what txtPos starts with, or nothing where no file is open, which was told.
  std::optional<std::string> cmdGenRscAdd();
  // cmdOK of frmAddGen: adds a resource and opens the file anew. False if the input was refused; then the message was
  // shown and the dialog stays. Failures: 6 for a position beyond 16 bits, and those of reading the file.
  bool frmAddGen_cmdOK(const AddGenFields& fields);

  // Texts.

  // The choice of a text and of a language. Failures: those of reading the text.
  void lstText_Click(int row);
  void cboTextLang_Click(int row);
  // Stores `txt`, the content of the text box with either kind of line breaks, as the selected text and goes on to the
  // next one. Failures: those of the file and of unusable places in it.
  void cmdTextChange(std::u16string_view txt);
  void cmdTextReset();
  // Asks for a pattern and selects the next text that matches; whether one did. Failure 93 for an invalid pattern.
  bool cmdTextSearch();
  // The button that opens frmAddText: what txtPos starts with, or nothing where no file is open, which was told.
  std::optional<std::string> cmdTextRscAdd();
  // cmdOK of frmAddText with its two fields: adds an empty text to all languages and opens the file anew. False if the
  // input was refused; then the message was shown and the dialog stays. Failure 6 for a position beyond 16 bits.
  bool frmAddText_cmdOK(const std::string& label, const std::string& position);

  // Pages and animations.

  // The choice of an entry: its words are listed. Failures: those of reading it.
  void lstPage_Click(int row);
  void lstAnim_Click(int row);
  // The choice of a word. Failure 5 for a row that isn't there.
  void lstPageData_Click(int row);
  void lstAnimData_Click(int row);
  // Ask for a new value of the selected word and write it; whether one was written. Failures: those of EntryEdit.h, of
  // which 5 leaves the value written.
  bool cmdPageChange();
  bool cmdAnimChange();
  // Writes the position block of the selected page from the texts of its boxes.
  void cmdPagePosChange(const std::array<std::string, 13>& txtPageOpt);
  // What frmEditList would list for the selected row of lstPageData; nothing for a row that has no list. A blank row is
  // told about, as cmdPageChange does.
  [[nodiscard]] std::optional<EditChoices> ChoicesOfSelectedRow() const;
  // The button that opens frmOther: its lists, or nothing where no file is open, which was told.
  std::optional<RandomInfo> cmdOther();
  // cmdOK of frmAddPage: adds a page entry and opens the file anew. False if the input was refused; then the message
  // was shown and the dialog stays. Failure 6 for a position or depth beyond 16 bits.
  bool frmAddPage_cmdOK(const AddPageFields& fields);

 private:
  // What the procedures that insert entries are handed.
  [[nodiscard]] WriteContext Context();
  [[nodiscard]] AfterInsert Afterwards();
  [[nodiscard]] ReplaceContext Replacing();
  void ShowResource();

  Mod mod_;
  RcoDocument document_;
  Ports ports_;
  bool inTick_ = false;
};

}  // namespace kelvane
