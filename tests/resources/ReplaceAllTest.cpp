// cmdReplaceAll: which file of a folder each resource takes, and what becomes of it.
#include "resources/ReplaceAllFixture.h"
#include "resources/TestPicture.h"
#include "support/Failures.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Names = std::vector<std::string>;
using ReplaceAllTest = ReplaceAllFixture;

// The subset of `all` that `bits` tells.
Names Subset(const Names& all, unsigned bits) {
  Names chosen;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if ((bits >> i & 1U) != 0) {
      chosen.push_back(all[i]);
    }
  }
  return chosen;
}

bool Contains(const Names& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

TEST_F(ReplaceAllTest, ACancelledDialogStops) {
  prompts.ExpectFolder("选择输出目录", {});
  CmdReplaceAll(Context());
  EXPECT_EQ(refreshed, 0);
  EXPECT_TRUE(progress.Shown().empty());
  ExpectNothingChanged();
}

TEST_F(ReplaceAllTest, AnEmptyFolderLeavesEverythingInSilence) {
  ReplaceAll();
  EXPECT_EQ(refreshed, 1);
  ExpectNothingChanged();
}

TEST_F(ReplaceAllTest, AFolderWithATrailingSeparatorIsTheSame) {
  out.Write("png.png", SomeBytes(50));
  prompts.ExpectFolder("选择输出目录", out.Path() / "");
  prompts.ExpectTell("完成", Icon::Information);
  CmdReplaceAll(Context());
  screen.images[kPng].data = SomeBytes(50);
  ExpectFileOf(screen);
}

TEST_F(ReplaceAllTest, TheSelectedRowIsShownAnewOnceTheFileIsWrittenAndThenTheEndIsTold) {
  out.Write("png.png", SomeBytes(50));
  screen.images[kPng].data = SomeBytes(50);
  onRefresh = [&] { ExpectFileOf(screen); };
  ReplaceAll();
  EXPECT_EQ(refreshed, 1);
}

TEST_F(ReplaceAllTest, ProgressGoesFrom0ToTheNumberOfRows) {
  ReplaceAll();
  std::vector<std::pair<int, int>> expected;
  for (int row = 0; row <= 12; ++row) {
    expected.emplace_back(row, 12);
  }
  EXPECT_EQ(progress.Shown(), expected);
}

// Images other than GIM.

TEST_F(ReplaceAllTest, AnImageTakesTheFileOfItsExtensionAsItIs) {
  const Names extensions = {"png", "jpg", "tiff", "gif", "bmp"};
  for (std::size_t i = 0; i < extensions.size(); ++i) {
    const std::string label = *screen.images[i].label;
    out.Write(label + "." + extensions[i], SomeBytes(40 + i, 7));
    screen.images[i].data = SomeBytes(40 + i, 7);  // neither compressed nor of another unpacked size
  }
  ReplaceAll();
  ExpectFileOf(screen);
}

TEST_F(ReplaceAllTest, AnImageTakesNoFileOfAnotherExtension) {
  for (const char* name : {"png.jpg", "png.PNG", "png.dat", "png.gim", "jpg.jpeg", "tif.tif", "gif.png",
                           "bmp.32bit.bmp", "png", "png.", "xpng.png"}) {
    out.Write(name, SomeBytes(40));
  }
  ReplaceAll();
  ExpectNothingChanged();
}

TEST_F(ReplaceAllTest, AnImageOf1ByteIsTakenAndAnEmptyOneIsNot) {
  out.Write("png.png", Bytes{5});
  out.Write("jpg.jpg", {});
  ReplaceAll();
  screen.images[kPng].data = {5};
  ExpectFileOf(screen);
}

TEST_F(ReplaceAllTest, AnImageOfAnUnknownFormatTakesTheFileWithoutExtensionThatTheNextLineNames) {
  Screen odd;
  odd.images = {{.label = "odd", .format = 6, .data = SomeBytes(4)},
                {.label = "png", .format = 0, .data = SomeBytes(4)}};
  OpenScreen(odd);
  out.Write("png.", SomeBytes(9));
  out.Write("odd.", SomeBytes(8));
  out.Write("png.png", SomeBytes(7));
  ReplaceAll();
  EXPECT_EQ(progress.Shown().back(), (std::pair{1, 1})) << "there is one line, and it stands for the first record";
  odd.images[0].data = SomeBytes(9);
  ExpectFileOf(odd);
}

// GIM.

TEST_F(ReplaceAllTest, AGimTakesTheFirstFileThatIsThere) {
  const Bytes bmp = TestPicture(20).Bmp8();
  const Bytes bmp32 = TestPicture(30).Bmp8();
  const Bytes gim(600, 3);
  const Bytes dat = SomeBytes(90);
  for (unsigned bits = 0; bits < 16; ++bits) {
    SCOPED_TRACE(bits);
    OpenScreen(FullScreen());
    const Names names = Subset({"gim.bmp", "gim.32bit.bmp", "gim.gim", "gim.dat"}, bits);
    EmptyOut();
    for (const std::string& name : names) {
      out.Write(name, name == "gim.bmp" ? bmp : name == "gim.32bit.bmp" ? bmp32 : name == "gim.gim" ? gim : dat);
    }
    ReplaceAll();
    if (Contains(names, "gim.bmp")) {
      SetGim(kGim, TestPicture(20).IndexedGim());
    } else if (Contains(names, "gim.32bit.bmp")) {
      SetGim(kGim, TestPicture(30).IndexedGim());
    } else if (Contains(names, "gim.gim")) {
      SetGim(kGim, gim);
    } else if (Contains(names, "gim.dat")) {
      screen.images[kGim].data = dat;  // as it is; the unpacked size stays
    }
    ExpectFileOf(screen);
    EXPECT_EQ(program.Names(), Names());
  }
}

TEST_F(ReplaceAllTest, AGimOfAnyStoredFormBecomesCompressed) {
  out.Write("plain.gim", Bytes(600, 3));
  out.Write("last.bmp", TestPicture(20).Bmp8());
  ReplaceAll();
  SetGim(kPlainGim, Bytes(600, 3));
  screen.images[kLastGim].data = DeflateWrapped(TestPicture(20).IndexedGim());  // its entry has no unpacked size
  ExpectFileOf(screen);
  EXPECT_EQ(document.genRsc[kLastGim].unpackedSize, -1);
}

TEST_F(ReplaceAllTest, WithNoCompressionGimsAndModelsAreStoredAsTheyAre) {
  mod.cNoCompression = true;
  const Bytes fromBitmap = TestPicture(20).IndexedGim();
  out.Write("gim.bmp", TestPicture(20).Bmp8());
  out.Write("plain.gim", SomeBytes(5));
  out.Write("last.dat", SomeBytes(6));
  out.Write("model.omg", SomeBytes(7));
  out.Write("lastmodel.dat", SomeBytes(8));
  ReplaceAll();
  screen.images[kGim] = {.label = "gim", .compression = 0, .data = fromBitmap, .unpackedSize = LengthOf(fromBitmap)};
  screen.images[kPlainGim] = {.label = "plain", .compression = 0, .data = SomeBytes(5), .unpackedSize = 5};
  screen.images[kLastGim] = {.label = "last", .compression = 0, .data = SomeBytes(6), .unpackedSize = 1008};
  screen.gmos[0] = {.label = "model", .compression = 0, .data = SomeBytes(7), .unpackedSize = 1012};
  screen.gmos[1] = {.label = "lastmodel", .compression = 0, .data = SomeBytes(8), .unpackedSize = 1013};
  ExpectFileOf(screen);
}

TEST_F(ReplaceAllTest, ABitmapThatCannotBecomeAGimLeavesTheResourceWithoutAWordAndWithoutALookAtOtherFiles) {
  out.Write("gim.bmp", BuildBmp({.width = 1, .height = 1, .bits = 24, .rows = {Bytes(3)}}));
  out.Write("gim.gim", Bytes(600, 3));
  out.Write("plain.32bit.bmp", TestPicture(256).Bmp32());
  out.Write("plain.dat", SomeBytes(9));
  ReplaceAll();
  EXPECT_EQ(program.Names(), Names());
  ExpectNothingChanged();
}

TEST_F(ReplaceAllTest, MoreThan256ColoursBecomeA32BitGimWithoutAQuestionInEveryMode) {
  const TestPicture picture(257);
  for (const int mode : {0, 1, 2}) {
    OpenScreen(FullScreen());
    mod.cImpt32bitMode = mode;
    out.Write("gim.bmp", picture.Bmp32());
    ReplaceAll();
    SetGim(kGim, picture.DirectGim());
    ExpectFileOf(screen);
  }
}

TEST_F(ReplaceAllTest, TheImportModeDecidesAsForOneResource) {
  struct Row {
    int mode;
    int height;
    bool indexed;
  };
  for (const Row& row : {Row{0, 17, true}, Row{1, 17, false}, Row{1, 18, true}, Row{2, 18, false}}) {
    OpenScreen(FullScreen());
    const TestPicture picture(17, row.height);
    mod.cImpt32bitMode = row.mode;
    out.Write("gim.bmp", picture.Bmp32());
    ReplaceAll();
    SetGim(kGim, row.indexed ? picture.IndexedGim() : picture.DirectGim());
    ExpectFileOf(screen);
  }
}

TEST_F(ReplaceAllTest, TheSettingClearsTheColourOfTheTopLeftPixel) {
  mod.cFirstColTrans = true;
  out.Write("gim.bmp", TestPicture(200).Bmp8());
  ReplaceAll();
  SetGim(kGim, TestPicture(200).IndexedGimWithoutFirstColour());
  ExpectFileOf(screen);
}

TEST_F(ReplaceAllTest, TheCountOfColoursIsNotResetFromOneBitmapToTheNext) {
  // 200 and 56 make 256, with which a palette is still tried; one more colour, and every bitmap behind is of 32 bits.
  for (const int second : {56, 57}) {
    OpenScreen(FullScreen());
    const TestPicture first(200, 32, 1);
    const TestPicture next(second, 32, 2);
    const TestPicture third(17, 32, 3);
    out.Write("gim.bmp", first.Bmp32());
    out.Write("plain.bmp", next.Bmp32());
    out.Write("last.bmp", third.Bmp32());
    ReplaceAll();
    SetGim(kGim, first.IndexedGim());
    SetGim(kPlainGim, second == 56 ? next.IndexedGim() : next.DirectGim());
    screen.images[kLastGim].data = DeflateWrapped(third.DirectGim());
    ExpectFileOf(screen);
  }
}

TEST_F(ReplaceAllTest, APalettedBitmapBehindTooManyColoursKeepsItsPaletteAndTheCountStays) {
  out.Write("gim.bmp", TestPicture(257).Bmp32());
  out.Write("plain.bmp", TestPicture(30).Bmp8());
  out.Write("last.bmp", TestPicture(17).Bmp32());
  ReplaceAll();
  SetGim(kGim, TestPicture(257).DirectGim());
  SetGim(kPlainGim, TestPicture(30).IndexedGim());
  screen.images[kLastGim].data = DeflateWrapped(TestPicture(17).DirectGim());
  ExpectFileOf(screen);
}

TEST_F(ReplaceAllTest, TheCountBeginsAnewWithEveryRun) {
  out.Write("gim.bmp", TestPicture(200).Bmp32());
  ReplaceAll();
  ReplaceAll();
  SetGim(kGim, TestPicture(200).IndexedGim());
  ExpectFileOf(screen);
}

TEST_F(ReplaceAllTest, AGimThatCannotBeCompressedLeavesTheResourceButNotItsUnpackedSize) {
  out.Write("gim.gim", SomeBytes(9));
  ReplaceAll();
  EXPECT_TRUE(Content() == built.bytes);
  EXPECT_TRUE(watch.Calls().empty());
  EXPECT_EQ(document.genRsc[kGim].unpackedSize, 9);
}

TEST_F(ReplaceAllTest, WhetherItCouldBeCompressedIsNotTestedSoThatAnOldTempDatIsTaken) {
  program.Write("temp.dat", SomeBytes(44));
  out.Write("gim.gim", SomeBytes(9));
  out.Write("plain.gim", SomeBytes(8));
  ReplaceAll();
  screen.images[kGim].data = SomeBytes(44);
  screen.images[kGim].unpackedSize = 9;
  EXPECT_EQ(program.Names(), Names());
  // The second one finds it deleted; the size was taken over in memory only.
  EXPECT_TRUE(Content() == screen.Built());
  EXPECT_EQ(document.genRsc[kPlainGim].unpackedSize, 8);
}

TEST_F(ReplaceAllTest, AnOldTempDatIsGoneOnceSomethingWasCompressed) {
  program.Write("temp.dat", SomeBytes(44));
  out.Write("gim.gim", Bytes(600, 3));
  out.Write("model.omg", SomeBytes(9));
  ReplaceAll();
  SetGim(kGim, Bytes(600, 3));
  ExpectFileOf(screen);
}

// Sounds.

TEST_F(ReplaceAllTest, ASoundTakesBothChannelsOrTheLeftOneOrTheWholeOne) {
  const Bytes left = SomeBytes(1001, 21);
  const Bytes right = SomeBytes(2000, 22);
  const Bytes whole = SomeBytes(301, 23);
  for (unsigned bits = 0; bits < 8; ++bits) {
    SCOPED_TRACE(bits);
    OpenScreen(FullScreen());
    EmptyOut();
    const Names endings = Subset({".ch1.vag", ".ch2.vag", ".vag"}, bits);
    for (const std::string& ending : endings) {
      for (const char* label : {"mono", "stereo"}) {
        out.Write(label + ending, ending == ".ch1.vag" ? left : ending == ".ch2.vag" ? right : whole);
      }
    }
    ReplaceAll();
    const bool hasLeft = Contains(endings, ".ch1.vag");
    for (VagSpec& vag : screen.vags) {
      if (hasLeft && Contains(endings, ".ch2.vag")) {
        vag = {.label = vag.label, .channel1 = left, .channel2 = right};
      } else if (hasLeft || Contains(endings, ".vag")) {
        vag = {.label = vag.label, .channel1 = hasLeft ? left : whole};
      }
    }
    // Where the second sound becomes mono it keeps the offset of its second channel, which had moved with the first
    // sound's end; that was at 32 before.
    const std::int32_t moved = (LengthOf(screen.vags[0].channel1) + 3) / 4 * 4 - 32;
    screen.vags[1].monoChannel2Offset = built.layout.vags[1].channel2Offset + moved;
    ExpectFileOf(screen);
    EXPECT_EQ(program.Names(), Names());
  }
}

TEST_F(ReplaceAllTest, AStereoSoundWithItsLeftChannelAloneBecomesMono) {
  out.Write("stereo.ch1.vag", SomeBytes(50));
  ReplaceAll();
  const std::int32_t entry = built.layout.vags[1].entry;
  EXPECT_EQ(ReadI16(Content(), entry + 42), 1);
  EXPECT_EQ(ReadI32(Content(), entry + 44), 50);
  EXPECT_EQ(ReadI32(Content(), entry + 52), 50);
  EXPECT_EQ(ReadI32(Content(), entry + 60), 0);
}

TEST_F(ReplaceAllTest, TheSharedValuesAreThoseOfTheLastSound) {
  out.Write("mono.ch1.vag", SomeBytes(5));
  out.Write("mono.ch2.vag", SomeBytes(6));
  out.Write("stereo.vag", SomeBytes(7));
  ReplaceAll();
  EXPECT_EQ(mod.vagChannels, Int16(1));
  EXPECT_EQ(mod.vagSize1, 7);
  EXPECT_EQ(mod.vagSize2, 0);
  EXPECT_EQ(mod.vagPath, out / "stereo.vag");
}

TEST_F(ReplaceAllTest, AnEmptyWholeSoundIsPassedOver) {
  out.Write("mono.vag", {});
  ReplaceAll();
  ExpectNothingChanged();
}

// Models.

TEST_F(ReplaceAllTest, AModelTakesTheOmgCompressedOrElseTheDatAndKeepsItsUnpackedSize) {
  const Bytes omg(700, 9);
  const Bytes dat = SomeBytes(80);
  for (unsigned bits = 0; bits < 4; ++bits) {
    SCOPED_TRACE(bits);
    OpenScreen(FullScreen());
    EmptyOut();
    const Names names = Subset({"model.omg", "model.dat"}, bits);
    for (const std::string& name : names) {
      out.Write(name, name == "model.omg" ? omg : dat);
    }
    ReplaceAll();
    if (!names.empty()) {
      screen.gmos[0].data = Contains(names, "model.omg") ? DeflateWrapped(omg) : dat;
    }
    ExpectFileOf(screen);
    EXPECT_EQ(document.genRsc[kModel].unpackedSize, 1012);
  }
}

TEST_F(ReplaceAllTest, AModelTakesNoOtherFile) {
  for (const char* name : {"model.gim", "model.gmo", "model.mig", "model.bmp", "model.vag"}) {
    out.Write(name, SomeBytes(40));
  }
  ReplaceAll();
  ExpectNothingChanged();
}

}  // namespace
}  // namespace kelvane
