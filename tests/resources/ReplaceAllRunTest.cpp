// A run of cmdReplaceAll as a whole: names of files, failures, and when the open file is read and written.
#include <cstdint>
#include <functional>
#include <limits>

#include "resources/Extraction.h"
#include "resources/ReplaceAllFixture.h"
#include "resources/TestPicture.h"
#include "support/Failures.h"
#include "support/PlainBmp.h"
#include "support/PlainPorts.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Names = std::vector<std::string>;

// Looks at something at every step.
class AtEachStep : public Progress {
 public:
  explicit AtEachStep(std::function<void(int)> look) : look_(std::move(look)) {}
  void Show(int done, int) override { look_(done); }

 private:
  std::function<void(int)> look_;
};

class ReplaceAllRunTest : public ReplaceAllFixture {
 protected:
  int FailureOfReplaceAll() {
    prompts.ExpectFolder("选择输出目录", out.Path());
    return NumberOf([&] { CmdReplaceAll(Context()); });
  }
};

// Names.

TEST_F(ReplaceAllRunTest, AnExportFolderGivesGimsFromTheirBitmapsAndModelsFromTheirDat) {
  Screen exported;
  const TestPicture picture(200);
  exported.images = {
      {.label = "image", .compression = 1, .data = DeflateWrapped(picture.IndexedGim()), .unpackedSize = 1}};
  exported.images.push_back({.label = "other", .format = 0, .data = SomeBytes(30)});
  exported.gmos = {{.label = "model", .compression = 1, .data = DeflateWrapped(Bytes(300, 5)), .unpackedSize = 300},
                   {.label = "end", .data = SomeBytes(20)}};
  OpenScreen(exported);
  prompts.ExpectFolder("选择输出目录", out.Path());
  prompts.ExpectTell("完成", Icon::Information);
  CmdExtractAll(mod, document, prompts, progress);
  ASSERT_EQ(out.Names(), (Names{"end.dat", "end.gim", "image.32bit.bmp", "image.bmp", "image.dat", "image.gim",
                                "model.dat", "model.gim", "other.png"}));
  // What these hold doesn't matter, but model.dat does.
  out.Write("image.gim", SomeBytes(500));
  out.Write("image.32bit.bmp", SomeBytes(500));
  out.Write("model.gim", SomeBytes(500));
  out.Write("model.dat", SomeBytes(41));
  ReplaceAll();
  SetGim(0, picture.IndexedGim());
  screen.gmos[0].data = SomeBytes(41);
  screen.gmos[1].compression = 1;  // by the replacement with its own data
  ExpectFileOf(screen);
}

TEST_F(ReplaceAllRunTest, WhatWasTakenOutGoesBackUnchangedAndASecondTimeToo) {
  Screen exported;
  exported.images = {{.label = "gim",
                      .compression = 1,
                      .data = DeflateWrapped(TestPicture(90).IndexedGim()),
                      .unpackedSize = LengthOf(TestPicture(90).IndexedGim())},
                     {.label = "png", .format = 0, .data = SomeBytes(33)}};
  exported.vags = {{.label = "mono", .channel1 = SomeBytes(17)},
                   {.label = "stereo", .channel1 = SomeBytes(18), .channel2 = SomeBytes(19)}};
  exported.gmos = {{.label = "model", .compression = 1, .data = DeflateWrapped(Bytes(300, 5))}};
  OpenScreen(exported);
  prompts.ExpectFolder("选择输出目录", out.Path());
  prompts.ExpectTell("完成", Icon::Information);
  CmdExtractAll(mod, document, prompts, progress);
  for (int round = 0; round < 2; ++round) {
    ReplaceAll();
    EXPECT_TRUE(Content() == built.bytes);
    ExpectRecordsAreTheFiles();
  }
}

TEST_F(ReplaceAllRunTest, LabelsThatWouldLeadOutOfTheFolderFindTheFilesThatTheyWereWrittenTo) {
  Screen odd;
  const Names labels = {"../up", "/root", "a/b", "..", ".", ""};
  const Names files = {".._up.png", "_root.png", "a_b.png", "__.png", "_.png", ".png"};
  for (std::size_t i = 0; i < labels.size(); ++i) {
    odd.images.push_back({.label = labels[i], .format = 0, .data = SomeBytes(4)});
  }
  OpenScreen(odd);
  fs::create_directory(out / "in");
  out.Write("up.png", SomeBytes(99));
  for (std::size_t i = 0; i < files.size(); ++i) {
    out.Write("in/" + files[i], SomeBytes(10 + i));
    odd.images[i].data = SomeBytes(10 + i);
  }
  prompts.ExpectFolder("选择输出目录", out / "in");
  prompts.ExpectTell("完成", Icon::Information);
  CmdReplaceAll(Context());
  ExpectFileOf(odd);
}

TEST_F(ReplaceAllRunTest, ALabelBeyondAsciiNamesAFileInUtf8) {
  Screen odd;
  odd.images = {{.label = "caf\xE9", .format = 0, .data = SomeBytes(4)}};
  OpenScreen(odd);
  out.Write("café.png", SomeBytes(10));
  ReplaceAll();
  odd.images[0].data = SomeBytes(10);
  ExpectFileOf(odd);
}

