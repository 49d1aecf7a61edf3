#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "common/Files.h"
#include "resources/Extraction.h"
#include "resources/OpenedRco.h"
#include "resources/SmallGim.h"
#include "support/Deflate.h"
#include "support/Failures.h"

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

// A block of the type 3, which doesn't exist.
const Bytes kBrokenStream = {0x78, 0xDA, 0x07, 0, 0, 0};

class ExtractTest : public ::testing::Test, protected OpenedRco {
 protected:
  // Presses the button with a row selected; the dialog is answered with a file in `out` and a filter.
  void Extract(int row, const std::string& name, int filter = 1) {
    document.lst.Select(row);
    prompts.ExpectFileDialog({.path = name.empty() ? fs::path() : out / name, .filterNumber = filter});
    CmdExtract(mod, document, prompts);
    EXPECT_EQ(program.Names(), Names()) << "temporary files were left";
  }
  [[nodiscard]] Bytes Read(const std::string& name) const { return ReadWholeFile(out / name); }
};

TEST_F(ExtractTest, WithNoRowSelectedNothingHappens) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  CmdExtract(mod, document, prompts);
}

TEST_F(ExtractTest, TheDialogIsThatOfTheResource) {
  builder.AddImage({.label = "jpg", .format = 1, .data = SomeBytes(10)});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8)});
  Open();
  const std::vector<std::pair<int, FileDialog>> table = {{0,
                                                          {.title = "选择JPG保存位置",
                                                           .filters = {{"JPG图像(*.jpg)", "*.jpg"}},
                                                           .initialDir = mod.cCurFile,
                                                           .open = false,
                                                           .defaultExt = "jpg"}},
                                                         {1,
                                                          {.title = "选择VAG保存位置",
                                                           .filters = {{"VAG文件(*.vag)", "*.vag"}},
                                                           .initialDir = mod.cCurFile,
                                                           .open = false,
                                                           .defaultExt = "vag"}}};
  for (const auto& [row, expected] : table) {
    document.lst.Select(row);
    prompts.ExpectFileDialog({}, [&wanted = expected](const FileDialog& dialog) {
      EXPECT_EQ(dialog.title, wanted.title);
      EXPECT_EQ(dialog.filters, wanted.filters);
      EXPECT_EQ(dialog.initialDir, wanted.initialDir);
      EXPECT_EQ(dialog.open, wanted.open);
      EXPECT_EQ(dialog.defaultExt, wanted.defaultExt);
    });
    CmdExtract(mod, document, prompts);
  }
}

TEST_F(ExtractTest, ACancelledDialogDoesNothing) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  Extract(0, "", 0);
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExtractTest, AnImageOfAnUnknownFormatAsksNothing) {
  builder.AddImage({.label = "image", .data = SmallGim()});
  Open();
  document.genRsc[0].rscFormat = 6;
  document.lst.Select(0);
  CmdExtract(mod, document, prompts);
}

TEST_F(ExtractTest, AGimBecomesABitmapForcedTo32BitsByFilter1) {
  builder.AddImage({.label = "plain", .data = SmallGim()});
  builder.AddImage({.label = "deflated", .compression = 1, .data = DeflateWrapped(SmallGim(7))});
  Open();
  Extract(0, "plain.bmp", 1);
  Extract(1, "deflated.bmp", 1);
  EXPECT_EQ(Read("plain.bmp"), SmallGimBitmap32());
  EXPECT_EQ(Read("deflated.bmp"), SmallGimBitmap32(7));
  EXPECT_EQ(out.Names(), (Names{"deflated.bmp", "plain.bmp"}));
}

TEST_F(ExtractTest, AGimBecomesABitmapOfItsOwnDepthByFilter2) {
  builder.AddImage({.label = "plain", .data = SmallGim()});
  builder.AddImage({.label = "deflated", .compression = 1, .data = DeflateWrapped(SmallGim(7))});
  Open();
  Extract(0, "plain.bmp", 2);
  Extract(1, "deflated.bmp", 2);
  EXPECT_EQ(Read("plain.bmp"), SmallGimBitmap());
  EXPECT_EQ(Read("deflated.bmp"), SmallGimBitmap(7));
}

TEST_F(ExtractTest, AGimComesOutAsStoredByFilter3) {
  builder.AddImage({.label = "deflated", .compression = 1, .data = DeflateWrapped(SmallGim())});
  Open();
  Extract(0, "raw.dat", 3);
  EXPECT_EQ(Read("raw.dat"), DeflateWrapped(SmallGim()));
}

TEST_F(ExtractTest, AGimComesOutUnpackedByFilter4) {
  builder.AddImage({.label = "deflated", .compression = 1, .data = DeflateWrapped(SmallGim())});
  Open();
  Extract(0, "image.gim", 4);
  EXPECT_EQ(Read("image.gim"), SmallGim());
}

