#include <algorithm>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "common/Files.h"
#include "gim/GimToBitmap.h"
#include "resources/Codec.h"
#include "resources/Extraction.h"
#include "resources/GenDataExport.h"
#include "resources/OpenedRco.h"
#include "resources/SmallGim.h"
#include "support/Deflate.h"
#include "support/Failures.h"
#include "support/GimBuilder.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using test::DeflateWrapped;
using test::NumberOf;
using test::OpenedRco;
using test::SmallGim;
using test::SmallGimBitmap;
using test::SmallGimBitmap32;
using test::SomeBytes;
using Names = std::vector<std::string>;
using Contents = std::map<std::string, Bytes>;

// A block of the type 3, which doesn't exist.
const Bytes kBrokenStream = {0x78, 0xDA, 0x07, 0, 0, 0};

Contents ContentsOf(const test::TempFolder& folder) {
  Contents contents;
  for (const std::string& name : folder.Names()) {
    contents[name] = ReadWholeFile(folder / name);
  }
  return contents;
}

class ExtractAllTest : public ::testing::Test, protected OpenedRco {
 protected:
  // Presses the button; the folder dialog is answered with `out`.
  void ExtractAll() {
    prompts.ExpectFolder("选择输出目录", out.Path());
    prompts.ExpectTell("完成", Icon::Information);
    CmdExtractAll(mod, document, prompts, progress);
  }
  // The same, ended by a failure.
  int FailureOfExtractAll() {
    prompts.ExpectFolder("选择输出目录", out.Path());
    return NumberOf([&] { CmdExtractAll(mod, document, prompts, progress); });
  }
  [[nodiscard]] Bytes Read(const std::string& name) const { return ReadWholeFile(out / name); }

  test::ScriptedProgress progress;
};

TEST_F(ExtractAllTest, ACancelledDialogStops) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  prompts.ExpectFolder("选择输出目录", {});
  CmdExtractAll(mod, document, prompts, progress);
  EXPECT_TRUE(progress.Shown().empty());
}

TEST_F(ExtractAllTest, AModelComesOutAsStoredAndUnpackedUnderTheNameOfAGim) {
  const Bytes deflated = DeflateWrapped(SomeBytes(300));
  builder.AddGmo({.label = "model", .compression = 1, .data = deflated});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"model.dat", deflated}, {"model.gim", SomeBytes(300)}}));
}

TEST_F(ExtractAllTest, APlainModelGivesTwoEqualFiles) {
  Bytes model = SomeBytes(300);
  model[0] = 'O';
  model[1] = 'M';
  builder.AddGmo({.label = "model", .data = model});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"model.dat", model}, {"model.gim", model}}));
}

TEST_F(ExtractAllTest, AMonoSoundGivesOneFileAndAStereoSoundTwo) {
  builder.AddVag({.label = "mono", .channel1 = SomeBytes(30, 1)});
  builder.AddVag({.label = "stereo", .channel1 = SomeBytes(31, 2), .channel2 = SomeBytes(32, 3)});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"mono.vag", SomeBytes(30, 1)},
                                       {"stereo.ch1.vag", SomeBytes(31, 2)},
                                       {"stereo.ch2.vag", SomeBytes(32, 3)}}));
}

TEST_F(ExtractAllTest, ACompressedImageIsUnpackedUnderItsExtensionAndTheDatStays) {
  const std::vector<std::string> extensions = {"png", "jpg", "tiff", "gif", "bmp"};
  Contents expected;
  for (std::uint16_t format = 0; format < extensions.size(); ++format) {
    const std::string label = "image" + std::to_string(format);
    const Bytes data = SomeBytes(300, format);
    builder.AddImage({.label = label, .format = format, .compression = 1, .data = DeflateWrapped(data)});
    expected[label + ".dat"] = DeflateWrapped(data);
    expected[label + "." + extensions[format]] = data;
  }
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), expected);
}

TEST_F(ExtractAllTest, AnUncompressedImageComesOutAsStored) {
  const std::vector<std::string> extensions = {"png", "jpg", "tiff", "gif", "bmp"};
  Contents expected;
  for (std::uint16_t format = 0; format < extensions.size(); ++format) {
    const std::string label = "image" + std::to_string(format);
    builder.AddImage({.label = label, .format = format, .data = SomeBytes(300, format)});
    expected[label + "." + extensions[format]] = SomeBytes(300, format);
  }
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), expected);
}

