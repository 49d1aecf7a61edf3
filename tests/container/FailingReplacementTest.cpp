// Replacements in which a statement fails: what file, records and watcher are left as.
#include "GenWriteFixture.h"

namespace kelvane {
namespace {

using test::Build;
using test::BuiltRco;
using test::Expected;
using test::Filled;

class FailingReplacementTest : public test::GenWriteFixture {};

TEST_F(FailingReplacementTest, AReplacementGivenUpWithNoLeavesFileAndRecordsAndTheWatcherStopped) {
  Open(Build({}).bytes);
  document.genRsc[4].entryPos = 1000000;  // outside of what stands in front of the data
  const auto records = document.genRsc;
  const auto areas = document.dataAreas;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
  EXPECT_FALSE(Replace(0, Filled(50, 1)));
  EXPECT_TRUE(Content() == original);
  EXPECT_TRUE(document.genRsc == records);
  EXPECT_EQ(document.dataAreas, areas);
  EXPECT_EQ(watch.Calls(), std::vector<std::string>{"stop"});
  EXPECT_TRUE(ReadWholeFile(folder / "screen.rco.bak") == original);
}

TEST_F(FailingReplacementTest, AReplacementGoneOnWithYesKeepsWhatTheFailingStepHadDone) {
  const BuiltRco before = Build({});
  Open(before.bytes);
  document.genRsc[4].entryPos = 1000000;
  auto records = document.genRsc;
  const auto areas = document.dataAreas;
  prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::Yes);
  const Bytes data = Filled(48, 1);  // 24 with the padding before
  EXPECT_TRUE(Replace(0, data));
  // The fields of records 0 to 3; neither those of the records behind nor the data areas.
  Expected expected{before.bytes};
  expected.Set(before.layout.images[0].entry + 44, 48);
  expected.Add(before.layout.images[1].entry + 48, 24);
  expected.Add(before.layout.images[2].entry + 48, 24);
  const auto at = expected.bytes.begin() + before.layout.images[0].data;
  expected.bytes.erase(at, at + 24);
  expected.Insert(before.layout.images[0].data, data);
  EXPECT_TRUE(Content() == expected.bytes);
  EXPECT_EQ(watch.Calls(), (std::vector<std::string>{"stop", "start"}));
  records[0].dataSize = 48;
  records[1].dataOffset += 24;
  records[2].dataOffset += 24;
  EXPECT_TRUE(document.genRsc == records);
  EXPECT_EQ(document.dataAreas, areas);
}

TEST_F(FailingReplacementTest, GivenUpWithNoTheUnpackedSizeIsThatOfTheEntryAgain) {
  Open(Build({}).bytes);
  document.genRsc[4].entryPos = 1000000;
  for (const int index : {0, 6}) {
    const auto records = document.genRsc;
    document.genRsc[static_cast<std::size_t>(index)].unpackedSize = 12345;
    prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
    EXPECT_FALSE(Replace(index, Filled(50, 1)));
    EXPECT_TRUE(document.genRsc == records) << index;
  }
}

TEST_F(FailingReplacementTest, WhereTheFileCantBeOpenedTheRecordsStayWhateverIsAnswered) {
  Open(Build({}).bytes);
  mod.cNoUpdatBak = true;
  std::filesystem::remove(mod.cCurFile);
  const auto records = document.genRsc;
  const auto areas = document.dataAreas;
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::Yes);
  for (int statement = 0; statement < 5; ++statement) {
    prompts.ExpectUnknownFailure(FailureCode::BadFileNumber, Answer::Yes);
  }
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::Yes);  // the date
  EXPECT_TRUE(Replace(0, Filled(50, 1)));
  EXPECT_TRUE(document.genRsc == records);
  EXPECT_EQ(document.dataAreas, areas);
  EXPECT_FALSE(FileExists(mod.cCurFile));
}

TEST_F(FailingReplacementTest, AnIndexWithoutARecordIsFailure9) {
  Open(Build({}).bytes);
  for (const int index : {-1, 8}) {
    prompts.ExpectUnknownFailure(FailureCode::SubscriptOutOfRange, Answer::No);
    EXPECT_FALSE(Replace(index, Filled(8, 1)));
  }
  EXPECT_TRUE(Content() == original);
}

TEST_F(FailingReplacementTest, WhereTheFileCantBeWrittenTheRecordsAreThoseOfTheOldFile) {
  std::filesystem::create_directory(folder / "a");
  const Bytes content = Build({}).bytes;
  mod.cCurFile = folder / "a" / "screen.rco";
  WriteWholeFile(mod.cCurFile, content);
  document = test::Scanned(mod.cCurFile);
  const auto records = document.genRsc;
  GenReplacer replacer(Context());
  document.genRsc[0].unpackedSize = 12345;
  EXPECT_TRUE(replacer.Replace(folder.Write("new.dat", Filled(50, 1)), 0));
  EXPECT_TRUE(replacer.Replace(folder.Write("new.dat", Filled(60, 1)), 1));
  EXPECT_FALSE(document.genRsc == records);
  std::filesystem::rename(folder / "a", folder / "b");
  prompts.ExpectUnknownFailure(FailureCode::PathNotFound, Answer::No);
  EXPECT_FALSE(replacer.Finish());
  EXPECT_TRUE(document.genRsc == records);
  EXPECT_FALSE(watch.Running());
  EXPECT_TRUE(ReadWholeFile(folder / "b" / "screen.rco") == content);
}

}  // namespace
}  // namespace kelvane
