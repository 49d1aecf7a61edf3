// Dropping files on the form, its lists and its pages.
#pragma once

#include <QObject>
#include <filesystem>
#include <vector>

class QMimeData;
class QWidget;

namespace kelvane {

// The files of a drag in their order; empty where it holds no list of files.
[[nodiscard]] std::vector<std::filesystem::path> FilesOf(const QMimeData& data);

// Watches the drags over the widgets that were added: refuses all that hold no list of files, and tells of drops.
class FileDrop : public QObject {
  Q_OBJECT
 public:
  explicit FileDrop(QObject* parent) : QObject(parent) {}

  void Add(QWidget* widget);

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  // Comes after the drop's own event has ended, so that the program which the files come from need not wait.
  void Dropped(std::vector<std::filesystem::path> files);
};

}  // namespace kelvane
