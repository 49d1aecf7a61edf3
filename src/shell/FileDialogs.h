// The file and folder dialogs.
#pragma once

#include "common/Prompts.h"

class QWidget;

namespace kelvane {

// The longest paths that the dialogs give back, in characters; a longer one counts as cancelled.
inline constexpr int kMaxChosenPath = 254;
inline constexpr int kMaxChosenFolder = 259;

FileChoice ShowFileDialogBox(QWidget* owner, const FileDialog& dialog);
std::filesystem::path BrowseForFolderBox(QWidget* owner, const std::string& title);

}  // namespace kelvane
