#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OpenTexts.h"
#include "support/Failures.h"
#include "support/RcoBuilder.h"

namespace kelvane {
namespace {

using test::NoText;
using test::NumberOf;
using test::OpenTexts;
using test::RcoBuilder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t kJapanese = 0x10000;
constexpr std::uint32_t kEnglish = 0x10001;
constexpr std::uint32_t kFrench = 0x10002;

// Two texts in these languages.
RcoBuilder TwoTexts(const std::vector<std::uint32_t>& codes) {
  RcoBuilder b;
  for (const std::uint32_t code : codes) {
    b.AddLanguage(code);
  }
  b.AddText({.label = "msg_yes", .strings = std::vector<test::TextString>(codes.size(), u"Yes")});
  b.AddText({.label = "msg_no", .strings = std::vector<test::TextString>(codes.size(), u"No")});
  return b;
}

TEST(LanguageName, NamesTheTwelveLanguagesByTheirCode) {
  const std::vector<std::pair<std::uint32_t, const char*>> table = {
      {0x10000, "日语"}, {0x10001, "英语"},   {0x10002, "法语"},       {0x10003, "西班牙"},
      {0x10004, "德语"}, {0x10005, "意大利"}, {0x10006, "荷兰"},       {0x10007, "葡萄牙"},
      {0x10008, "俄语"}, {0x10009, "韩语"},   {0x1000A, "中文(繁体)"}, {0x1000B, "中文(简体)"}};
  for (const auto& [code, name] : table) {
    EXPECT_EQ(LanguageName(code), name);
  }
}

TEST(LanguageName, AnyOtherCodeIsShownAsItsWholeValueInHexadecimal) {
  EXPECT_EQ(LanguageName(0x1000C), "Language 0x1000C");
  EXPECT_EQ(LanguageName(0x2000C), "Language 0x2000C");
  EXPECT_EQ(LanguageName(0xFFFF), "Language 0xFFFF");
  EXPECT_EQ(LanguageName(0), "Language 0x0");
  EXPECT_EQ(LanguageName(0xFFFFFFFF), "Language 0xFFFFFFFF");
}

TEST(LanguageName, ARightLowHalfWithAHighHalfOtherThan1ShowsTheWholeValueAndNoName) {
  EXPECT_EQ(LanguageName(0x20001), "Language 0x20001");
  EXPECT_EQ(LanguageName(0x00001), "Language 0x1");
  EXPECT_EQ(LanguageName(0x80010001), "Language 0x80010001");
}

TEST(ScanTextRsc, KeepsEveryRecordOfEveryLanguage) {
  RcoBuilder b;
  b.AddLanguage(kJapanese);
  b.AddLanguage(kEnglish);
  b.AddText({.label = "msg_yes", .strings = {u"はい", u"Yes"}});  // 8 bytes each
  b.AddText({.label = "msg_none", .strings = {NoText(), u"-"}});  // none, 4 bytes
  b.AddText({.label = "msg_no", .strings = {u"いいえ", u"No"}});  // 8 bytes each
  const auto built = b.Build();
  const OpenTexts open(built.bytes);

  EXPECT_EQ(open.document.langCount, 2);
  EXPECT_EQ(open.document.textCount, Int16(3));
  EXPECT_EQ(open.document.textDataBase, built.layout.textData.offset);
  EXPECT_THAT(open.document.langPos, ElementsAre(built.layout.languages[0].entry, built.layout.languages[1].entry));
  // The labels take 8, 12 and 8 bytes.
  EXPECT_THAT(open.document.textRsc,
              ElementsAre(ElementsAre(TextRec{0, 8, 0}, TextRec{8, 0, 8}, TextRec{20, 8, 8}),
                          ElementsAre(TextRec{0, 8, 16}, TextRec{8, 4, 24}, TextRec{20, 8, 28})));
  EXPECT_THAT(open.document.lstText.Lines(), ElementsAre("msg_yes", "msg_none", "msg_no"));
  EXPECT_EQ(open.document.lstText.Selected(), -1);
}

TEST(ScanTextRsc, ListsTheLanguagesInTheOrderOfTheirRecordsAndSelectsTheSecond) {
  const OpenTexts open(TwoTexts({0x1000B, kJapanese, 0x10008}).Build().bytes);
  EXPECT_THAT(open.document.cboTextLang.Lines(), ElementsAre("中文(简体)", "日语", "俄语"));
  EXPECT_EQ(open.document.cboTextLang.Selected(), 1);
}

TEST(ScanTextRsc, ALanguageCodeOutsideTheTableWorksLikeAnyOtherLanguage) {
  OpenTexts open(TwoTexts({kEnglish, 0x2000C}).Build().bytes);
  EXPECT_THAT(open.document.cboTextLang.Lines(), ElementsAre("英语", "Language 0x2000C"));
  SelectText(open.mod, open.document, 1);
  EXPECT_EQ(open.document.text.txt, u"No");
}

TEST(ScanTextRsc, SelectingTheLanguageShowsThatNoTextIsSelected) {
  OpenTexts open;
  open.document.text.lblTxtIdx = "项目 #7";
  open.document.text.enabled = true;
  open.Open(TwoTexts({kEnglish, kFrench}).Build().bytes);
  EXPECT_EQ(open.document.text.lblTxtIdx, "");
  EXPECT_FALSE(open.document.text.enabled);
  EXPECT_EQ(open.document.text.txtRevision, 0U);
}

TEST(ScanTextRsc, AFileWithOneLanguageLeavesNoneSelected) {
  RcoBuilder b = TwoTexts({kEnglish});
  b.Options().lastLanguageStatesNext = true;
  const OpenTexts open(b.Build().bytes);
  EXPECT_THAT(open.document.cboTextLang.Lines(), ElementsAre("英语"));
  EXPECT_EQ(open.document.cboTextLang.Selected(), -1);
  EXPECT_THAT(open.document.lstText.Lines(), ElementsAre("msg_yes", "msg_no"));
}

TEST(ScanTextRsc, ASingleLanguageWhoseEntryNextIs0IsFailure9) {
  OpenTexts open;
  EXPECT_EQ(NumberOf([&] { open.Open(TwoTexts({kEnglish}).Build().bytes); }), 9);
  EXPECT_EQ(open.document.textCount, Int16(-4));
  EXPECT_THAT(open.document.cboTextLang.Lines(), IsEmpty());
  EXPECT_THAT(open.document.lstText.Lines(), IsEmpty());
}

TEST(ScanTextRsc, TheNumberOfTextsIsTruncated) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.languages[0].entry + rco::entryNext, 48 + 2 * 12 + 11);
  EXPECT_EQ(OpenTexts(content).document.textCount, Int16(2));
  // A part of a text towards 0 is no text.
  WriteI32(content, built.layout.languages[0].entry + rco::entryNext, 48 - 11);
  OpenTexts open;
  EXPECT_EQ(NumberOf([&] { open.Open(content); }), 9);
  EXPECT_EQ(open.document.textCount, Int16(0));
}