TEST_F(ReplaceAllRunTest, TwoRowsWithTheSameLabelTakeTheSameFile) {
  Screen twins;
  twins.images = {{.label = "twin", .format = 0, .data = SomeBytes(4)},
                  {.label = "twin", .format = 0, .data = SomeBytes(5)}};
  OpenScreen(twins);
  out.Write("twin.png", SomeBytes(10));
  ReplaceAll();
  twins.images[0].data = twins.images[1].data = SomeBytes(10);
  ExpectFileOf(twins);
}

TEST_F(ReplaceAllRunTest, AClosedDocumentHasNothingToReplace) {
  out.Write("png.png", SomeBytes(50));
  document.lst.Clear();
  ReplaceAll();
  EXPECT_TRUE(Content() == built.bytes);
  EXPECT_EQ(progress.Shown(), (std::vector<std::pair<int, int>>{{0, 0}}));
}

// Temporary files.

TEST_F(ReplaceAllRunTest, ItsTemporaryFilesAreGoneAndOthersStay) {
  for (const char* name : {"temp.gim", "temp.dat", "temp.vag", "temp.bmp", "temp2.dat"}) {
    program.Write(name, Bytes(100));
  }
  out.Write("gim.bmp", TestPicture(20).Bmp8());
  out.Write("plain.gim", Bytes(100, 1));
  out.Write("mono.ch1.vag", SomeBytes(5));
  out.Write("mono.ch2.vag", SomeBytes(5));
  ReplaceAll();
  EXPECT_EQ(program.Names(), (Names{"temp.bmp", "temp2.dat"}));
}

TEST_F(ReplaceAllRunTest, WhereTempDatCannotBeMadeNothingThatNeedsItIsReplaced) {
  fs::create_directory(program / "temp.dat");
  for (const char* name : {"gim.gim", "plain.gim", "model.omg"}) {
    out.Write(name, Bytes(300, 5));
  }
  out.Write("png.png", SomeBytes(50));
  ReplaceAll();
  screen.images[kPng].data = SomeBytes(50);
  screen.images[kGim].unpackedSize = 300;  // the sizes were taken over
  screen.images[kPlainGim].unpackedSize = 300;
  // ... behind the image that was replaced, so that they aren't in the file.
  EXPECT_EQ(document.genRsc[kGim].unpackedSize, 300);
  screen.images[kGim].unpackedSize = 1006;
  screen.images[kPlainGim].unpackedSize = 1007;
  EXPECT_TRUE(Content() == screen.Built());
}

TEST_F(ReplaceAllRunTest, WhereTempGimCannotBeMadeTheRunEndsWithAFailure) {
  fs::create_directory(program / "temp.gim");
  out.Write("png.png", SomeBytes(50));
  out.Write("gim.bmp", TestPicture(20).Bmp8());
  out.Write("model.dat", SomeBytes(60));
  EXPECT_EQ(FailureOfReplaceAll(), 75);
  screen.images[kPng].data = SomeBytes(50);
  ExpectFileOf(screen);
}

// Failures.

TEST_F(ReplaceAllRunTest, AFailureWithoutAHandlerEndsTheRunWithWhatWasReplacedBeforeIt) {
  out.Write("png.png", SomeBytes(50));
  out.Write("mono.ch1.vag", SomeBytes(5));
  out.Write("mono.ch2.vag", {});
  out.Write("model.dat", SomeBytes(60));
  EXPECT_EQ(FailureOfReplaceAll(), 9);
  screen.images[kPng].data = SomeBytes(50);
  ExpectFileOf(screen);
  EXPECT_EQ(refreshed, 0);
  EXPECT_EQ(program.Names(), Names());
  EXPECT_TRUE(watch.Running());
  EXPECT_EQ(progress.Shown().back(), (std::pair{int{kMono}, 12}));
}

TEST_F(ReplaceAllRunTest, AFailureInFrontOfAnyReplacementLeavesTheFileUntouched) {
  out.Write("gim.bmp", BuildBmp({.width = 40000, .height = 1, .bits = 8}));
  EXPECT_EQ(FailureOfReplaceAll(), 6);
  ExpectNothingChanged();
}

TEST_F(ReplaceAllRunTest, AReplacementGivenUpIsLeftAndTheNextOnesFollow) {
  // Record kModel lies where the data of the sounds are: in front of the data of the models only.
  const std::int32_t place = built.layout.vags[1].data;
  document.genRsc[kModel].entryPos = place;
  out.Write("png.png", SomeBytes(50));
  out.Write("mono.vag", SomeBytes(60));
  out.Write("lastmodel.dat", SomeBytes(70));
  prompts.ExpectFolder("选择输出目录", out.Path());
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  prompts.ExpectTell("完成", Icon::Information);
  CmdReplaceAll(Context());
  // The images' and the sounds' data are as they were; the last model is the one that was given.
  const Bytes content = Content();
  const GeneralPlace& model = built.layout.gmos[1];
  EXPECT_EQ(Bytes(content.begin(), content.begin() + 20), Bytes(built.bytes.begin(), built.bytes.begin() + 20));
  EXPECT_EQ(ReadI32(content, built.layout.images[kPng].entry + 44), 21);
  EXPECT_EQ(ReadI32(content, built.layout.vags[0].entry + 44), 29);
  EXPECT_EQ(ReadI32(content, model.entry + 44), 70);
  EXPECT_EQ(Bytes(content.begin() + model.data, content.begin() + model.data + 70), SomeBytes(70));
  EXPECT_TRUE(watch.Running());
  EXPECT_EQ(refreshed, 1);
}

