#include <random>

#include "EngineFixture.h"
#include "container/GenWrite.h"
#include "support/ChildProcess.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::BuiltRco;
using test::Expected;
using test::Filled;
using test::NumberOf;
using test::RcoBuilder;

// What differs from file to file.
struct Screen {
  Bytes bg = Filled(21, 1);    // a GIM, record 0
  Bytes icon = Filled(40, 2);  // a PNG, record 1
  Bytes last = Filled(18, 3);  // a GIM, record 2
  Bytes left = Filled(32, 4);  // record 3, stereo
  std::optional<Bytes> right = Filled(17, 5);
  Bytes mono = Filled(16, 6);   // record 4
  Bytes left2 = Filled(15, 7);  // record 5, stereo
  Bytes right2 = Filled(24, 8);
  Bytes model = Filled(9, 9);     // record 6
  Bytes model2 = Filled(12, 10);  // record 7
  std::uint16_t bgCompression = 1;
  std::uint16_t modelCompression = 1;
  std::uint16_t model2Compression = 1;
  std::int32_t bgUnpacked = 400;
  std::int32_t soundEntryLength = 0;
};

BuiltRco Build(const Screen& s) {
  RcoBuilder b;
  b.AddImage({.label = "bg", .compression = s.bgCompression, .data = s.bg, .unpackedSize = s.bgUnpacked});
  b.AddImage({.label = "icon", .format = 0, .data = s.icon});
  b.AddImage({.label = "last", .compression = 1, .data = s.last, .unpackedSize = 300});
  b.AddVag({.label = "v1", .channel1 = s.left, .channel2 = s.right, .entryLength = s.soundEntryLength});
  b.AddVag({.label = "v2", .channel1 = s.mono, .monoChannel2Offset = 77});
  b.AddVag({.label = "v3", .channel1 = s.left2, .channel2 = s.right2});
  b.AddGmo({.label = "m1", .compression = s.modelCompression, .data = s.model, .unpackedSize = 99});
  b.AddGmo({.label = "m2", .compression = s.model2Compression, .data = s.model2, .unpackedSize = 98});
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "msg", .strings = {u"はい", u"Yes"}});
  b.AddPage({.label = "page", .body = {0x111, test::ImageRef("bg")}});
  b.AddAnimation({.label = "anim", .body = {7}});
  b.AddEvent("event:/go");
  return b.Build();
}

Bytes Stereo(Bytes left, const Bytes& right) {
  left.resize((left.size() + 3) / 4 * 4);
  Append(left, right);
  return left;
}

class GenWriteTest : public test::EngineFixture {
 protected:
  bool Replace(int index, const Bytes& data) {
    return ReplaceGenRscData(folder.Write("new.dat", data), Int16(index), Context());
  }

  void SetSound(int channels, const Bytes& left, const Bytes& right) {
    mod.vagChannels = Int16(channels);
    mod.vagSize1 = static_cast<std::int32_t>(left.size());
    mod.vagSize2 = static_cast<std::int32_t>(right.size());
  }
};

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

TEST_F(GenWriteTest, ChannelsOfALongSoundAndOfTheSoundsBehindFollow) {
  for (const int size : {1, 15, 17, 32, 33, 400}) {
    Open(Build({}).bytes);
    Screen after;
    after.left = Filled(size, 1);
    after.right = Filled(size + 5, 2);
    SetSound(2, after.left, *after.right);
    EXPECT_TRUE(Replace(3, Stereo(after.left, *after.right)));
    EXPECT_TRUE(Content() == Build(after).bytes) << size;
    ExpectRecordsAreTheFiles();
  }
}

TEST_F(GenWriteTest, AMonoSoundGetsChannel2Size0AndKeepsChannel2Offset) {
  const BuiltRco before = Build({});
  Open(before.bytes);
  const Bytes data = Filled(33, 1);
  SetSound(1, data, {});
  EXPECT_TRUE(Replace(3, data));
  Expected expected{Build({.left = data, .right = std::nullopt}).bytes};
  expected.Set(before.layout.vags[0].entry + 64, before.layout.vags[0].channel2Offset);
  EXPECT_TRUE(Content() == expected.bytes);
  ExpectRecordsAreTheFiles();
}

