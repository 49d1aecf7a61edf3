#include "cli/CliFixture.h"

namespace kelvane {
namespace {

class ListCommandsTest : public test::CliFixture {
 protected:
  ListCommandsTest() {
    builder.AddImage({.label = "bg", .compression = 1, .data = Bytes(10, 1), .unpackedSize = 77});
    builder.AddImage({.label = "logo", .format = 0, .data = Bytes(7, 2)});
    builder.AddVag({.label = "beep", .channel1 = Bytes(16, 3), .channel2 = Bytes(20, 4)});
    builder.AddGmo({.label = "cube", .data = Bytes(5, 5)});
  }
  test::RcoBuilder builder;
};

TEST_F(ListCommandsTest, ListPrintsRowAndLine) {
  const test::CliResult result = Run({"list", File("a.rco", builder.Build().bytes)});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "0\t[GIM] bg\n1\t[PNG] logo\n2\t[VAG] beep\n3\t[GMO] cube\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(ListCommandsTest, RecordsPrintsEveryFieldInDecimal) {
  const test::BuiltRco built = builder.Build();
  const auto& layout = built.layout;
  std::ostringstream expected;
  expected << "0\t1\t5\t1\t0\t10\t77\t" << layout.images[0].entry + 4 << '\t' << layout.images[0].label << '\n';
  expected << "1\t1\t0\t0\t12\t7\t-1\t" << layout.images[1].entry + 4 << '\t' << layout.images[1].label << '\n';
  expected << "2\t2\t1\t2\t0\t36\t-1\t" << layout.vags[0].entry + 4 << '\t' << layout.vags[0].label << '\n';
  expected << "3\t3\t0\t0\t0\t5\t-1\t" << layout.gmos[0].entry + 4 << '\t' << layout.gmos[0].label << '\n';
  EXPECT_EQ(Run({"list", "--records", File("a.rco", built.bytes)}).out, expected.str());
}

TEST_F(ListCommandsTest, InfoPrintsNamesAndValues) {
  builder.AddLanguage(0x10000);
  builder.AddLanguage(0x10001);
  builder.AddText({.label = "ok", .strings = {u"はい", u"OK"}});
  builder.Options().version = 112;
  const test::BuiltRco built = builder.Build();
  const auto& layout = built.layout;
  std::ostringstream expected;
  expected << "version\t112\ngenCount\t4\ntextCount\t1\nlangCount\t2\npageCount\t0\nanimCount\t0\n"
           << "labelBase\t" << layout.labels.offset << "\ntextDataBase\t" << layout.textData.offset << '\n'
           << "dataAreas(0)\t" << layout.imageData.offset << "\ndataAreas(1)\t" << layout.imageData.length << '\n'
           << "dataAreas(2)\t" << layout.vagData.offset << "\ndataAreas(3)\t" << layout.vagData.length << '\n'
           << "dataAreas(4)\t" << layout.gmoData.offset << "\ndataAreas(5)\t" << layout.gmoData.length << '\n';
  const test::CliResult result = Run({"info", File("a.rco", built.bytes)});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, expected.str());
}

TEST_F(ListCommandsTest, LookingChangesNothing) {
  const Bytes bytes = builder.Build().bytes;
  const std::string file = File("a.rco", bytes);
  const FileDate date = DateOfFile(file);
  EXPECT_EQ(Run({"list", file}).status, 0);
  EXPECT_EQ(Run({"info", file}).status, 0);
  EXPECT_EQ(ReadWholeFile(file), bytes);
  EXPECT_EQ(DateOfFile(file), date);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.rco"});
}

}  // namespace
}  // namespace kelvane
