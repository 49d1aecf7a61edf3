#include "InsertFixture.h"
#include "container/Inserts.h"
#include "text/TextEdit.h"
#include "text/TextString.h"

namespace kelvane {
namespace {

using test::BuiltRco;
using test::Expected;
using test::Filled;
using test::LabelBytes;
using test::Longs;
using test::RcoLayout;
using test::RcoTable;

constexpr std::int32_t kNoDistance = -1;

// The file with a new text at `index`, whose label goes to `labelAt` of the label area and whose records point to
// `offsets`, one for each language. The new pointers point as far behind the text root's head as `distances` say: 44
// bytes a language and room for the new record, from behind the first language on.
Expected WithText(const BuiltRco& built, std::size_t index, std::int32_t labelAt, const std::string& label,
                  const std::array<std::int32_t, 2>& offsets, const std::vector<std::int32_t>& distances = {80, 160}) {
  const RcoLayout& l = built.layout;
  Expected e{built.bytes};
  test::MoveLabels(e, l, 1, index, static_cast<std::int32_t>(LabelBytes(label).size()));
  for (const test::LanguagePlace& language : l.languages) {
    e.Add(language.entry + 20, 12);
    e.Add(language.entry + 44, 1);
  }
  test::MovePointers(e, l, 1, 24, static_cast<std::size_t>(RcoTable::kPage));
  const std::int32_t root = l.Root(RcoTable::kText);
  e.Add(root + 20, 24);
  test::MoveRoot(e, 48, 24);
  test::MoveRoot(e, 52, 24);
  for (const int field : {56, 64, 72, 88, 96, 104, 112, 120, 128, 136, 144}) {
    e.Add(field, 24 + 8);
  }
  e.Add(80, 24);
  e.Add(84, 8);
  e.Insert(l.labels.offset + labelAt, LabelBytes(label));
  std::vector<std::int32_t> pointers;
  for (const std::int32_t distance : distances) {
    pointers.push_back(distance == kNoDistance ? 0 : root + 40 + distance);
  }
  e.Insert(l.Pointers(RcoTable::kText).End(), Longs(pointers));
  for (const std::size_t language : {1U, 0U}) {
    e.Insert(l.languages[language].texts[0].record + static_cast<std::int32_t>(index) * 12,
             Longs({labelAt, 0, offsets[language]}));
  }
  return e;
}

class TextInsertTest : public test::InsertFixture {};

TEST_F(TextInsertTest, ATextIsPutInFrontOfAnotherAndSharesItsPlace) {
  for (const std::size_t index : {0U, 1U}) {
    Open(built.bytes);
    const RcoLayout& l = built.layout;
    InsertTextRsc(Int16(static_cast<int>(index)), "new_text", Context(), After());
    EXPECT_TRUE(Content() == WithText(built, index, l.textLabels[index], "new_text",
                                      {l.languages[0].texts[index].offset, l.languages[1].texts[index].offset})
                                 .bytes)
        << index;
    EXPECT_EQ(document.textCount.Int(), 3);
    std::vector<std::string> names = {"msg_a", "msg_b"};
    names.insert(names.begin() + static_cast<std::ptrdiff_t>(index), "new_text");
    EXPECT_EQ(document.lstText.Lines(), names);
    for (const std::vector<TextRec>& records : document.textRsc) {
      EXPECT_EQ(records[index].textLength, 0);
      EXPECT_EQ(records[index].textOffset, records[index + 1].textOffset);
    }
  }
  EXPECT_EQ(calls, (std::vector<std::string>{"reopen", "reopen"}));
}

TEST_F(TextInsertTest, AnAppendedTextStandsBehindTheLastStringAndItsLabelAtTheStart) {
  const RcoLayout& l = built.layout;
  InsertTextRsc(2, "new", Context(), After());
  // Four bytes behind the last string's own padding: it ends on a multiple of 4.
  const std::array<std::int32_t, 2> offsets = {l.languages[0].texts[1].offset + l.languages[0].texts[1].length + 4,
                                               l.languages[1].texts[1].offset + l.languages[1].texts[1].length + 4};
  EXPECT_TRUE(Content() == WithText(built, 2, 0, "new", offsets).bytes);
  // The labels of the texts in front of it stay 4 bytes too low.
  EXPECT_EQ(document.lstText.Lines(), (std::vector<std::string>{"new", "a", "new"}));
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "stop", "start", "stop", "start", "start", "start"}));
}

