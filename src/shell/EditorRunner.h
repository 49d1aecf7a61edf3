// Runs the editor's commands for the window.
#pragma once

#include <QObject>
#include <functional>

#include "editor/Editor.h"

namespace kelvane {

// A command runs to its end, and then everything shows what the document says. A failure ends the application.
class EditorRunner : public QObject {
  Q_OBJECT
 public:
  EditorRunner(Editor& editor, QObject* parent) : QObject(parent), editor_(editor) {}

  void Run(const std::function<void(Editor&)>& command);
  // One tick of the watcher. It is let out while a command waits for a dialog: the command's document must stay.
  void Tick();

  [[nodiscard]] const RcoDocument& Document() const { return editor_.Document(); }
  [[nodiscard]] const Mod& State() const { return std::as_const(editor_).State(); }

 signals:
  // A command has ended.
  void Ran();

 private:
  Editor& editor_;
  bool running_ = false;
};

}  // namespace kelvane
