// Presses cmdReplace on a file of every kind of resource.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "resources/ReplaceFixture.h"
#include "support/Failures.h"

namespace kelvane::test {

inline const char* const kTooManyColours = "你选择的图像多于256色，不能替换为索引GIM图像。是否使用32位GIM图像代替？";
inline const char* const kWrongDepth = "The colour depth MUST be 4, 8 or 32 bit!";

class ReplacementFixture : public ReplaceFixture {
 protected:
  ReplacementFixture() { OpenScreen(FullScreen()); }

  // Presses the button with `row` selected; the file dialog is answered with `path`.
  bool Replace(int row, const std::filesystem::path& path) {
    document.lst.Select(row);
    ScriptChoice(path);
    return CmdReplace(Context());
  }
  bool Replace(int row, const std::string& name, const Bytes& content) {
    return Replace(row, out.Write(name, content));
  }
  // The same, to be ended by a failure.
  int FailureOfReplace(int row, const std::string& name, const Bytes& content) {
    return NumberOf([&] { Replace(row, name, content); });
  }
  // Scripts the dialog, and behind it what `Then...` has announced.
  void ScriptChoice(const std::filesystem::path& path) {
    prompts.ExpectFileDialog({.path = path});
    for (const auto& expected : expectations) {
      expected();
    }
    expectations.clear();
  }
  void ThenTell(const std::string& text, Icon icon) {
    expectations.emplace_back([this, text, icon] { prompts.ExpectTell(text, icon); });
  }
  void ThenAskAboutColours(Answer answer) {
    expectations.emplace_back([this, answer] {
      prompts.Expect(
          {.text = kTooManyColours, .icon = Icon::Question, .buttons = Buttons::YesNo, .defaultAnswer = Answer::Yes},
          answer);
    });
  }

  // What `row` of the images holds once data of that unpacked length are stored.
  [[nodiscard]] Screen WithImage(int row, const Bytes& data, std::optional<std::int32_t> unpacked,
                                 std::uint16_t compression) const {
    Screen expected = screen;
    ImageSpec& image = expected.images[static_cast<std::size_t>(row)];
    image.data = data;
    image.unpackedSize = unpacked ? unpacked : image.unpackedSize;
    image.compression = compression;
    return expected;
  }
  [[nodiscard]] static std::int32_t LengthOf(const Bytes& bytes) { return static_cast<std::int32_t>(bytes.size()); }
  // The GIM stored deflated.
  [[nodiscard]] Screen WithGim(int row, const Bytes& gim) const {
    return WithImage(row, DeflateWrapped(gim), LengthOf(gim), 1);
  }

  // A step behind the backup has failed: the backup is there, the watcher stopped, the file as it was.
  void ExpectFileLeftBehindTheBackup() {
    EXPECT_TRUE(Content() == built.bytes);
    EXPECT_TRUE(ReadWholeFile(Backup()) == built.bytes);
    EXPECT_EQ(watch.Calls(), std::vector<std::string>{"stop"});
    EXPECT_EQ(refreshed, 0);
    EXPECT_TRUE(program.Names().empty());
  }

  std::vector<std::function<void()>> expectations;
};

}  // namespace kelvane::test
