// cmdReplace up to the backup: the file that is chosen, and what is refused before anything is touched.
#include <map>

#include "resources/ReplacementFixture.h"
#include "resources/TestPicture.h"
#include "support/GifBuilder.h"
#include "support/GimBuilder.h"
#include "support/IcoBuilder.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Names = std::vector<std::string>;
using ReplaceChoiceTest = ReplacementFixture;

// Choosing the file.

TEST_F(ReplaceChoiceTest, WithoutASelectedRowNothingHappens) {
  document.lst.Select(-1);
  program.Write("temp.gim", Bytes(1));
  EXPECT_FALSE(CmdReplace(Context()));
  EXPECT_EQ(refreshed, 0);
  EXPECT_EQ(program.Names(), Names{"temp.gim"});
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, EachKindOfResourceIsAskedForWithItsOwnDialog) {
  const std::string all = "*.gim;*.mig;*.bmp;*.png;*.gif;*.ico";
  const std::map<int, std::string> patterns = {{kPng, "*.png"},
                                               {kJpg, "*.jpg"},
                                               {kTif, "*.tiff"},
                                               {kGif, "*.gif"},
                                               {kBmp, "*.bmp"},
                                               {kGim, all},
                                               {kModel, "*.dat;*.omg;*.gmo"}};
  for (const auto& [row, pattern] : patterns) {
    document.lst.Select(row);
    prompts.ExpectFileDialog({}, [&](const FileDialog& dialog) {
      ASSERT_EQ(dialog.filters.size(), 1U);
      EXPECT_EQ(dialog.filters[0].pattern, pattern);
      EXPECT_EQ(dialog.title, row == kModel ? "选择一个模块文件" : "选择一个图像");
    });
    EXPECT_FALSE(CmdReplace(Context()));
  }
}

TEST_F(ReplaceChoiceTest, ACancelledDialogRefreshesAndChangesNothing) {
  EXPECT_FALSE(Replace(kGim, fs::path()));
  EXPECT_EQ(refreshed, 1);
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, AnImageOfAnUnknownFormatHasNoDialogAndCountsAsCancelled) {
  Screen odd;
  odd.images = {{.label = "odd", .format = 6, .data = SomeBytes(4)},
                {.label = "png", .format = 0, .data = SomeBytes(4)}};
  OpenScreen(odd);
  document.lst.Select(0);  // the line of the second image stands beside the record of the first
  EXPECT_FALSE(CmdReplace(Context()));
  EXPECT_EQ(refreshed, 1);
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, APngForAGimComesInAsA32BitBitmapWhateverTheCaseOfItsExtension) {
  const TestPicture picture(40);
  for (const char* name : {"a.png", "a.PNG", "a.Png"}) {
    EXPECT_TRUE(Replace(kGim, name, picture.Png()));
    ExpectFileOf(WithGim(kGim, picture.IndexedGim()));
    EXPECT_EQ(program.Names(), Names());
  }
}

TEST_F(ReplaceChoiceTest, AnIconForAGimComesInAsA32BitBitmap) {
  const Bytes icon = BuildIco({.images = {PlainIcoImage(16, 32, 10, 20, 30)}});
  mod.cImpt32bitMode = 2;
  EXPECT_TRUE(Replace(kGim, "a.ico", icon));
  ExpectFileOf(WithGim(kGim, BuildRgbaGim(16, 16, std::vector<std::uint32_t>(256, Rgba(30, 20, 10)))));
}

TEST_F(ReplaceChoiceTest, AGifForAGimComesInAsA32BitBitmap) {
  // Index 0 is transparent, index 1 is drawn.
  const Bytes gif = Join({GifHeader(2, 1, {{1, 2, 3}, {40, 50, 60}}), GifComment(std::string(30, 'c')), GifControl(0),
                          GifImage({.width = 2, .height = 1, .lzw = GifLzwEncode(2, {1, 0})}), GifTrailer()});
  mod.cImpt32bitMode = 2;
  EXPECT_TRUE(Replace(kGim, "a.gif", gif));
  ExpectFileOf(WithGim(kGim, BuildRgbaGim(2, 1, {Rgba(40, 50, 60), Rgba(0, 0, 0, 0)})));
}

