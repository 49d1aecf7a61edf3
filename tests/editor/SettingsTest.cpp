#include <array>
#include <gtest/gtest.h>
#include <sstream>

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

// The whole file with these values, in its order.
std::string FileWith(const std::array<std::string, 6>& values) {
  return ";For 4/8bit BMP importing...\n"
         "ImptSetFirstColAsTrans = " +
         values[0] +
         "\n"
         "\n"
         ";For 32bit BMP importing...\n"
         "; 0 = Always convert to palette\n"
         "; 1 = Auto-decide\n"
         "; 2 = Always use 32 bit GIMs\n"
         "Impt32bitMode = " +
         values[1] +
         "\n"
         "\n"
         ";Set to 1 to disable making a .bak file \n"
         "NoUpdatBak = " +
         values[2] +
         "\n"
         "\n"
         ";Disable the file update checker (may fix problems on Wine)\n"
         "NoUpdatChk = " +
         values[3] +
         "\n"
         "\n"
         ";Disable image/model compression\n"
         "NoCompression = " +
         values[4] +
         "\n"
         "\n"
         ";Enter 'expert' mode by default\n"
         "ExpertMode = " +
         values[5] +
         "\n"
         "\n";
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

TEST(Settings, EveryDigitAndEveryOtherCharacterSetsEachSwitch) {
  const std::vector<std::pair<std::string, bool Mod::*>> switches = {{"ImptSetFirstColAsTrans", &Mod::cFirstColTrans},
                                                                     {"NoUpdatBak", &Mod::cNoUpdatBak},
                                                                     {"NoUpdatChk", &Mod::cNoUpdatChk},
                                                                     {"NoCompression", &Mod::cNoCompression},
                                                                     {"ExpertMode", &Mod::cExpert}};
  for (const auto& [key, field] : switches) {
    for (const bool before : {false, true}) {
      for (const char value : std::string("0123456789x-+.&\t\xE9")) {
        Mod mod;
        mod.*field = before;
        EXPECT_EQ(Parsed(key + " = " + value, mod).*field, value >= '1' && value <= '9') << key << " = " << value;
      }
    }
  }
}

TEST(Settings, EachKeySetsItsOwnVariableOnly) {
  const std::vector<std::pair<std::string, std::string>> table = {{"ImptSetFirstColAsTrans=1", "1 0 0 0 0 0"},
                                                                  {"Impt32bitMode=2", "0 2 0 0 0 0"},
                                                                  {"NoUpdatBak=1", "0 0 1 0 0 0"},
                                                                  {"NoUpdatChk=1", "0 0 0 1 0 0"},
                                                                  {"NoCompression=1", "0 0 0 0 1 0"},
                                                                  {"ExpertMode=1", "0 0 0 0 0 1"}};
  for (const auto& [line, expected] : table) {
    const Mod mod = Parsed(line);
    std::ostringstream values;
    values << mod.cFirstColTrans << ' ' << mod.cImpt32bitMode.Int() << ' ' << mod.cNoUpdatBak << ' ' << mod.cNoUpdatChk
           << ' ' << mod.cNoCompression << ' ' << mod.cExpert;
    EXPECT_EQ(values.str(), expected) << line;
  }
}

TEST(Settings, OnlyBlanksAroundTheValueAreTakenOff) {
  EXPECT_TRUE(Parsed("NoUpdatBak =   1   ").cNoUpdatBak);
  EXPECT_FALSE(Parsed("NoUpdatBak = 1 1").cNoUpdatBak);  // three characters, not two
  EXPECT_FALSE(Parsed("NoUpdatBak = \t1").cNoUpdatBak);  // two characters
}

TEST(Settings, AKeyMustStandAtTheStartOfTheLineAndInFrontOfTheEqualsSign) {
  for (const char* line : {"xNoUpdatBak=1", "=NoUpdatBak=1", "NoUpdatBakX=1", "\tNoUpdatBak=1", "NoUpdatBak:=1"}) {
    EXPECT_FALSE(Parsed(line).cNoUpdatBak) << line;
  }
}

TEST(Settings, TheLastLineOfAKeyWins) {
  EXPECT_FALSE(Parsed("NoUpdatBak=1\nNoUpdatBak=0\n").cNoUpdatBak);
  EXPECT_TRUE(Parsed("NoUpdatBak=0\nNoUpdatBak=1\nNoUpdatBak=10\n").cNoUpdatBak);
}

TEST(Settings, Impt32bitModeTakes0To2AndMakes1OfEveryOtherDigit) {
  for (int digit = 0; digit < 10; ++digit) {
    for (int before = 0; before < 3; ++before) {
      Mod mod;
      mod.cImpt32bitMode = before;
      EXPECT_EQ(Parsed("Impt32bitMode = " + std::to_string(digit), mod).cImpt32bitMode, Int16(digit <= 2 ? digit : 1));
    }
  }
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

TEST(Settings, LinesEndInLineFeedsCarriageReturnsOrBothAndTheLastInNothing) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    std::string text;
    for (const char* line : {"NoUpdatBak = 1", ";comment", "", "NoUpdatChk = 1"}) {
      text.append(line).append(end);
    }
    const Mod mod = Parsed(text.append("ExpertMode = 1"));
    EXPECT_TRUE(mod.cNoUpdatBak);
    EXPECT_TRUE(mod.cNoUpdatChk);
    EXPECT_TRUE(mod.cExpert);
  }
}

TEST(Settings, AreWrittenToTheByte) {
  Mod mod;
  mod.cFirstColTrans = true;
  mod.cImpt32bitMode = 2;
  mod.cNoUpdatChk = true;
  EXPECT_EQ(FormatSettings(mod), FileWith({"1", "2", "0", "1", "0", "0"}));
}

TEST(Settings, EachVariableIsWrittenInItsOwnLineOnly) {
  const std::vector<bool Mod::*> switches = {&Mod::cFirstColTrans, nullptr,      &Mod::cNoUpdatBak, &Mod::cNoUpdatChk,
                                             &Mod::cNoCompression, &Mod::cExpert};
  for (std::size_t line = 0; line < switches.size(); ++line) {
    Mod mod;
    if (switches[line] != nullptr) {
      mod.*switches[line] = true;
    } else {
      mod.cImpt32bitMode = 1;
    }
    std::array<std::string, 6> values = {"0", "0", "0", "0", "0", "0"};
    values[line] = "1";
    EXPECT_EQ(FormatSettings(mod), FileWith(values));
  }
}

TEST(Settings, AUsersOwnCommentsAndKeysAreLostAtEachWrite) {
  const TempFolder folder;
  const std::string before = ";my own comment\nNoUpdatBak = 1\nMyKey = 1\n" + std::string(2000, ';');
  const auto path = folder.Write("a.ini", Bytes(before.begin(), before.end()));
  Mod mod;
  ReadSettings(path, mod);
  WriteSettings(path, mod);
  const Bytes written = ReadWholeFile(path);
  EXPECT_EQ(std::string(written.begin(), written.end()), FileWith({"0", "0", "1", "0", "0", "0"}));
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.ini"});
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
