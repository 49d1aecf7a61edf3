#include <cstdint>
#include <limits>

#include "GenWriteFixture.h"
#include "support/PlainPorts.h"

namespace kelvane {
namespace {

using test::Build;
using test::BuiltRco;
using test::Expected;
using test::Filled;
using test::Screen;
using test::Stereo;

class SoundWriteTest : public test::GenWriteFixture {};

TEST_F(SoundWriteTest, ChannelsOfALongSoundAndOfTheSoundsBehindFollow) {
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

TEST_F(SoundWriteTest, AMonoSoundGetsChannel2Size0AndKeepsChannel2Offset) {
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

TEST_F(SoundWriteTest, AMonoSoundBecomesStereo) {
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

TEST_F(SoundWriteTest, AShortSoundKeepsItsChannelFieldsAndThoseOfTheSoundsBehind) {
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

TEST_F(SoundWriteTest, ADistanceWhoseLowByteIs0Or65CountsAsLong) {
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

TEST_F(SoundWriteTest, TheLastSoundOfItsTableCountsAsLong) {
  Open(Build({}).bytes);
  Screen after;
  after.left2 = Filled(40, 1);
  after.right2 = Filled(41, 2);
  SetSound(2, after.left2, after.right2);
  EXPECT_TRUE(Replace(5, Stereo(after.left2, after.right2)));
  EXPECT_TRUE(Content() == Build(after).bytes);
  ExpectRecordsAreTheFiles();
}

TEST_F(SoundWriteTest, AReplacementThatTheApplicationEndsUnderLeavesFileAndRecords) {
  BuiltRco before = Build({});
  // A channel's offset that can't move: the failure comes when the fields of all records are patched already.
  WriteI32(before.bytes, before.layout.vags[2].entry + 56, std::numeric_limits<std::int32_t>::max());
  Open(before.bytes);
  const auto records = document.genRsc;
  const auto areas = document.dataAreas;
  struct ApplicationEnds {};
  int asked = 0;
  test::AnsweringPrompts ending([&](const Message&) -> Answer {
    ++asked;
    throw ApplicationEnds();
  });
  SetSound(1, Filled(400, 1), {});
  EXPECT_THROW(ReplaceGenRscData(folder.Write("new.dat", Filled(400, 1)), 3, {mod, document, ending, watch}),
               ApplicationEnds);
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(Content() == before.bytes);
  EXPECT_TRUE(document.genRsc == records);
  EXPECT_EQ(document.dataAreas, areas);
}

}  // namespace
}  // namespace kelvane
