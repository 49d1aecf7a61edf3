#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "common/Files.h"
#include "resources/GenDataExport.h"
#include "resources/OpenedRco.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using test::OpenedRco;
using test::SomeBytes;
using Names = std::vector<std::string>;

class ExportGenDataTest : public ::testing::Test, protected OpenedRco {
 protected:
  bool Export(fs::path path, int index = 0) { return ExportGenData(mod, document, path, index, prompts); }
  [[nodiscard]] Bytes Read(const std::string& name) const { return ReadWholeFile(out / name); }
};

// The current folder for the time of a scope.
class CurrentFolder {
 public:
  explicit CurrentFolder(const fs::path& folder) : before_(fs::current_path()) { fs::current_path(folder); }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() { fs::current_path(before_); }

 private:
  fs::path before_;
};

TEST_F(ExportGenDataTest, TheBytesComeOutAsTheyAreStored) {
  builder.AddImage({.label = "image", .data = SomeBytes(101, 1)});
  builder.AddImage({.label = "other", .data = SomeBytes(2000, 2)});
  builder.AddVag({.label = "mono", .channel1 = SomeBytes(55, 3)});
  builder.AddGmo({.label = "model", .data = SomeBytes(77, 4)});
  Open();
  for (int index = 0; index < 4; ++index) {
    EXPECT_TRUE(Export(out / std::to_string(index), index));
  }
  EXPECT_EQ(Read("0"), SomeBytes(101, 1));
  EXPECT_EQ(Read("1"), SomeBytes(2000, 2));
  EXPECT_EQ(Read("2"), SomeBytes(55, 3));
  EXPECT_EQ(Read("3"), SomeBytes(77, 4));
  EXPECT_EQ(ReadWholeFile(mod.cCurFile), built.bytes);
}

TEST_F(ExportGenDataTest, AFileThatIsThereIsReplacedWhole) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  out.Write("file", Bytes(500));
  EXPECT_TRUE(Export(out / "file"));
  EXPECT_EQ(Read("file"), SomeBytes(10));
}

TEST_F(ExportGenDataTest, ALinkThatIsThereIsReplacedAndNotFollowed) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  out.Write("precious", Bytes(500));
  fs::create_symlink(out / "precious", out / "link");
  EXPECT_TRUE(Export(out / "link"));
  EXPECT_FALSE(fs::is_symlink(out / "link"));
  EXPECT_EQ(Read("precious"), Bytes(500));
}

TEST_F(ExportGenDataTest, ASizeBelow1IsFalse) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  for (const std::int32_t size : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    document.genRsc[0].dataSize = size;
    EXPECT_FALSE(Export(out / "file")) << size;
  }
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExportGenDataTest, APlaceBelow1IsFalse) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  for (const std::int32_t position : {0, -1}) {
    document.genRsc[0].dataOffset = position - document.dataAreas[0];
    EXPECT_FALSE(Export(out / "file")) << position;
  }
  EXPECT_EQ(out.Names(), Names());
  document.genRsc[0].dataOffset = 1 - document.dataAreas[0];
  EXPECT_TRUE(Export(out / "file"));
  EXPECT_EQ(Read("file"), Bytes(built.bytes.begin() + 1, built.bytes.begin() + 11));
}

TEST_F(ExportGenDataTest, BytesBeyondTheEndOfTheFileAreZeros) {
  builder.AddImage({.label = "image", .data = SomeBytes(8)});
  Open();
  document.genRsc[0].dataSize = 20;
  EXPECT_TRUE(Export(out / "file"));
  Bytes expected = SomeBytes(8);
  expected.resize(20);
  EXPECT_EQ(Read("file"), expected);
  document.genRsc[0].dataOffset = 1 << 30;
  EXPECT_TRUE(Export(out / "file"));
  EXPECT_EQ(Read("file"), Bytes(20));
}

