#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OpenTexts.h"
#include "support/Failures.h"
#include "support/RcoBuilder.h"
#include "support/ScriptedPrompts.h"
#include "text/TextEdit.h"
#include "text/TextString.h"

namespace kelvane {
namespace {

using namespace std::string_literals;
using test::NoText;
using test::NumberOf;
using test::OpenTexts;
using test::RcoBuilder;
using test::ScriptedWatch;
using test::TextString;
using ::testing::ElementsAre;

// The strings of a file: three texts in three languages, the second one missing in the third language.
using Strings = std::vector<std::vector<TextString>>;

Strings FirstStrings() {
  return {{u"はい", u"Yes", u"Oui"}, {u"空", u"-", NoText()}, {u"いいえ", u"No", u"Non"}};
}

// A file with all regions: an image, a sound and a model, texts, a page with references, an animation and an event.
test::BuiltRco BuildFile(const Strings& strings, std::int32_t textDataLength = 0) {
  RcoBuilder b;
  b.AddImage({.label = "bg", .format = 0, .data = {1, 2, 3, 4, 5}});
  b.AddVag({.label = "se", .channel1 = {6, 7, 8, 9}});
  b.AddGmo({.label = "mdl", .data = {10, 11, 12, 13, 14, 15}});
  for (const std::uint32_t code : {0x10000U, 0x10001U, 0x10002U}) {
    b.AddLanguage(code);
  }
  const std::vector<const char*> labels = {"msg_yes", "msg_none", "msg_no"};
  for (std::size_t i = 0; i < strings.size(); ++i) {
    b.AddText({.label = labels[i], .strings = strings[i]});
  }
  b.AddEvent("native:/start");
  b.AddPage({.label = "page", .body = {0x111, test::TextRef("msg_yes"), test::ImageRef("bg"), test::EventRef(0), 0}});
  b.AddAnimation({.label = "anim", .entryClass = 1, .body = {1, 2}});
  if (textDataLength != 0) {
    b.Options().headerLongs[rco::hdrTextDataLength] = textDataLength;
  }
  return b.Build();
}

class TextEditTest : public ::testing::Test {
 protected:
  void SetUp() override { OpenFile(FirstStrings()); }

  void OpenFile(const Strings& strings) {
    strings_ = strings;
    const auto built = BuildFile(strings_);
    firstContent_ = built.bytes;
    textDataLength_ = built.layout.textData.length;
    open_.Open(built.bytes);
  }

  void Select(int lang, int item) {
    SelectTextLang(open_.mod, open_.document, lang);
    SelectText(open_.mod, open_.document, item);
  }

  // Changes a text and expects the file to become the one that is built with `stored` in its place, whose header still
  // tells the first length of the text data, and the document to be in step with it.
  void ExpectChange(int lang, int item, const std::u16string& typed, const TextString& stored) {
    Select(lang, item);
    cmdTextChange(open_.mod, open_.document, watch_, typed);
    strings_[static_cast<std::size_t>(item)][static_cast<std::size_t>(lang)] = stored;
    EXPECT_EQ(open_.Content(), BuildFile(strings_, textDataLength_).bytes);
    ExpectInStep();
  }

  void ExpectInStep() {
    RcoDocument again;
    test::ScanTexts(open_.mod.cCurFile, again);
    EXPECT_EQ(open_.document.textRsc, again.textRsc);
    EXPECT_EQ(open_.document.langPos, again.langPos);
    EXPECT_EQ(open_.document.langCount, again.langCount);
    EXPECT_EQ(open_.document.textCount, again.textCount);
    EXPECT_EQ(open_.document.labelBase, again.labelBase);
    EXPECT_EQ(open_.document.textDataBase, again.textDataBase);
    EXPECT_EQ(open_.document.dataAreas, again.dataAreas);
    EXPECT_EQ(open_.document.lstText.Lines(), again.lstText.Lines());
    EXPECT_EQ(open_.document.cboTextLang.Lines(), again.cboTextLang.Lines());
  }

  [[nodiscard]] std::u16string Text(int lang, int item) const {
    return std::u16string(UpToFirstNul(GetTextString(open_.mod, open_.document, Int16(item), Int16(lang))));
  }

