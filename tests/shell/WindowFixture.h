// The main form in a folder of its own, with scripted questions or with its own dialogs.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "common/Files.h"
#include "shell/DialogScript.h"
#include "shell/ListBox.h"
#include "shell/MainForm.h"
#include "support/RcoBuilder.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane::test {

class WindowFixture : public ::testing::Test {
 protected:
  explicit WindowFixture(bool scripted = true)
      : form(folder / "program/kelvane-editor", scripted ? &prompts : nullptr) {
    std::filesystem::create_directory(folder / "program");
  }

  // Loads and shows the form. The program is called "kelvane-editor".
  void Start(const std::string& commandLine = {}) {
    form.Load(commandLine);
    form.show();
    form.activateWindow();
    QTest::qWait(1);
  }

  template <class Control = QWidget>
  Control* Find(const char* name) {
    return In<Control>(form, name);
  }

  // In expert mode, on a file or on none.
  void StartExpert(const std::string& commandLine = {}) {
    WriteWholeFile(folder / "program/kelvane-editor.ini",
                   Bytes{'E', 'x', 'p', 'e', 'r', 't', 'M', 'o', 'd', 'e', '=', '1'});
    Start(commandLine);
  }
  void ClickRow(const char* list, int row) {
    auto* box = Find<ListBox>(list);
    QTest::mouseClick(box->viewport(), Qt::LeftButton, {}, box->visualRect(box->model()->index(row, 0)).center());
  }
  // The lines that a list shows.
  QStringList Rows(const char* list) {
    QStringList rows;
    const auto* model = Find<ListBox>(list)->model();
    for (int row = 0; row < model->rowCount(); ++row) {
      rows << model->index(row, 0).data().toString();
    }
    return rows;
  }

  void Click(const char* button) { QTest::mouseClick(Find(button), Qt::LeftButton); }
  void ClickTab(int tab) {
    QTest::mouseClick(Find(("picTabSel(" + std::to_string(tab) + ")").c_str()), Qt::LeftButton);
  }
  void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* focused = form.focusWidget();
    QTest::keyClick(focused != nullptr ? focused : &form, static_cast<Qt::Key>(key), modifiers);
  }

  TempFolder folder;
  ScriptedPrompts prompts;
  MainForm form;
};

// The same with the dialogs that a user meets.
class DialogFixture : public WindowFixture {
 protected:
  DialogFixture() : WindowFixture(false) {}

  DialogScript dialogs;
};

}  // namespace kelvane::test