TEST_F(ExtractAllTest, AnImageOfAnyOtherCompressionIsNotExported) {
  for (const std::uint16_t compression : {std::uint16_t{2}, std::uint16_t{3}, std::uint16_t{0xFFFF}}) {
    builder.AddImage({.label = "image", .compression = compression, .data = SmallGim()});
    builder.AddImage({.label = "png", .format = 0, .compression = compression, .data = SomeBytes(10)});
  }
  Open();
  ExtractAll();
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExtractAllTest, ACompressedGimBecomesBothBitmaps) {
  builder.AddImage({.label = "image", .compression = 1, .data = DeflateWrapped(SmallGim())});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"image.dat", DeflateWrapped(SmallGim())},
                                       {"image.gim", SmallGim()},
                                       {"image.bmp", SmallGimBitmap()},
                                       {"image.32bit.bmp", SmallGimBitmap32()}}));
}

TEST_F(ExtractAllTest, AnUncompressedGimBecomesBothBitmaps) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  ExtractAll();
  EXPECT_EQ(
      ContentsOf(out),
      (Contents{{"image.gim", SmallGim()}, {"image.bmp", SmallGimBitmap()}, {"image.32bit.bmp", SmallGimBitmap32()}}));
}

TEST_F(ExtractAllTest, APlainGimThatIsSaidToBeCompressedPassesThrough) {
  builder.AddImage({.label = "image", .compression = 1, .data = SmallGim()});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"image.dat", SmallGim()},
                                       {"image.gim", SmallGim()},
                                       {"image.bmp", SmallGimBitmap()},
                                       {"image.32bit.bmp", SmallGimBitmap32()}}));
}

TEST_F(ExtractAllTest, ADeflatedGimThatIsSaidToBePlainStaysDeflated) {
  builder.AddImage({.label = "image", .compression = 0, .data = DeflateWrapped(SmallGim())});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"image.gim", DeflateWrapped(SmallGim())}}));
}

TEST_F(ExtractAllTest, ALastEntryWhoseUnpackedSizeCannotBeToldIsTreatedByItsCompressionOnly) {
  builder.AddImage({.label = "last", .compression = 1, .data = DeflateWrapped(SmallGim()), .unpackedSize = 1000});
  Open();
  ASSERT_EQ(document.genRsc[0].unpackedSize, -1);
  ExtractAll();
  EXPECT_EQ(Read("last.gim"), SmallGim());
}

TEST_F(ExtractAllTest, AResourceOfStoredSize0GivesNothing) {
  builder.AddImage({.label = "gim", .data = {}});
  builder.AddImage({.label = "deflated", .compression = 1, .data = {}});
  builder.AddGmo({.label = "model", .data = {}});
  builder.AddVag({.label = "sound", .channel1 = {}});
  Open();
  ExtractAll();
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExtractAllTest, BrokenDataLeaveAnEmptyFileAndAreNotToldOf) {
  builder.AddImage({.label = "gim", .compression = 1, .data = kBrokenStream});
  builder.AddImage({.label = "png", .format = 0, .compression = 1, .data = kBrokenStream});
  builder.AddGmo({.label = "model", .data = kBrokenStream});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"gim.dat", kBrokenStream},
                                       {"gim.gim", {}},
                                       {"png.dat", kBrokenStream},
                                       {"png.png", {}},
                                       {"model.dat", kBrokenStream},
                                       {"model.gim", {}}}));
}

TEST_F(ExtractAllTest, AnIndexedImageWithoutAPaletteLeavesTheHeaderOfItsSecondBitmap) {
  const test::GimImageBlock indexes = {.width = 4, .height = 2, .bits = 8, .pixels = {0, 1, 1, 0, 1, 1, 0, 0}};
  builder.AddImage({.label = "image", .data = test::GimBuilder().Image(indexes).Build()});
  Open();
  ExtractAll();
  EXPECT_EQ(out.Names(), (Names{"image.32bit.bmp", "image.bmp", "image.gim"}));
  EXPECT_EQ(Read("image.32bit.bmp").size(), 54U);
  EXPECT_EQ(Read("image.bmp").size(), 54U + 8);
}

