#include "shell/EditorRunner.h"

#include <utility>

#include "shell/Failure.h"

namespace kelvane {

void EditorRunner::Run(const std::function<void(Editor&)>& command) {
  const bool outer = std::exchange(running_, true);
  Guarded([&] { command(editor_); })();
  running_ = outer;
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
