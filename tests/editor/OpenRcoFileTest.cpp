#include "common/Files.h"
#include "editor/EditorFixture.h"
#include "editor/OpenRcoFile.h"

namespace kelvane {
namespace {

using test::SmallRco;

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

TEST_F(OpenRcoFileTest, AWrongSignatureLeavesTheOpenDocumentAsItWas) {
  OpenSmall();
  Bytes other = SmallRco();
  other[0] = 1;
  prompts.ExpectTell("Not a valid RCO!", Icon::Exclamation);
  editor.OpenRcoFile(folder.Write("other.rco", other));
  ExpectSmallStillOpen();
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