TEST_F(TextInsertTest, ALaterChangeGivesAnAppendedTextItsContent) {
  InsertTextRsc(2, "new", Context(), After());
  const Bytes appended = Content();
  const std::int32_t texts = document.textDataBase;
  const auto record = [this](std::size_t language, int item) { return document.langPos[language] + 48 + item * 12; };
  // Strings of 8, 8, 8 and 20 bytes: the new ones are said to be 4 bytes behind the end of their language's.
  document.cboTextLang.Select(0);
  document.lstText.Select(2);
  cmdTextChange(mod, document, watch, u"abc");
  Expected e{appended};
  e.Set(record(0, 2) + 4, 8);
  for (const int item : {0, 1, 2}) {
    e.Add(record(1, item) + 8, 12);
  }
  for (const int area : {64, 72, 128, 136, 144}) {
    e.Add(area, 12);
  }
  // The first 4 bytes of the next language stand in front of the new string, and again behind it.
  Bytes inserted = {'a', 0, 'b', 0, 'c', 0, 0, 0};
  inserted.insert(inserted.end(), appended.begin() + texts + 16, appended.begin() + texts + 20);
  e.Insert(texts + 20, inserted);
  EXPECT_TRUE(Content() == e.bytes);
  EXPECT_EQ(UpToFirstNul(GetTextString(mod, document, 2, 0)), u"abc");
  EXPECT_EQ(UpToFirstNul(GetTextString(mod, document, 0, 1)), u"Yes");
  EXPECT_EQ(UpToFirstNul(GetTextString(mod, document, 1, 1)), u"No, never");
}

TEST_F(TextInsertTest, APointerMoreThan32767BytesBehindTheRootIsFailure6AndWithYesItStays0) {
  built = test::InsertScreen(false, 1361);  // 16388 bytes from one pointer to the next
  const std::array<std::int32_t, 2> offsets = {built.layout.languages[0].texts[0].offset,
                                               built.layout.languages[1].texts[0].offset};
  Open(built.bytes);
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::Yes);
  InsertTextRsc(0, "new_text", Context(), After());
  EXPECT_TRUE(Content() == WithText(built, 0, 0, "new_text", offsets, {16388, kNoDistance}).bytes);
  EXPECT_EQ(document.textCount.Int(), 1362);
  EXPECT_EQ(document.lstText.Text(1361), "msg1360");

  Open(built.bytes);
  calls.clear();
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::No);
  InsertTextRsc(0, "new_text", Context(), After());
  EXPECT_TRUE(Content() == WithText(built, 0, 0, "new_text", offsets, {}).bytes);
  EXPECT_TRUE(calls.empty());
}

TEST_F(TextInsertTest, AnOffsetThatCantBeWorkedOutIsFailure6AndWithYesItStays0) {
  const test::RcoLayout& l = built.layout;
  WriteI32(built.bytes, l.languages[1].texts[1].record + 8, 0x7FFFFFFF);
  Open(built.bytes);
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::Yes);
  InsertTextRsc(2, "new", Context(), After());
  const std::int32_t behind = l.languages[0].texts[1].offset + l.languages[0].texts[1].length + 4;
  EXPECT_TRUE(Content() == WithText(built, 2, 0, "new", {behind, 0}).bytes);
}

TEST_F(TextInsertTest, WithoutLanguagesATextFails) {
  document.langCount = 0;
  document.textCount = 0;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  InsertTextRsc(0, "new", Context(), After());
  EXPECT_TRUE(calls.empty());
}

