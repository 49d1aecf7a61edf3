// Opening a file as large as its texts and pages can make it, from its path to the document with all records and lines:
// beside opening one with a tenth of it, and beside reading its bytes and doing nothing with them.
#include <array>
#include <memory>
#include <stdexcept>

#include "Figures.h"
#include "common/Files.h"
#include "editor/Editor.h"
#include "support/PlainPorts.h"
#include "support/RcoBuilder.h"
#include "support/TempFolder.h"

namespace kelvane::bench {

namespace {

constexpr double kTenTimesAsMuchAim = 11;
constexpr std::uint32_t kLanguages = 12;
constexpr int kTexts = 2700;
constexpr int kPageEntries = 3000;
// A screen: the page, its groups, and the objects of each group.
constexpr int kGroups = 3;
constexpr int kObjects = 8;
constexpr int kEntriesOfScreen = 1 + kGroups * (1 + kObjects);

std::string Name(const char* what, int number) {
  return what + std::to_string(number);
}

// Strings of 6 to 60 units, as messages are.
std::u16string TextOf(int text, std::uint32_t language) {
  const std::size_t length = 6 + static_cast<std::size_t>(text) * 7 % 55;
  return std::u16string(length, static_cast<char16_t>(language == 1 ? u'a' : 0x3042 + language));
}

void AddTexts(test::RcoBuilder& b, int count) {
  for (std::uint32_t language = 0; language < kLanguages; ++language) {
    b.AddLanguage(0x10000U + language);
  }
  for (int text = 0; text < count; ++text) {
    std::vector<test::TextString> strings;
    for (std::uint32_t language = 0; language < kLanguages; ++language) {
      strings.emplace_back(TextOf(text, language));
    }
    b.AddText({.label = Name("msg_screen_", text), .strings = std::move(strings)});
  }
}

// An object with its place, a text and the events of its buttons.
test::EntrySpec ObjectOf(int number) {
  std::array<float, rco::kPositionWords> position{};
  position[0] = static_cast<float>(number);
  return {.label = Name("obj_", number),
          .entryClass = 5,
          .position = position,
          .body = {0x111, test::TextRef(number % 100), test::BlankRef(), test::BlankRef()}};
}

// Adds `count` entries: screens, and pages of one entry for the rest.
void AddPages(test::RcoBuilder& b, int count) {
  int number = 0;
  while (count - number >= kEntriesOfScreen) {
    test::EntrySpec screen{.label = Name("page_", number++), .entryClass = 1, .body = {0x111, 0}};
    for (int group = 0; group < kGroups; ++group) {
      test::EntrySpec& children = screen.children.emplace_back(
          test::EntrySpec{.label = Name("plane_", number++), .entryClass = 2, .body = {1}});
      for (int object = 0; object < kObjects; ++object) {
        children.children.push_back(ObjectOf(number++));
      }
    }
    b.AddPage(std::move(screen));
  }
  while (number < count) {
    b.AddPage({.label = Name("page_", number++), .body = {0x111, 0}});
  }
}

Bytes FileOf(int texts, int pages) {
  test::RcoBuilder b;
  AddTexts(b, texts);
  AddPages(b, pages);
  return b.Build().bytes;
}

// Throws where not all of it is there in the end: then a figure would tell of something else.
void Open(const std::filesystem::path& path, const std::filesystem::path& programFolder, int texts, int pages) {
  test::AnsweringPrompts prompts([](const Message& message) -> Answer { throw std::runtime_error(message.text); });
  test::IdleWatch watch;
  test::IdleProgress progress;
  Editor editor(programFolder, {.prompts = prompts, .watch = watch, .progress = progress});
  editor.OpenRcoFile(path);
  if (editor.Document().lstText.Count() != texts || editor.Document().lstPage.Count() != pages) {
    throw std::runtime_error("not all texts and pages are there");
  }
  Use(&editor.Document());
}

}  // namespace

}  // namespace kelvane::bench

int main(int argc, char** argv) {
  using namespace kelvane::bench;
  const kelvane::test::TempFolder folder;
  const auto large = folder.Write("large.rco", FileOf(kTexts, kPageEntries));
  const auto small = folder.Write("small.rco", FileOf(kTexts / 10, kPageEntries / 10));
  const auto openLarge = [&] { Open(large, folder.Path(), kTexts, kPageEntries); };
  const auto openSmall = [&] { Open(small, folder.Path(), kTexts / 10, kPageEntries / 10); };
  const auto readLarge = [&] { Use(kelvane::ReadWholeFile(large).data()); };
  return RunFigures(
      argc, argv,
      {{.name = "OpenRcoFile, 2,700 texts, 3,000 pages, beside a tenth",
        .ours = openLarge,
        .beside = openSmall,
        .aim = kTenTimesAsMuchAim},
       {.name = "OpenRcoFile, the same, beside reading its bytes", .ours = openLarge, .beside = readLarge}});
}
