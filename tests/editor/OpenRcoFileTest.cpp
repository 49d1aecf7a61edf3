#include "common/Files.h"
#include "editor/EditorFixture.h"
#include "editor/OpenRcoFile.h"
#include "support/RcoSeeds.h"

namespace kelvane {
namespace {

using test::SmallRco;
using Lines = std::vector<std::string>;

constexpr const char* kInvalid =
    "Invalid RCO - you must use a decompressed (FW 2.60 or lower) RCO!  (Mirrel's Flaxpress should be able to do the "
    "job for you :P)";

// Takes note of what is drawn.
class CountingSurface : public Surface {
 public:
  void Clear() override { ++cleared; }
  bool Blend(const PixelView& /*source*/, std::int32_t /*x*/, std::int32_t /*y*/, std::int32_t /*width*/,
             std::int32_t /*height*/, std::uint8_t /*constantAlpha*/, bool /*perPixelAlpha*/) override {
    return false;
  }
  int cleared = 0;
};

// The lines of all seven lists.
std::vector<Lines> AllLines(const RcoDocument& document) {
  return {document.lst.Lines(),        document.lstText.Lines(), document.cboTextLang.Lines(),
          document.lstPage.Lines(),    document.lstAnim.Lines(), document.lstPageData.Lines(),
          document.lstAnimData.Lines()};
}

// A document as if a file with everything were open and a page selected.
RcoDocument FilledDocument() {
  RcoDocument document;
  for (ListLines* list : {&document.lst, &document.lstText, &document.cboTextLang, &document.lstPage, &document.lstAnim,
                          &document.lstPageData, &document.lstAnimData}) {
    list->Add("old");
    list->Select(0);
  }
  document.entries.picPagePosVisible = true;
  document.entries.cmdPageChangeEnabled = true;
  document.genRsc.resize(3);
  document.genCount = 3;
  document.textRsc.assign(2, std::vector<TextRec>(4));
  document.textCount = 4;
  document.langCount = 2;
  document.pageRecs.resize(5);
  document.pageCount = 5;
  document.animRecs.resize(6);
  document.animCount = 1;
  return document;
}

void ExpectListsAndPageTabCleared(const RcoDocument& document) {
  EXPECT_EQ(AllLines(document), std::vector<Lines>(7));
  EXPECT_FALSE(document.entries.picPagePosVisible);
  EXPECT_FALSE(document.entries.cmdPageChangeEnabled);
}

class OpenRcoFileTest : public test::EditorFixture {
 protected:
  void OpenSmall() {
    editor.OpenRcoFile(folder.Write("small.rco", SmallRco()));
    ASSERT_EQ(editor.Document().lst.Lines(), std::vector<std::string>{"[GIM] ab"});
  }
  void ExpectSmallStillOpen() const {
    EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
    EXPECT_EQ(editor.Document().lst.Lines(), std::vector<std::string>{"[GIM] ab"});
    EXPECT_EQ(editor.Document().genCount, Int16(1));
    EXPECT_EQ(editor.Document().caption, "Kelvane Editor [small.rco] (by Orrelin)");
    EXPECT_TRUE(watch.Running());
  }
};

TEST_F(OpenRcoFileTest, FillsTheDocumentAndStartsTheWatcher) {
  OpenSmall();
  EXPECT_EQ(editor.Document().labelBase, 256);
  EXPECT_EQ(editor.Document().dataAreas, (std::array<std::int32_t, 6>{264, 12, 0, 0, 0, 0}));
  ASSERT_EQ(editor.Document().genRsc.size(), 1U);
  EXPECT_EQ(editor.Document().genRsc[0], (GenRsc{0, 12, 1, 5, 0, -1, 208, 0}));
  EXPECT_EQ(editor.State().cFileDate, DateOfFile(folder / "small.rco"));
  ExpectSmallStillOpen();
}

TEST_F(OpenRcoFileTest, DoesNotTouchTheFile) {
  OpenSmall();
  EXPECT_EQ(ReadWholeFile(folder / "small.rco"), SmallRco());
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"program", "small.rco"}));
}

