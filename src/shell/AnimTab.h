// Tab 3: the animation entries.
#pragma once

#include "shell/TabPage.h"

class QPushButton;

namespace kelvane {

class AnimTab : public TabPage {
  Q_OBJECT
 public:
  AnimTab(QWidget* form, EditorRunner& runner);

  void Refresh(const RcoDocument& document) override;

 private:
  ListBox* lstAnimData_;
  QPushButton* cmdAnimChange_;
};

}  // namespace kelvane
