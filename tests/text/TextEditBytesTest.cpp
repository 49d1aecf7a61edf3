// One small file, every byte of which is worked out by hand, before and after a change of a text.

#include <gtest/gtest.h>
#include <utility>

#include "OpenTexts.h"
#include "support/Failures.h"
#include "support/ScriptedPrompts.h"
#include "text/TextEdit.h"

namespace kelvane {
namespace {

using test::OpenTexts;
using test::ScriptedWatch;

// Byte offsets of the regions. Two languages of two texts each; no pages, animations, pointer tables or models.
constexpr std::int32_t kTextRoot = 164;
constexpr std::int32_t kLang0 = 204;
constexpr std::int32_t kLang1 = 276;
constexpr std::int32_t kTextData = 348;  // 20 bytes: "A" at 0, "BC" at 4, "DEF" at 12, none at 20
constexpr std::int32_t kLabels = 368;    // 8 bytes: "a" and "b"
constexpr std::int32_t kEvents = 376;    // 4 bytes
constexpr std::int32_t kImages = 380;    // 4 bytes
constexpr std::int32_t kSounds = 384;    // 4 bytes
constexpr std::int32_t kEnd = 388;

void Put(Bytes& content, std::int32_t offset, std::initializer_list<std::int32_t> longs) {
  for (const std::int32_t value : longs) {
    WriteI32(content, offset, value);
    offset += 4;
  }
}

Bytes SmallFile() {
  Bytes content(kEnd);
  for (std::int32_t reserved = 152; reserved < 164; ++reserved) {
    content[static_cast<std::size_t>(reserved)] = 0xEE;
  }
  Put(content, 0, {0x46525000, 113});
  Put(content, 24, {kTextRoot});
  Put(content, 56, {kTextData, 20, kLabels, 8, kEvents, 4});
  Put(content, 128, {kImages, 4, kSounds, 4, 0, 0});
  Put(content, kTextRoot + 16, {2});
  Put(content, kLang0 + 20, {72});
  Put(content, kLang0 + 40, {0x10000, 2});
  Put(content, kLang0 + 48, {0, 4, 0, 4, 8, 4});
  Put(content, kLang1 + 40, {0x10001, 2});
  Put(content, kLang1 + 48, {0, 8, 12, 4, 0, 20});
  CopyInto(content, kTextData, Bytes{'A', 0, 0, 0, 'B', 0, 'C', 0, 0, 0, 0, 0, 'D', 0, 'E', 0, 'F', 0, 0, 0});
  CopyInto(content, kLabels, Bytes{'a', 0, 0, 0, 'b', 0, 0, 0});
  CopyInto(content, kEvents, Bytes{'e', 'v', 0, 0});
  CopyInto(content, kImages, Bytes{1, 2, 3, 0});
  CopyInto(content, kSounds, Bytes{9, 8, 7, 6});
  return content;
}

Bytes Changed(OpenTexts& open, int lang, int item, std::u16string_view text) {
  ScriptedWatch watch;
  SelectTextLang(open.mod, open.document, lang);
  SelectText(open.mod, open.document, item);
  cmdTextChange(open.mod, open.document, watch, text);
  return open.Content();
}

// `from` without its bytes from `at` up to `end`, and `inserted` in their place.
Bytes WithInPlace(const Bytes& from, std::int32_t at, std::int32_t end, const Bytes& inserted) {
  Bytes content(from.begin(), from.begin() + at);
  Append(content, inserted);
  Append(content, ByteView(from).subspan(static_cast<std::size_t>(end)));
  return content;
}

TEST(TextChangeBytes, TheFirstTextGrowsBy8) {
  OpenTexts open(SmallFile());
  // 10 bytes and 2 NULs in place of 4 bytes.
  Bytes expected = WithInPlace(SmallFile(), 348, 352, Bytes{'H', 0, 'e', 0, 'l', 0, 0x4F, 0x60, 10, 0, 0, 0});
  Put(expected, 64, {376, 8, 384, 4});               // label and event area; lengths stay
  Put(expected, 128, {388, 4, 392, 4, 0, 0});        // the model area is absent and stays
  Put(expected, kLang0 + 48, {0, 12, 0, 4, 8, 12});  // the text's length, the next one's offset
  Put(expected, kLang1 + 48, {0, 8, 20, 4, 0, 28});  // the empty text moves too
  EXPECT_EQ(Changed(open, 0, 0, u"Hel\u604F\r\n"), expected);
  EXPECT_EQ(open.document.labelBase, 376);
  EXPECT_EQ(open.document.textDataBase, 348);
}

TEST(TextChangeBytes, TheLastTextOfALanguageShrinksBy4) {
  OpenTexts open(SmallFile());
  Bytes expected = WithInPlace(SmallFile(), 352, 360, Bytes{0, 0, 0, 0});
  Put(expected, 64, {364, 8, 372, 4});
  Put(expected, 128, {376, 4, 380, 4, 0, 0});
  Put(expected, kLang0 + 48, {0, 4, 0, 4, 4, 4});
  Put(expected, kLang1 + 48, {0, 8, 8, 4, 0, 16});
  EXPECT_EQ(Changed(open, 0, 1, u""), expected);
}

TEST(TextChangeBytes, TheLastTextOfTheLastLanguageStandsInFrontOfTheLabels) {
  OpenTexts open(SmallFile());
  Bytes expected = WithInPlace(SmallFile(), 368, 368, Bytes{'x', 0, 0, 0});
  Put(expected, 64, {372, 8, 380, 4});
  Put(expected, 128, {384, 4, 388, 4, 0, 0});
  Put(expected, kLang1 + 48, {0, 8, 12, 4, 4, 20});
  EXPECT_EQ(Changed(open, 1, 1, u"x"), expected);
}

TEST(TextChangeBytes, WhatLiesBehindTheTextIsLookedForBeforeTheTextItself) {
  OpenTexts open(SmallFile());
  ScriptedWatch watch;
  SelectText(open.mod, open.document, 0);
  open.document.textRsc[1][0].textOffset = 0x7FFFFFFF;  // beyond 32 bits: failure 6
  for (const auto& [tailPos, failure] : {std::pair{kEnd, 9}, std::pair{-1, 5}, std::pair{kEnd - 1, 6}}) {
    open.document.textRsc[1][1].textOffset = tailPos - kTextData;
    EXPECT_EQ(test::NumberOf([&] { cmdTextChange(open.mod, open.document, watch, u"x"); }), failure) << tailPos;
    EXPECT_EQ(open.Content(), SmallFile());
  }
}

TEST(TextChangeBytes, TheSameTextAgainChangesNoByte) {
  OpenTexts open(SmallFile());
  EXPECT_EQ(Changed(open, 0, 1, u"BC"), SmallFile());
}

}  // namespace
}  // namespace kelvane