  // The first content in front of `head`, `stored`, and the first content from `tail` on.
  [[nodiscard]] Bytes Spliced(std::int32_t head, const Bytes& stored, std::int32_t tail) const {
    Bytes content(firstContent_.begin(), firstContent_.begin() + head);
    Append(content, stored);
    Append(content, ByteView(firstContent_).subspan(static_cast<std::size_t>(tail)));
    return content;
  }

  int ChangeFailure() {
    return NumberOf([&] { cmdTextChange(open_.mod, open_.document, watch_, u"New"); });
  }

  OpenTexts open_;
  ScriptedWatch watch_;
  Strings strings_;
  Bytes firstContent_;
  std::int32_t textDataLength_ = 0;
};

TEST_F(TextEditTest, WithoutASelectionNothingHappens) {
  SelectText(open_.mod, open_.document, -1);
  cmdTextChange(open_.mod, open_.document, watch_, u"New");
  cmdTextReset(open_.mod, open_.document);
  EXPECT_EQ(open_.Content(), firstContent_);
  EXPECT_THAT(open_.folder.Names(), ElementsAre("texts.rco"));
  EXPECT_TRUE(watch_.Calls().empty());
  EXPECT_EQ(open_.document.text.selectAllRevision, 0U);
}

TEST_F(TextEditTest, ALongerTextMovesAllThatLiesBehindIt) {
  ExpectChange(1, 0, u"Absolutely yes", u"Absolutely yes");
}

TEST_F(TextEditTest, AShorterTextBringsAllThatLiesBehindItDown) {
  ExpectChange(0, 2, u"否", u"否");
}

TEST_F(TextEditTest, EveryTextOfEveryLanguageCanBeChanged) {
  for (int lang = 0; lang < 3; ++lang) {
    for (int item = 0; item < 3; ++item) {
      const std::u16string text = u"text " + std::u16string(static_cast<std::size_t>(lang * 3 + item), u'x');
      ExpectChange(lang, item, text, text);
    }
  }
  EXPECT_EQ(Text(2, 1), u"text xxxxxxx");
}

TEST_F(TextEditTest, ATextOfTheSameLengthStillRewritesTheFile) {
  const FileDate before = DateOfFile(open_.mod.cCurFile);
  open_.mod.cFileDate = 0;
  ExpectChange(1, 0, u"Yep", u"Yep");
  EXPECT_NE(DateOfFile(open_.mod.cCurFile), before);
  EXPECT_EQ(open_.mod.cFileDate, DateOfFile(open_.mod.cCurFile));
}

TEST_F(TextEditTest, DeltaIsNotZeroWhenTheOldStringHadAnotherPadding) {
  OpenFile({{u"はい", test::RawText(u"Yes\0\0\0\0\0"s), u"Oui"}, {u"空", u"-", u"-"}});
  ExpectChange(1, 0, u"Yes", u"Yes");
  EXPECT_EQ(open_.Content().size(), firstContent_.size() - 8);
}

TEST_F(TextEditTest, ClearingTheBoxStoresFourNulsAndALengthOf4) {
  ExpectChange(1, 0, u"", u"");
  EXPECT_EQ(open_.document.textRsc[1][0].textLength, 4);
}

TEST_F(TextEditTest, AStringOf8BytesIsStoredIn12AndOneOf6In8) {
  ExpectChange(1, 0, u"four", u"four");
  EXPECT_EQ(open_.document.textRsc[1][0].textLength, 12);
  ExpectChange(1, 1, u"six", u"six");
  EXPECT_EQ(open_.document.textRsc[1][1].textLength, 8);
}

TEST_F(TextEditTest, LineBreaksOfTheBoxAreStoredAsLineFeeds) {
  ExpectChange(1, 0, u"one\r\ntwo\r\n", u"one\ntwo\n");
  ExpectChange(1, 1, u"one\ntwo", u"one\ntwo");
  ExpectChange(1, 2, u"a\rb", u"a\rb");
}

TEST_F(TextEditTest, AnyCodeUnitIsStoredAsItIs) {
  ExpectChange(2, 0, u"\xD83D\xDE00 \xDC00 \xFFFF Ж", u"\xD83D\xDE00 \xDC00 \xFFFF Ж");
}

TEST_F(TextEditTest, ATextThatHadNoStringGetsOne) {
  ExpectChange(2, 1, u"rien", u"rien");
}

TEST_F(TextEditTest, TheRecordsOfEmptyTextsMoveLikeTheOthers) {
  const std::int32_t before = open_.document.textRsc[2][1].textOffset;
  ExpectChange(0, 0, u"はいはいはい", u"はいはいはい");  // 8 bytes become 16
  EXPECT_EQ(open_.document.textRsc[2][1].textOffset, before + 8);
  EXPECT_EQ(open_.document.textRsc[2][1].textLength, 0);
}

TEST_F(TextEditTest, TheLastTextOfTheLastLanguageEndsWhereTheLabelAreaBegins) {
  // A gap in front of the label area belongs to the last text.
  OpenFile({{u"はい", u"Yes", u"Oui"}, {u"空", u"-", test::RawText(u"Non\0\0\0\0\0\0\0"s)}});
  open_.document.textRsc[2][1].textLength = 8;
  ExpectChange(2, 1, u"No", u"No");
  EXPECT_EQ(open_.Content().size(), firstContent_.size() - 12);
}

TEST_F(TextEditTest, LanguagesInFrontKeepTheirRecords) {
  const auto first = open_.document.textRsc[0];
  // Other records in memory than in the file show which ones are written.
  open_.document.textRsc[0][0].textLabel = 0x1234;
  const std::int32_t record = open_.document.langPos[0] + rco::langRecords;
  Select(1, 0);
  cmdTextChange(open_.mod, open_.document, watch_, u"Absolutely");
  EXPECT_EQ(ReadI32(open_.Content(), record), first[0].textLabel);
}

TEST_F(TextEditTest, TheHeaderKeepsTheLengthOfTheTextData) {
  Select(1, 0);
  cmdTextChange(open_.mod, open_.document, watch_, u"A much longer text than before");
  EXPECT_EQ(ReadI32(open_.Content(), rco::hdrTextDataLength), textDataLength_);
}

TEST_F(TextEditTest, TheLabelsStayAndTheNumberFollowsTheSelectionToTheNextText) {
  const auto labels = open_.document.lstText.Lines();
  Select(1, 0);
  const unsigned selectAll = open_.document.text.selectAllRevision;
  cmdTextChange(open_.mod, open_.document, watch_, u"Yep");
  EXPECT_EQ(open_.document.lstText.Lines(), labels);
  EXPECT_EQ(open_.document.lstText.Selected(), 1);
  EXPECT_EQ(open_.document.text.lblTxtIdx, "项目 #1");
  EXPECT_EQ(open_.document.text.txt, u"-");
  EXPECT_EQ(open_.document.text.selectAllRevision, selectAll + 1);
}

TEST_F(TextEditTest, AtTheLastTextTheSelectionStays) {
  Select(1, 2);
  const TextDisplay before = open_.document.text;
  cmdTextChange(open_.mod, open_.document, watch_, u"Nope");
  EXPECT_EQ(open_.document.lstText.Selected(), 2);
  EXPECT_EQ(open_.document.text.txtRevision, before.txtRevision);
  EXPECT_EQ(open_.document.text.selectAllRevision, before.selectAllRevision);
}

TEST_F(TextEditTest, TheFirstChangeMakesTheBackupAndTheWatcherIsHeldOffMeanwhile) {
  ExpectChange(1, 0, u"Yep", u"Yep");
  ExpectChange(1, 1, u"none", u"none");
  EXPECT_THAT(open_.folder.Names(), ElementsAre("texts.rco", "texts.rco.bak"));
  EXPECT_EQ(ReadWholeFile(open_.folder / "texts.rco.bak"), firstContent_);
  EXPECT_THAT(watch_.Calls(), ElementsAre("stop", "start", "stop", "start"));
}

TEST_F(TextEditTest, AreasOfZeroOrLessStayAsTheyAre) {
  RcoBuilder b;
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "t", .strings = {u"a", u"b"}});
  b.Options().absentOffset = -1;
  b.Options().headerLongs = {{rco::hdrImageData, 0}, {rco::hdrEventOffset, 0}};
  open_.Open(b.Build().bytes);
  Select(0, 0);
  cmdTextChange(open_.mod, open_.document, watch_, u"abcdef");
  const Bytes content = open_.Content();
  EXPECT_EQ(ReadI32(content, rco::hdrEventOffset), 0);
  EXPECT_EQ(ReadI32(content, rco::hdrImageData), 0);
  EXPECT_EQ(ReadI32(content, rco::hdrVagData), -1);
  EXPECT_EQ(ReadI32(content, rco::hdrGmoData), -1);
  ExpectInStep();
}

