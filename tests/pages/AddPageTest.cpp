#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

#include "pages/AddPage.h"
#include "support/Failures.h"
#include "support/ScriptedPrompts.h"

namespace kelvane {
namespace {

using test::NumberOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kTooLazy =
    "Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.";

class AddPage : public ::testing::Test {
 protected:
  AddPage() {
    for (int line = 0; line < 5; ++line) {
      document_.lstPage.Add("line");
    }
  }
  std::optional<NewPageRsc> Accept() { return AcceptAddPage(prompts_, document_, fields_); }

  RcoDocument document_;
  test::ScriptedPrompts prompts_;
  AddPageFields fields_{.txtLabel = "name", .txtPos = "2", .txtDepth = "1", .cboID = 0};
};

TEST(PageKinds, AreTheFixedListOf25) {
  EXPECT_THAT(kPageKinds, ElementsAre("0x901 (page)", "0x902 (plane)", "0x903 (button)", "0x904 (xmenu)",
                                      "0x905 (list)", "0x906 (xlist)", "0x907", "0x908 (scroll)", "0x909 (mlist)",
                                      "0x90A (mitem)", "0x90B <non-existant>", "0x90C (item_xlist)", "0x90D (text)",
                                      "0x90E (model)", "0x90F (spin?)", "0x910 (spin?)", "0x911 (item_spin?)",
                                      "0x912 (group)", "0x913 (llist)", "0x914 (litem)", "0x915 (edit)",
                                      "0x916 (clock)", "0x917 (ilist)", "0x918 (iitem)", "0x919 (icon)"));
}

TEST(NewPageWords, TheFirstKindHas9AndTheSecond6AndAllOthersNone) {
  EXPECT_THAT(NewPageWords(0), ElementsAre(0x111, -1, -1, -1, -1, -1, -1, -1, -1));
  EXPECT_THAT(NewPageWords(1), ElementsAre(0, -1, -1, -1, -1, 0));
  for (int index = 2; index < 25; ++index) {
    EXPECT_THAT(NewPageWords(index), IsEmpty()) << index;
  }
}

TEST_F(AddPage, TakesLabelPlaceDepthAndKind) {
  fields_.cboID = 1;
  const std::optional<NewPageRsc> page = Accept();
  ASSERT_TRUE(page.has_value());
  EXPECT_EQ(page->index, Int16(2));
  EXPECT_THAT(page->body, ElementsAre(0, -1, -1, -1, -1, 0));
  EXPECT_EQ(page->label, "name");
  EXPECT_EQ(page->entryClass, 2);
  EXPECT_EQ(page->depth, Int16(1));
}

TEST_F(AddPage, WithoutASelectedKindTheClassIs0AndThereAreNoWords) {
  fields_.cboID = -1;
  const std::optional<NewPageRsc> page = Accept();
  ASSERT_TRUE(page.has_value());
  EXPECT_EQ(page->entryClass, 0);
  EXPECT_THAT(page->body, IsEmpty());
}

TEST_F(AddPage, EveryKindGivesItsClass) {
  for (int index = 0; index < 25; ++index) {
    fields_.cboID = index;
    EXPECT_EQ(Accept()->entryClass, index + 1);
  }
}

TEST_F(AddPage, AnEmptyLabelIsNotRefused) {
  fields_.txtLabel.clear();
  EXPECT_EQ(Accept()->label, "");
}

TEST_F(AddPage, AnEmptyDepthIsRefusedFirst) {
  fields_.txtDepth.clear();
  fields_.txtPos = "99";
  prompts_.ExpectTell("Must enter a depth value!", Icon::Exclamation);
  EXPECT_FALSE(Accept().has_value());
}

TEST_F(AddPage, ADepthIsTheNumberThatTheTextBeginsWithRounded) {
  const std::pair<const char*, int> kCases[] = {{"3", 3},   {"x", 0},  {"2.5", 2}, {"3.5", 4},
                                                {"-1", -1}, {"1x", 1}, {" ", 0},   {"32767", 32767}};
  for (const auto& [text, depth] : kCases) {
    fields_.txtDepth = text;
    EXPECT_EQ(Accept()->depth, Int16(depth)) << text;
  }
  fields_.txtDepth = "32768";
  EXPECT_EQ(NumberOf([&] { (void)Accept(); }), 6);
}

TEST_F(AddPage, APositionOutsideTheListIsInvalid) {
  for (const char* text : {"6", "-1", "100"}) {
    fields_.txtPos = text;
    prompts_.ExpectTell("无效坐标", Icon::Exclamation);
    EXPECT_FALSE(Accept().has_value());
  }
}

TEST_F(AddPage, Position0AndTheLineCountAreRefusedAlthoughTheyCountAsInsideTheRange) {
  for (const char* text : {"0", "", "5", "0.5", "4.6"}) {
    fields_.txtPos = text;
    prompts_.ExpectTell(kTooLazy, Icon::Information);
    EXPECT_FALSE(Accept().has_value()) << text;
  }
}

TEST_F(AddPage, PositionsFrom1ToTheLastLineAreTaken) {
  const std::pair<const char*, int> kCases[] = {{"1", 1}, {"4", 4}, {"1.6", 2}, {"2.5", 2}, {"1:5", 1}};
  for (const auto& [text, position] : kCases) {
    fields_.txtPos = text;
    EXPECT_EQ(Accept()->index, Int16(position)) << text;
  }
}

}  // namespace
}  // namespace kelvane
