#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "support/ScriptedPrompts.h"
#include "text/AddText.h"

namespace kelvane {
namespace {

using test::ScriptedPrompts;

RcoDocument DocumentOfThreeTexts() {
  RcoDocument document;
  for (const char* label : {"a", "b", "c"}) {
    document.lstText.Add(label);
  }
  return document;
}

TEST(AddText, StartsWithTheSelectedTextsNumberOrNothing) {
  RcoDocument document = DocumentOfThreeTexts();
  EXPECT_EQ(FirstAddTextPosition(document), "");
  document.lstText.Select(2);
  EXPECT_EQ(FirstAddTextPosition(document), "2");
}

TEST(AddText, AnEmptyLabelIsRefusedBeforeThePositionIsLookedAt) {
  ScriptedPrompts prompts;
  prompts.ExpectTell("必须输入一个标记", Icon::Exclamation);
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "", "99999"), std::nullopt);
}

TEST(AddText, APositionOf0IsAllowed) {
  ScriptedPrompts prompts;
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", "0"), Int16(0));
}

TEST(AddText, AnEmptyPositionIs0) {
  ScriptedPrompts prompts;
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", ""), Int16(0));
}

TEST(AddText, OnePointSixIsPosition2AndOneColonFiveIsPosition1) {
  ScriptedPrompts prompts;
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", "1.6"), Int16(2));
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", "1:5"), Int16(1));
}

TEST(AddText, APositionIsRoundedToTheNearestAndAHalfToTheEvenOne) {
  const std::vector<std::pair<const char*, int>> table = {{"0.5", 0}, {"1.5", 2}, {"2.5", 2}, {"-0.5", 0}, {"1.4", 1}};
  for (const auto& [text, position] : table) {
    ScriptedPrompts prompts;
    EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", text), Int16(position)) << text;
  }
}

TEST(AddText, AFileWithoutTextsTakesNone) {
  ScriptedPrompts prompts;
  prompts.ExpectTell(
      "Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.",
      Icon::Information);
  EXPECT_EQ(AcceptAddText(prompts, RcoDocument(), "msg_new", "0"), std::nullopt);
}

TEST(AddText, APositionAboveTheLineCountOrBelow0IsInvalid) {
  ScriptedPrompts prompts;
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", "4"), std::nullopt);
  prompts.ExpectTell("无效坐标", Icon::Exclamation);
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", "-1"), std::nullopt);
}

TEST(AddText, ATextCantBeAppendedBehindTheLastOne) {
  ScriptedPrompts prompts;
  prompts.ExpectTell(
      "Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.",
      Icon::Information);
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", "3"), std::nullopt);
  EXPECT_EQ(AcceptAddText(prompts, DocumentOfThreeTexts(), "msg_new", "2"), Int16(2));
}

}  // namespace
}  // namespace kelvane
