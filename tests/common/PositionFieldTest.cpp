#include <gtest/gtest.h>

#include "common/PositionField.h"
#include "support/Failures.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::ScriptedPrompts;

constexpr const char* kNoBorders =
    "Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.";

TEST(PositionField, LetsDigitsColonFullStopAndBackspacePassAndNothingElse) {
  std::string passed;
  for (int code = 0; code < 0x10000; ++code) {
    if (PassesPositionField(code)) {
      ASSERT_LT(code, 128);
      passed.push_back(static_cast<char>(code));
    }
  }
  EXPECT_EQ(passed, "\b.0123456789:");
}

TEST(PositionField, ShowsTheLineCountAsTheUpperEnd) {
  EXPECT_EQ(PositionRangeText(0), "(0 to 0)");
  EXPECT_EQ(PositionRangeText(120), "(0 to 120)");
}

TEST(PositionField, TakesTheNumberThatTheTextBeginsWithRounded) {
  ScriptedPrompts prompts;
  EXPECT_EQ(AcceptPosition(prompts, "2", 5, 0), Int16(2));
  EXPECT_EQ(AcceptPosition(prompts, "1.6", 5, 0), Int16(2));
  EXPECT_EQ(AcceptPosition(prompts, "2.5", 5, 0), Int16(2));
  EXPECT_EQ(AcceptPosition(prompts, "1:5", 5, 0), Int16(1));
  EXPECT_EQ(AcceptPosition(prompts, "", 5, 0), Int16(0));
}

TEST(PositionField, APositionBeyondTheLineCountOrBelowZeroIsInvalid) {
  ScriptedPrompts prompts;
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  EXPECT_EQ(AcceptPosition(prompts, "6", 5, 0), std::nullopt);
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  EXPECT_EQ(AcceptPosition(prompts, "-1", 5, 0), std::nullopt);
}

TEST(PositionField, TheUpperEndAndWhatLiesBelowTheLowestAreRefusedWithTheBorderMessage) {
  ScriptedPrompts prompts;
  prompts.ExpectTell(kNoBorders, Icon::Information);
  EXPECT_EQ(AcceptPosition(prompts, "5", 5, 0), std::nullopt);
  prompts.ExpectTell(kNoBorders, Icon::Information);
  EXPECT_EQ(AcceptPosition(prompts, "0", 5, 1), std::nullopt);
  EXPECT_EQ(AcceptPosition(prompts, "1", 5, 1), Int16(1));
  EXPECT_EQ(AcceptPosition(prompts, "4", 5, 1), Int16(4));
}

TEST(PositionField, WithNoLineNoPositionIsTaken) {
  ScriptedPrompts prompts;
  prompts.ExpectTell(kNoBorders, Icon::Information);
  EXPECT_EQ(AcceptPosition(prompts, "0", 0, 0), std::nullopt);
}

TEST(PositionField, APositionBeyond16BitsIsFailure6) {
  ScriptedPrompts prompts;
  EXPECT_EQ(test::NumberOf([&] { (void)AcceptPosition(prompts, "32768", 5, 0); }), 6);
}

TEST(PositionField, TheButtonsAskForALoadedFileFirst) {
  const test::TempFolder folder;
  Mod mod;
  ScriptedPrompts prompts;
  prompts.ExpectTell("Must have a file loaded to use this feature!", Icon::Exclamation);
  EXPECT_FALSE(RequireLoadedFile(prompts, mod));
  mod.cCurFile = folder / "gone.rco";
  prompts.ExpectTell("Must have a file loaded to use this feature!", Icon::Exclamation);
  EXPECT_FALSE(RequireLoadedFile(prompts, mod));
  mod.cCurFile = folder.Write("there.rco", Bytes{1});
  EXPECT_TRUE(RequireLoadedFile(prompts, mod));
}

}  // namespace
}  // namespace kelvane
