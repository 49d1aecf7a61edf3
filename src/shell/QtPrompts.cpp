#include "shell/QtPrompts.h"

#include <QApplication>
#include <QInputDialog>

#include "shell/Failure.h"
#include "shell/FileDialogs.h"
#include "shell/MessageBox.h"
#include "shell/frmEditList.h"
#include "shell/frmEditVal.h"
#include "shell/frmVAGReplace.h"

namespace kelvane {

namespace {

// What a dialog answered, unless the application ended under it.
template <class Result>
Result Answered(Result result) {
  LeaveIfEnding();
  return result;
}

}  // namespace

QWidget* QtPrompts::Owner() const {
  QWidget* dialog = QApplication::activeModalWidget();
  return dialog != nullptr ? dialog : form_;
}

Answer QtPrompts::ShowMessage(const Message& message) {
  return Answered(ShowMessageBox(Owner(), message));
}

FileChoice QtPrompts::ShowFileDialog(const FileDialog& dialog) {
  return Answered(ShowFileDialogBox(Owner(), dialog));
}

std::filesystem::path QtPrompts::BrowseForFolder(const std::string& title) {
  return Answered(BrowseForFolderBox(Owner(), title));
}

std::string QtPrompts::AskText(const std::string& prompt, const std::string& defaultText) {
  const QString answer = QInputDialog::getText(Owner(), "Kelvane Editor", QString::fromStdString(prompt),
                                               QLineEdit::Normal, QString::fromStdString(defaultText));
  return Answered(answer.toStdString());
}

std::optional<std::string> QtPrompts::ShowEditVal(const std::string& text) {
  frmEditVal dialog(Owner(), text);
  return Answered(dialog.exec() == QDialog::Accepted ? std::optional(dialog.Text()) : std::nullopt);
}

std::optional<int> QtPrompts::ShowEditList(const std::vector<std::string>& lines, int selected) {
  frmEditList dialog(Owner(), lines, selected);
  return Answered(dialog.exec() == QDialog::Accepted ? std::optional(dialog.Row()) : std::nullopt);
}

void QtPrompts::ShowVagReplace(bool stereo, const std::function<bool(const VagChoice&)>& accept) {
  frmVAGReplace(Owner(), stereo, *this, accept).exec();
  LeaveIfEnding();
}

}  // namespace kelvane