TEST_F(ExportGenDataTest, AStereoSoundGivesTwoFilesAndNoneUnderTheChosenName) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(300, 1), .channel2 = SomeBytes(400, 2)});
  Open();
  fs::path path = out / "P.vag";
  EXPECT_TRUE(ExportGenData(mod, document, path, 0, prompts));
  EXPECT_EQ(path, out / "P");
  EXPECT_EQ(out.Names(), (Names{"P.ch1.vag", "P.ch2.vag"}));
  EXPECT_EQ(Read("P.ch1.vag"), SomeBytes(300, 1));
  EXPECT_EQ(Read("P.ch2.vag"), SomeBytes(400, 2));
}

TEST_F(ExportGenDataTest, AMonoSoundDoesNotShortenThePath) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(300, 1)});
  Open();
  fs::path path = out / "P.vag";
  EXPECT_TRUE(ExportGenData(mod, document, path, 0, prompts));
  EXPECT_EQ(path, out / "P.vag");
  EXPECT_EQ(out.Names(), Names{"P.vag"});
}

TEST_F(ExportGenDataTest, ThePadBetweenTheChannelsIsDropped) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(1001, 1), .channel2 = SomeBytes(2000, 2)});
  Open();
  ASSERT_EQ(document.genRsc[0].dataSize, 3004);
  EXPECT_TRUE(Export(out / "P.vag"));
  EXPECT_EQ(Read("P.ch1.vag"), SomeBytes(1001, 1));
  EXPECT_EQ(Read("P.ch2.vag"), SomeBytes(2000, 2));
}

TEST_F(ExportGenDataTest, ThePlaceOfChannel2IsTheDistanceOfTheTwoOffsets) {
  builder.AddVag({.label = "first", .channel1 = SomeBytes(64, 9)});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2)});
  Open();
  // Both offsets moved alike: nothing changes, whatever dataSize says.
  const std::int64_t entry = document.genRsc[1].entryPos - 4;
  Bytes content = built.bytes;
  WriteI32(content, entry + 56, 1000);
  WriteI32(content, entry + 64, 1008);
  WriteWholeFile(mod.cCurFile, content);
  document.genRsc[1].dataSize = 1;
  EXPECT_TRUE(Export(out / "P.vag", 1));
  EXPECT_EQ(Read("P.ch1.vag"), SomeBytes(8, 1));
  EXPECT_EQ(Read("P.ch2.vag"), SomeBytes(8, 2));
}

TEST_F(ExportGenDataTest, TheFileTellsTheNumberOfChannelsAndNotTheRecord) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2)});
  Open();
  document.genRsc[0].rscCompression = 1;
  EXPECT_TRUE(Export(out / "P.vag"));
  EXPECT_EQ(out.Names(), (Names{"P.ch1.vag", "P.ch2.vag"}));
}

TEST_F(ExportGenDataTest, AnyOtherNumberOfChannelsIsMono) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2), .channels = 3});
  Open();
  EXPECT_TRUE(Export(out / "P.vag"));
  EXPECT_EQ(out.Names(), Names{"P.vag"});
  EXPECT_EQ(FileLength(out / "P.vag"), 16);
}

TEST_F(ExportGenDataTest, OnlyASoundIsStereo) {
  // An image's compression stands where a sound has its channels.
  builder.AddImage({.label = "image", .compression = 2, .data = SomeBytes(10)});
  Open();
  EXPECT_TRUE(Export(out / "image.vag"));
  EXPECT_EQ(out.Names(), Names{"image.vag"});
}

TEST_F(ExportGenDataTest, OldChannelFilesAreReplacedWhole) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2)});
  Open();
  out.Write("P.ch1.vag", Bytes(100));
  out.Write("P.ch2.vag", Bytes(100));
  out.Write("P.vag", Bytes(3));
  EXPECT_TRUE(Export(out / "P.vag"));
  EXPECT_EQ(Read("P.ch1.vag"), SomeBytes(8, 1));
  EXPECT_EQ(Read("P.ch2.vag"), SomeBytes(8, 2));
  EXPECT_EQ(Read("P.vag"), Bytes(3));
}

