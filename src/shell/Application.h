// The application object and the look that all of its windows share.
#pragma once

#include <QApplication>

namespace kelvane {

class Application : public QApplication {
 public:
  Application(int& argumentCount, char** arguments);

  // An event whose handler fails ends the application with status 1 (see Failure.h).
  bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace kelvane
