#include <nlohmann/json.hpp>

#include "cli/CliFixture.h"

namespace kelvane {
namespace {

class TextCommandsTest : public test::CliFixture {
 protected:
  TextCommandsTest() {
    test::RcoBuilder builder;
    builder.AddLanguage(0x10000);
    builder.AddLanguage(0x10001);
    builder.AddText({.label = "msg_ok", .strings = {u"はい", u"OK"}});
    builder.AddText({.label = "msg_two", .strings = {u"一\n二", u"one\ntwo"}});
    builder.AddText({.label = "msg_none", .strings = {u"終", test::NoText()}});
    built = builder.Build();
    path = File("a.rco", built.bytes);
  }
  test::BuiltRco built;
  std::string path;
};

TEST_F(TextCommandsTest, LangsPrintsTheNamesOfTheLanguages) {
  EXPECT_EQ(Run({"text", "langs", path}).out, "0\t日语\n1\t英语\n");
}

TEST_F(TextCommandsTest, ListPrintsTheLabels) {
  EXPECT_EQ(Run({"text", "list", path}).out, "0\tmsg_ok\n1\tmsg_two\n2\tmsg_none\n");
}

TEST_F(TextCommandsTest, GetPrintsOneTextWithLineFeeds) {
  EXPECT_EQ(Run({"text", "get", path, "1", "0"}).out, "OK\n");
  EXPECT_EQ(Run({"text", "get", path, "0", "1"}).out, "一\n二\n");
  EXPECT_EQ(Run({"text", "get", path, "1", "2"}).out, "\n");
}

TEST_F(TextCommandsTest, ARowThatIsNotThereIsRefused) {
  const test::CliResult result = Run({"text", "get", path, "2", "0"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "error: LANG 2 is not there: the file has 2\n");
  EXPECT_EQ(Run({"text", "get", path, "0", "3"}).status, 1);
  EXPECT_EQ(Run({"text", "get", path, "0", "-1"}).status, 1);
}

TEST_F(TextCommandsTest, DumpPrintsRecordsAndWholeStrings) {
  std::ostringstream expected;
  const char* const texts[2][3] = {{"はい\\0\\0", "一\\r\\n二\\0", "終\\0"}, {"OK\\0\\0", "one\\r\\ntwo\\0", ""}};
  for (std::size_t lang = 0; lang < 2; ++lang) {
    for (std::size_t item = 0; item < 3; ++item) {
      const test::TextPlace& place = built.layout.languages[lang].texts[item];
      expected << lang << '\t' << item << '\t' << built.layout.textLabels[item] << '\t' << place.length << '\t'
               << place.offset << '\t' << texts[lang][item] << '\n';
    }
  }
  EXPECT_EQ(Run({"text", "dump", path}).out, expected.str());
}

TEST_F(TextCommandsTest, ListingsAreJsonDocumentsOnRequest) {
  EXPECT_EQ(Run({"text", "langs", path, "--json"}).out,
            "[\n  {\n    \"lang\": 0,\n    \"name\": \"日语\"\n  },\n  {\n    \"lang\": 1,\n    \"name\": \"英语\"\n  "
            "}\n]\n");
  EXPECT_EQ(Run({"text", "--json", "list", path}).out,
            "[\n  {\n    \"item\": 0,\n    \"label\": \"msg_ok\"\n  },\n  {\n    \"item\": 1,\n    \"label\": "
            "\"msg_two\"\n  },\n  {\n    \"item\": 2,\n    \"label\": \"msg_none\"\n  }\n]\n");
}

TEST_F(TextCommandsTest, DumpAsJsonHoldsTheWholeStringsToo) {
  const nlohmann::json dump = nlohmann::json::parse(Run({"--json", "text", "dump", path}).out);
  ASSERT_EQ(dump.size(), 6U);
  const test::TextPlace& two = built.layout.languages[1].texts[1];
  const nlohmann::json expected = {{"lang", 1},
                                   {"item", 1},
                                   {"textLabel", built.layout.textLabels[1]},
                                   {"textLength", two.length},
                                   {"textOffset", two.offset},
                                   {"text", std::string("one\r\ntwo\0", 9)}};
  EXPECT_EQ(dump[4], expected);
  EXPECT_EQ(dump[5]["text"], "");
}

TEST_F(TextCommandsTest, DumpEscapesWhatWouldBreakALine) {
  EXPECT_EQ(Run({"text", "set", path, "0", "0", "a\tb\\c\rd\ne"}).status, 0);
  const std::string out = Run({"text", "dump", path}).out;
  EXPECT_EQ(out.substr(0, out.find('\n')), "0\t0\t0\t20\t0\ta\\tb\\\\c\\rd\\r\\ne\\0");
}

TEST_F(TextCommandsTest, LanguagesAndLabelsAreShownAsTheListsShowThem) {
  test::RcoBuilder builder;
  builder.AddLanguage(0x10001);
  builder.AddLanguage(0x2000C);
  builder.AddText({.label = "tab\there", .strings = {u"a", u"b"}});
  builder.AddText({.label = "caf\xE9", .strings = {u"a", u"b"}});
  const std::string file = File("b.rco", builder.Build().bytes);
  EXPECT_EQ(Run({"text", "langs", file}).out, "0\t英语\n1\tLanguage 0x2000C\n");
  EXPECT_EQ(Run({"text", "list", file}).out, "0\ttab\\there\n1\tcafé\n");
}

TEST_F(TextCommandsTest, AFileWithoutTextsHasEmptyListings) {
  test::RcoBuilder builder;
  builder.AddImage({.label = "bg", .data = Bytes(8)});
  const std::string file = File("b.rco", builder.Build().bytes);
  for (const char* listing : {"langs", "list", "dump"}) {
    EXPECT_EQ(Run({"text", listing, file}).status, 0);
    EXPECT_EQ(Run({"text", listing, file}).out, "");
    EXPECT_EQ(Run({"text", listing, file, "--json"}).out, "[]\n");
  }
  EXPECT_EQ(Run({"text", "find", file, "0", "x"}).status, 1);
  EXPECT_EQ(Run({"text", "set", file, "0", "0", "x"}).status, 1);
}

TEST_F(TextCommandsTest, AFileOfOneLanguageIsReadAndChanged) {
  test::RcoBuilder builder;
  builder.AddLanguage(0x10001);
  builder.AddText({.label = "t", .strings = {u"alone"}});
  builder.Options().lastLanguageStatesNext = true;
  const std::string file = File("b.rco", builder.Build().bytes);
  EXPECT_EQ(Run({"text", "get", file, "0", "0"}).out, "alone\n");
  EXPECT_EQ(Run({"text", "set", file, "0", "0", "still alone"}).status, 0);
  EXPECT_EQ(Run({"text", "get", file, "0", "0"}).out, "still alone\n");
}

TEST_F(TextCommandsTest, NumbersAreDecimal) {
  EXPECT_EQ(Run({"text", "get", path, "01", "001"}).out, "one\ntwo\n");
  EXPECT_EQ(Run({"text", "get", path, "000", "00"}).out, "はい\n");
  for (const std::string number : {"", "-", "x", "0x1", "1.0", "+1", " 1", "1 ", "99999999999"}) {
    const test::CliResult result = Run({"text", "get", path, "1", number});
    EXPECT_EQ(result.status, 2) << number;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(Run({"text", "find", path, "1", "o", "--from", number}).status, 2) << number;
  }
  // A number of more digits than octal ones have.
  EXPECT_EQ(Run({"text", "get", path, "08", "0"}).err, "error: LANG 8 is not there: the file has 2\n");
}

TEST_F(TextCommandsTest, SetChangesOneText) {
  EXPECT_EQ(Run({"text", "set", path, "1", "0", "Yes, please"}).status, 0);
  EXPECT_EQ(Run({"text", "get", path, "1", "0"}).out, "Yes, please\n");
  EXPECT_EQ(Run({"text", "get", path, "1", "1"}).out, "one\ntwo\n");
  EXPECT_EQ(Run({"text", "get", path, "0", "0"}).out, "はい\n");
  EXPECT_EQ(ReadWholeFile(path + ".bak"), built.bytes);
}

TEST_F(TextCommandsTest, SetReadsStandardInputForAHyphen) {
  EXPECT_EQ(Run({"text", "set", path, "0", "2", "-"}, "第一\n第二").status, 0);
  EXPECT_EQ(Run({"text", "get", path, "0", "2"}).out, "第一\n第二\n");
}

TEST_F(TextCommandsTest, SetTakesAnyTextAsItStands) {
  for (const std::string text :
       {"[x]", "[a,b]", "{}", "list", "text", "a=b", "%s", "\"quoted\"", "-5 HP", "a\\nb", "--", "-x"}) {
    const test::CliResult result = Run({"text", "set", path, "1", "1", "--", text});
    EXPECT_EQ(result.status, 0) << text << result.err;
    EXPECT_EQ(Run({"text", "get", path, "1", "1"}).out, text + "\n");
  }
  EXPECT_EQ(Run({"text", "set", path, "1", "1", ""}).status, 0);
  EXPECT_EQ(Run({"text", "get", path, "1", "1"}).out, "\n");
}

TEST_F(TextCommandsTest, SetKeepsEveryLineBreakOfStandardInputAlsoTheLast) {
  EXPECT_EQ(Run({"text", "set", path, "1", "0", "-"}, "a\r\nb\n").status, 0);
  EXPECT_EQ(Run({"text", "get", path, "1", "0"}).out, "a\nb\n\n");
}

TEST_F(TextCommandsTest, SetOfATextThatIsNotThereChangesNothing) {
  EXPECT_EQ(Run({"text", "set", path, "1", "3", "x"}).err, "error: ITEM 3 is not there: the file has 3\n");
  EXPECT_EQ(Run({"text", "set", path, "1", "3", "x"}).status, 1);
  EXPECT_EQ(Run({"text", "set", path, "2", "0", "x"}).status, 1);
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.rco"});
}

TEST_F(TextCommandsTest, WithoutBackupNoneIsMade) {
  EXPECT_EQ(Run({"--no-backup", "text", "set", path, "1", "0", "x"}).status, 0);
  EXPECT_FALSE(FileExists(path + ".bak"));
}

TEST_F(TextCommandsTest, FindPrintsTheNumberOfTheTextAndNothingElse) {
  EXPECT_EQ(Run({"text", "find", path, "1", "O?E"}).out, "1\n");
  EXPECT_EQ(Run({"text", "find", path, "1", "o"}).out, "0\n");
  EXPECT_EQ(Run({"text", "find", path, "1", "o", "--from", "0"}).out, "1\n");
  EXPECT_EQ(Run({"text", "find", path, "1", "o", "--from", "1"}).out, "0\n");
}

TEST_F(TextCommandsTest, FindTakesBracketsAndHyphensAsPartsOfThePattern) {
  EXPECT_EQ(Run({"text", "find", path, "1", "[t]"}).out, "1\n");
  EXPECT_EQ(Run({"text", "find", path, "1", "[k,x]"}).out, "0\n");
  EXPECT_EQ(Run({"text", "find", path, "1", "--", "-5"}).status, 1);
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

TEST_F(TextCommandsTest, FindBehindATextThatIsNotThereIsRefused) {
  for (const char* from : {"-1", "3"}) {
    const test::CliResult result = Run({"text", "find", path, "1", "o", "--from", from});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("error: ITEM ") + from + " is not there: the file has 3\n");
  }
}

TEST_F(TextCommandsTest, FindOfAnEmptyPatternIsCancelled) {
  const test::CliResult result = Run({"text", "find", path, "1", ""});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out + result.err, "");
}

TEST_F(TextCommandsTest, FindThatFindsNothingEndsWith1) {
  const test::CliResult result = Run({"text", "find", path, "1", "xyz"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "info: 找不到字符\n");
}

TEST_F(TextCommandsTest, AnInvalidPatternIsAFailureWithoutAHandler) {
  const test::CliResult result = Run({"text", "find", path, "1", "[a"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "Run-time error '93': Invalid pattern string\n");
}

TEST_F(TextCommandsTest, AddPutsAnEmptyTextIntoAllLanguages) {
  EXPECT_EQ(Run({"text", "add", path, "--at", "1", "--label", "msg_new"}).status, 0);
  EXPECT_EQ(Run({"text", "list", path}).out, "0\tmsg_ok\n1\tmsg_new\n2\tmsg_two\n3\tmsg_none\n");
  EXPECT_EQ(Run({"text", "get", path, "0", "1"}).out, "\n");
  EXPECT_EQ(Run({"text", "get", path, "0", "2"}).out, "一\n二\n");
}

TEST_F(TextCommandsTest, AddTakesThePositionAsItsFieldDoes) {
  EXPECT_EQ(Run({"text", "add", path, "--at", "1:5", "--label", "msg_first"}).status, 0);
  EXPECT_EQ(Run({"text", "add", path, "--at", "", "--label", "msg_second"}).status, 0);
  EXPECT_EQ(Run({"text", "list", path}).out, "0\tmsg_second\n1\tmsg_ok\n2\tmsg_first\n3\tmsg_two\n4\tmsg_none\n");
}

TEST_F(TextCommandsTest, AddThatIsRefusedChangesNothing) {
  struct Case {
    const char* at;
    const char* label;
    int status;
    const char* message;
  };
  const std::vector<Case> table = {
      {"3", "msg_new", 1,
       "info: Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.\n"},
      {"4", "msg_new", 1, "warning: 无效坐标\n"},
      {"-1", "msg_new", 1, "warning: 无效坐标\n"},
      {"0", "", 1, "warning: 必须输入一个标记\n"},
      {"40000", "msg_new", 3, "Run-time error '6': Overflow\n"}};
  for (const Case& row : table) {
    const test::CliResult result = Run({"text", "add", path, "--at", row.at, "--label", row.label});
    EXPECT_EQ(result.status, row.status) << row.at;
    EXPECT_EQ(result.err, row.message);
  }
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.rco"});
}

TEST_F(TextCommandsTest, AMissingArgumentIsWrongUsage) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{{"get", path, "1"},
                                                                                         {"get", path, "1", "2", "3"},
                                                                                         {"set", path, "1", "2"},
                                                                                         {"find", path, "1"},
                                                                                         {"add", path, "--at", "1"},
                                                                                         {"add", path, "--label", "x"},
                                                                                         {"langs"}}) {
    std::vector<std::string> command = {"text"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(Run(command).status, 2) << arguments[0];
  }
}

}  // namespace
}  // namespace kelvane
