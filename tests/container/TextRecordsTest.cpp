#include <gtest/gtest.h>

#include "common/Files.h"
#include "container/TextRecords.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TempFolder;

// Three languages of two texts each, whose language records stand at 20, 100 and 180 of a file of 260 bytes.
RcoDocument DocumentOfThreeLanguages() {
  RcoDocument document;
  document.langCount = 3;
  document.textCount = Int16(2);
  document.langPos = {20, 100, 180};
  document.textRsc = {
      {{1, 2, 3}, {4, 5, 6}}, {{0x11, 0x12, 0x13}, {0x14, 0x15, 0x16}}, {{-1, 0, 0x7FFFFFFF}, {7, 8, 9}}};
  return document;
}

TEST(WriteTextRecords, WritesTheRecordsOfTheGivenLanguageAndOfAllLaterOnesAndNothingElse) {
  const TempFolder folder;
  const auto path = folder.Write("f.rco", Bytes(260, 0xEE));
  RcoFile file(path);
  WriteTextRecords(file, DocumentOfThreeLanguages(), Int16(1));
  file.Close();

  Bytes expected(260, 0xEE);
  CopyInto(expected, 148,
           Bytes{0x11, 0, 0, 0, 0x12, 0, 0, 0, 0x13, 0, 0, 0, 0x14, 0, 0, 0, 0x15, 0, 0, 0, 0x16, 0, 0, 0});
  CopyInto(expected, 228,
           Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0x7F, 7, 0, 0, 0, 8, 0, 0, 0, 9, 0, 0, 0});
  EXPECT_EQ(ReadWholeFile(path), expected);
}

TEST(WriteTextRecords, BehindTheLastLanguageNothingIsWritten) {
  const TempFolder folder;
  RcoFile file(folder.Write("f.rco", Bytes(260, 0xEE)));
  WriteTextRecords(file, DocumentOfThreeLanguages(), Int16(3));
  EXPECT_EQ(file.Image(), Bytes(260, 0xEE));
}

TEST(WriteTextRecords, MoreThan2730TextsAreFailure6) {
  EXPECT_EQ(TextRecordBytes(Int16(2730)), Int16(32760));
  const TempFolder folder;
  RcoFile file(folder.Write("f.rco", Bytes(260)));
  RcoDocument document = DocumentOfThreeLanguages();
  document.textCount = Int16(2731);
  EXPECT_EQ(NumberOf([&] { WriteTextRecords(file, document, Int16(0)); }), 6);
}

TEST(WriteTextRecords, NoTextsOrALanguageWithoutItsRecordsAreFailure9) {
  const TempFolder folder;
  RcoFile file(folder.Write("f.rco", Bytes(260)));
  RcoDocument document = DocumentOfThreeLanguages();
  document.textCount = Int16(0);
  EXPECT_EQ(NumberOf([&] { WriteTextRecords(file, document, Int16(0)); }), 9);
  document = DocumentOfThreeLanguages();
  document.textRsc.pop_back();
  EXPECT_EQ(NumberOf([&] { WriteTextRecords(file, document, Int16(0)); }), 9);
}

}  // namespace
}  // namespace kelvane
