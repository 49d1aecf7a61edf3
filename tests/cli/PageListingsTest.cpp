// What the commands about pages print, in lines and as JSON, of a file with every kind of reference.
#include "cli/CliFixture.h"

namespace kelvane {
namespace {

class PageListings : public test::CliFixture {
 protected:
  PageListings() {
    test::RcoBuilder b;
    b.AddImage({.label = "img\tb", .data = Bytes(4), .unpackedSize = 4});
    b.AddGmo({.label = "gmo", .data = Bytes(4)});
    b.AddLanguage(0x10000);
    b.AddLanguage(0x10001);
    b.AddText({.label = "txt", .strings = {u"a", u"b"}});
    b.AddEvent("native:/one");
    b.AddEvent("native:/two");
    test::EntrySpec block{.label = "block", .entryClass = 13, .body = {0x20}};
    block.position = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12.5F}};
    b.AddPage({.label = "page",
               .body = {test::EventRef("native:/two"), test::TextRef("txt"), test::ImageRef(0), test::ModelRef("gmo"),
                        test::PageRef("block", test::kRefPage7), test::AnimRef("anim"), test::PageRef("page")},
               .children = {block}});
    b.AddAnimation({.label = "anim", .body = {1.5F}, .children = {{.entryClass = 2, .body = {3}}}});
    b.SetPointers(test::RcoTable::kPage, {1, -1, 0});
    built = b.Build();
    path = File("a.rco", built.bytes);
  }
  std::string Place(std::int32_t position) const { return std::to_string(position); }

  test::BuiltRco built;
  std::string path;
};

std::string Hex(std::int32_t value) {
  std::ostringstream text;
  text << std::hex << std::uppercase << value;
  return text.str();
}

TEST_F(PageListings, PagesAndAnimsPrintTheirLinesAsJson) {
  const auto& pages = built.layout.pages;
  EXPECT_EQ(Run({"--json", "pages", path}).out,
            "[\n  {\n    \"row\": 0,\n    \"line\": \"page @ 0x" + Hex(pages[0].entry) +
                "\"\n  },\n  {\n    \"row\": 1,\n    \"line\": \"   block @ 0x" + Hex(pages[1].entry) + "\"\n  }\n]\n");
  EXPECT_EQ(Run({"anims", path, "--json", "--expert"}).out,
            "[\n  {\n    \"row\": 0,\n    \"line\": \"anim @ 0x" + Hex(built.layout.animEntries[0].entry) +
                " [0x901]\"\n  },\n  {\n    \"row\": 1,\n    \"line\": \"   [0x902] 设置对象坐标\"\n  }\n]\n");
}

TEST_F(PageListings, AnimsPrintsRecordsOfOperationsToo) {
  const auto& anims = built.layout.animEntries;
  const std::string label = std::to_string(anims[0].label);
  EXPECT_EQ(Run({"anims", "--records", path}).out,
            "0\t" + label + "\t44\t" + Place(anims[0].entry) + "\t2305\t0\n" +  //
                "1\t-1\t44\t" + Place(anims[1].entry) + "\t2306\t1\n");
  EXPECT_EQ(Run({"anims", "--records", "--json", path}).out,
            "[\n  {\n    \"row\": 0,\n    \"recLabel\": " + label + ",\n    \"recSize\": 44,\n    \"recPos\": " +
                Place(anims[0].entry) + ",\n    \"recType\": 2305,\n    \"recDepth\": 0\n  },\n" +
                "  {\n    \"row\": 1,\n    \"recLabel\": -1,\n    \"recSize\": 44,\n    \"recPos\": " +
                Place(anims[1].entry) + ",\n    \"recType\": 2306,\n    \"recDepth\": 1\n  }\n]\n");
}

TEST_F(PageListings, EntryPrintsTheBlockAndTheRowsAsJson) {
  std::string expected = "[\n";
  for (int i = 0; i < 13; ++i) {
    expected += "  {\n    \"part\": \"pos\",\n    \"index\": " + std::to_string(i) + ",\n    \"text\": \"" +
                (i == 12 ? "12.5" : std::to_string(i)) + "\"\n  },\n";
  }
  expected += "  {\n    \"part\": \"row\",\n    \"index\": 0,\n    \"text\": \"0x00000020\"\n  }\n]\n";
  EXPECT_EQ(Run({"--json", "entry", path, "page", "1"}).out, expected);
}

TEST_F(PageListings, EntryEscapesTheNamesOfReferences) {
  EXPECT_EQ(Run({"entry", path, "page", "0"}).out,
            "row\t0\t[event] native:/two\nrow\t1\t[text] txt\nrow\t2\t[image] img\\tb\nrow\t3\t[model] gmo\n"
            "row\t4\t[page] block\nrow\t5\t[anim] anim\nrow\t6\t[page] page\n");
}

