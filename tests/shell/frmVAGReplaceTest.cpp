#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "common/Bytes.h"
#include "shell/DragEvents.h"
#include "shell/WindowFixture.h"
#include "shell/frmVAGReplace.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane::test {
namespace {

class FrmVagReplaceTest : public ::testing::Test {
 protected:
  void Open(bool stereo) {
    dialog = std::make_unique<frmVAGReplace>(nullptr, stereo, prompts, [this](const VagChoice& choice) {
      asked.push_back(choice);
      return accepts;
    });
    dialog->show();
    dialog->activateWindow();
    QTest::qWait(1);
  }
  template <class Control>
  Control* Find(const char* name) {
    return In<Control>(*dialog, name);
  }
  void Click(const char* name) { QTest::mouseClick(Find<QPushButton>(name), Qt::LeftButton); }
  void ExpectRightEnabled(bool enabled) {
    EXPECT_EQ(Find<QLabel>("lblRFileDes")->isEnabled(), enabled);
    EXPECT_EQ(Find<QLineEdit>("txtRFile")->isEnabled(), enabled);
    EXPECT_EQ(Find<QPushButton>("cmdRFileBrowse")->isEnabled(), enabled);
  }

  TempFolder folder;
  ScriptedPrompts prompts;
  std::vector<VagChoice> asked;
  bool accepts = true;
  std::unique_ptr<frmVAGReplace> dialog;
};

TEST_F(FrmVagReplaceTest, CaptionsStandAsTold) {
  Open(false);
  EXPECT_EQ(dialog->windowTitle(), "Kelvane Editor - Replace VAG");
  EXPECT_EQ(Find<QLabel>("lblChannelsDes")->text(), "The current sound is");
  EXPECT_EQ(Find<QCheckBox>("chkStereo")->text(), "Use &stereo sound");
  EXPECT_EQ(Find<QLabel>("lblLFileDes")->text(), "&Left Channel:");
  EXPECT_EQ(Find<QLabel>("lblRFileDes")->text(), "&Right Channel:");
}

TEST_F(FrmVagReplaceTest, MonoSoundStartsWithoutTheRightChannel) {
  Open(false);
  EXPECT_EQ(Find<QLabel>("lblChannels")->text(), "单声道");
  EXPECT_FALSE(Find<QCheckBox>("chkStereo")->isChecked());
  ExpectRightEnabled(false);
}

TEST_F(FrmVagReplaceTest, StereoSoundStartsWithBothChannels) {
  Open(true);
  EXPECT_EQ(Find<QLabel>("lblChannels")->text(), "立体声");
  EXPECT_TRUE(Find<QCheckBox>("chkStereo")->isChecked());
  ExpectRightEnabled(true);
}

TEST_F(FrmVagReplaceTest, CheckBoxEnablesTheRightChannel) {
  Open(false);
  QTest::keyClick(dialog.get(), Qt::Key_S, Qt::AltModifier);
  QTest::qWait(200);  // a mnemonic shows the box pressed for a moment
  EXPECT_TRUE(Find<QCheckBox>("chkStereo")->isChecked());
  ExpectRightEnabled(true);
  QTest::keyClick(dialog.get(), Qt::Key_S, Qt::AltModifier);
  QTest::qWait(200);
  ExpectRightEnabled(false);
}

TEST_F(FrmVagReplaceTest, BrowseStartsFromTheBoxAndFillsIt) {
  Open(true);
  for (const auto& [box, button] : {std::pair{"txtLFile", "cmdLFileBrowse"}, {"txtRFile", "cmdRFileBrowse"}}) {
    QTest::keyClicks(Find<QLineEdit>(box), "/sounds/a.vag");
    prompts.ExpectFileDialog({.path = "/sounds/b.vag"}, [](const FileDialog& file) {
      EXPECT_EQ(file.title, "选择一个VAG声音");
      EXPECT_EQ(file.filters, (std::vector<FileFilter>{{"VAG文件(*.vag)", "*.vag"}}));
      EXPECT_EQ(file.initialDir, "/sounds/a.vag");
    });
    Click(button);
    EXPECT_EQ(Find<QLineEdit>(box)->text(), "/sounds/b.vag");
  }
}

TEST_F(FrmVagReplaceTest, OkHandsTheFilesOverAndStaysUntilAccepted) {
  Open(true);
  accepts = false;
  QTest::keyClicks(Find<QLineEdit>("txtLFile"), "/l.vag");
  QTest::keyClicks(Find<QLineEdit>("txtRFile"), "/r.vag");
  Click("cmdOK");
  EXPECT_TRUE(dialog->isVisible());
  accepts = true;
  Find<QCheckBox>("chkStereo")->setChecked(false);
  Click("cmdOK");
  EXPECT_FALSE(dialog->isVisible());
  ASSERT_EQ(asked.size(), 2U);
  EXPECT_EQ(asked[0].left, "/l.vag");
  EXPECT_EQ(asked[0].right, "/r.vag");
  EXPECT_TRUE(asked[0].stereo);
  EXPECT_FALSE(asked[1].stereo);
}

TEST_F(FrmVagReplaceTest, CancelHandsNothingOver) {
  Open(true);
  Click("cmdCancel");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_TRUE(asked.empty());
}

TEST_F(FrmVagReplaceTest, FirstOfTheDroppedFilesGoesIntoTheBox) {
  Open(true);
  const auto left = folder.Write("l.vag", Bytes(4));
  const auto right = folder.Write("r.vag", Bytes(4));
  FileDrag one({right});
  Drop(*Find<QLineEdit>("txtRFile"), one.Data());
  EXPECT_EQ(Find<QLineEdit>("txtRFile")->text().toStdString(), right.string());
  prompts.ExpectTell("More than one file was dropped - only the first file will be used.", Icon::Exclamation);
  FileDrag two({left, right});
  Drop(*Find<QLineEdit>("txtLFile"), two.Data());
  EXPECT_EQ(Find<QLineEdit>("txtLFile")->text().toStdString(), left.string());
  FileDrag missing({folder / "none.vag"});
  Drop(*Find<QLineEdit>("txtLFile"), missing.Data());
  EXPECT_EQ(Find<QLineEdit>("txtLFile")->text().toStdString(), left.string());
}

TEST_F(FrmVagReplaceTest, DragOfTextIsRefused) {
  Open(true);
  const std::unique_ptr<QMimeData> text(FileDrag::Text());
  EXPECT_FALSE(IsAccepted(*Find<QLineEdit>("txtLFile"), *text));
  EXPECT_FALSE(IsAccepted(*Find<QLineEdit>("txtRFile"), *text));
}

// The dialog as cmdReplace opens it.
class SoundWindowTest : public DialogFixture {
 protected:
  SoundWindowTest() {
    RcoBuilder builder;
    builder.AddVag({.label = "snd", .channel1 = Bytes(16, 1)});
    built = builder.Build();
    path = folder.Write("sound.rco", built.bytes);
  }

