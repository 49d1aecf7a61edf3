// Tab 1: the texts.
#pragma once

#include "shell/TabPage.h"
#include "shell/TextBox.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace kelvane {

class TextTab : public TabPage {
  Q_OBJECT
 public:
  TextTab(QWidget* form, EditorRunner& runner);

  void Refresh(const RcoDocument& document) override;
  void ShowExpert(bool expert) override;

 private:
  void Connect();
  void AddText(Editor& editor);
  void ShowLanguages(const ListLines& languages);
  void ShowText(const TextDisplay& display);

  QComboBox* cboTextLang_;
  QLabel* lblTxtIdx_;
  TextBox* txt_;
  QPushButton* cmdTextChange_;
  QPushButton* cmdTextReset_;
  QPushButton* cmdTextSearch_;
  QPushButton* cmdTextRscAdd_;
  unsigned shownLanguages_ = 0;
  unsigned shownText_ = 0;
  unsigned shownSelectAll_ = 0;
};

}  // namespace kelvane
