#include <gtest/gtest.h>
#include <optional>

#include "common/Files.h"
#include "resources/OpenedRco.h"
#include "resources/VagSound.h"
#include "support/Failures.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::SomeBytes;
using Names = std::vector<std::string>;

class VagSoundTest : public ::testing::Test {
 protected:
  VagSoundTest() { mod.cAppPath = program.Path() / ""; }

  void Merge(const Bytes& left, const Bytes& right) {
    MergeVagChannels(folder.Write("l.vag", left), folder.Write("r.vag", right), mod);
  }
  [[nodiscard]] Bytes TempVag() const { return ReadWholeFile(program / "temp.vag"); }

  test::TempFolder program;  // cAppPath
  test::TempFolder folder;   // the user's sounds
  test::ScriptedPrompts prompts;
  Mod mod;
};

TEST_F(VagSoundTest, MergingPutsZerosBehindTheLeftChannelUpToAMultipleOf4) {
  for (const auto& [length, padding] : {std::pair{1, 3}, {2, 2}, {3, 1}, {4, 0}, {5, 3}, {1001, 3}, {1002, 2}}) {
    const Bytes left = SomeBytes(static_cast<std::size_t>(length), 1);
    const Bytes right = SomeBytes(7, 2);
    Merge(left, right);
    Bytes expected = left;
    expected.insert(expected.end(), static_cast<std::size_t>(padding), 0);
    expected.insert(expected.end(), right.begin(), right.end());
    EXPECT_EQ(TempVag(), expected) << length;
  }
}

TEST_F(VagSoundTest, AMergeOf1001And2000BytesHas3ZerosBehindByte1001And3004BytesInAll) {
  Merge(Bytes(1001, 0xAA), Bytes(2000, 0xBB));
  Bytes expected(1001, 0xAA);
  expected.resize(1004, 0);
  expected.resize(3004, 0xBB);
  EXPECT_EQ(TempVag(), expected);
}

TEST_F(VagSoundTest, ALeftChannelOf1000BytesGetsNoPadding) {
  Merge(Bytes(1000, 0xAA), Bytes(3, 0xBB));
  Bytes expected(1000, 0xAA);
  expected.resize(1003, 0xBB);
  EXPECT_EQ(TempVag(), expected);
}

TEST_F(VagSoundTest, TheRightChannelIsNotPadded) {
  Merge(Bytes(4, 1), Bytes(1, 2));
  EXPECT_EQ(TempVag(), (Bytes{1, 1, 1, 1, 2}));
}

TEST_F(VagSoundTest, AMergeReplacesWhatTempVagHeld) {
  program.Write("temp.vag", Bytes(100, 9));
  Merge(Bytes(4, 1), Bytes(1, 2));
  EXPECT_EQ(TempVag(), (Bytes{1, 1, 1, 1, 2}));
}

TEST_F(VagSoundTest, AnEmptyOrMissingChannelFailsAndLeavesWhatWasWrittenBeforeIt) {
  program.Write("temp.vag", Bytes(100, 9));
  EXPECT_EQ(NumberOf([&] { Merge({}, Bytes(4, 2)); }), 9);
  EXPECT_EQ(TempVag(), Bytes());
  EXPECT_EQ(NumberOf([&] { Merge(Bytes(5, 1), {}); }), 9);
  EXPECT_EQ(TempVag(), (Bytes{1, 1, 1, 1, 1, 0, 0, 0}));
  EXPECT_EQ(NumberOf([&] { MergeVagChannels(folder / "gone", folder / "r.vag", mod); }), 53);
  EXPECT_EQ(TempVag(), Bytes());
}

TEST_F(VagSoundTest, TheDialogStartsWithTheChannelCountAndNothingChosen) {
  for (const int channels : {0, 1, 2, 3, -1}) {
    mod.vagChannels = channels;
    mod.vagSize1 = 5;
    mod.vagSize2 = 6;
    mod.vagPath = "old.vag";
    prompts.ExpectVagReplace(channels == 2, {});
    AskForVag(mod, prompts);
    EXPECT_EQ(mod.vagSize1, 0);
    EXPECT_EQ(mod.vagSize2, 0);
    EXPECT_EQ(mod.vagPath, "");
    EXPECT_EQ(mod.vagChannels, Int16(channels));
  }
}

