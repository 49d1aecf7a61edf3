// The main window, frm: a row of buttons and four tabs. It shows what the document says and hands events to the editor.
#pragma once

#include <QHash>
#include <QWidget>
#include <array>
#include <filesystem>
#include <memory>
#include <string>

#include "editor/Editor.h"
#include "platform/QtPictureLoader.h"
#include "shell/EditorRunner.h"
#include "shell/FileDrop.h"
#include "shell/QtProgress.h"
#include "shell/QtPrompts.h"
#include "shell/QtWatch.h"
#include "shell/TabHeader.h"
#include "shell/TabPage.h"
#include "shell/frmPreview.h"

class QPushButton;

namespace kelvane {

class MainForm : public QWidget {
  Q_OBJECT
 public:
  // `executable` names the program: temporary files and settings lie in its folder. With `prompts` the questions go
  // there; it must outlive the form.
  explicit MainForm(const std::filesystem::path& executable, Prompts* prompts = nullptr);

  // Reads the settings, selects the first tab, takes the command line. Failures: those of reading the settings.
  void Load(const std::string& commandLine);

  [[nodiscard]] int CurrentTab() const { return currentTab_; }
  // A click on a header.
  void ClickTab(int index);
  [[nodiscard]] const TabPage& Page(int index) const { return *pages_.at(static_cast<std::size_t>(index)); }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddFrame();
  void AddPages();
  void AcceptDrops();
  void SetTabOrder();
  void Refresh();
  void ShowExpert();
  void LayOut();
  // The smallest size holds in normal state only.
  void LimitSize();
  void SelectHeader(int index);
  void SetDefaultButton(const QString& name);

  std::filesystem::path executable_;
  QtPrompts prompts_;
  QtWatch watch_;
  QtProgress* progress_;
  PictureBox* picPreview_;
  frmPreview* preview_;
  QtPictureLoader pictures_;
  Editor editor_;
  EditorRunner runner_;
  FileDrop drop_;
  std::array<TabHeader*, kTabCount> headers_{};
  std::array<TabPage*, kTabCount> pages_{};
  // Every control by its name, as the layout and the tables of buttons name it.
  QHash<QString, QWidget*> controls_;
  int currentTab_ = 1;
  QPushButton* defaultButton_ = nullptr;
  QPushButton* cancelButton_ = nullptr;
};

}  // namespace kelvane
