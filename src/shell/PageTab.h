// Tab 2: the page entries.
#pragma once

#include <array>
#include <string>

#include "shell/TabPage.h"

class QLineEdit;
class QPushButton;

namespace kelvane {

class PageTab : public TabPage {
  Q_OBJECT
 public:
  PageTab(QWidget* form, EditorRunner& runner);

  void Refresh(const RcoDocument& document) override;
  // Takes note of what gets the focus, for the default button.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddPositionBlock();
  void Connect();
  [[nodiscard]] std::array<std::string, 13> TypedPositions() const;

  ListBox* lstPageData_;
  QWidget* picPagePos_;
  std::array<QLineEdit*, 13> txtPageOpt_{};
  QPushButton* cmdPageChange_;
  QPushButton* cmdPagePosChange_;
  unsigned shownPositions_ = 0;
};

}  // namespace kelvane