TEST_F(VagSoundTest, AMissingLeftChannelIsToldAndTheDialogStays) {
  const auto there = folder.Write("there.vag", Bytes(4));
  for (const auto& left : {std::filesystem::path(), folder / "gone.vag"}) {
    for (const bool stereo : {false, true}) {
      mod.vagChannels = 7;
      // In stereo the right one is there; and where both are missing, the left one is told alone.
      prompts.ExpectVagReplace(
          false, {{.left = left, .right = there, .stereo = stereo}, {.left = left, .right = {}, .stereo = stereo}});
      prompts.ExpectTell("左声道的VAG文件不存在！", Icon::Exclamation);
      prompts.ExpectTell("左声道的VAG文件不存在！", Icon::Exclamation);
      AskForVag(mod, prompts);
      EXPECT_EQ(mod.vagPath, "");
      EXPECT_EQ(mod.vagChannels, Int16(7));
    }
  }
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(VagSoundTest, AMissingRightChannelIsToldInStereoOnly) {
  const auto left = folder.Write("left.vag", Bytes(6));
  prompts.ExpectVagReplace(false, {{.left = left, .right = folder / "gone.vag", .stereo = true},
                                   {.left = left, .right = folder / "gone.vag", .stereo = false}});
  prompts.ExpectTell("右声道的VAG文件不存在！", Icon::Exclamation);
  AskForVag(mod, prompts);
  EXPECT_EQ(mod.vagPath, left);
  EXPECT_EQ(mod.vagChannels, Int16(1));
}

TEST_F(VagSoundTest, InMonoThePathIsTheLeftFileAndTheRightOneCountsForNothing) {
  const auto left = folder.Write("left.vag", Bytes(1001));
  mod.vagChannels = 2;
  prompts.ExpectVagReplace(true, {{.left = left, .right = folder.Write("right.vag", Bytes(2000)), .stereo = false}});
  AskForVag(mod, prompts);
  EXPECT_EQ(mod.vagChannels, Int16(1));
  EXPECT_EQ(mod.vagSize1, 1001);
  EXPECT_EQ(mod.vagSize2, 0);
  EXPECT_EQ(mod.vagPath, left);
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(VagSoundTest, InStereoThePathIsTempVagAndBothLengthsAreThoseOfTheFiles) {
  const Bytes left = SomeBytes(1001, 1);
  const Bytes right = SomeBytes(2000, 2);
  mod.vagChannels = 1;
  prompts.ExpectVagReplace(
      false, {{.left = folder.Write("left.vag", left), .right = folder.Write("right.vag", right), .stereo = true}});
  AskForVag(mod, prompts);
  EXPECT_EQ(mod.vagChannels, Int16(2));
  EXPECT_EQ(mod.vagSize1, 1001);
  EXPECT_EQ(mod.vagSize2, 2000);
  EXPECT_EQ(mod.vagPath, program / "temp.vag");
  EXPECT_EQ(TempVag().size(), 3004U);
}

TEST_F(VagSoundTest, WhatIsNoVagGoesThroughUnnoticed) {
  const auto left = folder.Write("notes.txt", Bytes{'h', 'i'});
  prompts.ExpectVagReplace(false, {{.left = left, .right = {}}});
  AskForVag(mod, prompts);
  EXPECT_EQ(mod.vagPath, left);
  EXPECT_EQ(mod.vagSize1, 2);
}

TEST_F(VagSoundTest, AnEmptyChannelInStereoIsAFailureOfTheDialog) {
  const auto left = folder.Write("left.vag", Bytes(8));
  const auto right = folder.Write("right.vag", {});
  prompts.ExpectVagReplace(false, {{.left = left, .right = right, .stereo = true}});
  EXPECT_EQ(NumberOf([&] { AskForVag(mod, prompts); }), 9);
  EXPECT_EQ(mod.vagPath, "");
}

}  // namespace
}  // namespace kelvane
