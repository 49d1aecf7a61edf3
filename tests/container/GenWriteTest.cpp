#include <random>

#include "GenWriteFixture.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::Build;
using test::BuiltRco;
using test::Expected;
using test::Filled;
using test::NumberOf;
using test::RcoBuilder;
using test::Screen;
using test::Stereo;

class GenWriteTest : public test::GenWriteFixture {};

TEST_F(GenWriteTest, AddToFileLongLeaves0AndMinus1OnlyIfValidIsAsked) {
  struct Row {
    std::int32_t value;
    std::int32_t delta;
    bool onlyIfValid;
    std::int32_t result;
  };
  for (const Row& row : {Row{5, 7, false, 12}, Row{5, -7, true, -2}, Row{0, 7, false, 7}, Row{0, 7, true, 0},
                         Row{-1, 7, false, 6}, Row{-1, 7, true, -1}, Row{-2, 7, true, 5}}) {
    RcoFile file(folder.Write("f", test::Longs({1, row.value, 2})));
    AddToFileLong(file, 4, row.delta, row.onlyIfValid);
    EXPECT_EQ(file.Image(), test::Longs({1, row.result, 2})) << row.value;
  }
  RcoFile file(folder.Write("f", test::Longs({0x7FFFFFFF})));
  EXPECT_EQ(NumberOf([&] { AddToFileLong(file, 0, 1, false); }), 6);
}

TEST_F(GenWriteTest, WriteFileSliceWritesFromUpToButNotIncludingToAndFailsOnAnEmptySlice) {
  RcoFile file(folder.Write("f", Bytes{9, 9, 9, 9, 9}));
  const Bytes source = {1, 2, 3, 4};
  file.Seek(1);
  WriteFileSlice(file, source, 1, 3);
  EXPECT_EQ(file.Image(), (Bytes{9, 2, 3, 9, 9}));
  EXPECT_EQ(file.Position(), 3);
  EXPECT_EQ(NumberOf([&] { WriteFileSlice(file, source, 2, 2); }), 9);
  EXPECT_EQ(NumberOf([&] { WriteFileSlice(file, source, 3, 2); }), 9);
  EXPECT_EQ(NumberOf([&] { WriteFileSlice(file, source, 0, 5); }), 9);
  EXPECT_EQ(file.Image(), (Bytes{9, 2, 3, 9, 9}));
}

TEST_F(GenWriteTest, AReplacementOfAnyLengthGivesTheFileThatWouldHaveBeenBuiltWithIt) {
  for (const int index : {0, 1, 2, 6, 7}) {
    for (const int size : {1, 2, 3, 4, 9, 17, 18, 20, 21, 22, 23, 24, 25, 39, 40, 41, 44, 45, 1000, 70000}) {
      SCOPED_TRACE(std::to_string(index) + " by " + std::to_string(size));
      Open(Build({}).bytes);
      Screen after;
      const Bytes data = Filled(size, 11);
      (index == 0   ? after.bg
       : index == 1 ? after.icon
       : index == 2 ? after.last
       : index == 6 ? after.model
                    : after.model2) = data;
      EXPECT_TRUE(Replace(index, data));
      EXPECT_TRUE(Content() == Build(after).bytes);
      ExpectRecordsAreTheFiles();
    }
  }
}

TEST_F(GenWriteTest, TheSamePaddedLengthChangesTheSizeFieldAndTheDataAndNoOffset) {
  const BuiltRco before = Build({});
  Open(before.bytes);
  const Bytes data = Filled(23, 12);  // 21 before: both take 24 bytes
  EXPECT_TRUE(Replace(0, data));
  Expected expected{before.bytes};
  expected.Set(before.layout.images[0].entry + 44, 23);
  CopyInto(expected.bytes, before.layout.images[0].data, data);
  EXPECT_TRUE(Content() == expected.bytes);
  ExpectRecordsAreTheFiles();
}