TEST_F(TextEditTest, ResetFetchesTheTextAnewAndSelectsTheWholeOfIt) {
  Select(1, 2);
  const TextDisplay before = open_.document.text;
  // Somebody else changed the file meanwhile.
  Bytes content = open_.Content();
  WriteU16(content, open_.document.textDataBase + open_.document.textRsc[1][2].textOffset, u'G');
  WriteWholeFile(open_.mod.cCurFile, content);
  cmdTextReset(open_.mod, open_.document);
  EXPECT_EQ(open_.document.text.txt, u"Go");
  EXPECT_EQ(open_.document.text.txtRevision, before.txtRevision + 1);
  EXPECT_EQ(open_.document.text.selectAllRevision, before.selectAllRevision + 1);
  EXPECT_EQ(open_.Content(), content);
}

// Records out of order: what follows a text is taken from the next record, whatever it says.

TEST_F(TextEditTest, TheNextRecordTellsTheTailAlsoWhenItsOffsetIsUnusable) {
  // The text of 8 bytes at 0 seems to end at 4: its last 4 bytes stay in the file behind the new text.
  open_.document.textRsc[0][1] = {8, 0, 4};
  Select(0, 0);
  cmdTextChange(open_.mod, open_.document, watch_, u"X");
  const std::int32_t text = open_.document.textDataBase;
  const Bytes expected = Spliced(text, {'X', 0, 0, 0}, text + 4);
  const Bytes content = open_.Content();
  ASSERT_EQ(content.size(), expected.size());
  EXPECT_TRUE(std::equal(content.begin() + text, content.end(), expected.begin() + text));
  EXPECT_EQ(open_.document.textRsc[0][0].textLength, 4);
  EXPECT_EQ(open_.document.textRsc[0][1].textOffset, 4);
}

