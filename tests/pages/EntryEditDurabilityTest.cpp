// Changes of words that are cut short.

#include "EditFixture.h"
#include "support/EndangeredFile.h"

namespace kelvane {
namespace {

using test::EndangeredFile;
using test::Failing;

struct Case {
  const char* name;
  std::function<void(Mod&, RcoDocument&, test::ScriptedPrompts&, Watch&)> change;
};

std::string NameOf(const ::testing::TestParamInfo<Case>& info) {
  return info.param.name;
}

class WordDurability : public test::Editing, public ::testing::WithParamInterface<Case> {
 protected:
  WordDurability() {
    std::vector<std::int32_t> words(rco::kPositionWords + 1, test::Word(1.0F));
    Show(words, 0, 0x802);
  }

  void Change(const std::filesystem::path& path, test::ScriptedPrompts& prompts) const {
    Mod mod = mod_;
    mod.cCurFile = path;
    RcoDocument document = document_;
    test::ScriptedWatch watch;
    GetParam().change(mod, document, prompts, watch);
  }

  [[nodiscard]] EndangeredFile File() const {
    return {OnDisk(), Failing::kThrows,
            [this](const auto& path, test::ScriptedPrompts& prompts) { Change(path, prompts); }};
  }
};

TEST_P(WordDurability, KilledAtAnySystemCallTheFileIsTheOldOrTheNewOne) {
  File().ExpectOldOrNewWhereverItIsKilled();
}

TEST_P(WordDurability, OnAFullDiskTheFileIsTheOldOne) {
  File().ExpectOldOnAFullDisk();
}

TEST_P(WordDurability, InAReadOnlyFolderTheFileIsTheOldOne) {
  File().ExpectOldInAReadOnlyFolder();
}

TEST_P(WordDurability, PermissionsAndASymbolicLinkSurvive) {
  File().ExpectPermissionsAndSymbolicLinkToSurvive();
}

INSTANTIATE_TEST_SUITE_P(
    Changes, WordDurability,
    ::testing::Values(Case{"Page",
                           [](Mod& mod, RcoDocument& document, test::ScriptedPrompts& prompts, Watch& watch) {
                             prompts.ExpectInput(test::kInputPrompt, "1", "2.5");
                             cmdPageChange(mod, document, prompts, watch);
                           }},
                      Case{"Animation",
                           [](Mod& mod, RcoDocument& document, test::ScriptedPrompts& prompts, Watch& watch) {
                             prompts.ExpectInput(test::kInputPrompt, "1", "2.5");
                             cmdAnimChange(mod, document, prompts, watch);
                           }},
                      Case{"Position",
                           [](Mod& mod, RcoDocument& document, test::ScriptedPrompts&, Watch& watch) {
                             cmdPagePosChange(mod, document, watch, {"1", "2", "3", "4", "5", "6", "7"});
                           }}),
    NameOf);

}  // namespace
}  // namespace kelvane
