#include <gtest/gtest.h>

#include "OpenTexts.h"
#include "support/Failures.h"
#include "support/RcoBuilder.h"
#include "support/ScriptedPrompts.h"
#include "text/TextSearch.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::OpenTexts;
using test::RcoBuilder;
using test::ScriptedPrompts;

constexpr const char* kPrompt = "请输入你想要搜索的文字(只搜索当前选择的语言,允许使用 *?[] 通配符)";
constexpr const char* kNotFound = "找不到字符";

class TextSearchTest : public ::testing::Test {
 protected:
  void SetUp() override {
    RcoBuilder b;
    b.AddLanguage(0x10000);
    b.AddLanguage(0x10001);
    b.AddText({.label = "t0", .strings = {u"セーブ", u"Save the GAME"}});
    b.AddText({.label = "t1", .strings = {u"ロード", u"Load the game"}});
    b.AddText({.label = "t2", .strings = {u"only here", test::NoText()}});
    b.AddText({.label = "t3", .strings = {u"中止", u"Cancel\nnow?"}});
    b.AddText({.label = "t4", .strings = {u"ゲーム", u"Game 7"}});
    open_.Open(b.Build().bytes);
  }

  // Searches with the answer of the input box, which shows what was searched for last.
  bool Search(const std::string& answer) {
    prompts_.ExpectInput(kPrompt, last_, answer);
    const bool found = cmdTextSearch(open_.mod, open_.document, prompts_);
    last_ = open_.document.lastSearch;
    return found;
  }
  // Searches for what isn't there.
  void SearchInVain(const std::string& answer) {
    prompts_.ExpectInput(kPrompt, last_, answer);
    prompts_.ExpectTell(kNotFound, Icon::Information);
    EXPECT_FALSE(cmdTextSearch(open_.mod, open_.document, prompts_)) << answer;
    last_ = open_.document.lastSearch;
  }
  [[nodiscard]] int Selected() const { return open_.document.lstText.Selected(); }
  void Select(int item) { SelectText(open_.mod, open_.document, item); }

  OpenTexts open_;
  ScriptedPrompts prompts_;
  std::string last_;
};

TEST_F(TextSearchTest, AMatchIsSelectedAndShown) {
  EXPECT_TRUE(Search("load"));
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(open_.document.text.txt, u"Load the game");
  EXPECT_EQ(open_.document.text.lblTxtIdx, "项目 #1");
}

TEST_F(TextSearchTest, SearchingAgainMovesOnToTheNextMatchAndFromTheLastAroundToTheFirst) {
  for (const int expected : {0, 1, 4, 0, 1}) {
    EXPECT_TRUE(Search("game"));
    EXPECT_EQ(Selected(), expected);
  }
}

TEST_F(TextSearchTest, TheSelectedTextIsTestedLastSoThatASingleMatchSelectsItself) {
  EXPECT_TRUE(Search("save"));
  EXPECT_EQ(Selected(), 0);
  const unsigned shown = open_.document.text.txtRevision;
  EXPECT_TRUE(Search("save"));
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(open_.document.text.txtRevision, shown + 1);
}

TEST_F(TextSearchTest, FromTheLastTextTheSearchStartsOverAtTheFirst) {
  Select(4);
  EXPECT_TRUE(Search("the"));
  EXPECT_EQ(Selected(), 0);
}

TEST_F(TextSearchTest, CaseIsIgnoredOnBothSides) {
  EXPECT_TRUE(Search("LOAD"));
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(open_.document.lastSearch, "load");
  Select(4);
  EXPECT_TRUE(Search("the game"));
  EXPECT_EQ(Selected(), 0);
}

TEST_F(TextSearchTest, OnlyTheSelectedLanguageIsSearched) {
  SearchInVain("only here");
  SelectTextLang(open_.mod, open_.document, 0);
  EXPECT_TRUE(Search("only here"));
  EXPECT_EQ(Selected(), 2);
  EXPECT_TRUE(Search("ゲーム"));
  EXPECT_EQ(Selected(), 4);
}

TEST_F(TextSearchTest, WildcardsWork) {
  EXPECT_TRUE(Search("game #"));
  EXPECT_EQ(Selected(), 4);
  EXPECT_TRUE(Search("[ls]o?d"));
  EXPECT_EQ(Selected(), 1);
  EXPECT_TRUE(Search("c[!x-z]n*l"));
  EXPECT_EQ(Selected(), 3);
  EXPECT_TRUE(Search("now[?]"));
  EXPECT_EQ(Selected(), 3);
}

