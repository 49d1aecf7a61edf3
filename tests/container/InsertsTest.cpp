#include "InsertFixture.h"
#include "container/Inserts.h"

namespace kelvane {
namespace {

using test::BuiltRco;
using test::Expected;
using test::Filled;
using test::LabelBytes;
using test::Longs;
using test::RcoLayout;
using test::RcoTable;

class InsertsTest : public test::EngineFixture {
 protected:
  void SetUp() override { Open(built.bytes); }

  AfterInsert After() {
    return {.reopen =
                [this] {
                  calls.push_back("reopen");
                  document = test::Scanned(mod.cCurFile);
                },
            .selectLine =
                [this](Int16 row) {
                  calls.push_back("select " + std::to_string(row.Int()));
                  document.lst.Select(row.Int());
                }};
  }

  void InsertGen(int position, int kind, const std::string& label, const Bytes& data, std::int32_t extra) {
    InsertGenRsc(
        {.position = position, .dataFile = folder.Write("new.dat", data), .label = label, .kind = kind, .extra = extra},
        Context(), After());
  }

  // Everything that is patched for a new entry in front of resource `n` of `kind`, and the two splices that come before
  // the entry's own.
  [[nodiscard]] Expected PatchedForGen(int kind, std::size_t n, const std::string& label, Bytes data) const {
    const RcoLayout& l = built.layout;
    const auto& places = test::PlacesOf(l, kind);
    Expected e{built.bytes};
    data.resize((data.size() + 3) / 4 * 4);
    const auto padded = static_cast<std::int32_t>(data.size());
    const auto growth = static_cast<std::int32_t>(LabelBytes(label).size());
    const std::int32_t entryDelta = kind == 2 ? 68 : 56;

    // The data: the record in front of the place is the one that grows.
    const int kindBefore = n > 0 ? kind : kind - 1;
    const test::GeneralPlace& before = n > 0 ? places[n - 1] : test::PlacesOf(l, kindBefore).back();
    for (std::size_t i = n; n > 0 && i < places.size(); ++i) {
      e.Add(places[i].entry + 48, padded);
      if (kind == 2) {
        e.Add(places[i].entry + 56, padded);
        if (places[i].channel2Offset > 0) {
          e.Add(places[i].entry + 64, padded);
        }
      }
    }
    e.Add(128 + (kindBefore - 1) * 8 + 4, padded);
    for (int area = kindBefore; area <= 2; ++area) {
      e.Add(128 + area * 8, padded);
    }
    const bool isPng = kindBefore == 1 && &before == &l.images[1];
    if (kindBefore != 2 && !isPng) {
      e.SetShort(before.entry + 42, 1);
    }

    test::MoveLabels(e, l, kind + 1, n, growth);

    for (std::size_t i = n + 1; i < places.size(); ++i) {
      e.Add(places[i].entry + 28, entryDelta);
    }
    test::MovePointers(e, l, places[n].entry + 4, entryDelta);
    const std::int32_t root = e.Long(kind == 1 ? 36 : kind == 2 ? 28 : 32);
    e.Add(root + 16, 1);
    e.Add(root + 20, entryDelta);
    if (kind != 2) {
      test::MoveRoot(e, 28, entryDelta);
    }
    if (kind == 1) {
      test::MoveRoot(e, 32, entryDelta);
    }
    for (const int field : {24, 48, 52}) {
      test::MoveRoot(e, field, entryDelta);
    }
    for (const int area : {56, 64, 72, 128, 136, 144}) {
      e.Add(area, entryDelta + 4);
    }
    for (int table = 80; table <= 120; table += 8) {
      e.Add(table, entryDelta);
    }
    const std::vector<int> fours = kind == 1   ? std::vector<int>{104, 96, 92, 112, 120}
                                   : kind == 2 ? std::vector<int>{104, 100, 112, 120}
                                               : std::vector<int>{108, 112, 120};
    for (const int field : fours) {
      e.Add(field, 4);
    }

    e.Insert(places[n].data, data);
    e.Insert(l.labels.offset + LabelPlace(kind, n), LabelBytes(label));
    return e;
  }