TEST(ScanTextRsc, ANumberOfTextsBeyond16BitsIsFailure6) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  for (const std::int32_t next : {48 + 32768 * 12, 0x7FFFFFFF, -0x7FFFFFFF - 1, 48 - 32769 * 12}) {
    Bytes content = built.bytes;
    WriteI32(content, built.layout.languages[0].entry + rco::entryNext, next);
    OpenTexts open;
    EXPECT_EQ(NumberOf([&] { open.Open(content); }), 6) << next;
  }
}

TEST(ScanTextRsc, AFileOf2730TextsOpensAndOneMoreIsFailure6) {
  RcoBuilder b;
  b.AddLanguage(kJapanese);
  b.AddLanguage(kEnglish);
  for (int i = 0; i < 2730; ++i) {
    b.AddText({.label = "t", .strings = {u"a", u"b"}});
  }
  const OpenTexts largest(b.Build().bytes);
  EXPECT_EQ(largest.document.lstText.Count(), 2730);
  EXPECT_EQ(largest.document.textRsc[1][2729].textOffset, 2730 * 4 + 2729 * 4);

  b.AddText({.label = "t", .strings = {u"a", u"b"}});
  OpenTexts open;
  EXPECT_EQ(NumberOf([&] { open.Open(b.Build().bytes); }), 6);
  EXPECT_EQ(open.document.textCount, Int16(2731));
  EXPECT_THAT(open.document.cboTextLang.Lines(), IsEmpty());
}