TEST_F(OpenRcoFileTest, AFileOfFourBytesOrFewerOfZerosIsNotAValidRco) {
  for (std::size_t length = 0; length <= 4; ++length) {
    prompts.ExpectTell("Not a valid RCO!", Icon::Exclamation);
    editor.OpenRcoFile(folder.Write("zeros.rco", Bytes(length)));
    EXPECT_TRUE(editor.State().cCurFile.empty());
  }
}

TEST_F(OpenRcoFileTest, AFileOfTheSignatureAloneReadsAsZerosBehindItAndOpensEmpty) {
  OpenSmall();
  for (const Bytes& content : {Bytes{0, 0x50, 0x52, 0x46}, Bytes{0, 0x50, 0x52, 0x46, 113}}) {
    editor.OpenRcoFile(folder.Write("short.rco", content));
    EXPECT_EQ(editor.State().cCurFile, folder / "short.rco");
    EXPECT_EQ(AllLines(editor.Document()), std::vector<Lines>(7));
    EXPECT_EQ(editor.Document().labelBase, 0);
    EXPECT_EQ(ReadWholeFile(folder / "short.rco"), content);
  }
}

TEST_F(OpenRcoFileTest, AWrongSignatureLeavesTheOpenDocumentAsItWas) {
  OpenSmall();
  Bytes other = SmallRco();
  other[0] = 1;
  prompts.ExpectTell("Not a valid RCO!", Icon::Exclamation);
  editor.OpenRcoFile(folder.Write("other.rco", other));
  ExpectSmallStillOpen();
}

TEST_F(OpenRcoFileTest, EveryRefusalLeavesAllListsOfTheOpenDocument) {
  const Bytes everything = test::SmallRcoOfEverything().Build().bytes;
  editor.OpenRcoFile(folder.Write("all.rco", everything));
  editor.lstPage_Click(0);
  editor.lstAnim_Click(0);
  const std::vector<Lines> before = AllLines(editor.Document());
  for (const Lines& lines : before) {
    EXPECT_FALSE(lines.empty());
  }
  const bool boxes = editor.Document().entries.picPagePosVisible;
  const auto stillThere = [&] {
    EXPECT_EQ(AllLines(editor.Document()), before);
    EXPECT_EQ(editor.Document().entries.picPagePosVisible, boxes);
    EXPECT_EQ(editor.Document().caption, "Kelvane Editor [all.rco] (by Orrelin)");
  };
  Bytes other = everything;
  WriteI32(other, rco::hdrMagic, 1);
  prompts.ExpectTell("Not a valid RCO!", Icon::Exclamation);
  editor.OpenRcoFile(folder.Write("other.rco", other));
  stillThere();
  prompts.ExpectTell(kInvalid, Icon::Exclamation);
  editor.OpenRcoFile(folder.Write("new.rco", SmallRco(150)));
  stillThere();
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
  editor.OpenRcoFile(folder / "none.rco");
  stillThere();
}

TEST_F(OpenRcoFileTest, AnAcceptedFileClearsAllListsAndKeepsTheRecordsOfTablesThatItHasNot) {
  Mod mod;
  RcoDocument document = FilledDocument();
  const Ports ports{.prompts = prompts, .watch = watch, .progress = progress};
  OpenRcoFile(folder.Write("nothing.rco", test::RcoBuilder().Build().bytes), mod, document, ports);
  ExpectListsAndPageTabCleared(document);
  EXPECT_EQ(document.genRsc.size(), 3U);
  EXPECT_EQ(document.genCount, Int16(3));
  EXPECT_EQ(document.pageRecs.size(), 5U);
  EXPECT_EQ(document.pageCount, Int16(5));
  EXPECT_EQ(document.animRecs.size(), 6U);
  EXPECT_EQ(document.animCount, Int16(1));
  EXPECT_TRUE(document.textRsc.empty());
  EXPECT_EQ(document.textCount, Int16(0));
}

