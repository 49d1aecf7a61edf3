#include <gtest/gtest.h>

#include "container/Labels.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::TempFolder;

Bytes BytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}

std::string LabelIn(const Bytes& content, std::int32_t position) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", content));
  return ReadLabel(file, position);
}

TEST(ReadLabel, ReadsUpToTheFirstNul) {
  EXPECT_EQ(LabelIn(BytesOf(std::string_view("tex_a\0\0\0page\0", 13)), 0), "tex_a");
  EXPECT_EQ(LabelIn(BytesOf(std::string_view("tex_a\0\0\0page\0", 13)), 5), "");
}

TEST(ReadLabel, APositionBelow0GivesNoLabel) {
  EXPECT_EQ(LabelIn(BytesOf("abc"), -1), "<No label>");
}

TEST(ReadLabel, AnOffsetInsideAnotherLabelReadsTheRestOfThatLabel) {
  EXPECT_EQ(LabelIn(BytesOf(std::string_view("tex_a\0", 6)), 4), "a");
}

TEST(ReadLabel, ALabelOf254BytesReadsWhole) {
  Bytes content(255, 'x');
  content[254] = 0;
  content.resize(600, 'y');
  EXPECT_EQ(LabelIn(content, 0), std::string(254, 'x'));
}

TEST(ReadLabel, ALabelOf255BytesReadsAsAnError) {
  Bytes content(256, 'x');
  content[255] = 0;
  EXPECT_EQ(LabelIn(content, 0), "<Error retrieving label>");
}

TEST(ReadLabel, TheEndOfTheFileEndsALabel) {
  EXPECT_EQ(LabelIn(BytesOf("abc"), 1), "bc");
  EXPECT_EQ(LabelIn(BytesOf("abc"), 100), "");
}

TEST(ReadLabel, BytesAreLatin1) {
  EXPECT_EQ(LabelIn(Bytes{0xE9, 0xFF, 0}, 0), "éÿ");
}

TEST(ReadLabel, LeavesThePositionWhereItWas) {
  const TempFolder folder;
  RcoFile file(folder.Write("f", BytesOf("abcdef")));
  file.Seek(3);
  (void)ReadLabel(file, 0);
  EXPECT_EQ(file.Position(), 3);
  (void)ReadLabel(file, -5);
  EXPECT_EQ(file.Position(), 3);
}

TEST(FileNameOfLabel, NeverLeadsOutOfAFolder) {
  EXPECT_EQ(FileNameOfLabel("tex_a"), "tex_a");
  EXPECT_EQ(FileNameOfLabel("../../etc/passwd"), ".._.._etc_passwd");
  EXPECT_EQ(FileNameOfLabel("/root"), "_root");
  EXPECT_EQ(FileNameOfLabel(".."), "__");
  EXPECT_EQ(FileNameOfLabel("."), "_");
  EXPECT_EQ(FileNameOfLabel(""), "");
}

}  // namespace
}  // namespace kelvane