TEST_F(GenWriteTest, AShorterFileBringsAllOffsetsBehindDown) {
  const BuiltRco before = Build({});
  Open(before.bytes);
  EXPECT_TRUE(Replace(1, Bytes{1, 2, 3, 4, 5}));  // 40 before, 8 with its padding now
  Expected expected{before.bytes};
  expected.Set(before.layout.images[1].entry + 44, 5);
  expected.Add(before.layout.images[2].entry + 48, -32);
  expected.Add(132, -32);
  expected.Add(136, -32);
  expected.Add(144, -32);
  const auto at = expected.bytes.begin() + before.layout.images[1].data;
  expected.bytes.erase(at, at + 40);
  expected.Insert(before.layout.images[1].data, {1, 2, 3, 4, 5, 0, 0, 0});
  EXPECT_TRUE(Content() == expected.bytes);
  ExpectRecordsAreTheFiles();
}

TEST_F(GenWriteTest, AreasThatAreAbsentStayAbsent) {
  for (const std::int32_t absent : {0, -1}) {
    const auto build = [&](int size) {
      RcoBuilder b;
      b.AddImage({.label = "a", .format = 0, .data = Filled(size, 1)});
      b.AddGmo({.label = "m", .compression = 1, .data = Filled(8, 2)});
      b.Options().absentOffset = absent;
      return b.Build().bytes;
    };
    mod.cCurFile = folder.Write("screen.rco", build(8));
    RcoFile file(mod.cCurFile);
    file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
    document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
    ASSERT_TRUE(ScanGenRsc(file, document));
    file.Discard();
    EXPECT_TRUE(Replace(0, Filled(30, 1)));
    EXPECT_TRUE(Content() == build(30));
    EXPECT_EQ(document.dataAreas[2], absent);
  }
}

TEST_F(GenWriteTest, WhetherAnAreaIsThereIsToldByItsOldOffset) {
  GenRsc image;
  image.rscKind = rco::kKindImage;
  image.entryPos = 200;
  image.unpackedSize = -1;
  document.genRsc = {image};
  document.genCount = 1;
  document.dataAreas = {300, 40, 8, 5, 33, 6};
  RcoFile file(folder.Write("f", Bytes(300)));
  FileHead head(file, 300);
  ApplyDataDelta(-32, 0, head, document);
  EXPECT_EQ(document.dataAreas, (std::array<std::int32_t, 6>{300, 8, -24, 5, 1, 6}));
  ApplyDataDelta(-32, 0, head, document);
  EXPECT_EQ(document.dataAreas, (std::array<std::int32_t, 6>{300, -24, -24, 5, -31, 6}));
  Expected e{Bytes(300)};
  CopyInto(e.bytes, 128, test::Longs({300, -24, -24, 5, -31, 6}));
  EXPECT_EQ(file.Image(), e.bytes);
}

TEST_F(GenWriteTest, TheLastResourceHasNoTail) {
  const BuiltRco before = Build({});
  ASSERT_EQ(before.layout.gmos[1].data + 12, static_cast<int>(before.bytes.size()));
  Open(before.bytes);
  EXPECT_TRUE(Replace(7, Filled(3, 1)));
  EXPECT_EQ(Content().size(), before.bytes.size() - 8);
  EXPECT_EQ(Content().back(), 0);
}

TEST_F(GenWriteTest, DataThatEndWithTheFileAndNotOnAMultipleOf4HaveNoTailAndTheFileGrowsByItsPadding) {
  const BuiltRco padded = Build({.model2 = Filled(13, 10)});
  Bytes cut = padded.bytes;
  cut.resize(cut.size() - 3);
  Open(cut);
  const Bytes data = Filled(13, 11);
  EXPECT_TRUE(Replace(7, data));
  EXPECT_TRUE(Content() == Build({.model2 = data}).bytes);
  EXPECT_EQ(Content().size(), cut.size() + 3);
}

TEST_F(GenWriteTest, ANegativeSizeRepeatsWhatStandsInFrontAsItWasBefore) {
  const BuiltRco before = Build({});
  Open(before.bytes);
  const std::int32_t pos = before.layout.gmos[1].data;
  document.genRsc[7].dataSize = 100 - pos;
  EXPECT_TRUE(Replace(7, {1, 2, 3, 4}));
  Expected expected{before.bytes};
  expected.Set(before.layout.gmos[1].entry + 44, 4);
  expected.Add(148, 4 - (100 - pos));
  expected.bytes.resize(static_cast<std::size_t>(pos));
  Append(expected.bytes, Bytes{1, 2, 3, 4});
  Append(expected.bytes, ByteView(before.bytes).subspan(100));
  EXPECT_TRUE(Content() == expected.bytes);
}

