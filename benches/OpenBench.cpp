// Opening a file, from its path to the document with all records and lines, beside opening one with a tenth of it: the
// time may grow as the file does.
#include <memory>
#include <stdexcept>

#include "Figures.h"
#include "editor/Editor.h"
#include "support/PlainPorts.h"
#include "support/RcoBuilder.h"
#include "support/TempFolder.h"

namespace kelvane::bench {

namespace {

constexpr double kAim = 11;

std::string Name(const char* what, int number) {
  return what + std::to_string(number);
}

// Labels and sizes as screens have them; the data are as small as can be, since opening reads none of them.
void AddGeneral(test::RcoBuilder& b, int images, int sounds, int models) {
  for (int i = 0; i < images; ++i) {
    b.AddImage({.label = Name("tex_button_", i), .compression = 1, .data = Bytes(16, 1), .unpackedSize = 4816});
  }
  for (int i = 0; i < sounds; ++i) {
    b.AddVag({.label = Name("snd_cursor_", i), .channel1 = Bytes(16, 2)});
  }
  for (int i = 0; i < models; ++i) {
    b.AddGmo({.label = Name("mdl_wave_", i), .data = Bytes(16, 3)});
  }
}

void AddTexts(test::RcoBuilder& b, int texts) {
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  for (int i = 0; i < texts; ++i) {
    b.AddText({.label = Name("msg_", i), .strings = {u"設定", u"Settings"}});
  }
}

void AddTrees(test::RcoBuilder& b, int pages, int animations) {
  for (int i = 0; i < pages; ++i) {
    b.AddPage({.label = Name("page_", i), .body = {0x111, test::TextRef(0), test::BlankRef()}});
  }
  for (int i = 0; i < animations; ++i) {
    b.AddAnimation({.label = Name("anim_", i), .body = {2}, .children = {{.entryClass = 2, .body = {1.0F}}}});
  }
}

// A file of general resources alone; `entries` is at most what 16 bits count.
Bytes GeneralFile(int entries) {
  test::RcoBuilder b;
  AddGeneral(b, entries * 4 / 5, entries / 10, entries / 10);
  return b.Build().bytes;
}

// A file in which all tables have a part of the entries, as far as their own limits let them: 2,730 texts and 4,096
// animation records with their operations.
Bytes FileOfAllTables(int entries) {
  test::RcoBuilder b;
  AddGeneral(b, entries / 2, entries / 15, entries / 30);
  AddTexts(b, entries / 15);
  AddTrees(b, entries * 4 / 15, entries / 15);
  return b.Build().bytes;
}

void Open(const std::filesystem::path& path, const std::filesystem::path& programFolder) {
  test::AnsweringPrompts prompts([](const Message& message) -> Answer { throw std::runtime_error(message.text); });
  test::IdleWatch watch;
  test::IdleProgress progress;
  Editor editor(programFolder, {.prompts = prompts, .watch = watch, .progress = progress});
  editor.OpenRcoFile(path);
  Use(&editor.Document());
}

Figure Opening(const std::shared_ptr<test::TempFolder>& folder, const std::string& what, Bytes (*build)(int)) {
  const auto large = folder->Write(what + " 30000.rco", build(30000));
  const auto small = folder->Write(what + " 3000.rco", build(3000));
  return {.name = "OpenRcoFile, 30,000 " + what + ", beside 3,000",
          .ours = [=] { Open(large, folder->Path()); },
          .beside = [=] { Open(small, folder->Path()); },
          .aim = kAim};
}

}  // namespace

}  // namespace kelvane::bench

int main(int argc, char** argv) {
  using namespace kelvane::bench;
  const auto folder = std::make_shared<kelvane::test::TempFolder>();
  return RunFigures(
      argc, argv,
      {Opening(folder, "general entries", GeneralFile), Opening(folder, "entries of all tables", FileOfAllTables)});
}
