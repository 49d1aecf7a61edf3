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

TEST_F(TextCommandsTest, AddThatIsRefusedChangesNothing) {
  const test::CliResult result = Run({"text", "add", path, "--at", "3", "--label", "msg_new"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err,
            "info: Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location "
            "T_T.\n");
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

}  // namespace
}  // namespace kelvane