TEST_F(ExtractAllTest, TwoRowsWithTheSameLabelOverwriteEachOther) {
  builder.AddImage({.label = "image", .compression = 1, .data = DeflateWrapped(SmallGim(1))});
  builder.AddImage({.label = "image", .data = SmallGim(2)});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"image.dat", DeflateWrapped(SmallGim(1))},
                                       {"image.gim", SmallGim(2)},
                                       {"image.bmp", SmallGimBitmap(2)},
                                       {"image.32bit.bmp", SmallGimBitmap32(2)}}));
}

TEST_F(ExtractAllTest, FilesThatAreThereAreReplacedWhole) {
  for (const char* name : {"image.dat", "image.gim", "image.bmp", "image.32bit.bmp"}) {
    out.Write(name, Bytes(10000));
  }
  builder.AddImage({.label = "image", .compression = 1, .data = DeflateWrapped(SmallGim())});
  Open();
  ExtractAll();
  EXPECT_EQ(ContentsOf(out), (Contents{{"image.dat", DeflateWrapped(SmallGim())},
                                       {"image.gim", SmallGim()},
                                       {"image.bmp", SmallGimBitmap()},
                                       {"image.32bit.bmp", SmallGimBitmap32()}}));
}

TEST_F(ExtractAllTest, RecordsAreTakenInTheirOrderAndProgressIsShown) {
  builder.AddGmo({.label = "model", .data = SomeBytes(10)});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(10)});
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  ExtractAll();
  EXPECT_EQ(progress.Shown(), (std::vector<std::pair<int, int>>{{0, 3}, {1, 3}, {2, 3}, {3, 3}}));
}

TEST_F(ExtractAllTest, ALabelNeverLeadsOutOfTheFolder) {
  fs::create_directory(out / "folder");
  builder.AddImage({.label = "../up", .format = 0, .data = SomeBytes(1, 1)});
  builder.AddImage({.label = "/root", .format = 0, .data = SomeBytes(2, 2)});
  builder.AddImage({.label = "a/b", .format = 0, .data = SomeBytes(3, 3)});
  builder.AddImage({.label = "..", .format = 0, .data = SomeBytes(4, 4)});
  builder.AddImage({.label = ".", .format = 0, .data = SomeBytes(5, 5)});
  Open();
  prompts.ExpectFolder("选择输出目录", out / "folder");
  prompts.ExpectTell("完成", Icon::Information);
  CmdExtractAll(mod, document, prompts, progress);
  EXPECT_EQ(out.Names(), Names{"folder"});
  Names names;
  for (const auto& entry : fs::directory_iterator(out / "folder")) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (Names{".._up.png", "_.png", "__.png", "_root.png", "a_b.png"}));
}

TEST_F(ExtractAllTest, AFolderWithOrWithoutATrailingSeparatorIsTheSame) {
  builder.AddImage({.label = "png", .format = 0, .data = SomeBytes(5)});
  Open();
  prompts.ExpectFolder("选择输出目录", out.Path() / "");
  prompts.ExpectTell("完成", Icon::Information);
  CmdExtractAll(mod, document, prompts, progress);
  EXPECT_EQ(out.Names(), Names{"png.png"});
}

TEST_F(ExtractAllTest, AnEmptyLabelGivesFilesThatAreExtensionsOnly) {
  builder.AddImage({.label = "", .data = SmallGim()});
  Open();
  ExtractAll();
  EXPECT_EQ(out.Names(), (Names{".32bit.bmp", ".bmp", ".gim"}));
}

TEST_F(ExtractAllTest, AnImageOfAnUnknownFormatHasNoRowSoThatLaterLabelsMoveUp) {
  builder.AddImage({.label = "unknown", .format = 6, .data = SomeBytes(6, 1)});
  builder.AddImage({.label = "png", .format = 0, .data = SomeBytes(7, 2)});
  Open();
  ASSERT_EQ(document.lst.Count(), 1);
  ExtractAll();
  // The first record takes the only row's label and has no extension; the second one finds no row.
  EXPECT_EQ(ContentsOf(out), (Contents{{"png.", SomeBytes(6, 1)}, {".png", SomeBytes(7, 2)}}));
}

