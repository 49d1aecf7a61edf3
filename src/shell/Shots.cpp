#include "shell/Shots.h"

#include <QCoreApplication>
#include <QPixmap>
#include <string>

#include "common/Encoding.h"
#include "common/RuntimeFailure.h"
#include "shell/MainForm.h"

namespace kelvane {

namespace {

void Write(QWidget& form, int scale, const std::filesystem::path& path) {
  QPixmap picture(form.size() * scale);
  picture.setDevicePixelRatio(scale);
  form.render(&picture);
  if (!picture.save(QString::fromStdString(PathToUtf8(path)), "PNG")) {
    throw RuntimeFailure(FailureCode::PathAccessError);
  }
}

void WriteBoth(QWidget& form, const std::filesystem::path& folder, const std::string& name) {
  QCoreApplication::processEvents();
  Write(form, 1, folder / (name + ".png"));
  Write(form, 2, folder / (name + "@2x.png"));
}

void SelectRow(const ListBox& list, int row) {
  list.selectionModel()->setCurrentIndex(list.model()->index(row, 0), QItemSelectionModel::ClearAndSelect);
}

// Selects the first page that has a position block; false if there is none.
bool SelectPositionBlock(const MainForm& form, const ListBox& pages) {
  const auto* block = form.findChild<QWidget*>("picPagePos");
  for (int row = 0; row < pages.model()->rowCount(); ++row) {
    SelectRow(pages, row);
    if (block->isVisible()) {
      return true;
    }
  }
  return false;
}

}  // namespace

void TakeShots(MainForm& form, const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) {
    throw RuntimeFailure(FailureCode::PathNotFound);
  }
  for (int tab = 0; tab < kTabCount; ++tab) {
    form.ClickTab(tab);
    SelectRow(*form.Page(tab).List(), 0);
    WriteBoth(form, folder, "tab" + std::to_string(tab));
  }
  form.ClickTab(2);
  if (SelectPositionBlock(form, *form.Page(2).List())) {
    WriteBoth(form, folder, "tab2-position");
  }
}

}  // namespace kelvane