TEST_F(ExtractTest, APlainGimExtractedAsGimComesOutByteForByteAsStored) {
  builder.AddImage({.label = "plain", .data = SmallGim()});
  Open();
  Extract(0, "image.gim", 4);
  EXPECT_EQ(Read("image.gim"), SmallGim());
}

TEST_F(ExtractTest, AModelComesOutUnpackedByFilter1AndAsStoredByFilter2) {
  const Bytes deflated = DeflateWrapped(SomeBytes(300));
  builder.AddGmo({.label = "model", .compression = 1, .data = deflated});
  Open();
  Extract(0, "model.omg", 1);
  Extract(0, "model.dat", 2);
  EXPECT_EQ(Read("model.omg"), SomeBytes(300));
  EXPECT_EQ(Read("model.dat"), deflated);
}

TEST_F(ExtractTest, APlainModelComesOutAsStored) {
  Bytes model = SomeBytes(300);
  model[0] = 'O';
  model[1] = 'M';
  builder.AddGmo({.label = "model", .data = model});
  Open();
  Extract(0, "model.omg", 1);
  EXPECT_EQ(Read("model.omg"), model);
}

TEST_F(ExtractTest, ASoundIsNeverProcessed) {
  const Bytes deflated = DeflateWrapped(SomeBytes(300));
  builder.AddVag({.label = "sound", .channel1 = deflated});
  Open();
  Extract(0, "sound.vag");
  EXPECT_EQ(Read("sound.vag"), deflated);
}

TEST_F(ExtractTest, AStereoSoundGivesItsTwoChannelsAndNoFileUnderTheChosenName) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(10, 1), .channel2 = SomeBytes(11, 2)});
  Open();
  Extract(0, "P.vag");
  EXPECT_EQ(out.Names(), (Names{"P.ch1.vag", "P.ch2.vag"}));
  EXPECT_EQ(Read("P.ch1.vag"), SomeBytes(10, 1));
  EXPECT_EQ(Read("P.ch2.vag"), SomeBytes(11, 2));
}

TEST_F(ExtractTest, ACompressedPngStaysCompressedAndSoDoTheOtherImagesButGim) {
  const Bytes deflated = DeflateWrapped(SomeBytes(300));
  for (std::uint16_t format = 0; format < 5; ++format) {
    builder.AddImage({.label = "image", .format = format, .compression = 1, .data = deflated});
  }
  Open();
  for (int row = 0; row < 5; ++row) {
    const std::string name = std::to_string(row);
    Extract(row, name);
    EXPECT_EQ(Read(name), deflated) << row;
  }
}

TEST_F(ExtractTest, CompressionIsFoundOutFromTheDataAndNotFromTheEntry) {
  builder.AddImage({.label = "said to be plain", .compression = 0, .data = DeflateWrapped(SmallGim())});
  builder.AddImage({.label = "said to be deflated", .compression = 1, .data = SmallGim()});
  Open();
  Extract(0, "0.gim", 4);
  Extract(1, "1.gim", 4);
  EXPECT_EQ(Read("0.gim"), SmallGim());
  EXPECT_EQ(Read("1.gim"), SmallGim());
}

TEST_F(ExtractTest, AnRlzEntryComesOutAsStoredOrIsTakenForADeflateStream) {
  const Bytes rlz = {0x05, 0x00, 0x07, 0x01, 0x02, 0x03};
  builder.AddImage({.label = "image", .compression = 2, .data = rlz});
  Open();
  Extract(0, "raw.dat", 3);
  EXPECT_EQ(Read("raw.dat"), rlz);
  for (const int filter : {1, 2, 4}) {
    prompts.ExpectFileDialog({.path = out / "other", .filterNumber = filter});
    prompts.ExpectTell("解压失败", Icon::Critical);
    CmdExtract(mod, document, prompts);
  }
}