TEST_F(OpenRcoFileTest, TablesThatCountNoChildrenAreWalkedWithoutHarm) {
  using test::RcoTable;
  test::RcoBuilder b;
  b.AddImage({.label = "only", .data = {1}});
  for (const RcoTable table : {RcoTable::kText, RcoTable::kVag, RcoTable::kGmo, RcoTable::kPage, RcoTable::kAnim}) {
    b.AddEmptyTable(table);
  }
  b.Options().headerLongs[rco::hdrTextDataLength] = 4;  // or else the text table would not be looked at
  editor.OpenRcoFile(folder.Write("f.rco", b.Build().bytes));
  EXPECT_EQ(AllLines(editor.Document()), (std::vector<Lines>{{"[GIM] only"}, {}, {}, {}, {}, {}, {}}));
  EXPECT_EQ(editor.State().cCurFile, folder / "f.rco");
}

TEST_F(OpenRcoFileTest, NothingButTheOpeningLooksAtTheVersionAndAChangeKeepsIt) {
  for (const std::int32_t version : {113, 112, 0}) {
    test::RcoBuilder b = test::SmallRcoOfEverything();
    const Bytes plain = b.Build().bytes;
    b.Options().version = version;
    editor.OpenRcoFile(folder.Write("v.rco", b.Build().bytes));
    editor.lstText_Click(0);
    editor.cmdTextChange(u"A text of another length");
    Bytes changed = ReadWholeFile(folder / "v.rco");
    EXPECT_EQ(ReadI32(changed, rco::hdrVersion), version);

    editor.OpenRcoFile(folder.Write("113.rco", plain));
    editor.lstText_Click(0);
    editor.cmdTextChange(u"A text of another length");
    WriteI32(changed, rco::hdrVersion, 113);
    EXPECT_EQ(changed, ReadWholeFile(folder / "113.rco"));
  }
}

TEST_F(OpenRcoFileTest, Versions113And112And0OpenAlike) {
  for (const std::int32_t version : {113, 112, 0}) {
    editor.OpenRcoFile(folder.Write("v.rco", SmallRco(version)));
    EXPECT_EQ(editor.Document().lst.Lines(), std::vector<std::string>{"[GIM] ab"});
    editor.OpenRcoFile({});
  }
}

TEST_F(OpenRcoFileTest, AnyOtherVersionIsRefusedAndLeavesTheOpenDocumentAsItWas) {
  OpenSmall();
  for (const std::int32_t version : {1, 111, 114, 143, 145, -1}) {
    prompts.ExpectTell(kInvalid, Icon::Exclamation);
    editor.OpenRcoFile(folder.Write("v.rco", SmallRco(version)));
    ExpectSmallStillOpen();
  }
}

TEST_F(OpenRcoFileTest, AFileThatIsNotThereTakesTheRoadOfAnUnexpectedFailure) {
  OpenSmall();
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
  editor.OpenRcoFile(folder / "none.rco");
  ExpectSmallStillOpen();
  EXPECT_FALSE(FileExists(folder / "none.rco"));
}

TEST_F(OpenRcoFileTest, YesGoesOnWithTheNextStatementWhichThenHasNoFile) {
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::Yes);
  prompts.ExpectUnknownFailure(FailureCode::BadFileNumber, Answer::Yes);
  prompts.ExpectTell("Not a valid RCO!", Icon::Exclamation);
  editor.OpenRcoFile(folder / "none.rco");
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(OpenRcoFileTest, AFailingScanAnsweredNoKeepsWhatWasFilledSoFar) {
  OpenSmall();
  Bytes wild = SmallRco();
  WriteI32(wild, 164 + rco::entryChildren, 40000);
  WriteI32(wild, rco::hdrLabelOffset, 260);
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::No);
  editor.OpenRcoFile(folder.Write("wild.rco", wild));
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
  EXPECT_EQ(editor.Document().labelBase, 260);
  EXPECT_EQ(editor.Document().lst.Count(), 0);
}