TEST_F(TextSearchTest, ALineBreakIsTestedAsCarriageReturnAndLineFeed) {
  EXPECT_TRUE(Search("cancel??now"));
  EXPECT_EQ(Selected(), 3);
  Select(-1);
  EXPECT_TRUE(Search("cancel*now"));
  EXPECT_EQ(Selected(), 3);
  SearchInVain("cancel?now");
}

TEST_F(TextSearchTest, AnEmptyTextMatchesOnlyAPatternOfAnAsteriskAlone) {
  Select(1);
  EXPECT_TRUE(Search("*"));
  EXPECT_EQ(Selected(), 2);
  Select(1);
  EXPECT_TRUE(Search("?"));
  EXPECT_EQ(Selected(), 3);
}

TEST_F(TextSearchTest, StoredNulsArePartOfWhatIsTestedAndDoNoHarm) {
  EXPECT_TRUE(Search("game 7"));
  EXPECT_EQ(Selected(), 4);
  Select(-1);
  EXPECT_TRUE(Search("game 7?"));  // 12 bytes of text have 4 bytes of NULs behind them
  EXPECT_EQ(Selected(), 4);
}

TEST_F(TextSearchTest, WithNothingSelectedAllIsTestedOnceAndTheWrapDoesntRun) {
  SearchInVain("nowhere");
  EXPECT_EQ(Selected(), -1);
}

TEST_F(TextSearchTest, WhatIsntFoundLeavesTheSelection) {
  Select(3);
  SearchInVain("nowhere");
  EXPECT_EQ(Selected(), 3);
  EXPECT_EQ(open_.document.lastSearch, "nowhere");
}

TEST_F(TextSearchTest, CancellingKeepsNoPattern) {
  EXPECT_TRUE(Search("load"));
  EXPECT_FALSE(Search(""));
  EXPECT_EQ(open_.document.lastSearch, "");
  EXPECT_EQ(Selected(), 1);
}

TEST_F(TextSearchTest, AnUnclosedBracketIsFailure93) {
  EXPECT_EQ(NumberOf([&] { (void)Search("[abc"); }), 93);
}

TEST_F(TextSearchTest, AnInvalidPatternIsKeptAndLeavesTheSelection) {
  Select(3);
  EXPECT_EQ(NumberOf([&] { (void)Search("[ABC"); }), 93);
  EXPECT_EQ(open_.document.lastSearch, "[abc");
  EXPECT_EQ(Selected(), 3);
}

TEST_F(TextSearchTest, WithoutASelectedLanguageItIsFailure9) {
  open_.document.cboTextLang.Select(-1);
  EXPECT_EQ(NumberOf([&] { (void)Search("x"); }), 9);
}

TEST_F(TextSearchTest, ATextIsReadBeforeAnInvalidPatternIsNoticed) {
  open_.document.cboTextLang.Select(-1);
  EXPECT_EQ(NumberOf([&] { (void)Search("[abc"); }), 9);
  EXPECT_EQ(open_.document.lastSearch, "[abc");
  open_.document.cboTextLang.Select(1);
  last_ = "[abc";
  std::filesystem::remove(open_.mod.cCurFile);
  EXPECT_EQ(NumberOf([&] { (void)Search("[abc"); }), 53);
}

TEST_F(TextSearchTest, AnInvalidPatternIsFailure93WhicheverTextIsTestedFirstAlsoAnEmptyOne) {
  const auto expectFailure = [&](int selected) {
    Select(selected);
    last_ = open_.document.lastSearch;
    EXPECT_EQ(NumberOf([&] { (void)Search("x["); }), 93) << selected;
    EXPECT_EQ(Selected(), selected);
  };
  for (const int selected : {-1, 1, 4}) {  // behind text 4 the search starts over
    expectFailure(selected);
  }
  for (TextRec& record : open_.document.textRsc[1]) {
    record.textLength = 0;
  }
  expectFailure(-1);
}

TEST_F(TextSearchTest, ASearchChangesNoByte) {
  const Bytes before = open_.Content();
  EXPECT_TRUE(Search("game"));
  EXPECT_EQ(open_.Content(), before);
  EXPECT_EQ(open_.folder.Names(), std::vector<std::string>{"texts.rco"});
}

TEST_F(TextSearchTest, AnEmptyListAsksNothing) {
  open_.document.lstText.Clear();
  EXPECT_FALSE(cmdTextSearch(open_.mod, open_.document, prompts_));
}

TEST_F(TextSearchTest, AnUnreadableTextIsAFailure) {
  open_.document.textRsc[1][0].textOffset = -open_.document.textDataBase - 1;
  EXPECT_EQ(NumberOf([&] { (void)Search("x"); }), 5);
}

}  // namespace
}  // namespace kelvane