class PageInsertTest : public test::InsertFixture {
 protected:
  void Insert(int index, const std::vector<std::int32_t>& body, int depth) {
    InsertPageRsc({.index = index, .body = body, .label = "page_new", .entryClass = 5, .depth = depth}, Context(),
                  After());
  }

  // The lines of lstPage up to the entries' positions.
  [[nodiscard]] std::vector<std::string> PageNames() const {
    std::vector<std::string> names;
    for (const std::string& line : document.lstPage.Lines()) {
      names.push_back(line.substr(0, line.find(" @")));
    }
    return names;
  }

  // What is patched for an entry of `length` bytes in front of page `index`; siblings and parents are the test's.
  [[nodiscard]] Expected Patched(std::size_t index, std::int32_t length) const {
    const RcoLayout& l = built.layout;
    Expected e{built.bytes};
    test::MoveLabels(e, l, 5, index, 12);
    test::MovePointers(e, l, l.pages[index].entry, length);
    e.Add(l.Root(RcoTable::kPage) + 20, length);
    test::MoveRoot(e, 52, length);
    for (const int area : {56, 64, 72, 128, 136, 144}) {
      e.Add(area, length + 4);
    }
    for (int table = 80; table <= 120; table += 8) {
      e.Add(table, length);
    }
    e.Add(116, 4);
    e.Add(120, 4);
    return e;
  }

  void Splice(Expected& e, std::size_t index, std::int32_t length, const std::vector<std::int32_t>& body) const {
    const RcoLayout& l = built.layout;
    const test::EntryPlace& at = l.pages[index];
    e.Insert(l.labels.offset + at.label, LabelBytes("page_new"));
    e.Insert(l.Pointers(RcoTable::kPage).End(), Longs({at.entry}));
    std::vector<std::int32_t> entry = {
        5 + 8 * 256, at.label, 40, length, 0, length, length, at.entry - l.pages[0].entry, 0, 0};
    entry.insert(entry.end(), body.begin(), body.end());
    e.Insert(at.entry, Longs(entry));
  }
};

TEST_F(PageInsertTest, AChildOfAPageIsPutInFrontOfItsSibling) {
  const RcoLayout& l = built.layout;
  Insert(1, {0x111, -1}, 1);
  Expected e = Patched(1, 48);
  e.Add(l.pages[2].entry + 28, 48);
  e.Add(l.pages[0].entry + 16, 1);
  e.Add(l.pages[0].entry + 20, 48);
  Splice(e, 1, 48, {0x111, -1});
  EXPECT_TRUE(Content() == e.bytes);
  EXPECT_EQ(calls, (std::vector<std::string>{"reopen", "select 1"}));
  EXPECT_EQ(document.lst.Selected(), 1);  // of the general list
  EXPECT_EQ(PageNames(), (std::vector<std::string>{"p0", "   page_new", "   p1", "   p2", "p3", "p4"}));
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "stop", "start", "stop", "start", "start", "start"}));
}

TEST_F(PageInsertTest, AChildOfTheRootGetsItsDistanceToRecord0) {
  const RcoLayout& l = built.layout;
  Insert(0, {3}, 0);
  Expected e = Patched(0, 44);
  e.Add(l.Root(RcoTable::kPage) + 16, 1);
  Splice(e, 0, 44, {3});
  EXPECT_TRUE(Content() == e.bytes);
  EXPECT_EQ(PageNames(), (std::vector<std::string>{"page_new", "p0", "   p1", "   p2", "p3", "p4"}));
}

TEST_F(PageInsertTest, SiblingsAreCountedUpToTheNumberOfGeneralResourcesAndFailBehindTheLastPage) {
  const RcoLayout& l = built.layout;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  Insert(3, {3}, 0);
  Expected e{built.bytes};
  test::MoveLabels(e, l, 5, 3, 12);
  e.Add(l.pages[4].entry + 28, 44);
  e.Insert(l.labels.offset + l.pages[3].label, LabelBytes("page_new"));
  EXPECT_TRUE(Content() == e.bytes);
}