TEST_F(ExportGenDataTest, APathOfAtMost4CharactersIsNotCut) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2)});
  Open();
  const CurrentFolder there(out.Path());
  for (const char* name : {".vag", "abc"}) {
    EXPECT_TRUE(Export(name));
  }
  EXPECT_EQ(out.Names(), (Names{".vag.ch1.vag", ".vag.ch2.vag", "abc.ch1.vag", "abc.ch2.vag"}));
}

TEST_F(ExportGenDataTest, CharactersAreCountedAndNotBytes) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2)});
  Open();
  const CurrentFolder there(out.Path());
  EXPECT_TRUE(Export("声音"));
  EXPECT_TRUE(Export("左右声道一"));
  EXPECT_EQ(out.Names(), (Names{"声音.ch1.vag", "声音.ch2.vag", "左.ch1.vag", "左.ch2.vag"}));
}

TEST_F(ExportGenDataTest, AMissingFileIsAskedAboutAndNoIsFalse) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  DeleteFile(mod.cCurFile);
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
  EXPECT_FALSE(Export(out / "file"));
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExportGenDataTest, YesGoesOnBehindTheStatementThatFailed) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  DeleteFile(mod.cCurFile);
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::Yes);   // opening
  prompts.ExpectUnknownFailure(FailureCode::BadFileNumber, Answer::Yes);  // reading
  EXPECT_TRUE(Export(out / "file"));
  EXPECT_EQ(Read("file"), Bytes(10));
}

TEST_F(ExportGenDataTest, NoHalfWayLeavesWhatWasMadeSoFar) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  DeleteFile(mod.cCurFile);
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::Yes);
  prompts.ExpectUnknownFailure(FailureCode::BadFileNumber, Answer::No);
  EXPECT_FALSE(Export(out / "file"));
  EXPECT_EQ(Read("file"), Bytes());
}

TEST_F(ExportGenDataTest, ATargetThatCannotBeMadeIsAskedAbout) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  prompts.ExpectUnknownFailure(FailureCode::PathNotFound, Answer::Yes);   // opening
  prompts.ExpectUnknownFailure(FailureCode::BadFileNumber, Answer::Yes);  // writing
  EXPECT_TRUE(Export(out / "none/file"));
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExportGenDataTest, AFolderInTheWayIsAskedAbout) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  fs::create_directory(out / "file");
  prompts.ExpectUnknownFailure(FailureCode::PathAccessError, Answer::Yes);  // deleting
  prompts.ExpectUnknownFailure(FailureCode::PathAccessError, Answer::No);   // opening
  EXPECT_FALSE(Export(out / "file"));
  EXPECT_TRUE(fs::is_directory(out / "file"));
}

TEST_F(ExportGenDataTest, ASizeBeyondMemoryIsAskedAbout) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  document.genRsc[0].dataSize = std::numeric_limits<std::int32_t>::max();
  prompts.ExpectUnknownFailure(FailureCode::OutOfMemory, Answer::Yes);
  EXPECT_TRUE(Export(out / "file"));
  EXPECT_EQ(Read("file"), Bytes());
}

TEST_F(ExportGenDataTest, AChannelWithoutBytesIsAskedAbout) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = Bytes()});
  Open();
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  EXPECT_FALSE(Export(out / "P.vag"));
  EXPECT_EQ(Read("P.ch1.vag"), SomeBytes(8, 1));
  EXPECT_EQ(Read("P.ch2.vag"), Bytes());
}