TEST_F(ExtractAllTest, AClosedDocumentGivesNothing) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  document.genRsc.clear();
  document.lst.Clear();
  ExtractAll();
  EXPECT_EQ(out.Names(), Names());
  EXPECT_EQ(progress.Shown(), (std::vector<std::pair<int, int>>{{0, 0}}));
}

TEST_F(ExtractAllTest, ACountBelow1GivesNothingWhateverRecordsAreThere) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  document.genCount = -1;
  ExtractAll();
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExtractAllTest, AFailureWithoutAHandlerEndsTheRunAndLeavesWhatWasWritten) {
  builder.AddImage({.label = "first", .format = 0, .data = SomeBytes(9, 1)});
  builder.AddImage({.label = "short", .compression = 1, .data = {0x78, 0xDA}});
  builder.AddImage({.label = "third", .format = 0, .data = SomeBytes(9, 2)});
  Open();
  EXPECT_EQ(FailureOfExtractAll(), 9);
  EXPECT_EQ(ContentsOf(out),
            (Contents{{"first.png", SomeBytes(9, 1)}, {"short.dat", {0x78, 0xDA}}, {"short.gim", {}}}));
}

TEST_F(ExtractAllTest, AFailureAnsweredWithNoLeavesThatResourceAndGoesOnWithTheNext) {
  fs::create_directory(out / "first.dat");
  builder.AddImage({.label = "first", .compression = 1, .data = DeflateWrapped(SmallGim())});
  builder.AddImage({.label = "second", .format = 0, .data = SomeBytes(9)});
  Open();
  prompts.ExpectFolder("选择输出目录", out.Path());
  prompts.ExpectUnknownFailure(FailureCode::PathAccessError, Answer::No);
  prompts.ExpectTell("完成", Icon::Information);
  CmdExtractAll(mod, document, prompts, progress);
  EXPECT_EQ(out.Names(), (Names{"first.dat", "second.png"}));
}

TEST_F(ExtractAllTest, BehindAFailureAnsweredWithYesTheFilesTellWhatComesNext) {
  fs::create_directory(out / "first.dat");
  builder.AddImage({.label = "first", .compression = 1, .data = DeflateWrapped(SmallGim())});
  Open();
  prompts.ExpectFolder("选择输出目录", out.Path());
  prompts.ExpectUnknownFailure(FailureCode::PathAccessError, Answer::Yes);  // deleting
  prompts.ExpectUnknownFailure(FailureCode::PathAccessError, Answer::Yes);  // opening
  prompts.ExpectUnknownFailure(FailureCode::BadFileNumber, Answer::Yes);    // writing
  // The export counts as done, and the unpacking then meets the folder without a handler.
  EXPECT_EQ(NumberOf([&] { CmdExtractAll(mod, document, prompts, progress); }), 75);
}

TEST_F(ExtractAllTest, AnUncompressedGimIsConvertedWhateverBecameOfItsExport) {
  out.Write("image.gim", SmallGim());
  builder.AddImage({.label = "image", .data = {}});
  Open();
  ExtractAll();
  EXPECT_EQ(
      ContentsOf(out),
      (Contents{{"image.gim", SmallGim()}, {"image.bmp", SmallGimBitmap()}, {"image.32bit.bmp", SmallGimBitmap32()}}));
}

TEST_F(ExtractAllTest, ACompressedGimIsConvertedWhateverBecameOfItsExport) {
  out.Write("image.gim", SmallGim());
  builder.AddImage({.label = "image", .compression = 1, .data = {}});
  Open();
  ExtractAll();
  EXPECT_EQ(
      ContentsOf(out),
      (Contents{{"image.gim", SmallGim()}, {"image.bmp", SmallGimBitmap()}, {"image.32bit.bmp", SmallGimBitmap32()}}));
}

