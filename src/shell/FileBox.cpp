#include "shell/FileBox.h"

#include "common/Encoding.h"
#include "shell/Controls.h"
#include "shell/Failure.h"

namespace kelvane {

FileBox AddFileBox(QWidget* parent, const char* boxName, const char* buttonName, const FileDialog& dialog,
                   Prompts& prompts) {
  QLineEdit* box = AddTextBox(parent, boxName);
  box->setMinimumWidth(280);
  QPushButton* browse = AddButton(parent, buttonName, "...");
  QObject::connect(browse, &QPushButton::clicked, box, Guarded([box, dialog, &prompts](bool) {
                     FileDialog started = dialog;
                     started.initialDir = PathOf(*box);
                     const FileChoice choice = prompts.ShowFileDialog(started);
                     if (!choice.path.empty()) {
                       box->setText(QString::fromStdString(PathToUtf8(choice.path)));
                     }
                   }));
  return {.box = box, .browse = browse};
}

std::filesystem::path PathOf(const QLineEdit& box) {
  return PathFromUtf8(box.text().toStdString());
}

}  // namespace kelvane