  // The new file: with the entry and its pointer.
  [[nodiscard]] Bytes WithGen(int kind, std::size_t n, const std::string& label, const Bytes& data,
                              std::int32_t extra) const {
    const RcoLayout& l = built.layout;
    const test::GeneralPlace& at = test::PlacesOf(l, kind)[n];
    const RcoTable table = kind == 1 ? RcoTable::kImage : kind == 2 ? RcoTable::kVag : RcoTable::kGmo;
    const auto size = static_cast<std::int32_t>(data.size());
    const std::int32_t length = kind == 2 ? 68 : 56;
    const std::int32_t tableCode = kind == 1 ? 4 : kind == 2 ? 6 : 5;
    std::vector<std::int32_t> entry = {
        1 + tableCode * 256, LabelPlace(kind, n), 40, 0, 0, length, length, at.entry - l.Root(table), 0, 0};
    const std::vector<std::int32_t> body =
        kind == 2 ? std::vector<std::int32_t>{1 + (extra > 0 ? 2 : 1) * 65536,
                                              size,
                                              at.dataOffset,
                                              size - extra,
                                              at.dataOffset,
                                              extra,
                                              at.dataOffset - extra}
                  : std::vector<std::int32_t>{(kind == 1 ? 5 : 0) + 65536, size, at.dataOffset, extra};
    entry.insert(entry.end(), body.begin(), body.end());

    Expected e = PatchedForGen(kind, n, label, data);
    e.Insert(l.Pointers(table).End(), Longs({at.entry}));
    e.Insert(at.entry, Longs(entry));
    return std::move(e.bytes);
  }

  // Where the label goes, in the label area. There are two models: so in front of the sound number 2 the first model
  // marks the place.
  [[nodiscard]] std::int32_t LabelPlace(int kind, std::size_t n) const {
    return kind == 2 && n == 2 ? built.layout.gmos[0].label : test::PlacesOf(built.layout, kind)[n].label;
  }

  BuiltRco built = test::InsertScreen();
  std::vector<std::string> calls;
};

TEST_F(InsertsTest, AnEntryIsPutInFrontOfAnyButTheFirstAndTheLastOfAll) {
  struct Row {
    int position;
    int kind;
    std::size_t n;
    std::string label;
    int size;
    std::int32_t extra;
  };
  for (const Row& row : {Row{1, 1, 1, "new", 30, 500}, Row{2, 1, 2, "four", 32, 0}, Row{4, 2, 1, "s", 41, 0},
                         Row{5, 2, 2, "stereo", 60, 20}}) {
    SCOPED_TRACE(row.position);
    Open(built.bytes);
    const Bytes data = Filled(row.size, 11);
    InsertGen(row.position, row.kind, row.label, data, row.extra);
    EXPECT_TRUE(Content() == WithGen(row.kind, row.n, row.label, data, row.extra));
    EXPECT_EQ(document.genCount.Int(), 9);
    EXPECT_EQ(document.lst.Selected(), row.position);
    EXPECT_EQ(document.lst.Text(row.position), (row.kind == 1 ? "[GIM] " : "[VAG] ") + row.label);
    ExpectRecordsAreTheFiles();
  }
}

TEST_F(InsertsTest, AtTheFirstPlaceOfItsKindTheAreaOfTheKindBeforeGrows) {
  for (const int kind : {2, 3}) {
    Open(built.bytes);
    const Bytes data = Filled(30, 11);
    InsertGen(kind * 3 - 3, kind, "first", data, kind == 3 ? 70 : 0);
    EXPECT_TRUE(Content() == WithGen(kind, 0, "first", data, kind == 3 ? 70 : 0)) << kind;
  }
}

TEST_F(InsertsTest, ANewImageIsAGimWithCompression1WhateverTheSettingsSay) {
  mod.cNoCompression = true;
  const Bytes data = Filled(30, 11);
  InsertGen(1, 1, "new", data, 500);
  EXPECT_TRUE(Content() == WithGen(1, 1, "new", data, 500));
  EXPECT_EQ(document.genRsc[1].rscFormat.Int(), 5);
  EXPECT_EQ(document.genRsc[1].rscCompression.Int(), 1);
}

TEST_F(InsertsTest, TheOldPointerStaysAndOneOfTheSameValueStandsAtTheEndOfTheTable) {
  InsertGen(1, 1, "new", Filled(30, 11), 500);
  RcoFile file(mod.cCurFile);
  const std::int32_t table = file.ReadI32At(88);
  const std::int32_t entry = built.layout.images[1].entry;
  EXPECT_EQ(file.ReadI32At(92), 16);
  std::array<std::int32_t, 4> pointers{};
  file.ReadLongsAt(table, pointers);
  EXPECT_EQ(pointers, (std::array<std::int32_t, 4>{built.layout.images[0].entry, entry,
                                                   built.layout.images[2].entry + 56, entry}));
}

TEST_F(InsertsTest, TheWatcherIsStoppedAndStartedByTheBracketsAndTheBackupIsTheFileBefore) {
  InsertGen(1, 1, "new", Filled(30, 11), 500);
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "stop", "start", "stop", "start", "start", "start"}));
  EXPECT_EQ(calls, (std::vector<std::string>{"reopen", "select 1"}));
  EXPECT_EQ(mod.cFileDate, DateOfFile(mod.cCurFile));
  InsertTextRsc(0, "again", Context(), After());
  EXPECT_TRUE(ReadWholeFile(folder / "screen.rco.bak") == built.bytes);
}