TEST(ScanTextRsc, AFileWithoutTextDataShowsEmptyLists) {
  RcoBuilder b = TwoTexts({kEnglish, kFrench});
  b.Options().headerLongs[rco::hdrTextDataLength] = 0;
  const auto built = b.Build();
  const OpenTexts open(built.bytes);
  EXPECT_THAT(open.document.cboTextLang.Lines(), IsEmpty());
  EXPECT_THAT(open.document.lstText.Lines(), IsEmpty());
  EXPECT_EQ(open.document.textDataBase, built.layout.textData.offset);
}

TEST(ScanTextRsc, AFileWithANegativeTextRootShowsEmptyLists) {
  RcoBuilder b = TwoTexts({kEnglish, kFrench});
  b.Options().headerLongs[rco::hdrTextRoot] = -1;
  const OpenTexts open(b.Build().bytes);
  EXPECT_THAT(open.document.cboTextLang.Lines(), IsEmpty());
  EXPECT_THAT(open.document.lstText.Lines(), IsEmpty());
}

TEST(ScanTextRsc, ATableWithoutLanguagesIsWalkedWithoutHarm) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.Root(test::RcoTable::kText) + rco::entryChildren, 0);
  const OpenTexts open(content);
  EXPECT_EQ(open.document.langCount, 0);
  EXPECT_THAT(open.document.cboTextLang.Lines(), IsEmpty());
  EXPECT_THAT(open.document.lstText.Lines(), IsEmpty());
}

TEST(ScanTextRsc, NothingOfTheTextsOfTheFileBeforeIsLeft) {
  OpenTexts open(TwoTexts({kEnglish, kFrench}).Build().bytes);
  RcoBuilder b;
  b.AddImage({.label = "bg", .data = {1, 2, 3, 4}});
  open.Open(b.Build().bytes);
  EXPECT_THAT(open.document.cboTextLang.Lines(), IsEmpty());
  EXPECT_THAT(open.document.lstText.Lines(), IsEmpty());
  EXPECT_THAT(open.document.textRsc, IsEmpty());
  EXPECT_THAT(open.document.langPos, IsEmpty());
  EXPECT_EQ(open.document.textCount, Int16(0));
  EXPECT_EQ(open.document.langCount, 0);
}

TEST(ScanTextRsc, OnlyThe16LowBitsOfTheNumberOfLanguagesCount) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.Root(test::RcoTable::kText) + rco::entryChildren, 0x7FFF0002);
  EXPECT_EQ(OpenTexts(content).document.langCount, 2);
}

TEST(ScanTextRsc, AnotherNumberOfRecordsMakesEveryLaterLanguageReadFromTheWrongPlace) {
  for (const int extra : {1, -1}) {
    RcoBuilder b;
    b.AddLanguage(kEnglish);
    b.AddLanguage(kFrench, extra);
    b.AddLanguage(0x10003);
    b.AddText({.label = "msg_yes", .strings = {u"Yes", u"Oui", u"Si"}});
    b.AddText({.label = "msg_no", .strings = {u"No", u"Non", u"No"}});
    const auto built = b.Build();
    const OpenTexts open(built.bytes);
    EXPECT_EQ(open.document.langPos[1], built.layout.languages[1].entry);
    EXPECT_EQ(open.document.langPos[2], built.layout.languages[1].entry + 48 + 2 * 12);
    EXPECT_NE(open.document.langPos[2], built.layout.languages[2].entry);
    EXPECT_NE(open.document.cboTextLang.Text(2), "西班牙");
  }
}

TEST(ScanTextRsc, TheNamesAreThoseOfLanguage0) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.languages[1].texts[0].record + rco::textLabel, 8);
  WriteI32(content, built.layout.languages[0].texts[1].record + rco::textLabel, 4);  // the middle of a name
  EXPECT_THAT(OpenTexts(content).document.lstText.Lines(), ElementsAre("msg_yes", "yes"));
}

TEST(ScanTextRsc, AnUnreadableNameShowsWhatTheLabelReaderSays) {
  RcoBuilder b = TwoTexts({kEnglish, kFrench});
  b.AddText({.label = std::string(255, 'x'), .strings = {u"a", u"b"}});
  const auto built = b.Build();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.languages[0].texts[0].record + rco::textLabel, -built.layout.labels.offset - 1);
  EXPECT_THAT(OpenTexts(content).document.lstText.Lines(),
              ElementsAre("<No label>", "msg_no", "<Error retrieving label>"));
}

