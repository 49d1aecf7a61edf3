// The editor: kelvane-editor [FILE], kelvane-editor expert, kelvane-editor --shots DIR FILE.
#include <QTimer>
#include <string>

#include "common/Encoding.h"
#include "shell/Application.h"
#include "shell/Failure.h"
#include "shell/MainForm.h"
#include "shell/Shots.h"

namespace {

// The arguments from `first` on, as they came, joined by one blank.
std::string CommandLine(int count, char** arguments, int first) {
  std::string line;
  for (int i = first; i < count; ++i) {
    line += (i > first ? " " : "") + std::string(arguments[i]);
  }
  return line;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  using namespace kelvane;
  Application application(argumentCount, arguments);
  MainForm form(PathFromUtf8(QCoreApplication::applicationFilePath().toStdString()));

  const bool shots = argumentCount >= 3 && std::string(arguments[1]) == "--shots";
  const std::string commandLine = CommandLine(argumentCount, arguments, shots ? 3 : 1);
  // Inside the event loop, so that a failure of the start ends the application like any other.
  QTimer::singleShot(0, &form, Guarded([&] {
                       form.Load(commandLine);
                       form.show();
                       if (shots) {
                         TakeShots(form, PathFromUtf8(arguments[2]));
                         QCoreApplication::exit(0);
                       }
                     }));
  return QApplication::exec();
}