TEST_F(ReplaceChoiceTest, AnImageThatCannotBeLoadedLeavesNoBitmapWhichIsTooSmall) {
  for (const char* name : {"a.png", "a.ico", "a.gif"}) {
    ThenTell("File is too small!", Icon::Exclamation);
    EXPECT_FALSE(Replace(kGim, name, SomeBytes(200)));
  }
  EXPECT_EQ(refreshed, 0);
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, WhetherTheImageCouldBeLoadedIsNotTestedSoThatAnOldTempBmpIsTaken) {
  const TestPicture old(30);
  program.Write("temp.bmp", old.Bmp8());
  EXPECT_TRUE(Replace(kGim, "a.png", SomeBytes(200)));
  ExpectFileOf(WithGim(kGim, old.IndexedGim()));
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(ReplaceChoiceTest, AFileForAnyOtherRowIsNeverConvertedAndItsExtensionNotCheckedAgainstTheResource) {
  const Bytes png = TestPicture(3).Png();
  Screen expected = screen;
  for (const auto& [row, name] : std::map<int, const char*>{
           {kPng, "a.png"}, {kJpg, "a.ico"}, {kTif, "a.gif"}, {kGif, "a.PNG"}, {kBmp, "a.jpg"}}) {
    EXPECT_TRUE(Replace(row, name, png)) << name;
    ImageSpec& image = expected.images[static_cast<std::size_t>(row)];
    image.data = png;
    if (image.unpackedSize) {
      image.unpackedSize = LengthOf(png);
    }
    ExpectFileOf(expected);
  }
  EXPECT_TRUE(Replace(kModel, "b.png", png));
  expected.gmos[0].data = png;
  expected.gmos[0].unpackedSize = LengthOf(png);
  ExpectFileOf(expected);
}

// Step 2: the length.

TEST_F(ReplaceChoiceTest, AFileOf2BytesIsTooSmallWhateverTheResource) {
  const std::map<int, const char*> names = {
      {kPng, "a.png"}, {kJpg, "a.jpg"},      {kTif, "a.tiff"},    {kGif, "a.gif"},   {kBmp, "a.bmp"},
      {kGim, "a.gim"}, {kPlainGim, "a.mig"}, {kLastGim, "a.png"}, {kModel, "a.omg"}, {kLastModel, "a.dat"}};
  for (const auto& [row, name] : names) {
    ThenTell("File is too small!", Icon::Exclamation);
    EXPECT_FALSE(Replace(row, name, Bytes{1, 2})) << name;
  }
  for (const int row : {kMono, kStereo}) {
    document.lst.Select(row);
    prompts.ExpectVagReplace(row == kStereo, {{.left = out.Write("a.vag", Bytes{1, 2}), .right = {}}});
    prompts.ExpectTell("File is too small!", Icon::Exclamation);
    EXPECT_FALSE(CmdReplace(Context()));
  }
  EXPECT_EQ(refreshed, 0);
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, AFileThatIsNotThereIsTooSmall) {
  ThenTell("File is too small!", Icon::Exclamation);
  EXPECT_FALSE(Replace(kPng, out / "gone.png"));
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, AFileOf3BytesIsLargeEnough) {
  EXPECT_TRUE(Replace(kJpg, "a.jpg", Bytes{1, 2, 3}));
  ExpectFileOf(WithImage(kJpg, {1, 2, 3}, std::nullopt, 0));
}

// Step 3: the bitmap's depth and colours, before anything is touched.

TEST_F(ReplaceChoiceTest, ABitmapOfAnyOtherDepthIsToldAndLeavesTheFileWithoutABackup) {
  for (const int bits : {1, 16, 24}) {
    PlainBmp bmp = {.width = 4, .height = 1, .bits = bits, .rows = {Bytes(12)}};
    ThenTell(kWrongDepth, Icon::Exclamation);
    EXPECT_FALSE(Replace(kGim, "a.bmp", BuildBmp(bmp))) << bits;
  }
  EXPECT_EQ(refreshed, 0);
  EXPECT_EQ(program.Names(), Names());
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, MoreThan256ColoursAreAskedAboutAndNoLeavesTheFileWithoutABackup) {
  ThenAskAboutColours(Answer::No);
  EXPECT_FALSE(Replace(kGim, "a.bmp", TestPicture(257).Bmp32()));
  EXPECT_EQ(refreshed, 0);
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, MoreThan256ColoursAreAskedAboutAndYesStoresA32BitGim) {
  const TestPicture picture(257);
  ThenAskAboutColours(Answer::Yes);
  EXPECT_TRUE(Replace(kGim, "a.bmp", picture.Bmp32()));
  ExpectFileOf(WithGim(kGim, picture.DirectGim()));
}

TEST_F(ReplaceChoiceTest, APngOfMoreThan256ColoursIsAskedAboutToo) {
  ThenAskAboutColours(Answer::No);
  EXPECT_FALSE(Replace(kGim, "a.png", TestPicture(300).Png()));
  EXPECT_EQ(program.Names(), Names());
  ExpectNothingChanged();
}

TEST_F(ReplaceChoiceTest, InTheOtherModesMoreThan256ColoursBecomeA32BitGimWithoutAQuestion) {
  const TestPicture picture(257);
  for (const int mode : {1, 2}) {
    mod.cImpt32bitMode = mode;
    EXPECT_TRUE(Replace(kGim, "a.bmp", picture.Bmp32()));
    ExpectFileOf(WithGim(kGim, picture.DirectGim()));
  }
}

// Step 4: the backup.

TEST_F(ReplaceChoiceTest, TheBackupIsMadeOnceAndTheWatcherIsStoppedUntilTheFileIsWritten) {
  EXPECT_TRUE(Replace(kPng, "a.png", SomeBytes(50, 1)));
  // Once before the data are prepared, once by the replacement itself.
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "stop", "start"}));
  EXPECT_EQ(mod.cFileDate, DateOfFile(mod.cCurFile));
  EXPECT_TRUE(Replace(kPng, "a.png", SomeBytes(60, 2)));
  EXPECT_TRUE(ReadWholeFile(Backup()) == built.bytes);
}

TEST_F(ReplaceChoiceTest, WithBackupsTurnedOffThereIsNone) {
  mod.cNoUpdatBak = true;
  EXPECT_TRUE(Replace(kPng, "a.png", SomeBytes(50, 1)));
  EXPECT_FALSE(FileExists(Backup()));
}

}  // namespace
}  // namespace kelvane
