#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OpenTexts.h"
#include "support/Failures.h"
#include "support/RcoBuilder.h"
#include "text/TextString.h"

namespace kelvane {
namespace {

using namespace std::string_literals;
using test::NoText;
using test::NumberOf;
using test::OpenTexts;
using test::RawText;
using test::RcoBuilder;

// Japanese and English.
RcoBuilder TwoLanguages() {
  RcoBuilder b;
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  return b;
}

test::BuiltRco ThreeTexts() {
  RcoBuilder b = TwoLanguages();
  b.AddText({.label = "msg_yes", .strings = {u"はい", u"Yes"}});
  b.AddText({.label = "msg_none", .strings = {u"空ではない", NoText()}});
  b.AddText({.label = "msg_no", .strings = {u"いいえ", u"No"}});
  return b.Build();
}

// A single text in English alone.
Bytes OneLanguage() {
  RcoBuilder b;
  b.AddLanguage(0x10001);
  b.AddText({.label = "t", .strings = {u"alone"}});
  b.Options().lastLanguageStatesNext = true;
  return b.Build().bytes;
}

// The only text of a file, as English stores it.
std::u16string Stored(const test::TextString& text) {
  RcoBuilder b = TwoLanguages();
  b.AddText({.label = "t", .strings = {u"日本", text}});
  const OpenTexts open(b.Build().bytes);
  return GetTextString(open.mod, open.document, Int16(0), Int16(1));
}

TEST(GetTextString, GivesAllUnitsOfTheStringUnconvertedWithItsNuls) {
  EXPECT_EQ(Stored(u"Yes"), u"Yes\0"s);
  EXPECT_EQ(Stored(u"Ye"), u"Ye\0\0"s);
  EXPECT_EQ(Stored(RawText(u"a\0b\0\0\0"s)), u"a\0b\0\0\0"s);
  EXPECT_EQ(Stored(RawText(u"\xD83D\xDE00\xDC00x")), u"\xD83D\xDE00\xDC00x");
  EXPECT_EQ(Stored(RawText(u"\xFEFFx")), u"\xFEFFx");
}

TEST(GetTextString, EveryLineFeedBecomesCarriageReturnAndLineFeed) {
  EXPECT_EQ(Stored(RawText(u"one\ntwo\n\nthree\n")), u"one\r\ntwo\r\n\r\nthree\r\n");
  EXPECT_EQ(Stored(RawText(u"a\r\nb\rc")), u"a\r\r\nb\rc");
}

TEST(GetTextString, ALengthOf0OrLessIsTheEmptyStringAndTheOffsetIsntUsed) {
  OpenTexts open(ThreeTexts().bytes);
  for (const std::int32_t length : {0, -1, -0x7FFFFFFF - 1}) {
    open.document.textRsc[1][0] = {0, length, -0x7FFFFFFF};
    EXPECT_EQ(GetTextString(open.mod, open.document, Int16(0), Int16(1)), u"");
  }
}

TEST(GetTextString, WhatLiesBeyondTheEndOfTheFileIsNulsAndAnOddLastByteIsLeftOut) {
  const auto built = ThreeTexts();
  Bytes content = built.bytes;
  const std::int32_t no = built.layout.textData.offset + built.layout.languages[1].texts[2].offset;
  content.resize(static_cast<std::size_t>(no) + 2);
  OpenTexts open(content);
  EXPECT_EQ(GetTextString(open.mod, open.document, Int16(2), Int16(1)), u"N\0\0\0"s);
  open.document.textRsc[1][0].textLength = 5;
  EXPECT_EQ(GetTextString(open.mod, open.document, Int16(0), Int16(1)), u"Ye");
}

TEST(GetTextString, ALongTextIsReadWhereTheFileHoldsItAndFailure7WhereItIsOnlyClaimed) {
  const std::u16string text(kMaxTextBytes, u'x');  // twice as many bytes
  EXPECT_EQ(Stored(RawText(text)), text);
  OpenTexts open(ThreeTexts().bytes);
  open.document.textRsc[1][0].textLength = kMaxTextBytes;
  EXPECT_EQ(GetTextString(open.mod, open.document, Int16(0), Int16(1)).size(), kMaxTextBytes / 2U);
  open.document.textRsc[1][0].textLength = kMaxTextBytes + 1;
  EXPECT_EQ(NumberOf([&] { (void)GetTextString(open.mod, open.document, Int16(0), Int16(1)); }), 7);
}

TEST(GetTextString, FailsForWhatHasNoRecordAndForAnUnusablePlace) {
  OpenTexts open(ThreeTexts().bytes);
  const auto read = [&](int item, int lang) {
    return NumberOf([&] { (void)GetTextString(open.mod, open.document, Int16(item), Int16(lang)); });
  };
  EXPECT_EQ(read(3, 1), 9);
  EXPECT_EQ(read(-1, 1), 9);
  EXPECT_EQ(read(0, 2), 9);
  EXPECT_EQ(read(0, -1), 9);
  open.document.textRsc[1][0].textOffset = -open.document.textDataBase - 1;
  EXPECT_EQ(read(0, 1), 5);
  open.document.textRsc[1][0].textOffset = 0x7FFFFFFF;
  EXPECT_EQ(read(0, 1), 6);
  std::filesystem::remove(open.mod.cCurFile);
  EXPECT_EQ(read(0, 0), 53);
}

TEST(UpToFirstNul, EndsWhereATextBoxDoes) {
  EXPECT_EQ(UpToFirstNul(u"Yes\0"s), u"Yes");
  EXPECT_EQ(UpToFirstNul(u"a\0b\0"s), u"a");
  EXPECT_EQ(UpToFirstNul(u"full"), u"full");
  EXPECT_EQ(UpToFirstNul(u"\0\0"s), u"");
  EXPECT_EQ(UpToFirstNul(u""), u"");
}

TEST(LineBreaks, GoFromTheFilesFormToTheBoxesAndBack) {
  EXPECT_EQ(WithBoxLineBreaks(u"a\nb\n"), u"a\r\nb\r\n");
  EXPECT_EQ(WithFileLineBreaks(u"a\r\nb\r\n"), u"a\nb\n");
  EXPECT_EQ(WithFileLineBreaks(u"a\nb"), u"a\nb");
  EXPECT_EQ(WithFileLineBreaks(u"a\rb\r"), u"a\rb\r");
  EXPECT_EQ(WithFileLineBreaks(u"\r\r\n"), u"\r\n");
}

TEST(lstText_Click, ShowsTheSelectedTextItsNumberAndEnablesEditing) {
  OpenTexts open(ThreeTexts().bytes);
  SelectText(open.mod, open.document, 2);
  EXPECT_EQ(open.document.text.lblTxtIdx, "项目 #2");
  EXPECT_EQ(open.document.text.txt, u"No");
  EXPECT_TRUE(open.document.text.enabled);
  EXPECT_EQ(open.document.text.txtRevision, 1U);
  EXPECT_EQ(open.document.text.selectAllRevision, 0U);
}

TEST(lstText_Click, WithoutASelectionTheTextBoxKeepsItsTextAndIsDisabled) {
  OpenTexts open(ThreeTexts().bytes);
  SelectText(open.mod, open.document, 0);
  SelectText(open.mod, open.document, -1);
  EXPECT_EQ(open.document.text.lblTxtIdx, "");
  EXPECT_EQ(open.document.text.txt, u"Yes");
  EXPECT_FALSE(open.document.text.enabled);
  EXPECT_EQ(open.document.text.txtRevision, 1U);
}

TEST(lstText_Click, ATextOfLength0ShowsAsAnEmptyBoxInThatLanguageOnly) {
  OpenTexts open(ThreeTexts().bytes);
  SelectText(open.mod, open.document, 1);
  EXPECT_EQ(open.document.text.txt, u"");
  EXPECT_TRUE(open.document.text.enabled);
  SelectTextLang(open.mod, open.document, 0);
  EXPECT_EQ(open.document.text.txt, u"空ではない");
}

TEST(lstText_Click, AStringWithoutANulAtItsEndShowsInFullAndOneWithNulsInsideUpToTheFirst) {
  RcoBuilder b = TwoLanguages();
  b.AddText({.label = "full", .strings = {u"x", RawText(u"no end")}});
  b.AddText({.label = "cut", .strings = {u"x", RawText(u"ab\0cd\0"s)}});
  OpenTexts open(b.Build().bytes);
  SelectText(open.mod, open.document, 0);
  EXPECT_EQ(open.document.text.txt, u"no end");
  SelectText(open.mod, open.document, 1);
  EXPECT_EQ(open.document.text.txt, u"ab");
}

TEST(lstText_Click, ShowsLineFeedsAsLineBreaks) {
  RcoBuilder b = TwoLanguages();
  b.AddText({.label = "t", .strings = {u"x", u"one\ntwo"}});
  OpenTexts open(b.Build().bytes);
  SelectText(open.mod, open.document, 0);
  EXPECT_EQ(open.document.text.txt, u"one\r\ntwo");
}

TEST(lstText_Click, OfAFileWithOneLanguageIsFailure9) {
  OpenTexts open(OneLanguage());
  EXPECT_EQ(NumberOf([&] { SelectText(open.mod, open.document, 0); }), 9);
  // What stands in front of the reading of the text is done.
  EXPECT_EQ(open.document.text.lblTxtIdx, "项目 #0");
  EXPECT_TRUE(open.document.text.enabled);
  EXPECT_EQ(open.document.text.txtRevision, 0U);
}

TEST(cboTextLang_Click, ShowsTheSelectedTextInTheChosenLanguage) {
  OpenTexts open(ThreeTexts().bytes);
  SelectText(open.mod, open.document, 2);
  SelectTextLang(open.mod, open.document, 0);
  EXPECT_EQ(open.document.text.txt, u"いいえ");
  EXPECT_EQ(open.document.text.lblTxtIdx, "项目 #2");
  EXPECT_EQ(open.document.text.txtRevision, 2U);
}

TEST(cboTextLang_Click, WithoutASelectedTextTheTextBoxKeepsItsText) {
  OpenTexts open(ThreeTexts().bytes);
  SelectText(open.mod, open.document, 0);
  SelectText(open.mod, open.document, -1);
  SelectTextLang(open.mod, open.document, 0);
  EXPECT_EQ(open.document.text.txt, u"Yes");
  EXPECT_EQ(open.document.text.lblTxtIdx, "");
  EXPECT_FALSE(open.document.text.enabled);
}

TEST(cboTextLang_Click, ShowsTheOnlyLanguageOfAFileOnceItIsChosen) {
  OpenTexts open(OneLanguage());
  SelectTextLang(open.mod, open.document, 0);
  SelectText(open.mod, open.document, 0);
  EXPECT_EQ(open.document.text.txt, u"alone");
}

TEST(cboTextLang_Click, TheListShowsTheNamesOfLanguage0WhicheverLanguageIsSelected) {
  const auto built = ThreeTexts();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.languages[1].texts[0].record + rco::textLabel, built.layout.textLabels[2]);
  OpenTexts open(content);
  const std::vector<std::string> names = {"msg_yes", "msg_none", "msg_no"};
  EXPECT_EQ(open.document.lstText.Lines(), names);
  SelectTextLang(open.mod, open.document, 0);
  EXPECT_EQ(open.document.lstText.Lines(), names);
}

}  // namespace
}  // namespace kelvane
