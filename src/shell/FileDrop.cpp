#include "shell/FileDrop.h"

#include <QAbstractScrollArea>
#include <QDropEvent>
#include <QMetaObject>
#include <QMimeData>
#include <QUrl>

#include "common/Encoding.h"

namespace kelvane {

namespace {

// RefuseNonFileDrag: the effect becomes none unless the drag holds files.
void AnswerDrag(QDropEvent* drag) {
  if (FilesOf(*drag->mimeData()).empty()) {
    drag->setDropAction(Qt::IgnoreAction);
    drag->ignore();
  } else {
    drag->acceptProposedAction();
  }
}

}  // namespace

std::vector<std::filesystem::path> FilesOf(const QMimeData& data) {
  std::vector<std::filesystem::path> files;
  const QList<QUrl> urls = data.urls();
  for (const QUrl& url : urls) {
    if (url.isLocalFile()) {
      files.push_back(PathFromUtf8(url.toLocalFile().toStdString()));
    }
  }
  return files;
}

void FileDrop::Add(QWidget* widget) {
  if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) {
    widget = area->viewport();
  }
  widget->setAcceptDrops(true);
  widget->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
      AnswerDrag(static_cast<QDropEvent*>(event));
      return true;
    case QEvent::Drop: {
      auto* drop = static_cast<QDropEvent*>(event);
      AnswerDrag(drop);
      const std::vector<std::filesystem::path> files = FilesOf(*drop->mimeData());
      if (!files.empty()) {
        QMetaObject::invokeMethod(
            this, [this, files] { emit Dropped(files); }, Qt::QueuedConnection);
      }
      return true;
    }
    default:
      return false;
  }
}

}  // namespace kelvane
