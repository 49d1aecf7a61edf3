#include <gtest/gtest.h>

#include "container/GenScan.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TempFolder;

// A file of 2048 bytes in which single fields are set: offset and value.
class GenScanTest : public ::testing::Test {
 protected:
  static constexpr std::int32_t kLabels = 1500;

  void SetLong(std::int32_t offset, std::int32_t value) { WriteI32(content_, offset, value); }
  void SetShort(std::int32_t offset, std::int16_t value) { WriteI16(content_, offset, value); }
  void SetText(std::int32_t offset, std::string_view text) {
    CopyInto(content_, offset, Bytes(text.begin(), text.end()));
  }

  // An entry at `at`: label offset, distance to the next one, format, compression, size, offset, and what stands at its
  // byte 52.
  void SetEntry(std::int32_t at, std::int32_t label, std::int32_t next, std::int16_t format, std::int16_t compression,
                std::int32_t size, std::int32_t offset, std::int32_t unpacked) {
    SetLong(at + 4, label);
    SetLong(at + 20, next);
    SetShort(at + 40, format);
    SetShort(at + 42, compression);
    SetLong(at + 44, size);
    SetLong(at + 48, offset);
    SetLong(at + 52, unpacked);
  }

  bool Scan() {
    RcoFile file(folder_.Write("f.rco", content_));
    document_.labelBase = kLabels;
    return ScanGenRsc(file, document_);
  }

  void SetUp() override {
    document_.dataAreas = {1700, 100, 0, 0, 0, 0};
    // label area: "aa" at 0, "bb" at 4, "cc" at 8, "dd" at 12
    SetText(kLabels, std::string_view("aa\0\0bb\0\0cc\0\0dd\0\0", 16));
  }

  TempFolder folder_;
  Bytes content_ = Bytes(2048);
  RcoDocument document_;
};

TEST_F(GenScanTest, FillsARecordForEveryEntryImagesThenSoundsThenModels) {
  SetLong(36, 200);      // image root
  SetLong(200 + 16, 2);  // two images
  SetEntry(240, 0, 56, 5, 1, 90, 0, 500);
  SetEntry(296, 4, 0, 0, 0, 30, 92, 777);
  SetLong(28, 400);  // VAG root
  SetLong(400 + 16, 1);
  SetEntry(440, 8, 0, 1, 2, 40, 0, 20);
  SetLong(32, 600);  // GMO root
  SetLong(600 + 16, 1);
  SetEntry(640, 12, 0, 0, 0, 10, 4, 0);

  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.genCount.Int(), 4);
  EXPECT_EQ(document_.lst.Lines(), (std::vector<std::string>{"[GIM] aa", "[PNG] bb", "[VAG] cc", "[GMO] dd"}));
  ASSERT_EQ(document_.genRsc.size(), 4U);
  EXPECT_EQ(document_.genRsc[0], (GenRsc{0, 90, 1, 5, 1, 500, 244, 0}));
  EXPECT_EQ(document_.genRsc[1], (GenRsc{92, 30, 1, 0, 0, -1, 300, 4}));
  EXPECT_EQ(document_.genRsc[2], (GenRsc{0, 40, 2, 1, 2, -1, 444, 8}));
  EXPECT_EQ(document_.genRsc[3], (GenRsc{4, 10, 3, 0, 0, -1, 644, 12}));
}

TEST_F(GenScanTest, PrefixesFollowTheFormat) {
  const std::vector<std::pair<std::int16_t, std::string>> table = {{0, "[PNG] aa"}, {1, "[JPG] aa"}, {2, "[TIF] aa"},
                                                                   {3, "[GIF] aa"}, {4, "[BMP] aa"}, {5, "[GIM] aa"}};
  SetLong(36, 200);
  SetLong(216, 1);
  for (const auto& [format, line] : table) {
    SetEntry(240, 0, 0, format, 0, 1, 0, 0);
    EXPECT_TRUE(Scan());
    EXPECT_EQ(document_.lst.Lines(), std::vector<std::string>{line});
  }
}