TEST_F(PageInsertTest, WithoutWordsAndWithNoOnlyTheLabelIsPutIn) {
  const RcoLayout& l = built.layout;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  Insert(1, {}, 1);
  Expected e{built.bytes};
  test::MoveLabels(e, l, 5, 1, 12);
  e.Insert(l.labels.offset + l.pages[1].label, LabelBytes("page_new"));
  EXPECT_TRUE(Content() == e.bytes);
  EXPECT_TRUE(calls.empty());
}

TEST_F(PageInsertTest, WithoutWordsAndWithYesAHeadOfLength0IsPutIn) {
  const RcoLayout& l = built.layout;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::Yes);
  AfterInsert after = After();
  after.reopen = [] {};
  InsertPageRsc({.index = 1, .body = {}, .label = "page_new", .entryClass = 5, .depth = 1}, Context(), after);
  Expected e = Patched(1, 0);
  e.Add(l.pages[0].entry + 16, 1);
  const test::EntryPlace& at = l.pages[1];
  e.Insert(l.labels.offset + at.label, LabelBytes("page_new"));
  e.Insert(at.entry, Longs({5 + 8 * 256, at.label, 40, 0, 0, 0, 0, at.entry - l.pages[0].entry, 0, 0}));
  // The table is where it was by its offset, and 40 bytes further on in fact.
  e.Insert(l.Pointers(RcoTable::kPage).End(), Longs({at.entry}));
  EXPECT_TRUE(Content() == e.bytes);
}

TEST_F(PageInsertTest, TheLastPositionFailsWithTheFilePatchedAndNotSpliced) {
  test::RcoBuilder b;
  b.AddImage({.label = "bg", .data = Filled(8, 1)});
  b.AddVag({.label = "v", .channel1 = Filled(8, 2)});
  b.AddGmo({.label = "m", .data = Filled(8, 3)});
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "msg", .strings = {u"a", u"b"}});
  b.AddPage({.label = "p0", .body = {1}, .children = {{.label = "p1", .body = {2}}, {.label = "p2", .body = {3}}}});
  b.AddAnimation({.label = "a0", .body = {7}, .children = {{.body = {8}}}});
  b.AddAnimation({.label = "a1", .body = {9}});
  b.AddEvent("event:/go");
  built = b.Build();
  Open(built.bytes);
  const RcoLayout& l = built.layout;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  Insert(2, {3}, 1);
  Expected e = Patched(2, 44);
  e.Add(l.pages[0].entry + 16, 1);  // its entryNext is 0 and stays
  // There are two animations, as many as the place's index: the first one marks the place.
  e.Insert(l.labels.offset + l.animEntries[0].label, LabelBytes("page_new"));
  EXPECT_TRUE(Content() == e.bytes);
  EXPECT_TRUE(calls.empty());
}

TEST_F(PageInsertTest, TheLastPositionFailsBeforeThatWhereThereAreMoreResourcesThanPages) {
  const RcoLayout& l = built.layout;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::Yes);
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  Insert(4, {3}, 1);
  Expected e{built.bytes};
  test::MoveLabels(e, l, 5, 4, 12);
  e.Insert(l.labels.offset + l.pages[4].label, LabelBytes("page_new"));
  EXPECT_TRUE(Content() == e.bytes);
}

TEST_F(PageInsertTest, AnIndexBeyondTheGeneralListFailsInTheSelection) {
  AfterInsert after = After();
  after.reopen = [this] { document.lst.Clear(); };
  prompts.ExpectUnknownFailure(FailureCode::InvalidCall, Answer::No);
  InsertPageRsc({.index = 1, .body = {3}, .label = "page_new", .entryClass = 5, .depth = 1}, Context(), after);
  EXPECT_EQ(Content().size(), built.bytes.size() + 44 + 12 + 4);
}

}  // namespace
}  // namespace kelvane
