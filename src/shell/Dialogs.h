// What the dialogs have in common.
#pragma once

#include <QDialog>
#include <QGridLayout>
#include <functional>
#include <string>
#include <vector>

class QLineEdit;
class QPushButton;

namespace kelvane {

// A dialog with rows of controls and its buttons below them.
class Dialog : public QDialog {
  Q_OBJECT
 public:
  Dialog(QWidget* owner, const char* name, const QString& caption);

 protected:
  [[nodiscard]] QGridLayout* Rows() const { return rows_; }
  // A heading, in bold.
  void AddHeading(const char* name, const QString& caption);
  // A little room in front of the next row.
  void AddGap();
  // A control over all columns of the next row.
  void AddRow(QWidget* control);
  // A label, the control that its mnemonic leads to, and what stands behind it.
  void AddField(const char* labelName, const QString& caption, QWidget* control, QWidget* behind = nullptr);
  // The text box txtPos, which takes only what a position is made of, with its range behind it.
  QLineEdit* AddPosition(int lineCount, const std::string& first);
  // The warning of the dialogs that add something.
  void AddWarning();
  // The last row, at its right end; the first button is the default one.
  void AddButtons(const std::vector<QPushButton*>& buttons);
  // cmdOK and cmdCancel as the last row. OK closes the dialog if `accepts` says so; it does without
  // one.
  void AddOkAndCancel(std::function<bool()> accepts = {});

 private:
  QGridLayout* rows_;
};

}  // namespace kelvane
