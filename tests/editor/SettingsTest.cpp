#include <gtest/gtest.h>

#include "common/Files.h"
#include "editor/Settings.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TempFolder;

Mod Parsed(const std::string& text, Mod mod = {}) {
  ParseSettings(text, mod);
  return mod;
}

TEST(Settings, TheDefaultsAreTheZeroState) {
  const Mod mod = Parsed("");
  EXPECT_FALSE(mod.cFirstColTrans);
  EXPECT_EQ(mod.cImpt32bitMode, Int16(0));
  EXPECT_FALSE(mod.cNoUpdatBak);
  EXPECT_FALSE(mod.cNoUpdatChk);
  EXPECT_FALSE(mod.cNoCompression);
  EXPECT_FALSE(mod.cExpert);
}

TEST(Settings, EachKeySetsItsVariable) {
  EXPECT_TRUE(Parsed("ImptSetFirstColAsTrans = 1").cFirstColTrans);
  EXPECT_EQ(Parsed("Impt32bitMode = 2").cImpt32bitMode, Int16(2));
  EXPECT_TRUE(Parsed("NoUpdatBak = 1").cNoUpdatBak);
  EXPECT_TRUE(Parsed("NoUpdatChk = 1").cNoUpdatChk);
  EXPECT_TRUE(Parsed("NoCompression = 1").cNoCompression);
  EXPECT_TRUE(Parsed("ExpertMode = 1").cExpert);
}

TEST(Settings, ALineWithoutBlanksAndOneInLowerCaseBothWork) {
  EXPECT_TRUE(Parsed("NoUpdatBak=1").cNoUpdatBak);
  EXPECT_TRUE(Parsed("noupdatbak = 1").cNoUpdatBak);
  EXPECT_TRUE(Parsed("  No Updat Bak  =  1  ").cNoUpdatBak);
}

TEST(Settings, AValueOfTwoCharactersChangesNothing) {
  EXPECT_FALSE(Parsed("NoUpdatBak = 10").cNoUpdatBak);
  Mod mod;
  mod.cNoUpdatBak = true;
  EXPECT_TRUE(Parsed("NoUpdatBak = 00", mod).cNoUpdatBak);
  EXPECT_TRUE(Parsed("NoUpdatBak = ", mod).cNoUpdatBak);
}

TEST(Settings, ASecondEqualsSignIsPartOfTheValue) {
  EXPECT_FALSE(Parsed("NoCompression = 1=1").cNoCompression);
}

TEST(Settings, Impt32bitMode7Gives1) {
  EXPECT_EQ(Parsed("Impt32bitMode = 7").cImpt32bitMode, Int16(1));
}

TEST(Settings, Impt32bitModeThatIsNoDigitGives0) {
  Mod mod;
  mod.cImpt32bitMode = 2;
  EXPECT_EQ(Parsed("Impt32bitMode = x", mod).cImpt32bitMode, Int16(0));
}

TEST(Settings, Impt32bitModeOfTwoCharactersOnlyRunsTheRangeTest) {
  Mod mod;
  mod.cImpt32bitMode = 2;
  EXPECT_EQ(Parsed("Impt32bitMode = 10", mod).cImpt32bitMode, Int16(2));
  mod.cImpt32bitMode = 5;
  EXPECT_EQ(Parsed("Impt32bitMode = 10", mod).cImpt32bitMode, Int16(1));
}

TEST(Settings, ExpertModeXGivesFalse) {
  Mod mod;
  mod.cExpert = true;
  EXPECT_FALSE(Parsed("ExpertMode = x", mod).cExpert);
}

TEST(Settings, AnyDigitBut0GivesTrue) {
  EXPECT_TRUE(Parsed("ExpertMode = 9").cExpert);
  Mod mod;
  mod.cExpert = true;
  EXPECT_FALSE(Parsed("ExpertMode = 0", mod).cExpert);
}

TEST(Settings, CommentsEmptyLinesAndUnknownKeysAreSkipped) {
  const Mod mod = Parsed(";NoUpdatBak = 1\n ; NoUpdatChk = 1\n\nNoUpdat = 1\nNoUpdatBak 1\n=1\n");
  EXPECT_FALSE(mod.cNoUpdatBak);
  EXPECT_FALSE(mod.cNoUpdatChk);
}

TEST(Settings, LinesMayEndInCarriageReturns) {
  const Mod mod = Parsed("NoUpdatBak = 1\r\nExpertMode = 1\r\n");
  EXPECT_TRUE(mod.cNoUpdatBak);
  EXPECT_TRUE(mod.cExpert);
}

TEST(Settings, AreWrittenToTheByte) {
  Mod mod;
  mod.cFirstColTrans = true;
  mod.cImpt32bitMode = 2;
  mod.cNoUpdatChk = true;
  const std::string expected =
      ";For 4/8bit BMP importing...\n"
      "ImptSetFirstColAsTrans = 1\n"
      "\n"
      ";For 32bit BMP importing...\n"
      "; 0 = Always convert to palette\n"
      "; 1 = Auto-decide\n"
      "; 2 = Always use 32 bit GIMs\n"
      "Impt32bitMode = 2\n"
      "\n"
      ";Set to 1 to disable making a .bak file \n"
      "NoUpdatBak = 0\n"
      "\n"
      ";Disable the file update checker (may fix problems on Wine)\n"
      "NoUpdatChk = 1\n"
      "\n"
      ";Disable image/model compression\n"
      "NoCompression = 0\n"
      "\n"
      ";Enter 'expert' mode by default\n"
      "ExpertMode = 0\n"
      "\n";
  EXPECT_EQ(FormatSettings(mod), expected);
}

TEST(Settings, WhatWasWrittenReadsBack) {
  const TempFolder folder;
  Mod mod;
  mod.cNoUpdatBak = true;
  mod.cNoCompression = true;
  mod.cExpert = true;
  mod.cImpt32bitMode = 1;
  WriteSettings(folder / "kelvane-editor.ini", mod);
  Mod read;
  ReadSettings(folder / "kelvane-editor.ini", read);
  EXPECT_EQ(FormatSettings(read), FormatSettings(mod));
  EXPECT_TRUE(read.cExpert);
}

TEST(Settings, WithoutAFileNothingIsSet) {
  const TempFolder folder;
  Mod mod;
  mod.cExpert = true;
  ReadSettings(folder / "none.ini", mod);
  EXPECT_TRUE(mod.cExpert);
}

TEST(Settings, AProgramOfAnotherNameHasAFileOfItsOwn) {
  Mod mod;
  mod.cAppPath = "/opt/kelvane/";
  EXPECT_EQ(SettingsPath(mod, "/opt/kelvane/kelvane-editor"), "/opt/kelvane/kelvane-editor.ini");
  EXPECT_EQ(SettingsPath(mod, "/opt/kelvane/mine.exe"), "/opt/kelvane/mine.ini");
}

TEST(Settings, AFileThatCannotBeWrittenIsAnOrdinaryFailure) {
  const TempFolder folder;
  EXPECT_EQ(NumberOf([&] { WriteSettings(folder / "none/a.ini", Mod()); }), 76);
}

}  // namespace
}  // namespace kelvane