TEST_F(OpenRcoFileTest, AFailingScanAnsweredYesOpensWithWhatThereIs) {
  Bytes wild = SmallRco();
  WriteI32(wild, 164 + rco::entryChildren, 40000);
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::Yes);
  editor.OpenRcoFile(folder.Write("wild.rco", wild));
  EXPECT_EQ(editor.State().cCurFile, folder / "wild.rco");
  EXPECT_EQ(editor.Document().lst.Count(), 0);
  EXPECT_TRUE(watch.Running());
}

TEST_F(OpenRcoFileTest, ResetsTheGeneralDisplayAndClearsThePictures) {
  CountingSurface picture;
  CountingSurface preview;
  Mod mod;
  RcoDocument document;
  document.general = {.lblGenItemNo = "x",
                      .lblDim = "x",
                      .lblGenCompr = "x",
                      .lblGenOffsetEntry = "x",
                      .lblGenOffsetData = "x",
                      .lblPreviewFailVisible = true,
                      .shpResWidth = 5,
                      .shpResHeight = 6};
  document.text.txt = u"x";
  const Ports ports{
      .prompts = prompts, .watch = watch, .progress = progress, .picPreview = &picture, .frmPreview = &preview};
  OpenRcoFile(folder.Write("small.rco", SmallRco()), mod, document, ports);
  EXPECT_EQ(document.general.lblDim, "尺寸:未知");
  EXPECT_EQ(document.general.lblGenItemNo + document.general.lblGenCompr + document.general.lblGenOffsetEntry +
                document.general.lblGenOffsetData,
            "");
  EXPECT_FALSE(document.general.lblPreviewFailVisible);
  EXPECT_EQ(document.general.shpResWidth, 0);
  EXPECT_EQ(document.general.shpResHeight, 0);
  EXPECT_EQ(document.text.txt, u"");
  EXPECT_EQ(picture.cleared, 1);
  EXPECT_EQ(preview.cleared, 1);
}

TEST_F(OpenRcoFileTest, AnEmptyPathClearsAllListsAndLeavesTheCounters) {
  Mod mod;
  RcoDocument document = FilledDocument();
  document.general.lblDim = "x";
  const Ports ports{.prompts = prompts, .watch = watch, .progress = progress};
  OpenRcoFile({}, mod, document, ports);
  ExpectListsAndPageTabCleared(document);
  EXPECT_EQ(document.genCount, Int16(3));
  EXPECT_EQ(document.textCount, Int16(4));
  EXPECT_EQ(document.langCount, 2);
  EXPECT_EQ(document.pageCount, Int16(5));
  EXPECT_EQ(document.animCount, Int16(1));
  EXPECT_TRUE(document.genRsc.empty());
  EXPECT_TRUE(document.textRsc.empty());
  EXPECT_EQ(document.general.lblDim, "尺寸:未知");
  EXPECT_EQ(watch.Calls(), std::vector<std::string>{"stop"});
}

TEST_F(OpenRcoFileTest, AnEmptyPathClosesTheDocument) {
  OpenSmall();
  editor.OpenRcoFile({});
  EXPECT_TRUE(editor.State().cCurFile.empty());
  EXPECT_EQ(editor.Document().caption, "Kelvane Editor MOD");
  EXPECT_TRUE(editor.Document().genRsc.empty());
  EXPECT_TRUE(editor.Document().textRsc.empty());
  EXPECT_EQ(editor.Document().genCount, Int16(1));
  EXPECT_EQ(editor.Document().lst.Count(), 0);
  EXPECT_FALSE(watch.Running());
}

}  // namespace
}  // namespace kelvane
