#include <bit>

#include "cli/CliFixture.h"

namespace kelvane {
namespace {

class PageCommandsTest : public test::CliFixture {
 protected:
  PageCommandsTest() {
    test::RcoBuilder builder;
    builder.AddImage({.label = "bg", .data = Bytes(8, 1), .unpackedSize = 8});
    builder.AddImage({.label = "logo", .data = Bytes(8, 2)});
    builder.AddEvent("native:/anm_home");
    // A page without a position block: an image, a float, flags, an event, nothing.
    builder.AddPage(
        {.label = "page_main",
         .entryClass = 1,
         .body = {test::ImageRef("bg"), 1.5F, 0x111, test::EventRef("native:/anm_home"), test::BlankRef(), 7}});
    test::EntrySpec plane{.label = "plane_bg", .entryClass = 2};
    for (int i = 0; i < 13; ++i) {
      plane.body.emplace_back(static_cast<float>(i) * 0.5F);
    }
    plane.body.emplace_back(0x222);
    builder.AddPage(plane);
    builder.AddPage({.label = "page_last", .entryClass = 1, .body = {1}});
    builder.AddAnimation({.label = "anim_in", .entryClass = 1, .body = {480.0F}});
    built = builder.Build();
    path = File("a.rco", built.bytes);
  }
  // The word at an index of a page entry's body.
  [[nodiscard]] std::int32_t Word(std::size_t page, int index) const {
    return ReadI32(ReadWholeFile(path), built.layout.pages[page].entry + 40 + index * 4);
  }