TEST_F(InsertsTest, TheLastPositionFailsAndWithNoTheFileIsPatchedAndNotSpliced) {
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  InsertGen(7, 3, "new", Filled(30, 11), 500);
  EXPECT_TRUE(Content() == PatchedForGen(3, 1, "new", Filled(30, 11)).bytes);
  EXPECT_TRUE(calls.empty());
  EXPECT_TRUE(ReadWholeFile(folder / "screen.rco.bak") == built.bytes);
}

TEST_F(InsertsTest, TheLastPositionWithYesGetsAPointerTo0AndNoEntry) {
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::Yes);
  AfterInsert after = After();
  after.reopen = [this] { calls.push_back("reopen"); };
  InsertGenRsc({.position = 7, .dataFile = folder.Write("new.dat", Filled(30, 11)), .label = "new", .kind = 3},
               Context(), after);
  Expected e = PatchedForGen(3, 1, "new", Filled(30, 11));
  // The table's offset counts with the entry that isn't there.
  e.Insert(built.layout.Pointers(RcoTable::kGmo).End() + 56, Longs({0}));
  EXPECT_TRUE(Content() == e.bytes);
  EXPECT_EQ(calls, (std::vector<std::string>{"reopen", "select 7"}));
}

TEST_F(InsertsTest, BehindTheLastPositionTheDataGoToTheEndOfTheFileAndTheFixUpsFail) {
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  InsertGen(8, 3, "new", Filled(32, 11), 500);
  Expected e{built.bytes};
  e.SetShort(built.layout.gmos[1].entry + 42, 1);
  e.Add(148, 32);
  // The number of pages isn't 2, so nothing marks the place: the label goes to the start of the area.
  test::MoveLabels(e, built.layout, 4, 2, 4);
  Append(e.bytes, Filled(32, 11));
  e.Insert(built.layout.labels.offset, LabelBytes("new"));
  EXPECT_TRUE(Content() == e.bytes);
}

TEST_F(InsertsTest, AtPosition0ThereIsNoRecordThatGrows) {
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  InsertGen(0, 1, "new", Filled(32, 11), 500);
  Expected e{built.bytes};
  e.Insert(built.layout.images[0].data, Filled(32, 11));
  EXPECT_TRUE(Content() == e.bytes);
}

