#include "InsertFixture.h"
#include "container/InsertLabel.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::BuiltRco;
using test::Expected;
using test::LabelBytes;
using test::NumberOf;

class InsertLabelTest : public test::EngineFixture {
 protected:
  void SetUp() override { Open(built.bytes); }

  std::int32_t Insert(LabelSection section, int item, const std::string& label) {
    RcoFile file(mod.cCurFile);
    return InsertLabel(section, Int16(item), label, file, Context());
  }

  // The file with `label` at `place` of the label area, in front of item `item` of `section`.
  [[nodiscard]] Bytes With(int section, std::size_t item, std::int32_t place, const Bytes& label) const {
    Expected e{built.bytes};
    test::MoveLabels(e, built.layout, section, item, static_cast<std::int32_t>(label.size()));
    e.Insert(built.layout.labels.offset + place, label);
    return std::move(e.bytes);
  }

  BuiltRco built = test::InsertScreen();
};

TEST_F(InsertLabelTest, ALabelOfLength3Takes4BytesAndOneOfLength4Takes8) {
  const std::int32_t place = built.layout.images[1].label;
  for (const auto& [label, bytes] : {std::pair<std::string, Bytes>{"", {0, 0, 0, 0}},
                                     {"a", {'a', 0, 0, 0}},
                                     {"abc", {'a', 'b', 'c', 0}},
                                     {"abcd", {'a', 'b', 'c', 'd', 0, 0, 0, 0}},
                                     {"\xC3\xA9t\xC3\xA9", {0xE9, 't', 0xE9, 0}}}) {
    Open(built.bytes);
    EXPECT_EQ(Insert(LabelSection::Image, 1, label), built.layout.labels.offset + place);
    EXPECT_TRUE(Content() == With(2, 1, place, bytes)) << label;
  }
}

TEST_F(InsertLabelTest, TheLabelsBehindThePlaceMoveInRecordsAndFile) {
  const test::RcoLayout& l = built.layout;
  struct Row {
    LabelSection section;
    int item;
    std::int32_t place;
  };
  for (const Row& row : {Row{LabelSection::Text, 0, l.textLabels[0]}, Row{LabelSection::Text, 1, l.textLabels[1]},
                         Row{LabelSection::Image, 0, l.images[0].label}, Row{LabelSection::Vag, 0, l.vags[0].label},
                         Row{LabelSection::Vag, 1, l.vags[1].label}, Row{LabelSection::Gmo, 1, l.gmos[1].label},
                         Row{LabelSection::Page, 0, l.pages[0].label}, Row{LabelSection::Page, 3, l.pages[3].label}}) {
    Open(built.bytes);
    EXPECT_EQ(Insert(row.section, row.item, "abcd"), l.labels.offset + row.place);
    EXPECT_TRUE(Content() ==
                With(static_cast<int>(row.section), static_cast<std::size_t>(row.item), row.place, LabelBytes("abcd")))
        << static_cast<int>(row.section) << " " << row.item;
    ExpectRecordsAreTheFiles();
  }
}

TEST_F(InsertLabelTest, IfNoItemMarksThePlaceTheLabelGoesToTheStartAndTheItemsBeforeItKeepTheirOffsets) {
  // Three images where a count of 2 would mark the end of the texts.
  EXPECT_EQ(Insert(LabelSection::Text, 2, "new"), built.layout.labels.offset);
  EXPECT_TRUE(Content() == With(1, 2, 0, LabelBytes("new")));
  EXPECT_EQ(document.textRsc[0][0].textLabel, built.layout.textLabels[0]);
}

TEST_F(InsertLabelTest, TheEndOfASectionIsMarkedWhereTheNextSectionsCountIsTheIndex) {
  // Behind the three images stand three sounds, behind the three sounds two models.
  EXPECT_EQ(Insert(LabelSection::Image, 3, "new"), built.layout.labels.offset + built.layout.vags[0].label);
  EXPECT_TRUE(Content() == With(2, 3, built.layout.vags[0].label, LabelBytes("new")));
  Open(built.bytes);
  EXPECT_EQ(Insert(LabelSection::Vag, 3, "new"), built.layout.labels.offset);
}

TEST_F(InsertLabelTest, ANextSectionsCountThatIsTheIndexByChanceOverrulesThePlaceInTheSection) {
  EXPECT_EQ(Insert(LabelSection::Vag, 2, "new"), built.layout.labels.offset + built.layout.gmos[0].label);
  EXPECT_TRUE(Content() == With(3, 2, built.layout.gmos[0].label, LabelBytes("new")));

  Open(built.bytes);
  document.pageCount = 1;
  document.pageRecs.resize(1);
  const std::int32_t page = document.pageRecs[0].recLabel;
  RcoFile file(mod.cCurFile);
  EXPECT_EQ(MakeLabelRoom(LabelSection::Gmo, 1, 4, file, Context()), page);
}