TEST_F(ExtractAllTest, OfAnImageWithoutDataNoBitmapIsMadeWhateverTheImageBeforeItWas) {
  builder.AddImage({.label = "deflated", .compression = 1, .data = DeflateWrapped(SmallGim())});
  builder.AddImage({.label = "none 1", .compression = 1, .data = {}});
  builder.AddImage({.label = "plain", .data = SmallGim(7)});
  builder.AddImage({.label = "none 0", .data = {}});
  Open();
  ExtractAll();
  EXPECT_EQ(out.Names(), (Names{"deflated.32bit.bmp", "deflated.bmp", "deflated.dat", "deflated.gim", "plain.32bit.bmp",
                                "plain.bmp", "plain.gim"}));
  EXPECT_EQ(Read("deflated.bmp"), SmallGimBitmap());
  EXPECT_EQ(Read("plain.bmp"), SmallGimBitmap(7));
}

TEST_F(ExtractAllTest, TheOpenFileItsFolderAndItsRecordsStayAsTheyWere) {
  builder.AddImage({.label = "image", .compression = 1, .data = DeflateWrapped(SmallGim())});
  builder.AddVag({.label = "stereo", .channel1 = SomeBytes(31, 2), .channel2 = SomeBytes(32, 3)});
  builder.AddGmo({.label = "model", .data = SomeBytes(300)});
  Open();
  const RcoDocument before = document;
  const FileDate date = DateOfFile(mod.cCurFile);
  ExtractAll();
  EXPECT_EQ(document.genRsc, before.genRsc);
  EXPECT_EQ(document.lst.Lines(), before.lst.Lines());
  EXPECT_EQ(ReadWholeFile(mod.cCurFile), built.bytes);
  EXPECT_EQ(DateOfFile(mod.cCurFile), date);
  EXPECT_EQ(home.Names(), Names{"page.rco"});  // no .bak
}

TEST_F(ExtractAllTest, ABitmapThatCannotBeMadeIsPassedOver) {
  fs::create_directory(out / "image.bmp");
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  ExtractAll();
  EXPECT_TRUE(fs::is_directory(out / "image.bmp"));
  EXPECT_EQ(Read("image.32bit.bmp"), SmallGimBitmap32());
}

