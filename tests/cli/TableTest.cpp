#include <gtest/gtest.h>
#include <sstream>

#include "cli/Table.h"

namespace kelvane::cli {
namespace {

TEST(Table, EscapesWhatWouldBreakALine) {
  EXPECT_EQ(Escaped(std::string_view("a\\b\tc\nd\re\0f", 11)), "a\\\\b\\tc\\nd\\re\\0f");
  EXPECT_EQ(Escaped("中文"), "中文");
}

TEST(Table, PrintsOneRecordALineWithTabs) {
  Table table({"row", "line"});
  table.Add({std::int64_t{0}, std::string("a\tb")});
  table.Add({std::int64_t{-1}, std::string()});
  std::ostringstream out;
  table.PrintLines(out);
  EXPECT_EQ(out.str(), "0\ta\\tb\n-1\t\n");
}

TEST(Table, PrintsTheSameAsJson) {
  Table table({"row", "line"});
  table.Add({std::int64_t{0}, std::string("a\t\"b\"")});
  std::ostringstream out;
  table.PrintJson(out);
  EXPECT_EQ(out.str(), "[\n  {\n    \"row\": 0,\n    \"line\": \"a\\t\\\"b\\\"\"\n  }\n]\n");
}

TEST(Table, AnEmptyListingIsNoLineAndAnEmptyArray) {
  std::ostringstream lines;
  Table({"row"}).PrintLines(lines);
  EXPECT_EQ(lines.str(), "");
  std::ostringstream json;
  Table({"row"}).PrintJson(json);
  EXPECT_EQ(json.str(), "[]\n");
}

}  // namespace
}  // namespace kelvane::cli