TEST_F(GenScanTest, AnImageOfAnyOtherFormatHasARecordAndNoLine) {
  SetLong(36, 200);
  SetLong(216, 2);
  SetEntry(240, 0, 56, 6, 0, 1, 0, 0);
  SetEntry(296, 4, 0, 5, 0, 1, 0, 0);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.genCount.Int(), 2);
  EXPECT_EQ(document_.lst.Lines(), std::vector<std::string>{"[GIM] bb"});
}

TEST_F(GenScanTest, AFileWithNoDataAreaGetsAnEmptyListAndTheRecordsStay) {
  document_.genRsc.assign(3, GenRsc());
  document_.genCount = 3;
  document_.lst.Add("old");
  document_.dataAreas = {0, 9, -1, 9, 0, 9};
  SetLong(36, 200);
  SetLong(216, 1);
  EXPECT_FALSE(Scan());
  EXPECT_EQ(document_.lst.Count(), 0);
  EXPECT_EQ(document_.genCount.Int(), 3);
  EXPECT_EQ(document_.genRsc.size(), 3U);
}

TEST_F(GenScanTest, ATableWithACountOf0ContributesNothing) {
  SetLong(36, 200);
  SetLong(216, 0);
  SetLong(32, 600);
  SetLong(616, 1);
  SetEntry(640, 12, 0, 0, 0, 10, 4, 0);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.lst.Lines(), std::vector<std::string>{"[GMO] dd"});
}

TEST_F(GenScanTest, WithoutAnyEntryTheCountIs0AndTheResultFalse) {
  document_.genCount = 3;
  document_.genRsc.assign(3, GenRsc());
  SetLong(36, 200);
  EXPECT_FALSE(Scan());
  EXPECT_EQ(document_.genCount.Int(), 0);
  EXPECT_EQ(document_.genRsc.size(), 3U);
}

TEST_F(GenScanTest, ARootOf6OrLessCountsAsAbsent) {
  SetLong(36, 6);
  SetLong(6 + 16, 5);  // would be its count
  EXPECT_FALSE(Scan());
  SetLong(36, 7);
  SetLong(7 + 16, 1);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.genRsc[0].entryPos, 7 + 40 + 4);
}

TEST_F(GenScanTest, ARootWhosePlaceIsBeyond32BitsIsFailure6) {
  // 4 is added to every root first, also where there is no data area; then 12 to where a table's count stands.
  SetLong(32, 0x7FFFFFFC);
  EXPECT_EQ(NumberOf([&] { Scan(); }), 6);
  document_.dataAreas = {};
  EXPECT_EQ(NumberOf([&] { Scan(); }), 6);
  SetLong(32, 0x7FFFFFFB);
  EXPECT_FALSE(Scan());
  document_.dataAreas[0] = 1700;
  EXPECT_EQ(NumberOf([&] { Scan(); }), 6);
}

TEST_F(GenScanTest, ACompressedImageThatIsTheLastOfItsTableHasNoUnpackedSize) {
  SetLong(36, 200);
  SetLong(216, 1);
  SetEntry(240, 0, 0, 5, 1, 90, 0, 500);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.genRsc[0].unpackedSize, -1);
  EXPECT_EQ(document_.genRsc[0].rscCompression.Int(), 1);
}

TEST_F(GenScanTest, AnEntryOf52BytesHasNoUnpackedSizeAndOneOf53Has) {
  SetLong(36, 200);
  SetLong(216, 3);
  SetEntry(240, 0, 52, 5, 0, 90, 0, 0);
  SetEntry(292, 4, 53, 5, 0, 91, 0, 0);
  SetLong(292 + 52, 123);
  SetEntry(345, 8, 0, 5, 0, 92, 0, 0);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.genRsc[0].unpackedSize, -1);
  EXPECT_EQ(document_.genRsc[1].unpackedSize, 123);
  EXPECT_EQ(document_.genRsc[1].entryPos, 296);
  EXPECT_EQ(document_.genRsc[2].entryPos, 349);
}

TEST_F(GenScanTest, AVagEntryLongerThan52BytesKeepsItsChannelSizeInUnpackedSize) {
  SetLong(28, 400);
  SetLong(416, 2);
  SetEntry(440, 8, 68, 1, 1, 40, 0, 36);
  SetEntry(508, 12, 0, 1, 1, 40, 40, 40);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.genRsc[0].unpackedSize, 36);
}

