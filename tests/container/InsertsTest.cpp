#include <limits>

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

class InsertsTest : public test::InsertFixture {
 protected:
  void InsertGen(int position, int kind, const std::string& label, const Bytes& data, std::int32_t extra) {
    InsertGenRsc(
        {.position = position, .dataFile = folder.Write("new.dat", data), .label = label, .kind = kind, .extra = extra},
        Context(), After());
  }

  // What the file holds as the data of a record.
  [[nodiscard]] Bytes DataOf(int record) const {
    const Bytes content = Content();
    const auto first = content.begin() + GetGenDataPos(document, Int16(record));
    return {first, first + document.genRsc[static_cast<std::size_t>(record)].dataSize};
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

TEST_F(InsertsTest, AModelIsPutInFrontOfTheSecondOfThree) {
  built = test::InsertScreen(true);
  Open(built.bytes);
  const Bytes data = Filled(45, 12);
  InsertGen(7, 3, "model", data, 321);
  EXPECT_TRUE(Content() == WithGen(3, 1, "model", data, 321));
  EXPECT_EQ(calls, (std::vector<std::string>{"reopen", "select 7"}));
  EXPECT_EQ(document.lst.Lines(),
            (std::vector<std::string>{"[GIM] bg", "[PNG] icon", "[GIM] last", "[VAG] v1", "[VAG] v2", "[VAG] v3",
                                      "[GMO] m1", "[GMO] model", "[GMO] m2", "[GMO] m3"}));
  EXPECT_EQ(DataOf(6), Filled(9, 9));
  EXPECT_EQ(DataOf(7), data);
  EXPECT_EQ(DataOf(8), Filled(12, 10));
  EXPECT_EQ(DataOf(9), Filled(5, 11));
  EXPECT_EQ(document.genRsc[7].unpackedSize, 321);
}

// The new data stand in front of the kind's area, which begins behind them: the new entry has the data of the next one.
TEST_F(InsertsTest, AtTheFirstPlaceOfItsKindTheNewEntryGetsWhatTheOldFirstOneHolds) {
  InsertGen(3, 2, "first", Filled(30, 11), 0);
  EXPECT_EQ(document.lst.Lines(),
            (std::vector<std::string>{"[GIM] bg", "[PNG] icon", "[GIM] last", "[VAG] first", "[VAG] v1", "[VAG] v2",
                                      "[VAG] v3", "[GMO] m1", "[GMO] m2"}));
  EXPECT_EQ(document.genRsc[3].dataOffset, 0);
  EXPECT_EQ(document.genRsc[3].dataSize, 30);
  EXPECT_EQ(DataOf(3), Filled(30, 4));  // of 32
  EXPECT_EQ(GetGenDataPos(document, 3), GetGenDataPos(document, 4));
  const std::int32_t place = GetGenDataPos(document, 4) - 32;
  const Bytes content = Content();
  EXPECT_EQ(Bytes(content.begin() + place, content.begin() + place + 30), Filled(30, 11));
  EXPECT_EQ(DataOf(2), Filled(18, 3));
  EXPECT_EQ(DataOf(5), Filled(16, 6));
  EXPECT_EQ(DataOf(8), Filled(12, 10));
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

TEST_F(InsertsTest, AfterNoTheRecordsAreWhatTheStepsMadeOfThem) {
  RcoDocument expected = document;
  expected.genRsc[7].dataOffset += 32;
  expected.genRsc[7].labelOffset += 4;
  for (EntryRec& page : expected.pageRecs) {
    page.recLabel += 4;
  }
  expected.animRecs[0].recLabel += 4;
  expected.animRecs[1].recLabel += 4;
  for (const std::size_t area : {0U, 2U, 4U}) {
    expected.dataAreas[area] += 4 + 56 + 4;  // the label, the entry that isn't there, its pointer
  }
  expected.dataAreas[5] += 32;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  InsertGen(7, 3, "new", Filled(30, 11), 500);
  EXPECT_TRUE(document.genRsc == expected.genRsc);
  EXPECT_EQ(document.textRsc, expected.textRsc);
  EXPECT_TRUE(document.pageRecs == expected.pageRecs);
  EXPECT_TRUE(document.animRecs == expected.animRecs);
  EXPECT_EQ(document.dataAreas, expected.dataAreas);
  EXPECT_EQ(document.labelBase, expected.labelBase);
}

TEST_F(InsertsTest, WhereTheFileCantBeOpenedTheRecordsStayWhateverIsAnswered) {
  mod.cNoUpdatBak = true;
  std::filesystem::remove(mod.cCurFile);
  const RcoDocument before = document;
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::Yes);
  prompts.ExpectUnknownFailure(FailureCode::BadFileNumber,
                               Answer::No);  // in the label's step, which moves labels first
  InsertTextRsc(0, "new", Context(), After());
  EXPECT_EQ(document.textRsc, before.textRsc);
  EXPECT_TRUE(document.genRsc == before.genRsc);
  EXPECT_TRUE(document.pageRecs == before.pageRecs);
  EXPECT_EQ(document.dataAreas, before.dataAreas);
}

TEST_F(InsertsTest, WhatFollowsAWrittenInsertDoesntTakeTheRecordsBack) {
  AfterInsert after = After();
  after.selectLine = [](Int16) { throw RuntimeFailure(FailureCode::InvalidCall); };
  prompts.ExpectUnknownFailure(FailureCode::InvalidCall, Answer::No);
  InsertGenRsc({.position = 1, .dataFile = folder.Write("new.dat", Filled(30, 11)), .label = "new", .kind = 1},
               Context(), after);
  EXPECT_EQ(document.genCount.Int(), 9);
  ExpectRecordsAreTheFiles();
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

TEST_F(InsertsTest, FieldsAsLowAsTheyGoAreFailure6) {
  constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
  // The sounds' area, from which the new data's offset counts; nothing is changed yet.
  document.dataAreas[2] = kLowest;
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::No);
  InsertGen(1, 2, "new", Filled(32, 11), 0);
  EXPECT_TRUE(Content() == built.bytes);

  // The sounds' root, from which the entry's way to its parent counts: that field stays 0.
  WriteI32(built.bytes, 28, kLowest);
  Open(built.bytes);
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::Yes);
  AfterInsert after = After();
  after.reopen = [] {};
  InsertGenRsc({.position = 1, .dataFile = folder.Write("new.dat", Filled(32, 11)), .label = "new", .kind = 2},
               Context(), after);
  const Bytes content = Content();
  const std::int32_t entry = built.layout.images[1].entry;
  EXPECT_EQ(ReadI32(content, entry), 0x601);
  EXPECT_EQ(ReadI32(content, entry + 20), 68);
  EXPECT_EQ(ReadI32(content, entry + 28), 0);
  EXPECT_EQ(ReadI32(content, entry + 44), 32);
}

TEST_F(InsertsTest, AMissingDataFileIsFailure53) {
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
  InsertGenRsc({.position = 1, .dataFile = folder / "gone", .label = "new", .kind = 1}, Context(), After());
  EXPECT_TRUE(Content() == built.bytes);
}

}  // namespace
}  // namespace kelvane
