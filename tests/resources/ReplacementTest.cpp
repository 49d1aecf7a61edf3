// cmdReplace from the backup on: what becomes of the file that was chosen.
#include "resources/ReplacementFixture.h"
#include "resources/TestPicture.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Names = std::vector<std::string>;
using ReplacementTest = ReplacementFixture;

// Step 5: a bitmap becomes a GIM.

TEST_F(ReplacementTest, A32BitPngOf40ColoursForACompressedGimIsStoredAsADeflatedGimOf8Bits) {
  const TestPicture picture(40);
  onRefresh = [&] { ExpectFileOf(WithGim(kGim, picture.IndexedGim())); };
  EXPECT_TRUE(Replace(kGim, "a.png", picture.Png()));
  EXPECT_EQ(refreshed, 1);
  EXPECT_EQ(document.genRsc[kGim].unpackedSize, LengthOf(picture.IndexedGim()));
  EXPECT_EQ(program.Names(), Names());
  EXPECT_TRUE(ReadWholeFile(Backup()) == built.bytes);
}

TEST_F(ReplacementTest, TheImportModeDecidesHowA32BitBitmapIsStored) {
  struct Row {
    int mode;
    int colours;
    int height;
    bool indexed;
  };
  for (const Row& row : {Row{0, 17, 2, true}, Row{0, 255, 32, true},   // whatever the size
                         Row{1, 17, 17, false}, Row{1, 17, 18, true},  // 272 and 288 pixels
                         Row{1, 16, 2, false}, Row{1, 16, 3, true},    // 32 and 48 pixels
                         Row{2, 17, 32, false}, Row{2, 255, 32, false}}) {
    SCOPED_TRACE(std::to_string(row.mode) + " " + std::to_string(row.colours) + " " + std::to_string(row.height));
    const TestPicture picture(row.colours, row.height);
    mod.cImpt32bitMode = row.mode;
    EXPECT_TRUE(Replace(kGim, "a.bmp", picture.Bmp32()));
    ExpectFileOf(WithGim(kGim, row.indexed ? picture.IndexedGim() : picture.DirectGim()));
  }
}

TEST_F(ReplacementTest, An8BitBitmapKeepsItsPaletteInEveryMode) {
  const TestPicture picture(3);
  for (const int mode : {0, 1, 2}) {
    mod.cImpt32bitMode = mode;
    EXPECT_TRUE(Replace(kGim, "a.BMP", picture.Bmp8()));
    ExpectFileOf(WithGim(kGim, picture.IndexedGim()));
  }
}

TEST_F(ReplacementTest, TheSettingClearsTheColourOfTheTopLeftPixel) {
  const TestPicture picture(200);
  mod.cFirstColTrans = true;
  EXPECT_TRUE(Replace(kGim, "a.bmp", picture.Bmp8()));
  ExpectFileOf(WithGim(kGim, picture.IndexedGimWithoutFirstColour()));
  EXPECT_TRUE(Replace(kGim, "a.bmp", picture.Bmp32()));
  ExpectFileOf(WithGim(kGim, picture.IndexedGim()));
}

TEST_F(ReplacementTest, ABitmapOfExactly256ColoursPassesTheCountAndFailsInTheConversion) {
  ThenTell("GIM转换失败", Icon::Critical);
  EXPECT_FALSE(Replace(kGim, "a.bmp", TestPicture(256).Bmp32()));
  ExpectFileLeftBehindTheBackup();
  ExpectRecordsAreTheFiles();
}

TEST_F(ReplacementTest, ABitmapGoesThroughTheGimWhateverTheResource) {
  const TestPicture picture(20);
  const Bytes gim = picture.IndexedGim();
  EXPECT_TRUE(Replace(kBmp, "a.bmp", picture.Bmp8()));
  Screen expected = WithImage(kBmp, DeflateWrapped(gim), LengthOf(gim), 0);
  ExpectFileOf(expected);
  EXPECT_TRUE(Replace(kModel, "a.bmp", picture.Bmp8()));
  expected.gmos[0].data = DeflateWrapped(gim);
  expected.gmos[0].unpackedSize = LengthOf(gim);
  ExpectFileOf(expected);
}

