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

}  // namespace

void TakeShots(MainForm& form, const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) {
    throw RuntimeFailure(FailureCode::PathNotFound);
  }
  for (int tab = 0; tab < kTabCount; ++tab) {
    form.ClickTab(tab);
    ListBox* list = form.Page(tab).List();
    list->setCurrentIndex(list->model()->index(0, 0));
    QCoreApplication::processEvents();
    const std::string name = "tab" + std::to_string(tab);
    Write(form, 1, folder / (name + ".png"));
    Write(form, 2, folder / (name + "@2x.png"));
  }
}

}  // namespace kelvane
