// The questions of the core as dialogs of the window.
#pragma once

#include "common/Prompts.h"

class QWidget;

namespace kelvane {

// Each dialog is modal and belongs to the dialog that is open, else to `form`. A dialog that the application's end
// closes throws ApplicationEnds.
class QtPrompts : public Prompts {
 public:
  explicit QtPrompts(QWidget* form) : form_(form) {}

  Answer ShowMessage(const Message& message) override;
  FileChoice ShowFileDialog(const FileDialog& dialog) override;
  std::filesystem::path BrowseForFolder(const std::string& title) override;
  std::string AskText(const std::string& prompt, const std::string& defaultText) override;
  std::optional<std::string> ShowEditVal(const std::string& text) override;
  std::optional<int> ShowEditList(const std::vector<std::string>& lines, int selected) override;
  void ShowVagReplace(bool stereo, const std::function<bool(const VagChoice&)>& accept) override;

 private:
  [[nodiscard]] QWidget* Owner() const;

  QWidget* form_;
};

}  // namespace kelvane
