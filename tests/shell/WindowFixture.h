// The main form with scripted questions, in a folder of its own.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "shell/MainForm.h"
#include "support/RcoBuilder.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane::test {

class WindowFixture : public ::testing::Test {
 protected:
  WindowFixture() { std::filesystem::create_directory(folder / "program"); }

  // Loads and shows the form. The program is called "kelvane-editor".
  void Start(const std::string& commandLine = {}) {
    form.Load(commandLine);
    form.show();
    form.activateWindow();
    QTest::qWait(1);
  }

  template <class Control = QWidget>
  Control* Find(const char* name) {
    auto* control = form.findChild<Control*>(name);
    EXPECT_NE(control, nullptr) << name;
    return control;
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
  MainForm form{folder / "program/kelvane-editor", &prompts};
};

}  // namespace kelvane::test