TEST_F(ExtractTest, AResourceOfStoredSize0GivesTheMessage) {
  builder.AddImage({.label = "gim", .data = {}});
  builder.AddImage({.label = "png", .format = 0, .data = {}});
  Open();
  for (const int row : {0, 1}) {
    document.lst.Select(row);
    prompts.ExpectFileDialog({.path = out / "file", .filterNumber = 1});
    prompts.ExpectTell("数据获取失败", Icon::Critical);
    CmdExtract(mod, document, prompts);
  }
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExtractTest, TemporaryFilesOfBeforeGoWithAFailureButStayWithAnExportAsStored) {
  builder.AddImage({.label = "gim", .data = {}});
  builder.AddImage({.label = "png", .format = 0, .data = SomeBytes(5)});
  Open();
  program.Write("temp.dat", Bytes(1));
  program.Write("temp.gim", Bytes(1));
  document.lst.Select(1);
  prompts.ExpectFileDialog({.path = out / "file", .filterNumber = 1});
  CmdExtract(mod, document, prompts);
  EXPECT_EQ(program.Names(), (Names{"temp.dat", "temp.gim"}));
  document.lst.Select(0);
  prompts.ExpectFileDialog({.path = out / "file", .filterNumber = 3});
  prompts.ExpectTell("数据获取失败", Icon::Critical);
  CmdExtract(mod, document, prompts);
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(ExtractTest, BrokenDataGiveTheMessageAndLeaveTheUsersFileAlone) {
  builder.AddImage({.label = "gim", .compression = 1, .data = kBrokenStream});
  Open();
  out.Write("image.bmp", Bytes(3));
  prompts.ExpectFileDialog({.path = out / "image.bmp", .filterNumber = 1});
  prompts.ExpectTell("解压失败", Icon::Critical);
  document.lst.Select(0);
  CmdExtract(mod, document, prompts);
  EXPECT_EQ(Read("image.bmp"), Bytes(3));
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(ExtractTest, BrokenDataExtractedUnpackedLeaveAnEmptyFile) {
  builder.AddGmo({.label = "model", .compression = 1, .data = kBrokenStream});
  Open();
  out.Write("model.omg", Bytes(3));
  prompts.ExpectFileDialog({.path = out / "model.omg", .filterNumber = 1});
  prompts.ExpectTell("解压失败", Icon::Critical);
  document.lst.Select(0);
  CmdExtract(mod, document, prompts);
  EXPECT_EQ(Read("model.omg"), Bytes());
  EXPECT_EQ(program.Names(), Names());
}

TEST_F(ExtractTest, WhatIsNoGimGivesTheMessage) {
  Bytes notGim = SmallGim();
  notGim[5] = '9';
  builder.AddImage({.label = "gim", .data = notGim});
  Open();
  for (const int filter : {1, 2}) {
    prompts.ExpectFileDialog({.path = out / "image.bmp", .filterNumber = filter});
    prompts.ExpectTell("无效的GIM", Icon::Critical);
    document.lst.Select(0);
    CmdExtract(mod, document, prompts);
    EXPECT_EQ(program.Names(), Names());
  }
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExtractTest, AFailureWithoutAHandlerPassesThroughAndTheTemporaryFilesAreGone) {
  builder.AddImage({.label = "gim", .compression = 1, .data = {0x78, 0xDA}});
  Open();
  document.lst.Select(0);
  prompts.ExpectFileDialog({.path = out / "image.bmp", .filterNumber = 1});
  EXPECT_EQ(NumberOf([&] { CmdExtract(mod, document, prompts); }), 9);
  EXPECT_EQ(program.Names(), Names());
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExtractTest, ARowWithoutARecordIsFailure9) {
  builder.AddImage({.label = "gim", .data = SmallGim()});
  Open();
  document.genRsc.clear();
  document.lst.Select(0);
  EXPECT_EQ(NumberOf([&] { CmdExtract(mod, document, prompts); }), 9);
}

TEST_F(ExtractTest, AFailureAnsweredWithNoGivesTheMessage) {
  builder.AddImage({.label = "png", .format = 0, .data = SomeBytes(5)});
  Open();
  document.lst.Select(0);
  prompts.ExpectFileDialog({.path = out / "none/file", .filterNumber = 1});
  prompts.ExpectUnknownFailure(FailureCode::PathNotFound, Answer::No);
  prompts.ExpectTell("数据获取失败", Icon::Critical);
  CmdExtract(mod, document, prompts);
}

TEST_F(ExtractTest, TheOpenFileIsNeverWrittenOver) {
  builder.AddImage({.label = "gim", .data = SmallGim()});
  Open();
  document.lst.Select(0);
  for (const auto& [filter, message] :
       std::vector<std::pair<int, std::string>>{{1, "无效的GIM"}, {2, "无效的GIM"}, {4, "解压失败"}}) {
    prompts.ExpectFileDialog({.path = mod.cCurFile, .filterNumber = filter});
    prompts.ExpectTell(message, Icon::Critical);
    CmdExtract(mod, document, prompts);
  }
  prompts.ExpectFileDialog({.path = mod.cCurFile, .filterNumber = 3});
  prompts.ExpectUnknownFailure(FailureCode::PermissionDenied, Answer::No);
  prompts.ExpectTell("数据获取失败", Icon::Critical);
  CmdExtract(mod, document, prompts);
  EXPECT_EQ(ReadWholeFile(mod.cCurFile), built.bytes);
}

TEST(ExtensionForImageType, EveryFormatHasItsExtension) {
  const std::vector<std::string> table = {"png", "jpg", "tiff", "gif", "bmp", "gim"};
  for (std::size_t format = 0; format < table.size(); ++format) {
    EXPECT_EQ(ExtensionForImageType(Int16(static_cast<std::int64_t>(format))), table[format]);
  }
  for (const int format : {-32768, -1, 6, 32767}) {
    EXPECT_EQ(ExtensionForImageType(format), "") << format;
  }
}

}  // namespace
}  // namespace kelvane
