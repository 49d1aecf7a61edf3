#include "cli/CliFixture.h"

namespace kelvane {
namespace {

class CliTest : public test::CliFixture {
 protected:
  static Bytes Small(bool deflated = false) {
    test::RcoBuilder builder;
    builder.AddImage({.label = "bg", .data = Bytes{'M', 'I', 'G', '.', 1, 2, 3, 4}});
    builder.Options().deflatedHead = deflated;
    return builder.Build().bytes;
  }
};

TEST_F(CliTest, WithoutACommandOrWithAnUnknownOneTheUsageIsWrong) {
  EXPECT_EQ(Run({}).status, 2);
  EXPECT_EQ(Run({"frobnicate"}).status, 2);
  EXPECT_EQ(Run({"list"}).status, 2);
  EXPECT_EQ(Run({"list", "a.rco", "b.rco"}).status, 2);
  EXPECT_EQ(Run({"text"}).status, 2);
  EXPECT_EQ(Run({"--yes", "--no", "list", "a.rco"}).status, 2);
  EXPECT_EQ(Run({"--import32", "sometimes", "list", "a.rco"}).status, 2);
}

TEST_F(CliTest, WrongUsageIsToldOnTheErrorStreamOnly) {
  const test::CliResult result = Run({"list"});
  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err, "");
}

TEST_F(CliTest, HelpAndVersionAreOnStandardOutput) {
  EXPECT_EQ(Run({"--help"}).status, 0);
  EXPECT_NE(Run({"--help"}).out.find("extract-all"), std::string::npos);
  EXPECT_EQ(Run({"extract", "--help"}).status, 0);
  EXPECT_NE(Run({"extract", "--help"}).out.find("--as"), std::string::npos);
  EXPECT_EQ(Run({"--version"}).status, 0);
  EXPECT_TRUE(Run({"--version"}).out.starts_with("kelvane ")) << Run({"--version"}).out;
}

TEST_F(CliTest, OptionsStandBeforeOrBehindTheCommand) {
  const std::string file = File("a.rco", Small());
  const std::string json = "[\n  {\n    \"row\": 0,\n    \"line\": \"[GIM] bg\"\n  }\n]\n";
  EXPECT_EQ(Run({"--json", "list", file}).out, json);
  EXPECT_EQ(Run({"list", "--json", file}).out, json);
  EXPECT_EQ(Run({"list", file, "--json"}).out, json);
}

TEST_F(CliTest, NumbersOfEveryCommandAreDecimal) {
  const std::string file = File("a.rco", Small());
  const std::string out = (folder / "out.gim").string();
  EXPECT_EQ(Run({"extract", file, "010", out}).err, "error: ROW 10 is not there: the file has 1\n");
  EXPECT_EQ(Run({"preview", file, "00"}).status, 0);
  for (const char* number : {"", "0x0", "one"}) {
    EXPECT_EQ(Run({"extract", file, number, out}).status, 2) << number;
    EXPECT_EQ(Run({"extract", file, "0", out, "--as", number}).status, 2) << number;
    EXPECT_EQ(Run({"entry", file, "page", number}).status, 2) << number;
    EXPECT_EQ(Run({"set-word", file, "page", "0", number, "1"}).status, 2) << number;
    EXPECT_EQ(Run({"page", "add", file, "--at", "0", "--depth", "0", "--class", number, "--label", "x"}).status, 2);
  }
  // Class 19, and refused since there is no page to put it before.
  const test::CliResult page =
      Run({"page", "add", file, "--at", "0", "--depth", "0", "--class", "019", "--label", "x"});
  EXPECT_EQ(page.status, 1);
  EXPECT_TRUE(page.err.starts_with("info: Sorry")) << page.err;
  EXPECT_FALSE(FileExists(out));
}

TEST_F(CliTest, ARefusalGoesToTheErrorStreamAndEndsWith1) {
  const test::CliResult result = Run({"list", File("a.rco", Bytes(200))});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "warning: Not a valid RCO!\n");
}

TEST_F(CliTest, AFileThatIsNotThereIsAskedAboutAndEndsWith1) {
  const test::CliResult result = Run({"list", (folder / "none.rco").string()});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "error: 发生了未知错误！\nFile not found (Code: 53)\n\n继续 [no]\n");
}

TEST_F(CliTest, QuestionsAreAnsweredNoUnlessToldOtherwise) {
  const Bytes deflated = Small(true);
  const std::string file = File("a.rco", deflated);
  const test::CliResult result = Run({"list", file});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(
      result.err,
      "warning: This appears to have a deflated (FW2.60) header - do you want to convert it to a 2.50 RCO? [no]\n");
  EXPECT_EQ(ReadWholeFile(file), deflated);
  EXPECT_EQ(Run({"--no", "list", file}).err, result.err);
}

TEST_F(CliTest, YesAnswersEveryQuestion) {
  const std::string file = File("a.rco", Small(true));
  const test::CliResult result = Run({"--yes", "list", file});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "0\t[GIM] bg\n");
  EXPECT_EQ(
      result.err,
      "warning: This appears to have a deflated (FW2.60) header - do you want to convert it to a 2.50 RCO? [yes]\n");
}

TEST_F(CliTest, OnATerminalQuestionsAreAsked) {
  const std::string file = File("a.rco", Small(true));
  EXPECT_EQ(Run({"list", file}, "no\n", true).status, 1);
  EXPECT_EQ(Run({"list", file}, "", true).status, 1);
  EXPECT_EQ(Run({"list", file}, "what\nyes\n", true).status, 0);
}

TEST_F(CliTest, GoingOnAfterAFailureIsNoSuccess) {
  EXPECT_EQ(Run({"--yes", "list", (folder / "none.rco").string()}).status, 1);
}

TEST_F(CliTest, AFailureWithoutAHandlerEndsWith3) {
  const test::CliResult result = Run({"inflate", File("a", Bytes(2)), (folder / "b").string()});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "Run-time error '9': Subscript out of range\n");
}

}  // namespace
}  // namespace kelvane
