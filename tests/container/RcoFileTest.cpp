#include <array>
#include <gtest/gtest.h>

#include "common/Files.h"
#include "container/RcoFile.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TempFolder;

const Bytes kContent = {0x10, 0x11, 0x12, 0x13, 0x14, 0x15};

TEST(RcoFile, ReadsFromThePositionAndMovesIt) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  EXPECT_EQ(file.Length(), 6);
  file.Seek(1);
  EXPECT_EQ(file.ReadI16(), 0x1211);
  EXPECT_EQ(file.Position(), 3);
  EXPECT_EQ(file.ReadI32At(0), 0x13121110);
  EXPECT_EQ(file.Position(), 4);
  file.Skip(-3);
  EXPECT_EQ(file.ReadBytes(2), (Bytes{0x11, 0x12}));
}

TEST(RcoFile, BytesBeyondTheEndReadAsZeros) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  EXPECT_EQ(file.ReadI32At(4), 0x1514);
  EXPECT_EQ(file.Position(), 8);
  EXPECT_EQ(file.ReadI32At(1000000), 0);
  EXPECT_EQ(file.Length(), 6);
}

TEST(RcoFile, AnArrayOfNoBytesCannotBeRead) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  EXPECT_EQ(NumberOf([&] { (void)file.ReadBytes(0); }), 9);
  EXPECT_EQ(NumberOf([&] { (void)file.ReadBytes(-1); }), 9);
  EXPECT_EQ(NumberOf([&] { (void)file.ReadBytes(kMaxArrayBytes + 1); }), 7);
}

TEST(RcoFile, ANegativePositionIsFailure5) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  EXPECT_EQ(NumberOf([&] { file.Seek(-1); }), 5);
}

TEST(RcoFile, AClosedFileIsFailure52) {
  RcoFile file;
  EXPECT_EQ(NumberOf([&] { (void)file.ReadI32At(0); }), 52);
  EXPECT_EQ(NumberOf([&] { file.WriteI32(0); }), 52);
  EXPECT_EQ(NumberOf([&] { (void)file.Length(); }), 52);
  EXPECT_EQ(NumberOf([&] { file.Splice(0, 0, {}); }), 52);
  file.Close();
}

TEST(RcoFile, OpeningAFileThatIsNotThereIsFailure53) {
  const TempFolder folder;
  RcoFile file;
  EXPECT_EQ(NumberOf([&] { file.Open(folder / "none"); }), 53);
  EXPECT_FALSE(file.IsOpen());
  EXPECT_FALSE(FileExists(folder / "none"));
}

TEST(RcoFile, ClosingWritesWhatChanged) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  file.WriteI16At(1, 0x2221);
  EXPECT_EQ(ReadWholeFile(folder / "f"), kContent);
  file.Close();
  EXPECT_EQ(ReadWholeFile(folder / "f"), (Bytes{0x10, 0x21, 0x22, 0x13, 0x14, 0x15}));
}

TEST(RcoFile, AFileThatWasOnlyReadKeepsItsDate) {
  const TempFolder folder;
  folder.Write("f", kContent);
  const FileDate date = DateOfFile(folder / "f");
  {
    RcoFile file(folder / "f");
    (void)file.ReadI32();
    file.Close();
  }
  EXPECT_EQ(DateOfFile(folder / "f"), date);
}

TEST(RcoFile, AnOperationThatEndsHalfWayLeavesWhatItHadChanged) {
  const TempFolder folder;
  folder.Write("f", kContent);
  {
    RcoFile file(folder / "f");
    file.WriteI16At(0, 0);
  }
  EXPECT_EQ(ReadWholeFile(folder / "f"), (Bytes{0, 0, 0x12, 0x13, 0x14, 0x15}));
}

TEST(RcoFile, WritingBeyondTheEndFillsTheGapWithZeros) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  file.WriteI16At(8, 0x4241);
  file.Close();
  EXPECT_EQ(ReadWholeFile(folder / "f"), (Bytes{0x10, 0x11, 0x12, 0x13, 0x14, 0x15, 0, 0, 0x41, 0x42}));
}

TEST(RcoFile, AGapThatNoMemoryHoldsIsFailure7AndChangesNothing) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  EXPECT_EQ(NumberOf([&] { file.WriteI32At(0x70000000, 1); }), 7);
  EXPECT_EQ(NumberOf([&] { file.Splice(0x70000000, 0, Bytes{1}); }), 7);
  file.Close();
  EXPECT_EQ(ReadWholeFile(folder / "f"), kContent);
}

TEST(RcoFile, ALookShowsBytesAndLeavesThePosition) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", Bytes{1, 2, 3, 4, 5}));
  file.Seek(2);
  const ByteView seen = file.Look(1, 3);
  EXPECT_EQ(Bytes(seen.begin(), seen.end()), (Bytes{2, 3, 4}));
  EXPECT_TRUE(file.Look(3, 3).empty());
  EXPECT_EQ(file.Position(), 2);
  file.Close();
  EXPECT_EQ(NumberOf([&] { static_cast<void>(file.Look(0, 1)); }), 52);
}

TEST(RcoFile, LongsAreReadAndWrittenInARow) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", Bytes(16)));
  file.WriteLongsAt(4, std::array<std::int32_t, 2>{1, -1});
  std::array<std::int32_t, 3> longs{};
  file.ReadLongsAt(4, longs);
  EXPECT_EQ(longs, (std::array<std::int32_t, 3>{1, -1, 0}));
}

TEST(RcoFile, SplicesLongerShorterAndEqualBytes) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  file.Splice(1, 2, Bytes{1, 2, 3, 4});
  EXPECT_EQ(file.Image(), (Bytes{0x10, 1, 2, 3, 4, 0x13, 0x14, 0x15}));
  file.Splice(1, 4, Bytes{9});
  EXPECT_EQ(file.Image(), (Bytes{0x10, 9, 0x13, 0x14, 0x15}));
  file.Splice(4, 100, Bytes{7});
  EXPECT_EQ(file.Image(), (Bytes{0x10, 9, 0x13, 0x14, 7}));
  file.Splice(5, 0, Bytes{8});
  EXPECT_EQ(file.Image(), (Bytes{0x10, 9, 0x13, 0x14, 7, 8}));
  file.Splice(8, 0, Bytes{1});
  EXPECT_EQ(file.Image(), (Bytes{0x10, 9, 0x13, 0x14, 7, 8, 0, 0, 1}));
  EXPECT_EQ(NumberOf([&] { file.Splice(-1, 0, Bytes{1}); }), 5);
}

TEST(RcoFile, FlushingWritesAndStaysOpen) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", kContent));
  file.Assign(Bytes{5});
  file.Flush();
  EXPECT_EQ(ReadWholeFile(folder / "f"), Bytes{5});
  EXPECT_TRUE(file.IsOpen());
  EXPECT_EQ(file.Length(), 1);
}

}  // namespace
}  // namespace kelvane
