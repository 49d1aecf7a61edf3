// The dialog that adds a general resource.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "common/Prompts.h"
#include "shell/Dialogs.h"

namespace kelvane {

class frmAddGen : public Dialog {
  Q_OBJECT
 public:
  // Takes what the dialog holds when OK is pressed; false leaves it open.
  using Accept =
      std::function<bool(const std::filesystem::path& file, const std::string& position, const std::string& label)>;

  // `lineCount` is that of lst, `position` what txtPos starts with; `prompts` shows the file dialog.
  frmAddGen(QWidget* owner, int lineCount, const std::string& position, Prompts& prompts, const Accept& accept);
};

}  // namespace kelvane
