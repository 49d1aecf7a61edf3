#include "shell/Failure.h"

#include <QApplication>
#include <QMessageBox>

#include "common/RuntimeFailure.h"
#include "shell/MessageBox.h"

namespace kelvane {

namespace {

bool ending = false;

void TellFailure(const RuntimeFailure& failure) {
  ShowMessageBox(QApplication::activeWindow(),
                 {.text = "Run-time error '" + std::to_string(failure.Number()) + "':\n\n" + failure.Description(),
                  .icon = Icon::Critical});
}

}  // namespace

bool IsEnding() {
  return ending;
}

void LeaveIfEnding() {
  if (ending) {
    throw ApplicationEnds();
  }
}

void EndWithCurrentFailure() {
  try {
    throw;
  } catch (const ApplicationEnds&) {
    return;
  } catch (...) {
    const RuntimeFailure failure = CurrentFailure();
    if (!ending) {
      ending = true;
      TellFailure(failure);
      QCoreApplication::exit(1);
    }
  }
}

}  // namespace kelvane
