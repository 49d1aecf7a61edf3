#include <gtest/gtest.h>

#include "common/Encoding.h"

namespace kelvane {
namespace {

TEST(Encoding, Latin1ByteNIsCharacterN) {
  Bytes all;
  std::u16string characters;
  for (int i = 1; i < 256; ++i) {
    all.push_back(static_cast<std::uint8_t>(i));
    characters.push_back(static_cast<char16_t>(i));
  }
  EXPECT_EQ(Utf8ToUtf16(Latin1ToUtf8(all)), characters);
  EXPECT_EQ(Utf8ToLatin1(Latin1ToUtf8(all)), all);
}

TEST(Encoding, ACharacterBeyondLatin1IsWrittenAsAQuestionMark) {
  EXPECT_EQ(Utf8ToLatin1("a中é\U0001F600"), (Bytes{'a', '?', 0xE9, '?'}));
}

TEST(Encoding, Utf16AndUtf8AreTheSameText) {
  EXPECT_EQ(Utf16ToUtf8(u"aé中\U0001F600"), "aé中\U0001F600");
  EXPECT_EQ(Utf8ToUtf16("aé中\U0001F600"), u"aé中\U0001F600");
}

TEST(Encoding, WhatIsIllFormedBecomesTheReplacementCharacter) {
  EXPECT_EQ(Utf16ToUtf8(std::u16string{0xD800, u'a', 0xDC00}), "\uFFFDa\uFFFD");
  EXPECT_EQ(Utf8ToUtf16("\xC0\x80"
                        "a\xE4\xB8"),
            u"\uFFFD\uFFFDa\uFFFD\uFFFD");
  EXPECT_EQ(Utf8ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
}

TEST(Encoding, LengthsAreCountedInCharacters) {
  EXPECT_EQ(Utf8Length("a中é"), 3U);
  EXPECT_EQ(Utf8DropLast("a中é.v", 4), "a");
  EXPECT_EQ(Utf8DropLast("ab", 5), "");
}

}  // namespace
}  // namespace kelvane
