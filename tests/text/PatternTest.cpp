#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/Encoding.h"
#include "support/Failures.h"
#include "text/Pattern.h"

namespace kelvane {
namespace {

struct Case {
  std::u16string pattern;
  std::u16string text;
  bool matches;
};

void ExpectAll(const std::vector<Case>& table) {
  for (const Case& row : table) {
    EXPECT_EQ(Pattern(row.pattern).Matches(row.text), row.matches)
        << Utf16ToUtf8(row.pattern) << " on " << Utf16ToUtf8(row.text);
  }
}

TEST(Pattern, OtherCharactersMatchThemselvesByTheirCode) {
  ExpectAll({{u"", u"", true},
             {u"", u"a", false},
             {u"abc", u"abc", true},
             {u"abc", u"ab", false},
             {u"abc", u"abcd", false},
             {u"abc", u"ABC", false},
             {u"日?語", u"日本語", true}});
}

TEST(Pattern, AnAsteriskMatchesAnyRunOfCharacters) {
  ExpectAll({{u"*", u"", true},
             {u"*", u"anything", true},
             {u"a*", u"a", true},
             {u"*c", u"abc", true},
             {u"a*c", u"ac", true},
             {u"a*c", u"abcbc", true},
             {u"a*c", u"abcb", false},
             {u"**b**", u"abc", true},
             {u"*ab*ab*", u"xabyabz", true},
             {u"*ab*ab*", u"xabyz", false},
             {u"*aab", u"aaaab", true},
             {u"a*b", u"a1\r\n2b", true}});
}

TEST(Pattern, AQuestionMarkMatchesAnyOneCharacter) {
  ExpectAll({{u"?", u"", false},
             {u"?", u"x", true},
             {u"?", std::u16string(1, u'\0'), true},
             {u"a?c", u"abc", true},
             {u"a?c", u"ac", false},
             {u"a?", u"abc", false}});
}

TEST(Pattern, ANumberSignMatchesOneDigit) {
  ExpectAll({{u"#", u"0", true},
             {u"#", u"9", true},
             {u"#", u"/", false},
             {u"#", u":", false},
             {u"#", u"#", false},
             {u"#", u"٣", false},
             {u"v#.##", u"v2.60", true}});
}

TEST(Pattern, BracketsMatchOneCharacterOfASetWithRanges) {
  ExpectAll({{u"[abc]", u"b", true},
             {u"[abc]", u"d", false},
             {u"[abc]", u"ab", false},
             {u"[abc]", u"", false},
             {u"[a-c]", u"a", true},
             {u"[a-c]", u"c", true},
             {u"[a-c]", u"d", false},
             {u"[a-cx-z]", u"y", true},
             {u"[a-cx-z]", u"m", false},
             {u"[0-9a-f]", u"e", true},
             {u"[а-я]", u"ж", true},
             {u"[a-a]", u"a", true},
             {u"x[ab]y", u"xby", true}});
}

TEST(Pattern, AnExclamationMarkInFrontMakesTheSetOneOfCharactersThatDontMatch) {
  ExpectAll({{u"[!abc]", u"d", true},
             {u"[!abc]", u"a", false},
             {u"[!a-c]", u"b", false},
             {u"[!a]", u"", false},
             {u"[a!]", u"!", true},
             {u"[a!]", u"b", false},
             {u"!", u"!", true}});
}

TEST(Pattern, AHyphenAtEitherEndOfASetOrOutsideOneStandsForItself) {
  ExpectAll({{u"[-a]", u"-", true},
             {u"[a-]", u"-", true},
             {u"[a-]", u"b", false},
             {u"[!-a]", u"-", false},
             {u"[!-a]", u"b", true},
             {u"[!a-]", u"-", false},
             {u"[-]", u"-", true},
             {u"[a-c-]", u"-", true},
             {u"[+--]", u",", true},
             {u"a-c", u"a-c", true}});
}

TEST(Pattern, SpecialCharactersInASetStandForThemselves) {
  ExpectAll({{u"[*]", u"*", true},
             {u"[*]", u"a", false},
             {u"[?]", u"?", true},
             {u"[?]", u"a", false},
             {u"[#]", u"#", true},
             {u"[#]", u"1", false},
             {u"[[]", u"[", true}});
}

TEST(Pattern, AnEmptySetMatchesNoCharacterAndItsOppositeAny) {
  ExpectAll({{u"[]", u"", false}, {u"[]", u"a", false}, {u"[!]", u"a", true}, {u"[!]", u"", false}});
}

TEST(Pattern, AClosingBracketOutsideASetStandsForItself) {
  ExpectAll({{u"]", u"]", true}, {u"a]b", u"a]b", true}, {u"[a]]", u"a]", true}});
}

TEST(Pattern, AnUnclosedBracketOrADescendingRangeIsFailure93) {
  for (const std::u16string pattern : {u"[", u"[a", u"*[abc*", u"[!", u"a[b]c[", u"[z-a]", u"[!z-a]", u"[a--]"}) {
    EXPECT_EQ(test::NumberOf([&] { const Pattern compiled(pattern); }), 93) << Utf16ToUtf8(pattern);
  }
}

TEST(Pattern, ManyRunsDontTakeExponentialTime) {
  std::u16string pattern;
  for (int i = 0; i < 500; ++i) {
    pattern += u"*a";
  }
  EXPECT_FALSE(Pattern(pattern + u"b").Matches(std::u16string(20000, u'a')));
  EXPECT_TRUE(Pattern(pattern).Matches(std::u16string(20000, u'a')));
}

}  // namespace
}  // namespace kelvane