TEST_F(GenWriteTest, AMonoSoundBecomesStereo) {
  const BuiltRco before = Build({});
  Open(before.bytes);
  const Bytes left = Filled(30, 1);
  const Bytes right = Filled(7, 2);
  SetSound(2, left, right);
  EXPECT_TRUE(Replace(4, Stereo(left, right)));  // 16 bytes before, 39 and one of padding now
  const test::GeneralPlace& sound = before.layout.vags[1];
  const test::GeneralPlace& next = before.layout.vags[2];
  Expected expected{before.bytes};
  expected.SetShort(sound.entry + 42, 2);
  expected.Set(sound.entry + 44, 39);
  expected.Set(sound.entry + 52, 30);
  expected.Set(sound.entry + 60, 7);
  expected.Set(sound.entry + 64, sound.dataOffset + 32);
  for (const int field : {48, 56, 64}) {
    expected.Add(next.entry + field, 24);
  }
  expected.Add(140, 24);
  expected.Add(144, 24);
  const auto at = expected.bytes.begin() + sound.data;
  expected.bytes.erase(at, at + 16);
  Bytes data = Stereo(left, right);
  data.resize(40);
  expected.Insert(sound.data, data);
  EXPECT_TRUE(Content() == expected.bytes);
  ExpectRecordsAreTheFiles();
}

TEST_F(GenWriteTest, AShortSoundKeepsItsChannelFieldsAndThoseOfTheSoundsBehind) {
  for (const int length : {52, 64}) {
    const BuiltRco before = Build({.soundEntryLength = length});
    Open(before.bytes);
    SetSound(2, Filled(48, 1), Filled(12, 2));
    const Bytes data = Filled(60, 3);  // 49 before: 52 with the padding
    EXPECT_TRUE(Replace(3, data));
    Expected expected{before.bytes};
    expected.Set(before.layout.vags[0].entry + 44, 60);
    expected.Add(before.layout.vags[1].entry + 48, 8);
    expected.Add(before.layout.vags[2].entry + 48, 8);
    expected.Add(140, 8);
    expected.Add(144, 8);
    const auto at = expected.bytes.begin() + before.layout.vags[0].data;
    expected.bytes.erase(at, at + 52);
    expected.Insert(before.layout.vags[0].data, data);
    EXPECT_TRUE(Content() == expected.bytes) << length;
  }
}

TEST_F(GenWriteTest, ADistanceWhoseLowByteIs0Or65CountsAsLong) {
  for (const int length : {68, 256, 512}) {
    Open(Build({.soundEntryLength = length}).bytes);
    Screen after{.left = Filled(12, 1), .right = Filled(8, 2), .soundEntryLength = length};
    SetSound(2, after.left, *after.right);
    EXPECT_TRUE(Replace(3, Stereo(after.left, *after.right)));
    EXPECT_TRUE(Content() == Build(after).bytes) << length;
  }
  Bytes head(64);
  GenRsc record;
  record.entryPos = 8;
  for (const auto& [low, isLong] :
       {std::pair{0, true}, {1, false}, {52, false}, {64, false}, {65, true}, {255, true}}) {
    head[24] = static_cast<std::uint8_t>(low);
    RcoFile file(folder.Write("head", head));
    EXPECT_EQ(IsLongEntry(FileHead(file, 64), record), isLong) << low;
  }
}

TEST_F(GenWriteTest, TheLastSoundOfItsTableCountsAsLong) {
  Open(Build({}).bytes);
  Screen after;
  after.left2 = Filled(40, 1);
  after.right2 = Filled(41, 2);
  SetSound(2, after.left2, after.right2);
  EXPECT_TRUE(Replace(5, Stereo(after.left2, after.right2)));
  EXPECT_TRUE(Content() == Build(after).bytes);
  ExpectRecordsAreTheFiles();
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

TEST_F(GenWriteTest, AReplacementGivenUpWithNoLeavesFileAndRecordsAndTheWatcherStopped) {
  Open(Build({}).bytes);
  document.genRsc[4].entryPos = 1000000;  // outside of what stands in front of the data
  const auto records = document.genRsc;
  const auto areas = document.dataAreas;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  EXPECT_FALSE(Replace(0, Filled(50, 1)));
  EXPECT_TRUE(Content() == original);
  EXPECT_TRUE(document.genRsc == records);
  EXPECT_EQ(document.dataAreas, areas);
  EXPECT_EQ(watch.Calls(), std::vector<std::string>{"stop"});
  EXPECT_TRUE(ReadWholeFile(folder / "screen.rco.bak") == original);
}

TEST_F(GenWriteTest, AReplacementGoneOnWithYesKeepsWhatTheFailingStepHadDone) {
  const BuiltRco before = Build({});
  Open(before.bytes);
  document.genRsc[4].entryPos = 1000000;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::Yes);
  const Bytes data = Filled(48, 1);  // 24 with the padding before
  EXPECT_TRUE(Replace(0, data));
  // The fields of records 0 to 3; neither those of the records behind nor the data areas.
  Expected expected{before.bytes};
  expected.Set(before.layout.images[0].entry + 44, 48);
  expected.Add(before.layout.images[1].entry + 48, 24);
  expected.Add(before.layout.images[2].entry + 48, 24);
  const auto at = expected.bytes.begin() + before.layout.images[0].data;
  expected.bytes.erase(at, at + 24);
  expected.Insert(before.layout.images[0].data, data);
  EXPECT_TRUE(Content() == expected.bytes);
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "start"}));
}

