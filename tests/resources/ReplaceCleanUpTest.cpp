// The temporary files of cmdReplace, on every way out.
#include "resources/ReplacementFixture.h"
#include "resources/TestPicture.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Names = std::vector<std::string>;

// Clean-up.

class ReplaceCleanUpTest : public ReplacementFixture {
 protected:
  ReplaceCleanUpTest() {
    for (const char* name : {"temp.gim", "temp.dat", "temp.vag", "temp.bmp", "temp2.dat", "other"}) {
      program.Write(name, Bytes(100));
    }
  }
  // Of the files that lay there, those four are gone.
  ~ReplaceCleanUpTest() override { EXPECT_EQ(program.Names(), (Names{"other", "temp2.dat"})); }
  ReplaceCleanUpTest(const ReplaceCleanUpTest&) = delete;
  ReplaceCleanUpTest& operator=(const ReplaceCleanUpTest&) = delete;
};

TEST_F(ReplaceCleanUpTest, FollowsACancelledDialog) {
  EXPECT_FALSE(Replace(kGim, fs::path()));
}

TEST_F(ReplaceCleanUpTest, FollowsAFileThatIsTooSmall) {
  ThenTell("File is too small!", Icon::Exclamation);
  EXPECT_FALSE(Replace(kGim, "a.gim", Bytes(2)));
}

TEST_F(ReplaceCleanUpTest, FollowsABitmapOfAnotherDepth) {
  ThenTell(kWrongDepth, Icon::Exclamation);
  EXPECT_FALSE(Replace(kGim, "a.bmp", BuildBmp({.width = 1, .height = 1, .bits = 24, .rows = {Bytes(3)}})));
}

TEST_F(ReplaceCleanUpTest, FollowsANoToManyColours) {
  ThenAskAboutColours(Answer::No);
  EXPECT_FALSE(Replace(kGim, "a.bmp", TestPicture(257).Bmp32()));
}

TEST_F(ReplaceCleanUpTest, FollowsAFailedConversion) {
  ThenTell("GIM转换失败", Icon::Critical);
  EXPECT_FALSE(Replace(kGim, "a.bmp", TestPicture(256).Bmp32()));
}

TEST_F(ReplaceCleanUpTest, FollowsAFailedCompression) {
  ThenTell("压缩失败", Icon::Critical);
  EXPECT_FALSE(Replace(kGim, "a.gim", SomeBytes(9)));
}

TEST_F(ReplaceCleanUpTest, FollowsARunTimeFailure) {
  EXPECT_EQ(FailureOfReplace(kGim, "a.bmp", BuildBmp({.width = 40000, .height = 1, .bits = 8})), 6);
}

TEST_F(ReplaceCleanUpTest, FollowsAReplacement) {
  EXPECT_TRUE(Replace(kGim, "a.gim", Bytes(100)));
}

TEST_F(ReplaceCleanUpTest, FollowsACancelledSoundDialog) {
  document.lst.Select(kMono);
  prompts.ExpectVagReplace(false, {});
  EXPECT_FALSE(CmdReplace(Context()));
}

}  // namespace
}  // namespace kelvane