TEST_F(PageListings, ChoicesListsWhatEachReferenceIsChosenFrom) {
  const std::string page = Place(built.layout.pages[0].entry);
  const std::string block = Place(built.layout.pages[1].entry);
  const std::string kLists[] = {
      "0\t0\tnative:/one\t\n1\t12\tnative:/two\t*\n",  // byte offsets in the event area
      "0\t0\ttxt\t*\n",                                // items
      // By the layout of a header, two heads and entries of 56 bytes.
      "0\t244\timg\\tb\t*\n",
      // The value of row 0 belongs to the image, which has none.
      "0\t0\tgmo\t*\n",
      "0\t" + page + "\tpage\t\n1\t" + block + "\tblock\t*\n",
      "0\t" + Place(built.layout.animEntries[0].entry) + "\tanim\t*\n",
      "0\t" + page + "\tpage\t*\n1\t" + block + "\tblock\t\n",
  };
  for (std::size_t row = 0; row < std::size(kLists); ++row) {
    EXPECT_EQ(Run({"choices", path, "0", std::to_string(row)}).out, kLists[row]) << row;
  }
}

TEST_F(PageListings, ChoicesPrintsTheSameAsJson) {
  EXPECT_EQ(
      Run({"choices", path, "0", "0", "--json"}).out,
      "[\n  {\n    \"row\": 0,\n    \"value\": 0,\n    \"label\": \"native:/one\",\n    \"selected\": \"\"\n  },\n"
      "  {\n    \"row\": 1,\n    \"value\": 12,\n    \"label\": \"native:/two\",\n    \"selected\": \"*\"\n  }\n]\n");
}

TEST_F(PageListings, AreasPrintsThePointersAsStoredInLinesAndAsJson) {
  EXPECT_EQ(Run({"areas", path}).out,
            "page\t0\tblock\npage\t1\t --- BLANK --- \npage\t2\tpage\nanim\t0\tanim\nlabel\t0\ttxt\n"
            "label\t1\timg\\tb\nlabel\t2\tgmo\nlabel\t3\tpage\nlabel\t4\tblock\nlabel\t5\tanim\n"
            "native\t0\tnative:/one\nnative\t1\tnative:/two\n");
  const std::string json = Run({"areas", path, "--json"}).out;
  EXPECT_TRUE(
      json.starts_with("[\n  {\n    \"list\": \"page\",\n    \"index\": 0,\n    \"text\": \"block\"\n  },\n"
                       "  {\n    \"list\": \"page\",\n    \"index\": 1,\n    \"text\": \" --- BLANK --- \"\n  },\n"))
      << json;
  EXPECT_TRUE(
      json.ends_with("  {\n    \"list\": \"native\",\n    \"index\": 1,\n    \"text\": \"native:/two\"\n  }\n]\n"))
      << json;
}

TEST_F(PageListings, AreasOfAFileWithoutTablesPrintsNothing) {
  const test::CliResult result = Run({"areas", File("b.rco", test::RcoBuilder().Build().bytes)});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(Run({"areas", "--json", File("b.rco", test::RcoBuilder().Build().bytes)}).out, "[]\n");
}

// A value of a page, a model, an animation or by number is in the file by the time that its row fails.
TEST_F(PageListings, SetWordOfAPageIsWrittenAndEndsWith3) {
  const test::CliResult result = Run({"set-word", path, "page", "0", "6", "1"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "Run-time error '5': Invalid procedure call or argument\n");
  Bytes expected = built.bytes;
  WriteI32(expected, built.layout.pages[0].entry + 40 + 13 * 4, built.layout.pages[1].entry);
  EXPECT_EQ(ReadWholeFile(path), expected);
  EXPECT_EQ(ReadWholeFile(path + ".bak"), built.bytes);
}

TEST_F(PageListings, SetWordOfAReferencePrintsNothingOfItsOwn) {
  const test::CliResult result = Run({"set-word", path, "page", "0", "0", "0"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(Run({"choices", path, "0", "0"}).out, "0\t0\tnative:/one\t*\n1\t12\tnative:/two\t\n");
}

// Operations below operations leave fewer records than lines.
TEST_F(PageListings, EntryOfALineWithoutARecordEndsWith3) {
  test::RcoBuilder b;
  b.AddAnimation({.label = "anim", .children = {{.entryClass = 2, .children = {{.entryClass = 3, .body = {1}}}}}});
  const std::string nested = File("b.rco", b.Build().bytes);
  const test::CliResult result = Run({"entry", nested, "anim", "2"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "Run-time error '9': Subscript out of range\n");
}

TEST_F(PageListings, EntryOfABlockThatIsTooShortPrintsNothingAndEndsWith3) {
  test::RcoBuilder b;
  b.AddPage({.label = "plane", .entryClass = 2, .body = {1, 2, 3}});
  const test::CliResult result = Run({"entry", File("b.rco", b.Build().bytes), "page", "0"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "Run-time error '9': Subscript out of range\n");
}

}  // namespace
}  // namespace kelvane