TEST_F(GenWriteTest, AnIndexWithoutARecordIsFailure9) {
  Open(Build({}).bytes);
  for (const int index : {-1, 8}) {
    prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
    EXPECT_FALSE(Replace(index, Filled(8, 1)));
  }
  EXPECT_TRUE(Content() == original);
}

TEST_F(GenWriteTest, WhereTheFileCantBeWrittenTheRecordsAreThoseOfTheOldFile) {
  std::filesystem::create_directory(folder / "a");
  const Bytes content = Build({}).bytes;
  mod.cCurFile = folder / "a" / "screen.rco";
  WriteWholeFile(mod.cCurFile, content);
  document = test::Scanned(mod.cCurFile);
  const auto records = document.genRsc;
  GenReplacer replacer(Context());
  EXPECT_TRUE(replacer.Replace(folder.Write("new.dat", Filled(50, 1)), 0));
  EXPECT_TRUE(replacer.Replace(folder.Write("new.dat", Filled(60, 1)), 1));
  EXPECT_FALSE(document.genRsc == records);
  std::filesystem::rename(folder / "a", folder / "b");
  prompts.ExpectUnknownFailure(FailureCode::PathNotFound, Answer::No);
  EXPECT_FALSE(replacer.Finish());
  EXPECT_TRUE(document.genRsc == records);
  EXPECT_FALSE(watch.Running());
  EXPECT_TRUE(ReadWholeFile(folder / "b" / "screen.rco") == content);
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

TEST_F(GenWriteTest, FinishWithoutAReplacementWritesNothing) {
  Open(Build({}).bytes);
  GenReplacer replacer(Context());
  EXPECT_TRUE(replacer.Finish());
  EXPECT_FALSE(replacer.Replace(folder / "gone", 0));
  EXPECT_TRUE(replacer.Finish());
  EXPECT_TRUE(watch.Calls().empty());
}

TEST_F(GenWriteTest, KilledAtAnySystemCallTheFileIsTheOldOrTheNewOne) {
  const Bytes before = Build({}).bytes;
  const Bytes after = Build({.bg = Filled(5000, 1)}).bytes;
  std::filesystem::create_directory(folder / "files");
  const auto path = folder / "files/screen.rco";
  const auto backup = folder / "files/screen.rco.bak";
  const auto data = folder.Write("new.dat", Filled(5000, 1));
  bool sawOld = false;
  bool sawNew = false;
  const int calls = test::KillAtEveryCall(
      [&] {
        std::filesystem::remove_all(folder / "files");
        std::filesystem::create_directory(folder / "files");
        WriteWholeFile(path, before);
      },
      [&] {
        mod.cCurFile = path;
        document = test::Scanned(path);
        ReplaceGenRscData(data, 0, Context());
      },
      [&](int call) {
        const Bytes content = ReadWholeFile(path);
        EXPECT_TRUE(content == before || content == after) << "killed at call " << call;
        sawOld = sawOld || content == before;
        sawNew = sawNew || content == after;
        if (FileExists(backup)) {
          EXPECT_TRUE(ReadWholeFile(backup) == before);
        }
      });
  EXPECT_GE(calls, 8);
  EXPECT_TRUE(sawOld);
  EXPECT_TRUE(sawNew);
}

}  // namespace
}  // namespace kelvane