TEST_F(TextEditTest, ATailInFrontOfTheTextRepeatsTheBytesBetween) {
  // The second text stands at 8; the third seems to stand in front of it, at 0.
  open_.document.textRsc[0][2].textOffset = 0;
  Select(0, 1);
  cmdTextChange(open_.mod, open_.document, watch_, u"X");
  const std::int32_t text = open_.document.textDataBase;
  const Bytes expected = Spliced(text + 8, {'X', 0, 0, 0}, text);
  const Bytes content = open_.Content();
  ASSERT_EQ(content.size(), expected.size());
  EXPECT_TRUE(std::equal(content.begin() + text, content.end(), expected.begin() + text));
  // The text grew from -8 bytes to 4.
  EXPECT_EQ(open_.document.textRsc[0][2].textOffset, 12);
}

TEST_F(TextEditTest, ATextBeyondTheEndOfTheFileLeavesZerosInBetween) {
  const auto size = static_cast<std::int32_t>(firstContent_.size());
  Select(2, 2);
  open_.document.textRsc[2][2].textOffset = size + 8 - open_.document.textDataBase;
  cmdTextChange(open_.mod, open_.document, watch_, u"X");
  const Bytes content = open_.Content();
  const std::int32_t tail = ReadI32(firstContent_, rco::hdrLabelOffset);
  const Bytes expected = Spliced(size, {0, 0, 0, 0, 0, 0, 0, 0, 'X', 0, 0, 0}, tail);
  ASSERT_EQ(content.size(), expected.size());
  EXPECT_TRUE(std::equal(content.begin() + size, content.end(), expected.begin() + size));
}