TEST_F(ExportGenDataTest, AChannelInFrontOfTheFileIsAskedAbout) {
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2)});
  Open();
  Bytes content = built.bytes;
  WriteI32(content, document.genRsc[0].entryPos - 4 + 64, -100000);
  WriteWholeFile(mod.cCurFile, content);
  prompts.ExpectUnknownFailure(FailureCode::InvalidCall, Answer::No);
  EXPECT_FALSE(Export(out / "P.vag"));
  WriteI32(content, document.genRsc[0].entryPos - 4 + 56, 1);
  WriteI32(content, document.genRsc[0].entryPos - 4 + 64, std::numeric_limits<std::int32_t>::min());
  WriteWholeFile(mod.cCurFile, content);
  prompts.ExpectUnknownFailure(FailureCode::Overflow, Answer::No);
  EXPECT_FALSE(Export(out / "P.vag"));
}

TEST_F(ExportGenDataTest, ARowWithoutARecordIsAskedAbout) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  EXPECT_FALSE(Export(out / "file", 1));
  EXPECT_EQ(out.Names(), Names());
}

TEST_F(ExportGenDataTest, TheOpenFileIsNeverWrittenOver) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2)});
  Open();
  fs::create_symlink(mod.cCurFile, out / "link");
  for (const fs::path& path : {mod.cCurFile, out / "link", home / "." / "page.rco"}) {
    prompts.ExpectUnknownFailure(FailureCode::PermissionDenied, Answer::Yes);  // deleting
    prompts.ExpectUnknownFailure(FailureCode::PermissionDenied, Answer::Yes);  // opening
    prompts.ExpectUnknownFailure(FailureCode::BadFileNumber, Answer::Yes);     // writing
    EXPECT_TRUE(Export(path));
    EXPECT_EQ(ReadWholeFile(mod.cCurFile), built.bytes);
  }
  fs::rename(mod.cCurFile, home / "page.ch1.vag");
  mod.cCurFile = home / "page.ch1.vag";
  prompts.ExpectUnknownFailure(FailureCode::PermissionDenied, Answer::No);
  EXPECT_FALSE(Export(home / "page.vag", 1));
  EXPECT_EQ(ReadWholeFile(mod.cCurFile), built.bytes);
}

TEST_F(ExportGenDataTest, AnExporterReadsTheFileOnceAndTellsWhatItWrote) {
  builder.AddImage({.label = "image", .data = SomeBytes(10, 1)});
  builder.AddImage({.label = "other", .data = SomeBytes(20, 2)});
  builder.AddVag({.label = "sound", .channel1 = SomeBytes(8, 1), .channel2 = SomeBytes(8, 2)});
  Open();
  GenDataExporter exporter(mod, document, prompts);
  fs::path path = out / "a";
  EXPECT_EQ(exporter.Written(), nullptr);
  EXPECT_TRUE(exporter.Export(path, 0));
  ASSERT_NE(exporter.Written(), nullptr);
  EXPECT_EQ(*exporter.Written(), SomeBytes(10, 1));

  DeleteFile(mod.cCurFile);
  path = out / "b";
  EXPECT_TRUE(exporter.Export(path, 1));
  ASSERT_NE(exporter.Written(), nullptr);
  EXPECT_EQ(*exporter.Written(), SomeBytes(20, 2));
  EXPECT_EQ(Read("b"), SomeBytes(20, 2));

  path = out / "c.vag";
  EXPECT_TRUE(exporter.Export(path, 2));
  EXPECT_EQ(exporter.Written(), nullptr);
}

TEST_F(ExportGenDataTest, AnExporterTellsNothingOfAFileThatMetAFailure) {
  builder.AddImage({.label = "image", .data = SomeBytes(10)});
  Open();
  GenDataExporter exporter(mod, document, prompts);
  fs::path path = out / "none/file";
  prompts.ExpectUnknownFailure(FailureCode::PathNotFound, Answer::Yes);
  prompts.ExpectUnknownFailure(FailureCode::BadFileNumber, Answer::Yes);
  EXPECT_TRUE(exporter.Export(path, 0));
  EXPECT_EQ(exporter.Written(), nullptr);
}

}  // namespace
}  // namespace kelvane
