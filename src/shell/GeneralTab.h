// Tab 0: the general resources.
#pragma once

#include "shell/PictureBox.h"
#include "shell/TabPage.h"
#include "shell/frmPreview.h"

class QCheckBox;
class QLabel;

namespace kelvane {

class GeneralTab : public TabPage {
  Q_OBJECT
 public:
  // `picPreview` becomes a part of the page.
  GeneralTab(QWidget* form, EditorRunner& runner, PictureBox* picPreview, frmPreview* preview);

  void Refresh(const RcoDocument& document) override;
  void ShowExpert(bool expert) override;

 private:
  void AddDisplay(QWidget* container);
  void AddCommands(QWidget* container);
  void AddResource();
  void OpenPreview();
  void TakeColour(const QColor& colour);
  // Lets the notice be read on the background that the user chose.
  void StandOut();
  // Draws the selected resource anew.
  void Redraw();

  PictureBox* picPreview_;
  frmPreview* preview_;
  QLabel* lblGenItemNo_;
  QLabel* lblPreviewFail_;
  QLabel* lblDim_;
  QLabel* lblGenCompr_;
  QLabel* lblGenOffsetEntryDes_;
  QLabel* lblGenOffsetEntry_;
  QLabel* lblGenOffsetDataDes_;
  QLabel* lblGenOffsetData_;
  QCheckBox* chkRes_;
  QWidget* cmdGenRscAdd_;
};

}  // namespace kelvane