TEST_F(ReplacementTest, WithNoCompressionTheGimOfABitmapIsStoredAsItIs) {
  const TestPicture picture(20);
  mod.cNoCompression = true;
  EXPECT_TRUE(Replace(kGim, "a.bmp", picture.Bmp8()));
  ExpectFileOf(WithImage(kGim, picture.IndexedGim(), LengthOf(picture.IndexedGim()), 0));
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(ReplacementTest, AFailureOfTheConversionLeavesNoTemporaryFileAndTheWatcherStopped) {
  EXPECT_EQ(FailureOfReplace(kGim, "a.bmp", BuildBmp({.width = 40000, .height = 1, .bits = 8})), 6);
  ExpectFileLeftBehindTheBackup();
}

// Step 6: images and models that are ready but for compression.

TEST_F(ReplacementTest, GimsAndModelsAreCompressedAtLevel9WhateverTheRow) {
  Bytes data = SomeBytes(300);
  data.resize(900, 5);
  int length = 0;
  for (const char* name : {"a.mig", "a.gim", "a.gmo", "a.omg", "a.MIG", "a.Gim", "a.GMO", "a.oMg"}) {
    SCOPED_TRACE(name);
    data.resize(data.size() + 1, 6);
    length = LengthOf(data);
    OpenScreen(FullScreen());
    Screen expected = WithImage(kGim, DeflateWrapped(data), length, 1);
    EXPECT_TRUE(Replace(kGim, name, data));
    expected.images[kPlainGim].data = DeflateWrapped(data);
    expected.images[kPlainGim].unpackedSize = length;
    expected.images[kPlainGim].compression = 1;  // it was stored plain before
    EXPECT_TRUE(Replace(kPlainGim, name, data));
    expected.gmos[0].data = DeflateWrapped(data);
    expected.gmos[0].unpackedSize = length;
    EXPECT_TRUE(Replace(kModel, name, data));
    ExpectFileOf(expected);
    EXPECT_EQ(program.Names(), Names());
  }
}

TEST_F(ReplacementTest, WithNoCompressionGimsAndModelsGoInAsTheyAreAndTheUnpackedSizeIsTheirLength) {
  mod.cNoCompression = true;
  const Bytes data = SomeBytes(333);
  EXPECT_TRUE(Replace(kGim, "a.gim", data));
  Screen expected = WithImage(kGim, data, 333, 0);
  ExpectFileOf(expected);
  EXPECT_TRUE(Replace(kModel, "a.omg", data));
  expected.gmos[0] = {.label = "model", .compression = 0, .data = data, .unpackedSize = 333};
  ExpectFileOf(expected);
  EXPECT_EQ(ReadWholeFile(out / "a.gim"), data);
}

TEST_F(ReplacementTest, AnEntryWithoutTheFieldGetsNoUnpackedSize) {
  const Bytes data(500, 3);
  EXPECT_TRUE(Replace(kLastGim, "a.gim", data));
  EXPECT_TRUE(Replace(kLastModel, "a.omg", data));
  EXPECT_EQ(document.genRsc[kLastGim].unpackedSize, -1);
  EXPECT_EQ(document.genRsc[kLastModel].unpackedSize, -1);
  Screen expected = WithImage(kLastGim, DeflateWrapped(data), std::nullopt, 1);
  expected.gmos[1].data = DeflateWrapped(data);
  ExpectFileOf(expected);
}

// Step 7: everything else.

TEST_F(ReplacementTest, ADatIsTakenToBeInItsFinalForm) {
  const Bytes data = SomeBytes(77);
  for (const bool plain : {false, true}) {
    mod.cNoCompression = plain;
    EXPECT_TRUE(Replace(kGim, "a.dat", data));
    Screen expected = WithImage(kGim, data, 77, plain ? 0 : 1);
    EXPECT_TRUE(Replace(kModel, "a.dat", data));
    expected.gmos[0] = {
        .label = "model", .compression = static_cast<std::uint16_t>(plain ? 0 : 1), .data = data, .unpackedSize = 77};
    ExpectFileOf(expected);
  }
}

TEST_F(ReplacementTest, AFileWithoutAnyKnownExtensionGoesInAsItIs) {
  const Bytes data = SomeBytes(50);
  for (const char* name : {"a.tiff", "a.jpeg", "a", "gim"}) {
    OpenScreen(FullScreen());
    EXPECT_TRUE(Replace(kTif, name, data)) << name;
    ExpectFileOf(WithImage(kTif, data, std::nullopt, 0));
  }
}

TEST_F(ReplacementTest, TheUnpackedSizeOfAnUncompressedImageFollowsItsLength) {
  EXPECT_TRUE(Replace(kPng, "a.png", SomeBytes(99)));
  EXPECT_EQ(document.genRsc[kPng].unpackedSize, 99);
  ExpectFileOf(WithImage(kPng, SomeBytes(99), 99, 0));
}

// Step 8: the compression.

TEST_F(ReplacementTest, AGimOf3To9BytesPassesTheSizeTestAndCannotBeCompressed) {
  for (const std::size_t size : {std::size_t{3}, std::size_t{9}}) {
    OpenScreen(FullScreen());
    DeleteFileQuietly(Backup());
    ThenTell("压缩失败", Icon::Critical);
    EXPECT_FALSE(Replace(kGim, "a.gim", SomeBytes(size)));
    EXPECT_TRUE(Content() == built.bytes);
    EXPECT_TRUE(ReadWholeFile(Backup()) == built.bytes);
    EXPECT_FALSE(watch.Running());
    EXPECT_EQ(refreshed, 0);
    // The size was taken over before.
    EXPECT_EQ(document.genRsc[kGim].unpackedSize, static_cast<std::int32_t>(size));
  }
}

TEST_F(ReplacementTest, AGimOf10BytesIsCompressed) {
  EXPECT_TRUE(Replace(kGim, "a.gim", Bytes(10, 7)));
  ExpectFileOf(WithImage(kGim, DeflateWrapped(Bytes(10, 7)), 10, 1));
}

TEST_F(ReplacementTest, AGimMadeOfABitmapThatCannotBeCompressedIsToldTheSameWay) {
  fs::create_directory(program / "temp.dat");
  ThenTell("压缩失败", Icon::Critical);
  EXPECT_FALSE(Replace(kGim, "a.bmp", TestPicture(20).Bmp8()));
  EXPECT_TRUE(Content() == built.bytes);
  EXPECT_EQ(program.Names(), Names{"temp.dat"}) << "the folder that was in the way";
  EXPECT_EQ(document.genRsc[kGim].unpackedSize, LengthOf(TestPicture(20).IndexedGim()));
}

// Steps 9 and 10.

TEST_F(ReplacementTest, AReplacementGivenUpRefreshesAllTheSame) {
  document.genRsc[kMono].entryPos = 1000000;  // outside of what stands in front of the data
  document.lst.Select(kPng);
  prompts.ExpectFileDialog({.path = out.Write("a.png", SomeBytes(50))});
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  EXPECT_FALSE(CmdReplace(Context()));
  EXPECT_EQ(refreshed, 1);
  EXPECT_TRUE(Content() == built.bytes);
  EXPECT_FALSE(watch.Running());
}

TEST_F(ReplacementTest, TheRefreshComesBehindTheReplacementAndInFrontOfTheCleanUp) {
  onRefresh = [&] {
    EXPECT_FALSE(Content() == built.bytes);
    EXPECT_EQ(program.Names(), (Names{"temp.bmp", "temp.dat", "temp.gim"}));
  };
  EXPECT_TRUE(Replace(kGim, "a.png", TestPicture(40).Png()));
  EXPECT_EQ(refreshed, 1);
  EXPECT_EQ(program.Names(), Names());
}

}  // namespace
}  // namespace kelvane