TEST_F(GenScanTest, AnEntryLabelOfMinus1ReadsOneByteBeforeTheLabelArea) {
  SetLong(36, 200);
  SetLong(216, 1);
  SetEntry(240, -1, 0, 5, 0, 1, 0, 0);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.lst.Lines(), std::vector<std::string>{"[GIM] "});
  SetText(kLabels - 1, "Z");
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.lst.Lines(), std::vector<std::string>{"[GIM] Zaa"});
}

TEST_F(GenScanTest, OnlyASumBelow0GivesNoLabel) {
  SetLong(36, 200);
  SetLong(216, 1);
  SetEntry(240, -kLabels - 1, 0, 5, 0, 1, 0, 0);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.lst.Lines(), std::vector<std::string>{"[GIM] <No label>"});
}

TEST_F(GenScanTest, ACountAbove32767IsFailure6) {
  SetLong(36, 200);
  SetLong(216, 20000);
  SetLong(32, 600);
  SetLong(616, 12768);
  EXPECT_EQ(NumberOf([&] { Scan(); }), 6);
}

TEST_F(GenScanTest, ACountThatOverstatesTheTableReadsNonsenseRecordsToTheLast) {
  SetLong(36, 200);
  SetLong(216, 32767);
  SetEntry(240, 0, 56, 5, 0, 1, 0, 0);
  EXPECT_TRUE(Scan());
  EXPECT_EQ(document_.genCount.Int(), 32767);
  EXPECT_EQ(document_.genRsc.size(), 32767U);
}

TEST_F(GenScanTest, ANegativeCountOfOneTableLetsTheOthersOverrunTheRecords) {
  SetLong(36, 200);
  SetLong(216, 2);
  SetEntry(240, 0, 56, 5, 0, 1, 0, 0);
  SetLong(28, 400);
  SetLong(416, -1);
  EXPECT_EQ(NumberOf([&] { Scan(); }), 9);
}

TEST_F(GenScanTest, ADistanceThatLeadsBeforeTheFileIsAFailure) {
  SetLong(36, 200);
  SetLong(216, 2);
  SetEntry(240, 0, -100000, 5, 0, 1, 0, 0);
  EXPECT_EQ(NumberOf([&] { Scan(); }), 5);
}

TEST_F(GenScanTest, ADistanceThatLeadsBeyond32BitsIsFailure6EvenInTheLastEntryWhoseRecordIsMade) {
  SetLong(36, 200);
  SetLong(216, 1);
  SetEntry(240, 0, 0x7FFFFFFF, 5, 0, 7, 0, 9);
  EXPECT_EQ(NumberOf([&] { Scan(); }), 6);
  EXPECT_EQ(document_.genRsc[0], (GenRsc{0, 7, 1, 5, 0, 9, 244, 0}));
  EXPECT_EQ(document_.lst.Lines(), std::vector<std::string>{"[GIM] aa"});
  // The farthest place there is: the next entry would begin at 2147483643, and so its label at 2147483647.
  SetLong(260, 0x7FFFFFFF - 244);
  EXPECT_TRUE(Scan());
}

TEST_F(GenScanTest, GetGenDataPosAddsTheAreaOfTheKind) {
  document_.dataAreas = {1000, 0, 2000, 0, 3000, 0};
  document_.genRsc.resize(3);
  for (int i = 0; i < 3; ++i) {
    document_.genRsc[static_cast<std::size_t>(i)].rscKind = i + 1;
    document_.genRsc[static_cast<std::size_t>(i)].dataOffset = 8;
  }
  EXPECT_EQ(GetGenDataPos(document_, 0), 1008);
  EXPECT_EQ(GetGenDataPos(document_, 1), 2008);
  EXPECT_EQ(GetGenDataPos(document_, 2), 3008);
  EXPECT_EQ(NumberOf([&] { (void)GetGenDataPos(document_, 3); }), 9);
  EXPECT_EQ(NumberOf([&] { (void)GetGenDataPos(document_, -1); }), 9);
  document_.genRsc[0].dataOffset = 0x7FFFFFFF;
  EXPECT_EQ(NumberOf([&] { (void)GetGenDataPos(document_, 0); }), 6);
}

}  // namespace
}  // namespace kelvane