  test::BuiltRco built;
  std::string path;
};

TEST_F(PageCommandsTest, PagesPrintsTheLines) {
  std::ostringstream expected;
  expected << std::hex << std::uppercase << "0\tpage_main @ 0x" << built.layout.pages[0].entry << "\n1\tplane_bg @ 0x"
           << built.layout.pages[1].entry << "\n2\tpage_last @ 0x" << built.layout.pages[2].entry << '\n';
  EXPECT_EQ(Run({"pages", path}).out, expected.str());
}

TEST_F(PageCommandsTest, ExpertAddsTheTypes) {
  EXPECT_NE(Run({"pages", path, "--expert"}).out.find(" [0x801]\n"), std::string::npos);
  EXPECT_EQ(Run({"pages", path}).out.find("[0x801]"), std::string::npos);
}

TEST_F(PageCommandsTest, RecordsPrintsEveryFieldInDecimal) {
  std::ostringstream expected;
  for (std::size_t i = 0; i < 3; ++i) {
    const test::EntryPlace& place = built.layout.pages[i];
    expected << i << '\t' << place.label << '\t' << place.length << '\t' << place.entry << '\t'
             << (i == 1 ? 0x802 : 0x801) << "\t0\n";
  }
  EXPECT_EQ(Run({"pages", "--records", path}).out, expected.str());
}

TEST_F(PageCommandsTest, EntryPrintsTheWords) {
  EXPECT_EQ(Run({"entry", path, "page", "0"}).out,
            "row\t0\t[image] bg\nrow\t1\t1.5\nrow\t2\t0x00000111\nrow\t3\t[event] native:/anm_home\nrow\t4\t[blank]\n"
            "row\t5\t0x00000007\n");
  EXPECT_EQ(Run({"entry", path, "anim", "0"}).out, "row\t0\t480\n");
}

TEST_F(PageCommandsTest, EntryPrintsThePositionBlockFirst) {
  EXPECT_EQ(
      Run({"entry", path, "page", "1"}).out,
      "pos\t0\t0\npos\t1\t0.5\npos\t2\t1\npos\t3\t1.5\npos\t4\t2\npos\t5\t2.5\npos\t6\t3\npos\t7\t3.5\npos\t8\t4\n"
      "pos\t9\t4.5\npos\t10\t5\npos\t11\t5.5\npos\t12\t6\nrow\t0\t0x00000222\n");
}

TEST_F(PageCommandsTest, ATableThatIsNeitherIsWrongUsage) {
  for (const char* table : {"text", "0", "1", "Page", "pages", ""}) {
    EXPECT_EQ(Run({"entry", path, table, "0"}).status, 2) << table;
    EXPECT_EQ(Run({"set-word", path, table, "0", "0", "1"}).status, 2) << table;
  }
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

TEST_F(PageCommandsTest, ChoicesListsTheValuesOfAReference) {
  EXPECT_EQ(Run({"choices", path, "0", "0"}).out, "0\t244\tbg\t*\n1\t300\tlogo\t\n");
}

TEST_F(PageCommandsTest, ARowWithoutAListHasNoChoices) {
  for (const char* row : {"1", "2", "5"}) {
    const test::CliResult none = Run({"choices", path, "0", row});
    EXPECT_EQ(none.status, 1) << row;
    EXPECT_EQ(none.out, "") << row;
    EXPECT_EQ(none.err, "error: this row has no list of values\n") << row;
  }
  const test::CliResult blank = Run({"choices", path, "0", "4"});
  EXPECT_EQ(blank.status, 1);
  EXPECT_EQ(blank.out, "");
  EXPECT_EQ(blank.err, "info: Not much can be done with a blank entry... :S\n");
}

TEST_F(PageCommandsTest, SetWordTakesANumberForAFloat) {
  EXPECT_EQ(Run({"set-word", path, "page", "0", "1", "-2.25"}).status, 0);
  EXPECT_EQ(std::bit_cast<float>(Word(0, 2)), -2.25F);
}

TEST_F(PageCommandsTest, SetWordTakes8DigitsForAHexadecimalWord) {
  EXPECT_EQ(Run({"set-word", path, "page", "0", "2", "0000ABCD"}).status, 0);
  EXPECT_EQ(Word(0, 3), 0xABCD);
  EXPECT_EQ(Run({"set-word", path, "page", "0", "2", "ABC"}).status, 2);
  EXPECT_EQ(Word(0, 3), 0xABCD);
}

TEST_F(PageCommandsTest, SetWordTakesARowForAReference) {
  EXPECT_EQ(Run({"set-word", path, "page", "0", "0", "1"}).status, 0);
  EXPECT_EQ(Word(0, 1), 300);
}

TEST_F(PageCommandsTest, ARowThatTheListOfValuesDoesNotHaveIsRefusedAndAnythingElseIsWrongUsage) {
  for (const char* row : {"2", "-1", "99999999999"}) {
    const test::CliResult result = Run({"set-word", path, "page", "0", "0", row});
    EXPECT_EQ(result.status, 1) << row;
    EXPECT_EQ(result.err, std::string("error: VALUE ") + row + " is not there: the list has 2\n");
  }
  for (const char* row : {"logo", "1x", "0.5", " 1"}) {
    EXPECT_EQ(Run({"set-word", path, "page", "0", "0", row}).status, 2) << row;
  }
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

TEST_F(PageCommandsTest, AValueThatBeginsLikeAnOptionStandsBehindTwoHyphens) {
  EXPECT_EQ(Run({"set-word", path, "page", "0", "1", "-.5"}).status, 2);
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
  EXPECT_EQ(Run({"set-word", path, "page", "0", "1", "--", "-.5"}).status, 0);
  EXPECT_EQ(std::bit_cast<float>(Word(0, 2)), -0.5F);
  EXPECT_EQ(
      Run({"set-position", path, "1", "--", "-.5", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "-x"})
          .status,
      0);
  EXPECT_EQ(std::bit_cast<float>(Word(1, 0)), -0.5F);
  EXPECT_EQ(Word(1, 12), 0);
}

TEST_F(PageCommandsTest, AnEmptyValueIsACancelAndLeavesTheFileAlone) {
  for (const char* row : {"0", "1", "2"}) {
    const test::CliResult result = Run({"set-word", path, "page", "0", row, ""});
    EXPECT_EQ(result.status, 1) << row;
    EXPECT_EQ(result.out + result.err, "");
  }
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
  EXPECT_FALSE(FileExists(path + ".bak"));
}

TEST_F(PageCommandsTest, ABlankRowIsToldAndEndsWith1) {
  const test::CliResult result = Run({"set-word", path, "page", "0", "4", "1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "info: Not much can be done with a blank entry... :S\n");
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

TEST_F(PageCommandsTest, SetWordChangesAnAnimation) {
  EXPECT_EQ(Run({"set-word", path, "anim", "0", "0", "272"}).status, 0);
  EXPECT_EQ(Run({"entry", path, "anim", "0"}).out, "row\t0\t272\n");
}

TEST_F(PageCommandsTest, SetPositionWritesThe13Floats) {
  EXPECT_EQ(
      Run({"set-position", path, "1", "-1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "abc"}).status,
      0);
  EXPECT_EQ(std::bit_cast<float>(Word(1, 0)), -1.0F);
  EXPECT_EQ(std::bit_cast<float>(Word(1, 11)), 12.0F);
  EXPECT_EQ(std::bit_cast<float>(Word(1, 12)), 0.0F);
  EXPECT_EQ(Word(1, 13), 0x222);
  EXPECT_EQ(Run({"set-position", path, "1", "1", "2"}).status, 2);
  EXPECT_EQ(
      Run({"set-position", path, "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13"}).status, 1);
}

// Texts that stand for several values, for none, or for a command elsewhere are each the text of one box.
TEST_F(PageCommandsTest, SetPositionTakesEveryTextAsThatOfOneBox) {
  EXPECT_EQ(Run({"set-position", path, "1", "[1,2]", "", "%%", "{}", "3,4", "[5]", "[]", "page", "set-position", "1 2",
                 "'6'", "7;8", "\"9\""})
                .status,
            0);
  const float expected[] = {0, 0, 0, 0, 3, 0, 0, 0, 0, 12, 0, 7, 0};
  for (int i = 0; i < 13; ++i) {
    EXPECT_EQ(std::bit_cast<float>(Word(1, i)), expected[i]) << i;
  }
  const Bytes before = ReadWholeFile(path);
  EXPECT_EQ(Run({"set-position", path, "1", "[1,2]", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13"}).status,
            2);
  EXPECT_EQ(Run({"set-position", path, "1", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14"})
                .status,
            2);
  EXPECT_EQ(ReadWholeFile(path), before);
}

TEST_F(PageCommandsTest, AreasListsTablesLabelsAndEvents) {
  EXPECT_EQ(
      Run({"areas", path}).out,
      "page\t0\tpage_main\npage\t1\tplane_bg\npage\t2\tpage_last\nanim\t0\tanim_in\nlabel\t0\tbg\nlabel\t1\tlogo\n"
      "label\t2\tpage_main\nlabel\t3\tplane_bg\nlabel\t4\tpage_last\nlabel\t5\tanim_in\n"
      "native\t0\tnative:/anm_home\n");
}

TEST_F(PageCommandsTest, PageAddPutsAnEntryIn) {
  const test::CliResult result =
      Run({"page", "add", path, "--at", "1", "--depth", "0", "--class", "1", "--label", "page_new"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(Run({"pages", path}).out.find("1\tpage_new @ 0x"), std::string::npos) << Run({"pages", path}).out;
  EXPECT_EQ(Run({"page", "add", path, "--at", "0", "--depth", "0", "--class", "1", "--label", "x"}).status, 1);
}

TEST_F(PageCommandsTest, AClassOutside1To25IsWrongUsage) {
  for (const char* kind : {"0", "26", "257", "-1", "x", "0x1", ""}) {
    EXPECT_EQ(Run({"page", "add", path, "--at", "1", "--depth", "0", "--class", kind, "--label", "x"}).status, 2)
        << kind;
  }
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

TEST_F(PageCommandsTest, AClassIsDecimal) {
  EXPECT_EQ(Run({"page", "add", path, "--at", "1", "--depth", "0", "--class", "02", "--label", "x"}).status, 0);
  EXPECT_NE(Run({"pages", path, "--expert"}).out.find("\n1\tx @ 0x"), std::string::npos);
  EXPECT_NE(Run({"pages", path, "--records"}).out.find("\t2050\t0\n2\t"), std::string::npos);
}

TEST_F(PageCommandsTest, AnEmptyDepthIsToldAndEndsWith1) {
  const test::CliResult result = Run({"page", "add", path, "--at", "1", "--depth", "", "--class", "1", "--label", "x"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "warning: Must enter a depth value!\n");
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

TEST_F(PageCommandsTest, RowsThatAreNotThereAreRefusedAndWhatIsNoRowIsWrongUsage) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> kCases = {
      {{"entry", path, "page", "3"}, "ROW 3 is not there: the file has 3"},
      {{"entry", path, "anim", "-1"}, "ROW -1 is not there: the file has 1"},
      {{"choices", path, "3", "0"}, "ROW 3 is not there: the file has 3"},
      {{"choices", path, "0", "6"}, "DATAROW 6 is not there: the file has 6"},
      {{"set-word", path, "page", "0", "6", "1"}, "DATAROW 6 is not there: the file has 6"},
      {{"set-word", path, "anim", "1", "0", "1"}, "ROW 1 is not there: the file has 1"}};
  for (const auto& [arguments, message] : kCases) {
    const test::CliResult result = Run(arguments);
    EXPECT_EQ(result.status, 1) << message;
    EXPECT_EQ(result.out, "") << message;
    EXPECT_EQ(result.err, "error: " + message + "\n");
  }
  EXPECT_EQ(Run({"entry", path, "page", "one"}).status, 2);
  EXPECT_EQ(Run({"choices", path, "0"}).status, 2);
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

}  // namespace
}  // namespace kelvane
