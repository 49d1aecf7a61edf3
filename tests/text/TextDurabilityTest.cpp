// A change of a text that is cut short leaves the old file or the new one, whole.

#include <gtest/gtest.h>

#include "OpenTexts.h"
#include "support/EndangeredFile.h"
#include "support/RcoBuilder.h"
#include "text/TextEdit.h"

namespace kelvane {
namespace {

using test::EndangeredFile;
using test::Failing;
using test::RcoBuilder;
using test::ScriptedPrompts;

constexpr const char16_t* kNewText = u"A longer text than before";

Bytes FileWith(std::u16string text) {
  RcoBuilder b;
  b.AddImage({.label = "bg", .format = 0, .data = Bytes(5000, 7)});
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "msg", .strings = {u"はい", std::move(text)}});
  b.Options().headerLongs[rco::hdrTextDataLength] = 16;
  return b.Build().bytes;
}

void Change(const std::filesystem::path& path, ScriptedPrompts& /*prompts*/) {
  Mod mod;
  mod.cCurFile = path;
  RcoDocument document;
  test::ScriptedWatch watch;
  test::ScanTexts(path, document);
  SelectText(mod, document, 0);
  cmdTextChange(mod, document, watch, kNewText);
}

class TextDurability : public ::testing::Test {
 protected:
  EndangeredFile file_{FileWith(u"Yes"), Failing::kThrows, Change};
};

TEST_F(TextDurability, KilledAtAnySystemCallTheFileIsTheOldOrTheNewOne) {
  EXPECT_EQ(file_.After(), FileWith(kNewText));
  file_.ExpectOldOrNewWhereverItIsKilled();
}

TEST_F(TextDurability, OnAFullDiskTheFileIsTheOldOneAndNothingIsLeftBehind) {
  file_.ExpectOldOnAFullDisk();
}

TEST_F(TextDurability, InAReadOnlyFolderTheFileIsTheOldOne) {
  file_.ExpectOldInAReadOnlyFolder();
}

TEST_F(TextDurability, PermissionsAndASymbolicLinkSurvive) {
  file_.ExpectPermissionsAndSymbolicLinkToSurvive();
}

}  // namespace
}  // namespace kelvane