TEST_F(TextEditTest, AnUnusablePlaceIsAFailureThatLeavesTheFileAndStopsTheWatcher) {
  struct Case {
    std::int32_t textOffset;  // of the text that is changed
    std::int32_t tailOffset;  // of the next one
    int failure;
  };
  const std::int32_t base = open_.document.textDataBase;
  const auto size = static_cast<std::int32_t>(firstContent_.size());
  const std::vector<Case> table = {
      {0, size - base, 9},        // nothing behind the text
      {0, size - base + 4, 9},    // behind the end
      {0, -base - 1, 5},          // in front of the file
      {0, 0x7FFFFFFF, 6},         // beyond 32 bits
      {-base, 8, 9},              // no bytes in front of the text
      {-base - 4, 8, 9},          // fewer than none
      {0x40000001 - base, 8, 7},  // more than a file may have
      {0x7FFFFFFF, 8, 6},         // beyond 32 bits
  };
  for (const Case& row : table) {
    open_.Open(firstContent_);
    Select(0, 0);
    open_.document.textRsc[0][0].textOffset = row.textOffset;
    open_.document.textRsc[0][1].textOffset = row.tailOffset;
    const auto records = open_.document.textRsc;
    EXPECT_EQ(ChangeFailure(), row.failure) << row.textOffset << " " << row.tailOffset;
    EXPECT_EQ(open_.Content(), firstContent_);
    EXPECT_EQ(open_.document.textRsc, records);
    EXPECT_FALSE(watch_.Running());
  }
}

TEST_F(TextEditTest, AnOffsetThatLeaves32BitsIsFailure6AndLeavesWhatTheStepsBeforeDid) {
  Select(0, 0);
  open_.document.textRsc[1][1].textOffset = 0x7FFFFFFC;
  const std::int32_t labelBase = open_.document.labelBase;
  const std::int32_t before = open_.document.textRsc[1][0].textOffset;
  // 8 bytes become 16: the file has the text, none of its fields has moved.
  EXPECT_EQ(NumberOf([&] { cmdTextChange(open_.mod, open_.document, watch_, u"sieben!"); }), 6);
  const std::int32_t text = open_.document.textDataBase;
  const Bytes stored = {'s', 0, 'i', 0, 'e', 0, 'b', 0, 'e', 0, 'n', 0, '!', 0, 0, 0};
  EXPECT_EQ(open_.Content(), Spliced(text, stored, text + 8));
  EXPECT_EQ(open_.document.textRsc[0][0].textLength, 16);
  EXPECT_EQ(open_.document.textRsc[1][0].textOffset, before + 8);
  EXPECT_EQ(open_.document.textRsc[1][1].textOffset, 0x7FFFFFFC);
  EXPECT_EQ(open_.document.labelBase, labelBase);
  EXPECT_EQ(open_.document.lstText.Selected(), 0);
  EXPECT_FALSE(watch_.Running());
}

TEST_F(TextEditTest, TheLabelAndEventAreasAreMovedFromWhatTheFileSays) {
  // Another program has set the event area's length meanwhile.
  Bytes content = open_.Content();
  const std::int32_t events = ReadI32(content, rco::hdrEventOffset);
  WriteI32(content, rco::hdrEventLength, 1234);
  WriteWholeFile(open_.mod.cCurFile, content);
  Select(1, 0);
  cmdTextChange(open_.mod, open_.document, watch_, u"Yes, yes");  // 8 bytes become 20
  EXPECT_EQ(ReadI32(open_.Content(), rco::hdrEventLength), 1234);
  EXPECT_EQ(ReadI32(open_.Content(), rco::hdrEventOffset), events + 12);
}

TEST_F(TextEditTest, WithBackupsTurnedOffNoneIsMade) {
  open_.mod.cNoUpdatBak = true;
  ExpectChange(1, 0, u"Yep", u"Yep");
  EXPECT_THAT(open_.folder.Names(), ElementsAre("texts.rco"));
}

TEST_F(TextEditTest, WithoutASelectedLanguageItIsFailure9) {
  Select(1, 0);
  open_.document.cboTextLang.Select(-1);
  EXPECT_EQ(ChangeFailure(), 9);
  EXPECT_EQ(open_.Content(), firstContent_);
}

TEST_F(TextEditTest, AMissingFileIsAFailure) {
  Select(1, 0);
  std::filesystem::remove(open_.mod.cCurFile);
  EXPECT_EQ(ChangeFailure(), 53);
}

}  // namespace
}  // namespace kelvane
