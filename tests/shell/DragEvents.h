// Drag-and-drop events as the toolkit delivers them.
#pragma once

#include <QApplication>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <filesystem>
#include <vector>

namespace kelvane::test {

class FileDrag {
 public:
  explicit FileDrag(const std::vector<std::filesystem::path>& files) {
    QList<QUrl> urls;
    for (const std::filesystem::path& file : files) {
      urls << QUrl::fromLocalFile(QString::fromStdString(file.string()));
    }
    data_.setUrls(urls);
  }
  static QMimeData* Text() {
    auto* data = new QMimeData;
    data->setText("some text");
    return data;
  }

  [[nodiscard]] QMimeData& Data() { return data_; }

 private:
  QMimeData data_;
};

// Whether a drag of `data` over the widget is accepted, entering and moving. The toolkit asks the widget and, where it
// refuses, those around it; a move goes to the one that accepted.
inline bool IsAccepted(QWidget& target, const QMimeData& data) {
  const QPoint at = target.rect().center();
  QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&target, &enter);
  EXPECT_EQ(enter.isAccepted(), enter.dropAction() != Qt::IgnoreAction);
  if (!enter.isAccepted()) {
    return false;
  }
  QDragMoveEvent move(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&target, &move);
  EXPECT_TRUE(move.isAccepted());
  QDragLeaveEvent leave;
  QApplication::sendEvent(&target, &leave);
  return true;
}

// Drags `data` over the widget, drops it and waits until the drop was dealt with.
inline void Drop(QWidget& target, const QMimeData& data) {
  const QPoint at = target.rect().center();
  QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&target, &enter);
  QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&target, &drop);
  QCoreApplication::processEvents();
}

}  // namespace kelvane::test