TEST_F(ExtractAllTest, NoTemporaryFileIsLeft) {
  program.Write("tempS.gim", Bytes(1));
  builder.AddImage({.label = "image", .compression = 1, .data = DeflateWrapped(SmallGim())});
  Open();
  ExtractAll();
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(ExtractAllTest, TheOpenFileIsNeverWrittenOver) {
  builder.AddImage({.label = "page", .compression = 1, .data = DeflateWrapped(SmallGim())});
  Open();
  for (const char* name : {"page.gim", "page.bmp", "page.32bit.bmp"}) {
    fs::rename(mod.cCurFile, home / name);
    mod.cCurFile = home / name;
    prompts.ExpectFolder("选择输出目录", home.Path());
    prompts.ExpectTell("完成", Icon::Information);
    CmdExtractAll(mod, document, prompts, progress);
    EXPECT_EQ(ReadWholeFile(mod.cCurFile), built.bytes) << name;
  }
}

// Takes the open file away at the first step.
class FileIsGone : public Progress {
 public:
  explicit FileIsGone(fs::path path) : path_(std::move(path)) {}
  void Show(int done, int) override {
    if (done == 1) {
      DeleteFile(path_);
    }
  }

 private:
  fs::path path_;
};

TEST_F(ExtractAllTest, TheOpenFileIsReadOnceForTheRun) {
  builder.AddImage({.label = "first", .format = 0, .data = SomeBytes(9, 1)});
  builder.AddImage({.label = "second", .format = 0, .data = SomeBytes(9, 2)});
  Open();
  FileIsGone gone(mod.cCurFile);
  prompts.ExpectFolder("选择输出目录", out.Path());
  prompts.ExpectTell("完成", Icon::Information);
  CmdExtractAll(mod, document, prompts, gone);
  EXPECT_EQ(ContentsOf(out), (Contents{{"first.png", SomeBytes(9, 1)}, {"second.png", SomeBytes(9, 2)}}));
}

TEST_F(ExtractAllTest, AnImageTooLargeToBeHeldIsConvertedAllTheSame) {
  // 2,100 x 2,100 pixels of 32 bits: more than 16 MiB.
  constexpr int kSide = 2100;
  constexpr std::size_t kPixelBytes = std::size_t{4} * kSide * kSide;
  const Bytes gim = test::BuildRgbaGim(kSide, kSide, std::vector<std::uint32_t>(kSide * kSide, 0x04030201), false);
  builder.AddImage({.label = "image", .compression = 1, .data = DeflateWrapped(gim, 1)});
  Open();
  ExtractAll();
  EXPECT_EQ(Read("image.gim"), gim);
  for (const char* name : {"image.bmp", "image.32bit.bmp"}) {
    const Bytes bitmap = Read(name);
    ASSERT_EQ(bitmap.size(), 54 + kPixelBytes) << name;
    EXPECT_EQ(ReadU32(bitmap, 54), 0x04010203U) << name;
    EXPECT_EQ(ReadU32(bitmap, 54 + kPixelBytes - 4), 0x04010203U) << name;
  }
}

// The steps of cmdExtractAll, each from file to file.
void ExtractStepByStep(const Mod& mod, const RcoDocument& document, Prompts& prompts, const fs::path& folder) {
  for (int row = 0; row < document.genCount.Int(); ++row) {
    const GenRsc& record = document.genRsc[static_cast<std::size_t>(row)];
    const std::string base = (folder / document.lst.Text(row).substr(6)).string();
    const std::string extension = "." + ExtensionForImageType(record.rscFormat);
    fs::path dat = base + ".dat";
    fs::path vag = base + ".vag";
    fs::path plain = base + extension;
    if (record.rscKind == 3) {
      if (ExportGenData(mod, document, dat, row, prompts)) {
        DecompressFile(base + ".dat", base + ".gim");
      }
    } else if (record.rscKind == 2) {
      ExportGenData(mod, document, vag, row, prompts);
    } else if (record.rscCompression == 1 || record.rscCompression == 0) {
      if (record.rscCompression == 0) {
        ExportGenData(mod, document, plain, row, prompts);
      } else if (ExportGenData(mod, document, dat, row, prompts)) {
        DecompressFile(base + ".dat", base + extension);
      }
      if (record.rscFormat == 5) {
        GimToBitmap(base + ".gim", base + ".bmp", false, mod.cAppPath);
        GimToBitmap(base + ".gim", base + ".32bit.bmp", true, mod.cAppPath);
      }
    }
  }
}

TEST_F(ExtractAllTest, TheFilesAreThoseOfGoingStepByStepFromFileToFile) {
  std::uint32_t seed = 0;
  for (const std::uint16_t format : {std::uint16_t{5}, std::uint16_t{0}, std::uint16_t{4}}) {
    for (const std::uint16_t compression : {std::uint16_t{0}, std::uint16_t{1}, std::uint16_t{2}}) {
      for (const Bytes& data : {SmallGim(static_cast<std::uint8_t>(seed)), DeflateWrapped(SmallGim(3)),
                                DeflateWrapped(SomeBytes(70000, seed)), DeflateWrapped(SomeBytes(65536, seed)),
                                SomeBytes(50, seed), kBrokenStream, Bytes()}) {
        // Every third label comes twice.
        const std::string label = "r" + std::to_string(seed - seed % 3 / 2);
        builder.AddImage({.label = label, .format = format, .compression = compression, .data = data});
        builder.AddGmo({.label = "m" + label, .compression = compression, .data = data});
        ++seed;
      }
    }
  }
  builder.AddVag({.label = "mono", .channel1 = SomeBytes(30, 1)});
  builder.AddVag({.label = "stereo", .channel1 = SomeBytes(31, 2), .channel2 = SomeBytes(32, 3)});
  Open();
  ExtractAll();
  const test::TempFolder other;
  ExtractStepByStep(mod, document, prompts, other.Path());
  EXPECT_EQ(out.Names(), other.Names());
  EXPECT_TRUE(ContentsOf(out) == ContentsOf(other));
  EXPECT_GT(out.Names().size(), 100U);
}

}  // namespace
}  // namespace kelvane