TEST_F(ReplaceAllRunTest, WhereTheLastReplacementIsGivenUpTheWatcherStaysStopped) {
  // The last model's entry is said to lie where nothing in front of the data can be.
  out.Write("png.png", SomeBytes(50));
  prompts.ExpectFolder("选择输出目录", out.Path());
  document.genRsc[kLastModel].entryPos = 1000000;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  prompts.ExpectTell("完成", Icon::Information);
  CmdReplaceAll(Context());
  EXPECT_TRUE(Content() == built.bytes);
  EXPECT_FALSE(watch.Running());
  EXPECT_TRUE(ReadWholeFile(Backup()) == built.bytes);
}

TEST_F(ReplaceAllRunTest, WhereTheApplicationEndsUnderAQuestionTheFileHoldsWhatWasReplacedBeforeIt) {
  // The stereo sound's second place for its offset can't move, which shows when other fields are patched already.
  const std::int32_t stuck = built.layout.vags[1].entry + 56;
  WriteI32(built.bytes, stuck, std::numeric_limits<std::int32_t>::max());
  WriteWholeFile(mod.cCurFile, built.bytes);
  out.Write("png.png", SomeBytes(50));
  out.Write("mono.vag", SomeBytes(60));
  out.Write("model.dat", SomeBytes(70));
  struct ApplicationEnds {};
  FolderPrompts ending(out.Path(), [](const Message&) -> Answer { throw ApplicationEnds(); });
  EXPECT_THROW(CmdReplaceAll(
                   {.write = {mod, document, ending, watch}, .progress = progress, .refresh = [this] { ++refreshed; }}),
               ApplicationEnds);
  screen.images[kPng].data = SomeBytes(50);
  Bytes expected = screen.Built();
  WriteI32(expected, stuck, std::numeric_limits<std::int32_t>::max());
  EXPECT_TRUE(Content() == expected);
  ExpectRecordsAreTheFiles();
  EXPECT_EQ(refreshed, 0);
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(ReplaceAllRunTest, WhereTheFileCannotBeWrittenTheQuestionComesOnceAndNothingIsReplaced) {
  out.Write("png.png", SomeBytes(50));
  out.Write("model.dat", SomeBytes(60));
  fs::create_directory(home / "sub");
  mod.cCurFile = home / "sub/page.rco";
  WriteWholeFile(mod.cCurFile, built.bytes);
  AtEachStep steps([&](int done) {
    if (done == kLastModel) {
      fs::rename(home / "sub", home / "away");
    }
  });
  const std::vector<GenRsc> records = document.genRsc;
  prompts.ExpectFolder("选择输出目录", out.Path());
  prompts.ExpectUnknownFailure(FailureCode::PathNotFound, Answer::No);
  prompts.ExpectTell("完成", Icon::Information);
  CmdReplaceAll({.write = Writing(), .progress = steps, .refresh = [] {}});
  EXPECT_TRUE(ReadWholeFile(home / "away/page.rco") == built.bytes);
  EXPECT_TRUE(document.genRsc == records);
}

// The open file.

TEST_F(ReplaceAllRunTest, TheOpenFileIsReadAndWrittenOnceForAllAndTheBackupMadeBeforeTheFirst) {
  const Screen before = screen;
  for (const char* label : {"png", "jpg"}) {
    out.Write(label + std::string(".") + label, SomeBytes(50));
  }
  out.Write("model.dat", SomeBytes(60));
  AtEachStep steps([&](int done) {
    // Nobody sees a file that is half way; and once it was read it doesn't matter what becomes of it.
    if (done < kTif) {
      EXPECT_TRUE(Content() == built.bytes) << done;
      EXPECT_EQ(FileExists(Backup()), done > 0);
    } else {
      WriteWholeFile(mod.cCurFile, Bytes(3));
    }
  });
  prompts.ExpectFolder("选择输出目录", out.Path());
  prompts.ExpectTell("完成", Icon::Information);
  CmdReplaceAll({.write = Writing(), .progress = steps, .refresh = [] {}});
  screen.images[kPng].data = screen.images[kJpg].data = SomeBytes(50);
  screen.gmos[0].data = SomeBytes(60);
  ExpectFileOf(screen);
  EXPECT_TRUE(ReadWholeFile(Backup()) == before.Built());
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "stop", "stop", "start"}));
  EXPECT_EQ(mod.cFileDate, DateOfFile(mod.cCurFile));
}

}  // namespace
}  // namespace kelvane