TEST_F(GenWriteTest, WithNoCompressionGimsAndModelsGetCode0AndOtherImagesKeepTheirs) {
  mod.cNoCompression = true;
  Open(Build({}).bytes);
  EXPECT_TRUE(Replace(0, Filled(20, 1)));
  EXPECT_TRUE(Replace(6, Filled(20, 2)));
  EXPECT_TRUE(Replace(1, Filled(20, 3)));
  EXPECT_EQ(document.genRsc[0].rscCompression, Int16(0));
  EXPECT_TRUE(Content() == Build({.bg = Filled(20, 1),
                                  .icon = Filled(20, 3),
                                  .model = Filled(20, 2),
                                  .bgCompression = 0,
                                  .modelCompression = 0})
                               .bytes);
  ExpectRecordsAreTheFiles();
}

TEST_F(GenWriteTest, WithCompressionGimsAndModelsGetCode1) {
  Open(Build({.bgCompression = 0, .modelCompression = 2}).bytes);
  EXPECT_TRUE(Replace(0, Filled(20, 1)));
  EXPECT_TRUE(Replace(6, Filled(20, 2)));
  EXPECT_TRUE(Content() == Build({.bg = Filled(20, 1), .model = Filled(20, 2)}).bytes);
  ExpectRecordsAreTheFiles();
}

TEST_F(GenWriteTest, TheUnpackedSizeOfTheRecordGoesToTheEntryThatHasTheField) {
  Open(Build({}).bytes);
  document.genRsc[0].unpackedSize = 12345;
  EXPECT_TRUE(Replace(0, Filled(20, 1)));
  EXPECT_TRUE(Content() == Build({.bg = Filled(20, 1), .bgUnpacked = 12345}).bytes);
}

TEST_F(GenWriteTest, AMissingOrEmptyNewFileTouchesNothingAndTheWatcherKeepsRunning) {
  Open(Build({}).bytes);
  watch.Start();
  const auto records = document.genRsc;
  EXPECT_FALSE(ReplaceGenRscData(folder / "gone", 0, Context()));
  EXPECT_FALSE(Replace(0, {}));
  EXPECT_TRUE(Content() == original);
  EXPECT_TRUE(document.genRsc == records);
  EXPECT_FALSE(FileExists(folder / "screen.rco.bak"));
  EXPECT_EQ(watch.Calls(), std::vector<std::string>{"start"});
}

TEST_F(GenWriteTest, TheBackupIsMadeOnceAndTheWatcherStoppedAndStartedAroundEachReplacement) {
  Open(Build({}).bytes);
  EXPECT_TRUE(Replace(0, Filled(5, 1)));
  EXPECT_TRUE(Replace(0, Filled(50, 2)));
  EXPECT_TRUE(ReadWholeFile(folder / "screen.rco.bak") == original);
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "start", "stop", "start"}));
  EXPECT_EQ(mod.cFileDate, DateOfFile(mod.cCurFile));
}

