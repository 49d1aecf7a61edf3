#include "shell/EditorRunner.h"

#include "shell/Failure.h"

namespace kelvane {

void EditorRunner::Run(const std::function<void(Editor&)>& command) {
  running_ = true;
  Guarded([&] { command(editor_); })();
  running_ = false;
  if (!IsEnding()) {
    emit Ran();
  }
}

void EditorRunner::Tick() {
  if (!running_) {
    Run([](Editor& editor) { editor.timDetectChange(); });
  }
}

}  // namespace kelvane