TEST_F(InsertsTest, AStepGivenUpHalfWayLeavesNoneOfItsFields) {
  document.genRsc[4].entryPos = 1000000;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  InsertGen(1, 1, "new", Filled(32, 11), 500);
  Expected e{built.bytes};
  e.Insert(built.layout.images[1].data, Filled(32, 11));
  EXPECT_TRUE(Content() == e.bytes);
}

TEST_F(InsertsTest, AMissingDataFileIsFailure53) {
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
  InsertGenRsc({.position = 1, .dataFile = folder / "gone", .label = "new", .kind = 1}, Context(), After());
  EXPECT_TRUE(Content() == built.bytes);
}

// The file with a new text at `index`, whose label goes to `labelAt` of the label area and whose records point to
// `offsets`, one for each language.
Expected WithText(const BuiltRco& built, std::size_t index, std::int32_t labelAt, const std::string& label,
                  const std::array<std::int32_t, 2>& offsets) {
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
  // 44 bytes a language and room for the new record, from behind the first language on.
  e.Insert(l.Pointers(RcoTable::kText).End(), Longs({root + 40 + 80, root + 40 + 160}));
  for (const std::size_t language : {1U, 0U}) {
    e.Insert(l.languages[language].texts[0].record + static_cast<std::int32_t>(index) * 12,
             Longs({labelAt, 0, offsets[language]}));
  }
  return e;
}

TEST_F(InsertsTest, ATextIsPutInFrontOfAnotherAndSharesItsPlace) {
  for (const std::size_t index : {0U, 1U}) {
    Open(built.bytes);
    const RcoLayout& l = built.layout;
    InsertTextRsc(Int16(static_cast<int>(index)), "new_text", Context(), After());
    EXPECT_TRUE(Content() == WithText(built, index, l.textLabels[index], "new_text",
                                      {l.languages[0].texts[index].offset, l.languages[1].texts[index].offset})
                                 .bytes)
        << index;
    EXPECT_EQ(document.textCount.Int(), 3);
    EXPECT_EQ(document.lstText.Text(static_cast<int>(index)).substr(0, 8), "new_text");
    ExpectRecordsAreTheFiles();
  }
  EXPECT_EQ(calls, (std::vector<std::string>{"reopen", "reopen"}));
}

TEST_F(InsertsTest, AnAppendedTextStandsBehindTheLastStringAndItsLabelAtTheStart) {
  const RcoLayout& l = built.layout;
  InsertTextRsc(2, "new", Context(), After());
  // Four bytes behind the last string's own padding: it ends on a multiple of 4.
  const std::array<std::int32_t, 2> offsets = {l.languages[0].texts[1].offset + l.languages[0].texts[1].length + 4,
                                               l.languages[1].texts[1].offset + l.languages[1].texts[1].length + 4};
  EXPECT_TRUE(Content() == WithText(built, 2, 0, "new", offsets).bytes);
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "stop", "start", "stop", "start", "start", "start"}));
}

TEST_F(InsertsTest, WithoutLanguagesATextFails) {
  document.langCount = 0;
  document.textCount = 0;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  InsertTextRsc(0, "new", Context(), After());
  EXPECT_TRUE(calls.empty());
}

class PageInsertTest : public InsertsTest {
 protected:
  void Insert(int index, const std::vector<std::int32_t>& body, int depth) {
    InsertPageRsc({.index = index, .body = body, .label = "page_new", .entryClass = 5, .depth = depth}, Context(),
                  After());
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
  EXPECT_EQ(document.pageCount.Int(), 6);
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "stop", "start", "stop", "start", "start", "start"}));
}

TEST_F(PageInsertTest, AChildOfTheRootGetsItsDistanceToRecord0) {
  const RcoLayout& l = built.layout;
  Insert(0, {3}, 0);
  Expected e = Patched(0, 44);
  e.Add(l.Root(RcoTable::kPage) + 16, 1);
  Splice(e, 0, 44, {3});
  EXPECT_TRUE(Content() == e.bytes);
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
