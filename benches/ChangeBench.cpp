// Changes of a file of 64 MiB beside copying that file with the same flush to disk, and the memory that they take. The
// backup is there already.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "Figures.h"
#include "PeakMemory.h"
#include "common/Files.h"
#include "container/GenWrite.h"
#include "editor/OpenRcoFile.h"
#include "support/PlainPorts.h"
#include "support/RcoBuilder.h"
#include "text/TextEdit.h"

namespace kelvane::bench {

namespace {

constexpr double kAim = 1.5;
constexpr int kResources = 1024;
constexpr std::size_t kResourceBytes = std::size_t{64} << 10;
constexpr int kTexts = 500;

Bytes LargeFile() {
  test::RcoBuilder b;
  for (int i = 0; i < kResources; ++i) {
    b.AddImage({.label = "image" + std::to_string(i),
                .compression = 1,
                .data = Bytes(kResourceBytes, static_cast<std::uint8_t>(i)),
                .unpackedSize = 100000});
  }
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  for (int i = 0; i < kTexts; ++i) {
    b.AddText({.label = "text" + std::to_string(i), .strings = {u"text", u"another text"}});
  }
  return b.Build().bytes;
}

// An open file of 64 MiB in a folder beside the program, on a disk.
class OpenFile {
 public:
  OpenFile() {
    std::string name = (std::filesystem::current_path() / "kelvane-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    folder_ = name;
    mod_.cAppPath = folder_ / "";
    const std::filesystem::path path = folder_ / "screen.rco";
    WriteWholeFile(path, LargeFile());
    OpenRcoFile(path, mod_, document_, ports_);
    WriteWholeFile(Data(0), Bytes(kResourceBytes - 1000, 1));
    WriteWholeFile(Data(1), Bytes(kResourceBytes + 1000, 2));
    Replace();
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() {
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
  }

  // A resource in the middle, by turns shorter and longer.
  void Replace() {
    turn_ = 1 - turn_;
    if (!ReplaceGenRscData(Data(turn_), kResources / 2, {mod_, document_, prompts_, watch_})) {
      throw std::runtime_error("nothing was replaced");
    }
  }

  void ChangeText() {
    turn_ = 1 - turn_;
    document_.cboTextLang.Select(1);
    document_.lstText.Select(kTexts / 2);
    cmdTextChange(mod_, document_, watch_, turn_ == 0 ? u"short" : u"a text that is much longer than the other one");
  }

  void Open() {
    Mod mod;
    RcoDocument document;
    OpenRcoFile(mod_.cCurFile, mod, document, ports_);
  }

  [[nodiscard]] std::int64_t Length() const { return FileLength(mod_.cCurFile); }

  // Reads the file and writes it under another name, as it would be saved: flushed, and renamed over what is there.
  void Copy() {
    const Bytes content = ReadWholeFile(mod_.cCurFile);
    const std::filesystem::path staged = folder_ / "staged";
    WriteWholeFile(staged, content);
    Flush(staged, O_WRONLY);
    std::filesystem::rename(staged, folder_ / "copy.rco");
    Flush(folder_, O_RDONLY | O_DIRECTORY);
  }

 private:
  [[nodiscard]] std::filesystem::path Data(int turn) const { return folder_ / ("new" + std::to_string(turn)); }

  static void Flush(const std::filesystem::path& path, int flags) {
    const int file = open(path.c_str(), flags);
    if (file < 0 || fsync(file) != 0 || close(file) != 0) {
      throw std::runtime_error("a copy can't be flushed");
    }
  }

  std::filesystem::path folder_;
  test::AnsweringPrompts prompts_{[](const Message& message) -> Answer { throw std::runtime_error(message.text); }};
  test::IdleWatch watch_;
  test::IdleProgress progress_;
  Ports ports_{.prompts = prompts_, .watch = watch_, .progress = progress_};
  Mod mod_;
  RcoDocument document_;
  int turn_ = 0;
};

}  // namespace

}  // namespace kelvane::bench

int main(int argc, char** argv) {
  using namespace kelvane::bench;
  OpenFile file;
  PrintPeakMemory("memory of opening 64 MiB, beside its bytes", file.Length(), [&] { file.Open(); });
  PrintPeakMemory("memory of replacing one of its resources", file.Length(), [&] { file.Replace(); });
  PrintPeakMemory("memory of changing one of its texts", file.Length(), [&] { file.ChangeText(); });
  return RunFigures(argc, argv,
                    {{.name = "replacing one of 1,024 resources in 64 MiB",
                      .ours = [&] { file.Replace(); },
                      .beside = [&] { file.Copy(); },
                      .aim = kAim,
                      .waits = true},
                     {.name = "changing one of 500 texts in 64 MiB",
                      .ours = [&] { file.ChangeText(); },
                      .beside = [&] { file.Copy(); },
                      .aim = kAim,
                      .waits = true}});
}