// Documents alone: an empty file behind them.
class LabelRoomTest : public test::EngineFixture {
 protected:
  std::int32_t Room(LabelSection section, int item) {
    mod.cCurFile = folder.Write("screen.rco", Bytes(2000));
    document.labelBase = 1000;
    RcoFile file(mod.cCurFile);
    return MakeLabelRoom(section, Int16(item), 8, file, Context());
  }
  void AddRecord(int kind, std::int32_t label) {
    GenRsc record;
    record.rscKind = kind;
    record.labelOffset = label;
    record.entryPos = 200;
    document.genRsc.push_back(record);
    ++document.genCount;
  }
  void AddTexts(const std::vector<std::int32_t>& labels) {
    document.langCount = 1;
    document.langPos = {600};
    document.textRsc.resize(1);
    for (const std::int32_t label : labels) {
      document.textRsc[0].push_back({label, 0, 0});
      ++document.textCount;
    }
  }
};

TEST_F(LabelRoomTest, AnAppendedTextGoesToItsPlaceWhereTheNumberOfImagesHappensToBeItsIndex) {
  AddTexts({0, 4});
  AddRecord(1, 12);
  AddRecord(1, 20);
  EXPECT_EQ(Room(LabelSection::Text, 2), 12);
  EXPECT_EQ(document.genRsc[0].labelOffset, 20);
  EXPECT_EQ(document.genRsc[1].labelOffset, 28);
  EXPECT_EQ(document.textRsc[0][0].textLabel, 0);
  EXPECT_EQ(document.textRsc[0][1].textLabel, 4);
}

TEST_F(LabelRoomTest, AnEmptyNextSectionLeavesTheMarkToTheFirstRecordOfALaterKind) {
  AddTexts({0, 4});
  AddRecord(2, 12);
  EXPECT_EQ(Room(LabelSection::Text, 2), 12);
  EXPECT_EQ(document.genRsc[0].labelOffset, 20);
  EXPECT_EQ(document.textRsc[0][1].textLabel, 4);
}

TEST_F(LabelRoomTest, AnEmptyNextSectionWithoutARecordOfALaterKindIsFailure9) {
  AddTexts({0, 4});
  EXPECT_EQ(NumberOf([&] { Room(LabelSection::Text, 2); }), 9);
  EXPECT_TRUE(watch.Calls().empty());
}

TEST_F(LabelRoomTest, BehindTheLastPageWithoutAnimationsIsFailure9) {
  document.pageRecs.resize(2);
  document.pageCount = 2;
  EXPECT_EQ(NumberOf([&] { Room(LabelSection::Page, 2); }), 9);
  EXPECT_EQ(NumberOf([&] { Room(LabelSection::Page, 1); }), 0);
}

TEST_F(LabelRoomTest, AbsentDataAreasStayAndTheEventOffsetMovesUnconditionally) {
  document.dataAreas = {100, 1, 0, 2, -1, 3};
  EXPECT_EQ(Room(LabelSection::Anim, 0), 0);
  Expected e{Bytes(2000)};
  e.Set(72, 8);
  CopyInto(e.bytes, 128, test::Longs({108, 1, 0, 2, -1, 3}));
  EXPECT_EQ(Content(), e.bytes);
  EXPECT_EQ(document.dataAreas, (std::array<std::int32_t, 6>{108, 1, 0, 2, -1, 3}));
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "start"}));
}

TEST_F(LabelRoomTest, FieldsOfGeneralEntriesGoToTheFileTogetherOrNotAtAll) {
  AddRecord(1, 4);
  AddRecord(1, 8);
  document.genRsc[1].entryPos = 990;  // its fields pass the start of the labels at 1000
  EXPECT_EQ(NumberOf([&] { Room(LabelSection::Image, 0); }), 9);
  Expected e{Bytes(2000)};
  e.Set(72, 8);
  EXPECT_EQ(Content(), e.bytes);
}

TEST_F(LabelRoomTest, ALabelAtTheStartOfTheFileIsFailure9) {
  mod.cCurFile = folder.Write("screen.rco", Bytes(200));
  RcoFile file(mod.cCurFile);
  EXPECT_EQ(NumberOf([&] { InsertLabel(LabelSection::Anim, 0, "a", file, Context()); }), 9);
  document.labelBase = 200;
  EXPECT_EQ(NumberOf([&] { InsertLabel(LabelSection::Anim, 0, "a", file, Context()); }), 9);
}

}  // namespace
}  // namespace kelvane