TEST(ScanTextRsc, ANameWhosePlaceLeaves32BitsIsFailure6AndTheNamesBeforeStay) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.languages[0].texts[1].record + rco::textLabel, 0x7FFFFFFF);
  OpenTexts open;
  EXPECT_EQ(NumberOf([&] { open.Open(content); }), 6);
  EXPECT_THAT(open.document.lstText.Lines(), ElementsAre("msg_yes"));
  EXPECT_THAT(open.document.cboTextLang.Lines(), ElementsAre("英语", "法语"));
  EXPECT_EQ(open.document.cboTextLang.Selected(), -1);
}

TEST(ScanTextRsc, RecordsBeyondTheEndOfTheFileAreZeros) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  Bytes content = built.bytes;
  content.resize(static_cast<std::size_t>(built.layout.languages[1].entry));
  const OpenTexts open(content);
  EXPECT_THAT(open.document.textRsc[1], ElementsAre(TextRec{}, TextRec{}));
  EXPECT_EQ(open.document.cboTextLang.Text(1), "Language 0x0");
  EXPECT_THAT(open.document.lstText.Lines(), ElementsAre("", ""));
}

TEST(ScanTextRsc, AFileOf32767LanguagesOpensAndOneMoreIsFailure6) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.Root(test::RcoTable::kText) + rco::entryChildren, 32767);
  WriteI32(content, built.layout.languages[0].entry + rco::entryNext, 48 + 12);
  const OpenTexts largest(content);
  EXPECT_EQ(largest.document.cboTextLang.Count(), 32767);
  EXPECT_EQ(largest.document.cboTextLang.Selected(), 1);
  WriteI32(content, built.layout.Root(test::RcoTable::kText) + rco::entryChildren, 32768);
  OpenTexts open;
  EXPECT_EQ(NumberOf([&] { open.Open(content); }), 6);
  EXPECT_EQ(open.document.langCount, 32768);
}

TEST(ScanTextRsc, RecordsThatNoMachineShouldHoldAreFailure7) {
  const auto built = TwoTexts({kEnglish, kFrench}).Build();
  Bytes content = built.bytes;
  WriteI32(content, built.layout.Root(test::RcoTable::kText) + rco::entryChildren, 65535);
  WriteI32(content, built.layout.languages[0].entry + rco::entryNext, 48 + 2730 * 12);
  OpenTexts open;
  EXPECT_EQ(NumberOf([&] { open.Open(content); }), 7);
}

// 520 languages of 2730 texts each: more than the records that a file may claim without having them.
TEST(ScanTextRsc, ATableOfAnySizeOpensWhereTheFileHoldsItAndIsFailure7WhereItIsOnlyClaimed) {
  constexpr std::int32_t kRoot = 164;
  constexpr std::int32_t kTable = kRoot + 40;
  constexpr std::int32_t kLanguages = 520;
  constexpr std::int32_t kLanguageBytes = 48 + 2730 * 12;
  Bytes content(kTable + kLanguages * kLanguageBytes);
  WriteI32(content, rco::hdrTextDataLength, 4);
  WriteI32(content, rco::hdrTextRoot, kRoot);
  WriteI32(content, rco::hdrLabelOffset, kTable);
  WriteI32(content, kRoot + rco::entryChildren, kLanguages);
  WriteI32(content, kTable + rco::entryNext, kLanguageBytes);
  WriteI32(content, kTable + 519 * kLanguageBytes + 48 + 2729 * 12, 77);
  const OpenTexts open(content);
  EXPECT_EQ(open.document.cboTextLang.Count(), 520);
  EXPECT_EQ(open.document.lstText.Count(), 2730);
  EXPECT_EQ(open.document.textRsc[519][2729], (TextRec{77, 0, 0}));

  content.pop_back();
  OpenTexts claimed;
  EXPECT_EQ(NumberOf([&] { claimed.Open(content); }), 7);
}

TEST(ScanTextRsc, ARootBeyondTheEndOfTheFileReadsAsNoLanguages) {
  for (const std::int32_t root : {0x7FFFFFFF, 0x7FFFFFF0}) {
    RcoBuilder b = TwoTexts({kEnglish, kFrench});
    b.Options().headerLongs[rco::hdrTextRoot] = root;
    EXPECT_EQ(OpenTexts(b.Build().bytes).document.langCount, 0);
  }
}

}  // namespace
}  // namespace kelvane
