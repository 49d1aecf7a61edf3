// A text box that holds a path, with the button that browses for it.
#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <filesystem>

#include "common/Prompts.h"

namespace kelvane {

struct FileBox {
  QLineEdit* box;
  QPushButton* browse;
};

// The button shows `dialog`, starting from what the box holds; a path that is chosen goes into the box.
[[nodiscard]] FileBox AddFileBox(QWidget* parent, const char* boxName, const char* buttonName, const FileDialog& dialog,
                                 Prompts& prompts);

[[nodiscard]] std::filesystem::path PathOf(const QLineEdit& box);

}  // namespace kelvane
