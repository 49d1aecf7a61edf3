// One page of the tab strip, picTab(i), with its list.
#pragma once

#include <QWidget>

#include "shell/EditorRunner.h"
#include "shell/ListBox.h"

class QAbstractButton;

namespace kelvane {

// The list is taller than the page, so it lies beside it, as a child of the form; it shows while the page does.
class TabPage : public QWidget {
  Q_OBJECT
 public:
  TabPage(int index, const char* listName, QWidget* form, EditorRunner& runner);

  void setVisible(bool visible) override;
  [[nodiscard]] ListBox* List() const { return list_; }

  // Shows what the document says.
  virtual void Refresh(const RcoDocument& document) = 0;
  // The controls of expert mode.
  virtual void ShowExpert(bool expert);

 signals:
  // A control got the focus whose Enter presses that button from now on.
  void WantsDefault(QString button);

 protected:
  using Command = std::function<void(Editor&)>;
  // Makes a click on the button run the command, and the choice of a row the one that takes it.
  void RunOnClick(QAbstractButton* button, const Command& command);
  void RunOnChoice(ListBox* list, void (Editor::*command)(int row));

  EditorRunner& runner_;

 private:
  ListBox* list_;
};

}  // namespace kelvane
