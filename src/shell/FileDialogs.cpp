#include "shell/FileDialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QTreeView>
#include <algorithm>

#include "common/Encoding.h"

namespace kelvane {

namespace {

// The label is what the dialog shows; the pattern follows it in brackets, where the toolkit looks for it.
QString NameFilterOf(const FileFilter& filter) {
  return QString::fromStdString(filter.label) + " (" + QString::fromStdString(filter.pattern).replace(';', ' ') + ")";
}

QString StartFolder(const std::filesystem::path& initialDir) {
  const QFileInfo start(QString::fromStdString(PathToUtf8(initialDir)));
  if (initialDir.empty()) {
    return QDir::currentPath();
  }
  return start.isDir() ? start.absoluteFilePath() : start.absolutePath();
}

// Counted from 1; 0 where none is selected. The toolkit tells the filter with or without its pattern.
int NumberOfFilter(const QString& selected, const std::vector<FileFilter>& filters) {
  const auto found = std::find_if(filters.begin(), filters.end(), [&](const FileFilter& filter) {
    return selected == NameFilterOf(filter) || selected == QString::fromStdString(filter.label);
  });
  return found == filters.end() ? 0 : static_cast<int>(found - filters.begin()) + 1;
}

// The toolkit's own dialog, as large as its columns need.
void DressUp(QFileDialog& box) {
  box.setOption(QFileDialog::DontUseNativeDialog);
  box.resize(720, 460);
  if (const auto* files = box.findChild<QTreeView*>("treeView")) {
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  }
}

// Without the blanks around it. Other white space belongs to a name.
QString Trimmed(const QString& path) {
  qsizetype first = 0;
  qsizetype last = path.size();
  while (first < last && path[first] == ' ') {
    ++first;
  }
  while (last > first && path[last - 1] == ' ') {
    --last;
  }
  return path.mid(first, last - first);
}

// Empty where nothing was chosen, or more than `longest` characters.
QString ChosenPath(QFileDialog& box, qsizetype longest) {
  if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) {
    return {};
  }
  const QString path = Trimmed(box.selectedFiles().constFirst());
  return path.size() > longest ? QString() : path;
}

}  // namespace

FileChoice ShowFileDialogBox(QWidget* owner, const FileDialog& dialog) {
  QFileDialog box(owner, QString::fromStdString(dialog.title), StartFolder(dialog.initialDir));
  DressUp(box);
  box.setOption(QFileDialog::HideNameFilterDetails);
  box.setAcceptMode(dialog.open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  box.setFileMode(dialog.open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  box.setDefaultSuffix(QString::fromStdString(dialog.defaultExt));
  QStringList filters;
  for (const FileFilter& filter : dialog.filters) {
    filters << NameFilterOf(filter);
  }
  box.setNameFilters(filters);

  const QString path = ChosenPath(box, kMaxChosenPath);
  if (path.isEmpty()) {
    return {};
  }
  const int filterNumber = dialog.open ? 0 : NumberOfFilter(box.selectedNameFilter(), dialog.filters);
  return {.path = PathFromUtf8(path.toStdString()), .filterNumber = filterNumber};
}

std::filesystem::path BrowseForFolderBox(QWidget* owner, const std::string& title) {
  QFileDialog box(owner, QString::fromStdString(title), QDir::currentPath());
  DressUp(box);
  box.setOption(QFileDialog::ShowDirsOnly);
  box.setFileMode(QFileDialog::Directory);
  return PathFromUtf8(ChosenPath(box, kMaxChosenFolder).toStdString());
}

}  // namespace kelvane