  BuiltRco built;
  std::filesystem::path path;
};

TEST_F(SoundWindowTest, MissingFilesAreToldAndAMonoSoundBecomesStereo) {
  const std::string left = folder.Write("l.vag", Bytes(10, 7)).string();
  const std::string right = folder.Write("r.vag", Bytes(8, 9)).string();
  Start(path.string());
  ClickRow("lst", 0);
  dialogs.Expect<frmVAGReplace>([&](frmVAGReplace& dialog) {
    EXPECT_EQ(dialog.parentWidget(), &form);
    auto* ok = In<QPushButton>(dialog, "cmdOK");
    dialogs.ExpectMessage("左声道的VAG文件不存在！", QMessageBox::Warning);
    QTest::mouseClick(ok, Qt::LeftButton);
    QTest::keyClicks(In<QLineEdit>(dialog, "txtLFile"), QString::fromStdString(left));
    In<QCheckBox>(dialog, "chkStereo")->setFocus();
    QTest::keyClick(In<QCheckBox>(dialog, "chkStereo"), Qt::Key_Space);
    dialogs.ExpectMessage("右声道的VAG文件不存在！", QMessageBox::Warning);
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(In<QLineEdit>(dialog, "txtLFile")->text().toStdString(), left);
    QTest::keyClicks(In<QLineEdit>(dialog, "txtRFile"), QString::fromStdString(right));
    QTest::keyClick(In<QLineEdit>(dialog, "txtRFile"), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  Click("cmdReplace");
  const Bytes file = ReadWholeFile(path);
  const auto entry = built.layout.vags[0].entry;
  EXPECT_EQ(ReadU16(file, entry + 42), 2);
  EXPECT_EQ(ReadI32(file, entry + 52), 10);
  EXPECT_EQ(ReadI32(file, entry + 60), 8);
  const std::ptrdiff_t data = ReadI32(file, 136) + ReadI32(file, entry + 48);
  const Bytes expected = {7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 0, 0, 9, 9, 9, 9, 9, 9, 9, 9};
  EXPECT_EQ(Bytes(file.begin() + data, file.begin() + data + 20), expected);
}

TEST_F(SoundWindowTest, CancelLeavesTheFile) {
  Start(path.string());
  ClickRow("lst", 0);
  dialogs.Expect<frmVAGReplace>([](frmVAGReplace& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  Click("cmdReplace");
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
  EXPECT_FALSE(FileExists(path.string() + ".bak"));
}

}  // namespace
}  // namespace kelvane::test
