#include "InsertFixture.h"
#include "container/NewEntryFixups.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::Expected;
using test::NumberOf;

// A file of zeros and a document made by hand; what a test sets is all that is there. Whole inserts are compared with
// whole files in InsertsTest.
class FixupsTest : public ::testing::Test {
 protected:
  void AddRecord(int kind, std::int32_t entry) {
    GenRsc record;
    record.rscKind = kind;
    record.entryPos = entry + 4;
    document.genRsc.push_back(record);
    ++document.genCount;
  }
  void AddPage(std::int32_t position, int depth) {
    EntryRec record;
    record.recPos = position;
    record.recDepth = depth;
    document.pageRecs.push_back(record);
    ++document.pageCount;
  }
  Bytes Fixed(const NewEntry& entry) {
    RcoFile file(folder.Write("f", before.bytes));
    FixForNewEntry(entry, file, document);
    return file.Image();
  }
  int FailureOf(const NewEntry& entry) {
    return NumberOf([&] { Fixed(entry); });
  }

  test::TempFolder folder;
  RcoDocument document;
  Expected before{Bytes(4000)};
};

TEST_F(FixupsTest, RootsAndAreasOf0OrBelowStay) {
  for (const std::int32_t absent : {0, -1}) {
    before.bytes.assign(4000, 0);
    document = RcoDocument();
    for (int field = 24; field <= 124; field += 4) {
      before.Set(field, absent);
    }
    before.Set(36, 400);  // the image root
    AddRecord(1, 440);
    document.dataAreas = {0, 5, -1, 6, 900, 7};
    Expected e = before;
    e.Set(400 + 16, 1);
    e.Set(400 + 20, 56);
    e.Set(92, absent + 4);  // the length of the pointer table grows, be there a table or not
    CopyInto(e.bytes, 128, test::Longs({0, 5, -1, 6, 960, 7}));
    EXPECT_TRUE(Fixed({.entryDelta = 56, .index = 0}) == e.bytes) << absent;
  }
}

TEST_F(FixupsTest, ThePageRootsDistanceIsLeftWhereItIs0OrMinus1AndAPagesToo) {
  before.Set(48, 400);
  AddPage(440, 0);
  AddPage(500, 1);
  for (const std::int32_t next : {0, -1, 60}) {
    before.Set(420, next);
    before.Set(460, next);
    Expected e = before;
    e.Set(420, next > 0 ? next + 44 : next);
    e.Set(460, next > 0 ? next + 44 : next);
    e.Set(456, 1);
    e.Set(48, 400);
    e.Set(116, 4);
    EXPECT_TRUE(Fixed({.entryDelta = 44, .index = 1, .depth = 1, .parent = 0}) == e.bytes) << next;
  }
}

TEST_F(FixupsTest, PointersFromTheThresholdOnMove) {
  AddRecord(1, 440);
  AddRecord(2, 600);
  before.Set(36, 400);
  before.Set(28, 560);
  for (const auto& [field, table] : {std::pair{80, 1000}, {88, 1100}, {112, 1200}}) {
    before.Set(field, table);
    before.Set(field + 4, 16);
    CopyInto(before.bytes, table, test::Longs({443, 444, -5, 3000}));
  }
  const Bytes after = Fixed({.entryDelta = 56, .index = 0});
  for (const int table : {1000, 1100, 1200}) {
    EXPECT_EQ(Bytes(after.begin() + table, after.begin() + table + 16), test::Longs({443, 500, -5, 3056})) << table;
  }
}

TEST_F(FixupsTest, ATableOfMoreThan32767PointersIsFailure6AndOfNegativeLengthFailure9) {
  AddRecord(1, 440);
  before.Set(88, 1000);
  before.Set(92, 32768 * 4);
  EXPECT_EQ(FailureOf({.entryDelta = 56, .index = 0}), 6);
  before.Set(92, -8);
  EXPECT_EQ(FailureOf({.entryDelta = 56, .index = 0}), 9);
}

TEST_F(FixupsTest, AnIndexAtTheCountFailsBeforeAnythingAndOneAboveItAfterThePointers) {
  AddRecord(1, 440);
  before.Set(88, 1000);
  before.Set(92, 8);
  CopyInto(before.bytes, 1000, test::Longs({7, -7}));
  for (const int index : {1, 2}) {
    RcoFile file(folder.Write("f", before.bytes));
    EXPECT_EQ(NumberOf([&] { FixForNewEntry({.entryDelta = 56, .index = index}, file, document); }), 9);
    Expected e = before;
    e.Set(1000, index == 1 ? 7 : 63);
    EXPECT_TRUE(file.Image() == e.bytes) << index;
  }
}

TEST_F(FixupsTest, OfSiblingsOnlyThoseOfTheKindMoveAwayFromTheirRoot) {
  for (const auto& [kind, entry] : {std::pair{1, 440}, {1, 500}, {1, 560}, {2, 700}}) {
    AddRecord(kind, entry);
  }
  before.Set(36, 400);
  const Bytes after = Fixed({.entryDelta = 56, .index = 0});
  EXPECT_EQ(ReadI32(after, 440 + 28), 0);
  EXPECT_EQ(ReadI32(after, 500 + 28), 56);
  EXPECT_EQ(ReadI32(after, 560 + 28), 56);
  EXPECT_EQ(ReadI32(after, 700 + 28), 0);
}

TEST_F(FixupsTest, ALanguageMoreThan32767BytesBehindTheFirstIsFailure6) {
  before.Set(24, 200);
  before.bytes.resize(60000);
  document.textCount = 40;  // 528 bytes a language
  document.langCount = 63;  // the last one 32736 bytes on
  RcoFile file(folder.Write("f", before.bytes));
  EXPECT_EQ(NumberOf([&] { FixForNewTextEntry(12, 1, 252, file, document); }), 0);
  EXPECT_EQ(file.ReadI32At(240 + 32736 + 44), 1);
  document.langCount = 64;
  EXPECT_EQ(NumberOf([&] { FixForNewTextEntry(12, 1, 256, file, document); }), 6);
}

TEST_F(FixupsTest, ANewTextMovesThePageAndAnimationPointersAndNotThoseOfTexts) {
  before.Set(24, 200);
  for (const auto& [field, table] : {std::pair{80, 1000}, {88, 1100}, {112, 1200}, {120, 1300}}) {
    before.Set(field, table);
    before.Set(field + 4, 8);
    CopyInto(before.bytes, table, test::Longs({300, -1}));
  }
  document.textCount = 1;
  document.langCount = 2;
  RcoFile file(folder.Write("f", before.bytes));
  FixForNewTextEntry(12, 1, 8, file, document);
  Expected e = before;
  for (const int language : {240, 300}) {
    e.Set(language + 20, 12);
    e.Set(language + 44, 1);
  }
  CopyInto(e.bytes, 1200, test::Longs({324, 23}));
  CopyInto(e.bytes, 1300, test::Longs({324, 23}));
  e.Set(220, 24);
  e.Set(80, 1024);
  e.Set(84, 16);
  e.Set(88, 1132);
  e.Set(112, 1232);
  e.Set(120, 1332);
  EXPECT_TRUE(file.Image() == e.bytes);
}

}  // namespace
}  // namespace kelvane
