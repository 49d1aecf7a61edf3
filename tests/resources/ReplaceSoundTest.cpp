// cmdReplace on sounds.
#include "resources/GenDataExport.h"
#include "resources/ReplacementFixture.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Names = std::vector<std::string>;

// Sounds.

class ReplaceSoundTest : public ReplacementFixture {
 protected:
  bool ReplaceSound(int row, bool wasStereo, const Bytes& left, const std::optional<Bytes>& right = {},
                    const std::string& leftName = "l.vag") {
    document.lst.Select(row);
    prompts.ExpectVagReplace(wasStereo, {{.left = out.Write(leftName, left),
                                          .right = right ? out.Write("r.vag", *right) : fs::path(),
                                          .stereo = right.has_value()}});
    return CmdReplace(Context());
  }
};

TEST_F(ReplaceSoundTest, ACancelledDialogRefreshesAndChangesNothing) {
  document.lst.Select(kStereo);
  prompts.ExpectVagReplace(true, {});
  EXPECT_FALSE(CmdReplace(Context()));
  EXPECT_EQ(refreshed, 1);
  ExpectNothingChanged();
}

TEST_F(ReplaceSoundTest, AMonoSoundGoesInAsItIs) {
  const Bytes data = SomeBytes(101, 5);
  EXPECT_TRUE(ReplaceSound(kMono, false, data));
  Screen expected = screen;
  expected.vags[0].channel1 = data;
  ExpectFileOf(expected);
  EXPECT_EQ(refreshed, 1);
}

TEST_F(ReplaceSoundTest, AStereoSoundGoesInMergedAndTempVagGoes) {
  const Bytes left = SomeBytes(1001, 5);
  const Bytes right = SomeBytes(2000, 6);
  EXPECT_TRUE(ReplaceSound(kStereo, true, left, right));
  Screen expected = screen;
  expected.vags[1].channel1 = left;
  expected.vags[1].channel2 = right;
  ExpectFileOf(expected);
  EXPECT_EQ(program.Names(), Names());
  const GeneralPlace place = expected.Builder().Build().layout.vags[1];
  EXPECT_EQ(ReadI32(Content(), place.entry + 44), 3004);
  EXPECT_EQ(ReadI32(Content(), place.entry + 52), 1001);
  EXPECT_EQ(ReadI32(Content(), place.entry + 60), 2000);
  EXPECT_EQ(ReadI32(Content(), place.entry + 64) - ReadI32(Content(), place.entry + 56), 1004);
}

TEST_F(ReplaceSoundTest, AMonoSoundBecomesStereoAndTheNextDialogReadsThatFromTheFile) {
  const Bytes left = SomeBytes(11, 5);
  const Bytes right = SomeBytes(12, 6);
  EXPECT_TRUE(ReplaceSound(kMono, false, left, right));
  Screen expected = screen;
  expected.vags[0].channel1 = left;
  expected.vags[0].channel2 = right;
  ExpectFileOf(expected);
  document.lst.Select(kMono);
  prompts.ExpectVagReplace(true, {});
  EXPECT_FALSE(CmdReplace(Context()));
}

TEST_F(ReplaceSoundTest, AStereoSoundBecomesMonoWithChannel2Size0AndItsOldOffset) {
  const GeneralPlace before = built.layout.vags[1];
  const Bytes data = SomeBytes(40, 5);
  EXPECT_TRUE(ReplaceSound(kStereo, true, data));
  Screen expected = screen;
  expected.vags[1] = {.label = "stereo", .channel1 = data, .monoChannel2Offset = before.channel2Offset};
  ExpectFileOf(expected);
  EXPECT_EQ(ReadI16(Content(), before.entry + 42), 1);
  EXPECT_EQ(ReadI32(Content(), before.entry + 60), 0);
}

TEST_F(ReplaceSoundTest, AStereoSoundSplitsIntoItsTwoFilesAgain) {
  const Bytes left = SomeBytes(1001, 5);
  const Bytes right = SomeBytes(2000, 6);
  EXPECT_TRUE(ReplaceSound(kMono, false, left, right));
  fs::path path = out / "again.vag";
  EXPECT_TRUE(ExportGenData(mod, document, path, kMono, prompts));
  EXPECT_EQ(ReadWholeFile(out / "again.ch1.vag"), left);
  EXPECT_EQ(ReadWholeFile(out / "again.ch2.vag"), right);
}

TEST_F(ReplaceSoundTest, ASoundWhoseNameEndsAsThatOfAnImageIsTreatedAsOne) {
  const Bytes data(400, 5);
  EXPECT_TRUE(ReplaceSound(kMono, false, data, std::nullopt, "sound.gim"));
  const Bytes packed = DeflateWrapped(data);
  const GeneralPlace place = built.layout.vags[0];
  EXPECT_EQ(ReadI32(Content(), place.entry + 44), LengthOf(packed));
  EXPECT_EQ(ReadI32(Content(), place.entry + 52), 400) << "the length of the file that was chosen";
  const Bytes content = Content();
  EXPECT_EQ(Bytes(content.begin() + place.data, content.begin() + place.data + LengthOf(packed)), packed);
}

TEST_F(ReplaceSoundTest, TheCountOfChannelsIsReadFromTheFileWhichMustBeThere) {
  document.lst.Select(kStereo);
  DeleteFile(mod.cCurFile);
  EXPECT_EQ(NumberOf([&] { CmdReplace(Context()); }), 53);
}

TEST_F(ReplaceSoundTest, AnEmptyChannelIsAFailureThatLeavesNoTempVagAndNoBackup) {
  document.lst.Select(kStereo);
  prompts.ExpectVagReplace(true,
                           {{.left = out.Write("l.vag", Bytes(8)), .right = out.Write("r.vag", {}), .stereo = true}});
  EXPECT_EQ(NumberOf([&] { CmdReplace(Context()); }), 9);
  EXPECT_EQ(program.Names(), Names());
  ExpectNothingChanged();
}

}  // namespace
}  // namespace kelvane