TEST_F(GenWriteTest, ManyReplacementsOnOneOpenFileGiveTheFileAndTheRecordsOfOneAfterTheOther) {
  std::mt19937 random(20);
  for (int round = 0; round < 25; ++round) {
    Open(Build({}).bytes);
    std::filesystem::remove(folder / "screen.rco.bak");
    const auto twin = folder.Write("twin.rco", original);
    RcoDocument twinDocument = document;
    Mod twinMod = mod;
    twinMod.cCurFile = twin;
    test::ScriptedWatch batchWatch;
    test::ScriptedWatch twinWatch;
    GenReplacer replacer({mod, document, prompts, batchWatch});
    for (int step = 0; step < 12; ++step) {
      const int index = static_cast<int>(random() % 9);  // 8: no record
      const Bytes left = Filled(static_cast<int>(random() % 90) + 1, step);
      const Bytes right = Filled(static_cast<int>(random() % 90) + 1, step + 1);
      const bool stereo = random() % 2 == 0;
      const bool missing = random() % 8 == 0;
      SetSound(stereo ? 2 : 1, left, right);
      twinMod.vagChannels = mod.vagChannels;
      twinMod.vagSize1 = mod.vagSize1;
      twinMod.vagSize2 = mod.vagSize2;
      mod.cNoCompression = twinMod.cNoCompression = random() % 2 == 0;
      const auto path = folder.Write("new.dat", stereo ? Stereo(left, right) : left);
      if (missing) {
        std::filesystem::remove(path);
      }
      if (!missing && index == 8) {
        prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
        prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
      }
      const bool done = replacer.Replace(path, Int16(index));
      EXPECT_EQ(done, !missing && index != 8);
      EXPECT_EQ(ReplaceGenRscData(path, Int16(index), {twinMod, twinDocument, prompts, twinWatch}), done);
    }
    EXPECT_TRUE(Content() == original);  // not before Finish
    EXPECT_TRUE(replacer.Finish());
    EXPECT_TRUE(Content() == ReadWholeFile(twin)) << round;
    EXPECT_TRUE(document.genRsc == twinDocument.genRsc);
    EXPECT_EQ(document.dataAreas, twinDocument.dataAreas);
    EXPECT_EQ(batchWatch.Running(), twinWatch.Running());
    EXPECT_TRUE(ReadWholeFile(folder / "screen.rco.bak") == original);
    ExpectRecordsAreTheFiles();
  }
}

TEST_F(GenWriteTest, DataAtHandAreStoredAsThoseOfAFileAndNoBytesTouchNothing) {
  Open(Build({}).bytes);
  GenReplacer replacer(Context());
  EXPECT_FALSE(replacer.Replace(Bytes(), 0));
  EXPECT_TRUE(watch.Calls().empty());
  EXPECT_TRUE(replacer.Replace(Filled(50, 1), 0));
  EXPECT_TRUE(replacer.Finish());
  EXPECT_TRUE(Content() == Build({.bg = Filled(50, 1)}).bytes);
  ExpectRecordsAreTheFiles();
}

TEST_F(GenWriteTest, AnEntryThatCrossesTheEndOfTheHeadIsFailure9WithTheFieldsInFrontOfItWritten) {
  Bytes head(100);
  GenRsc record;
  record.labelOffset = 1;
  record.dataSize = 2;
  record.dataOffset = 3;
  record.unpackedSize = 4;
  record.rscKind = 1;
  record.entryPos = 8;
  RcoDocument one;
  one.genRsc = {record};
  one.genCount = 1;
  for (const auto& [end, fields] : {std::pair{60, 4}, {59, 3}, {56, 3}, {55, 2}, {52, 2}, {51, 1}, {12, 1}, {11, 0}}) {
    RcoFile file(folder.Write("head", head));
    FileHead patched(file, end);
    EXPECT_EQ(NumberOf([&] { WriteGenRscFields(patched, one); }), fields == 4 ? 0 : 9) << end;
    Expected expected{head};
    const std::array<int, 4> places = {8, 48, 52, 56};
    for (int i = 0; i < fields; ++i) {
      expected.Set(places[static_cast<std::size_t>(i)], i + 1);
    }
    EXPECT_EQ(file.Image(), expected.bytes) << end;
    // And so it is where they are there already.
    EXPECT_EQ(NumberOf([&] { WriteGenRscFields(patched, one); }), fields == 4 ? 0 : 9) << end;
  }
}

TEST_F(GenWriteTest, FinishWithoutAReplacementWritesNothing) {
  Open(Build({}).bytes);
  GenReplacer replacer(Context());
  EXPECT_TRUE(replacer.Finish());
  EXPECT_FALSE(replacer.Replace(folder / "gone", 0));
  EXPECT_TRUE(replacer.Finish());
  EXPECT_TRUE(watch.Calls().empty());
}

}  // namespace
}  // namespace kelvane
