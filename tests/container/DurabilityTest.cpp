// Changes of the file's size that are cut short.

#include "InsertFixture.h"
#include "container/GenWrite.h"
#include "container/Inserts.h"
#include "support/EndangeredFile.h"

namespace kelvane {
namespace {

using test::EndangeredFile;
using test::Failing;
using test::Filled;

struct Case {
  const char* name;
  std::function<void(const WriteContext& context, const AfterInsert& after, const std::filesystem::path& data)> change;
};

std::string NameOf(const ::testing::TestParamInfo<Case>& info) {
  return info.param.name;
}

class Durability : public ::testing::TestWithParam<Case> {
 protected:
  // After the change, and after one that couldn't be made, the records are those of the file.
  void Change(const std::filesystem::path& path, test::ScriptedPrompts& prompts) const {
    Mod mod;
    mod.cCurFile = path;
    test::ScriptedWatch watch;
    RcoDocument document = test::Scanned(path);
    const AfterInsert after = {.reopen = [&] { document = test::Scanned(path); }, .selectLine = [](Int16) {}};
    GetParam().change({mod, document, prompts, watch}, after, data_);
    const RcoDocument scanned = test::Scanned(path);
    EXPECT_TRUE(document.genRsc == scanned.genRsc);
    EXPECT_TRUE(document.textRsc == scanned.textRsc);
    EXPECT_TRUE(document.pageRecs == scanned.pageRecs);
    EXPECT_TRUE(document.animRecs == scanned.animRecs);
    EXPECT_EQ(document.dataAreas, scanned.dataAreas);
    EXPECT_EQ(document.labelBase, scanned.labelBase);
  }

  test::TempFolder folder_;
  std::filesystem::path data_ = folder_.Write("new.dat", Filled(5000, 1));
  EndangeredFile file_{test::InsertScreen().bytes, Failing::kAsks,
                       [this](const auto& path, test::ScriptedPrompts& prompts) { Change(path, prompts); }};
};

TEST_P(Durability, KilledAtAnySystemCallTheFileIsTheOldOrTheNewOne) {
  file_.ExpectOldOrNewWhereverItIsKilled();
}

TEST_P(Durability, OnAFullDiskFileAndRecordsAreTheOldOnes) {
  file_.ExpectOldOnAFullDisk();
}

TEST_P(Durability, InAReadOnlyFolderFileAndRecordsAreTheOldOnes) {
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0755));
  file_.ExpectOldInAReadOnlyFolder();
}

TEST_P(Durability, PermissionsAndASymbolicLinkSurvive) {
  file_.ExpectPermissionsAndSymbolicLinkToSurvive();
}

INSTANTIATE_TEST_SUITE_P(
    Changes, Durability,
    ::testing::Values(Case{"Replacement", [](const WriteContext& context, const AfterInsert&,
                                             const auto& data) { ReplaceGenRscData(data, 0, context); }},
                      Case{"GeneralInsert",
                           [](const WriteContext& context, const AfterInsert& after, const auto& data) {
                             InsertGenRsc({.position = 4, .dataFile = data, .label = "new", .kind = 2}, context, after);
                           }},
                      Case{"TextInsert", [](const WriteContext& context, const AfterInsert& after,
                                            const auto&) { InsertTextRsc(1, "new", context, after); }},
                      Case{"PageInsert",
                           [](const WriteContext& context, const AfterInsert& after, const auto&) {
                             InsertPageRsc({.index = 1, .body = {1}, .label = "new", .entryClass = 5, .depth = 1},
                                           context, after);
                           }}),
    NameOf);

}  // namespace
}  // namespace kelvane
