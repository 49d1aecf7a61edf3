// cmdExtractAll of 1,000 images, beside inflating the same streams with zlib and writing the same bytes into files of
// the same names.
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <map>
#include <random>
#include <unistd.h>
#include <zlib.h>

#include "Figures.h"
#include "GenDocument.h"
#include "common/Files.h"
#include "resources/Extraction.h"
#include "support/Deflate.h"
#include "support/GimBuilder.h"
#include "support/PlainPorts.h"
#include "support/RcoBuilder.h"
#include "support/TempFolder.h"

namespace kelvane::bench {

namespace {

namespace fs = std::filesystem;
using Values = std::vector<std::uint32_t>;

constexpr int kImages = 1000;
constexpr double kAim = 1.5;

// An image as firmware screens have them: icons and pieces of windows, shapes on a gradient with some noise.
Bytes DrawnGim(unsigned seed) {
  constexpr int kSides[] = {16, 32, 48, 64, 128};
  std::mt19937 random(seed);
  const int width = kSides[random() % 5];
  const int height = kSides[random() % 5];
  const int bits = seed % 4 == 0 ? 4 : seed % 4 == 1 ? 32 : 8;
  Values colours;
  for (std::uint32_t i = 0; i < (bits == 4 ? 16U : 256U); ++i) {
    colours.push_back(test::Rgba(static_cast<std::uint8_t>(i * 3), static_cast<std::uint8_t>(255 - i), 128));
  }
  Values pixels;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const bool inside = (x - width / 2) * (x - width / 2) + (y - height / 2) * (y - height / 2) < width * height / 9;
      const int noise = random() % 8 == 0 ? 1 : 0;
      pixels.push_back(static_cast<std::uint32_t>(inside ? 200 + x / 8 + noise : y + x / 4 + noise) %
                       static_cast<std::uint32_t>(colours.size()));
    }
  }
  if (bits != 32) {
    return test::BuildIndexedGim(width, height, bits, pixels, colours);
  }
  for (std::uint32_t& pixel : pixels) {
    pixel = colours[pixel];
  }
  return test::BuildRgbaGim(width, height, pixels);
}

// The names and contents of the files of a folder.
std::map<std::string, Bytes> ContentsOf(const fs::path& folder) {
  std::map<std::string, Bytes> contents;
  for (const auto& entry : fs::directory_iterator(folder)) {
    contents[entry.path().filename()] = ReadWholeFile(entry.path());
  }
  return contents;
}

// A file in as few calls of the system as it takes.
void WriteAtOnce(const fs::path& path, ByteView bytes) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  const bool written = file >= 0 && write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  if (!written || close(file) != 0) {
    throw std::runtime_error("the file can't be written");
  }
}

// Puts temporary files into memory, unless the user has said where. Disks have file systems that don't use again at
// once what was just deleted: behind the turn before, that takes most of the time on either side, or on one alone.
void UseMemoryForFiles() {
  constexpr std::uintmax_t kEnough = std::uintmax_t{1} << 28;
  std::error_code error;
  const fs::space_info space = fs::space("/dev/shm", error);
  if (!error && space.available >= kEnough) {
    setenv("TMPDIR", "/dev/shm", 0);
  }
}

class Run {
 public:
  Run() : prompts_(folder_ / "out", AnswerOf) {
    test::RcoBuilder builder;
    for (unsigned i = 0; i < kImages; ++i) {
      const Bytes gim = DrawnGim(i);
      streams_.push_back(test::DeflateWrapped(gim));
      sizes_.push_back(gim.size());
      builder.AddImage({.label = "image" + std::to_string(i),
                        .compression = 1,
                        .data = streams_.back(),
                        .unpackedSize = static_cast<std::int32_t>(gim.size())});
    }
    fs::create_directory(folder_ / "program");
    mod_.cAppPath = folder_ / "program/";
    mod_.cCurFile = folder_ / "screen.rco";
    WriteWholeFile(mod_.cCurFile, builder.Build().bytes);
    OpenGenRsc(mod_, document_);
  }

  void EmptyFolder() {
    fs::remove_all(folder_ / "out");
    fs::create_directory(folder_ / "out");
  }

  void ExtractAll() { CmdExtractAll(mod_, document_, prompts_, progress_); }

  void InflateAndWrite() {
    Bytes plain;
    for (std::size_t i = 0; i < streams_.size(); ++i) {
      plain.resize(sizes_[i]);
      z_stream stream{};
      inflateInit2(&stream, -15);
      stream.next_in = streams_[i].data() + 2;
      stream.avail_in = static_cast<uInt>(streams_[i].size() - 2);
      stream.next_out = plain.data();
      stream.avail_out = static_cast<uInt>(plain.size());
      inflate(&stream, Z_FINISH);
      inflateEnd(&stream);
      const std::string base = folder_ / ("out/image" + std::to_string(i));
      WriteAtOnce(base + ".dat", streams_[i]);
      WriteAtOnce(base + ".gim", plain);
      WriteAtOnce(base + ".bmp", bitmaps_[i]);
      WriteAtOnce(base + ".32bit.bmp", bitmaps32_[i]);
    }
  }

  // Takes the bitmaps that the other side is to write from a first run. Answers whether both then write the same files.
  bool Agrees() {
    EmptyFolder();
    ExtractAll();
    const std::map<std::string, Bytes> ours = ContentsOf(folder_ / "out");
    for (int i = 0; i < kImages; ++i) {
      bitmaps_.push_back(ours.at("image" + std::to_string(i) + ".bmp"));
      bitmaps32_.push_back(ours.at("image" + std::to_string(i) + ".32bit.bmp"));
    }
    EmptyFolder();
    InflateAndWrite();
    return ContentsOf(folder_ / "out") == ours;
  }

 private:
  test::TempFolder folder_;
  test::FolderPrompts prompts_;
  test::IdleProgress progress_;
  Mod mod_;
  RcoDocument document_;
  std::vector<Bytes> streams_;
  std::vector<std::size_t> sizes_;  // of the images, unpacked
  std::vector<Bytes> bitmaps_;
  std::vector<Bytes> bitmaps32_;
};

}  // namespace

}  // namespace kelvane::bench

int main(int argc, char** argv) {
  using namespace kelvane::bench;
  UseMemoryForFiles();
  Run run;
  if (!run.Agrees()) {
    std::fprintf(stderr, "the two sides write different files\n");
    return 1;
  }
  // Neither side waits for a disk: nothing is flushed.
  return RunFigures(argc, argv,
                    {{.name = "cmdExtractAll, 1000 images, beside zlib and writing",
                      .ours = [&] { run.ExtractAll(); },
                      .beside = [&] { run.InflateAndWrite(); },
                      .aim = kAim,
                      .prepare = [&] { run.EmptyFolder(); }}});
}
