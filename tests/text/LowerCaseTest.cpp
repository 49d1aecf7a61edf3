#include <gtest/gtest.h>
#include <string>

#include "text/LowerCase.h"

namespace kelvane {
namespace {

TEST(LowerCase, CapitalsOfEachScriptBecomeTheirSmallLetters) {
  EXPECT_EQ(LowerCase(u"ABCXYZ"), u"abcxyz");
  EXPECT_EQ(LowerCase(u"ÀÉÖØÞ"), u"àéöøþ");
  EXPECT_EQ(LowerCase(u"ĀĒĶĹŇŊŒŸŹŻŽ"), u"āēķĺňŋœÿźżž");
  EXPECT_EQ(LowerCase(u"ƁƏƠƯǍǞȘȚȺ"), u"ɓəơưǎǟșțⱥ");
  EXPECT_EQ(LowerCase(u"ΑΒΓΣΩΆΈΌΏΪ"), u"αβγσωάέόώϊ");
  EXPECT_EQ(LowerCase(u"АБВЯЁЇЎѢҐӀӁԚ"), u"абвяёїўѣґӏӂԛ");
  EXPECT_EQ(LowerCase(u"ԱԲՖ"), u"աբֆ");
  EXPECT_EQ(LowerCase(u"ḀẞẠỸἈἙὛᾈᾺ"), u"ḁßạỹἀἑὓᾀὰ");
  EXPECT_EQ(LowerCase(u"ⅠⅫⒶⓏ"), u"ⅰⅻⓐⓩ");
  EXPECT_EQ(LowerCase(u"ＡＺ"), u"ａｚ");
}

TEST(LowerCase, TheDottedCapitalITheTitleCaseLettersAndTheSignsHaveTheirOwn) {
  EXPECT_EQ(LowerCase(u'\u0130'), u'i');
  EXPECT_EQ(LowerCase(u'\u01C4'), u'\u01C6');
  EXPECT_EQ(LowerCase(u'\u01C5'), u'\u01C6');
  EXPECT_EQ(LowerCase(u'\u2126'), u'\u03C9');
  EXPECT_EQ(LowerCase(u'\u212A'), u'k');
}

TEST(LowerCase, WhatHasNoCaseOrIsSmallAlreadyStaysAsItIs) {
  for (const std::u16string text : {u"abcz 0189 [\\]^_`{|}~@", u"àéöøþß÷×ÿ", u"āēķĺňŋœźżž", u"αβγςσω", u"абвяёїў",
                                    u"日本語 中文 한국어 ゲーム", u"ａｚ０９"}) {
    EXPECT_EQ(LowerCase(text), text);
  }
  EXPECT_EQ(LowerCase(char16_t{0xD83D}), char16_t{0xD83D});
  EXPECT_EQ(LowerCase(char16_t{0xFFFF}), char16_t{0xFFFF});
  EXPECT_EQ(LowerCase(char16_t{0}), char16_t{0});
}

TEST(LowerCase, TwiceIsAsOnce) {
  for (int unit = 0; unit < 0x10000; ++unit) {
    const char16_t once = LowerCase(static_cast<char16_t>(unit));
    ASSERT_EQ(LowerCase(once), once) << std::hex << unit;
  }
}

}  // namespace
}  // namespace kelvane
