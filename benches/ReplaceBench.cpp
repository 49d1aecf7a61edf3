// cmdReplaceAll of many images, beside compressing the same data with zlib and writing the file once, and many beside
// few.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>

#include "Figures.h"
#include "GenDocument.h"
#include "common/Files.h"
#include "resources/Replacement.h"
#include "support/Deflate.h"
#include "support/GimBuilder.h"
#include "support/PlainBmp.h"
#include "support/PlainPorts.h"
#include "support/RcoBuilder.h"
#include "support/TempFolder.h"

namespace kelvane::bench {

namespace {

namespace fs = std::filesystem;

constexpr double kBesideZlibAim = 1.3;
constexpr double kTenTimesAsManyAim = 11;
constexpr int kBestCompression = 9;

// Pixels as of an icon: a few shapes on a gradient, some noise.
std::vector<std::uint32_t> IconPixels(int side, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<std::uint32_t> pixels;
  const int x0 = static_cast<int>(random() % 20U) + side / 3;
  const int radius = side / 4 + static_cast<int>(random() % 8U);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const bool inside = (x - x0) * (x - x0) + (y - x0) * (y - x0) < radius * radius;
      const int noise = static_cast<int>(random() % 8U) == 0 ? 1 : 0;
      pixels.push_back(static_cast<std::uint32_t>(inside ? 200 + x / 8 + noise : y + x / 4 + noise) & 0xFF);
    }
  }
  return pixels;
}

// Red and blue are alike, so that it is the same in a bitmap and in a GIM.
std::vector<std::uint32_t> Colours() {
  std::vector<std::uint32_t> colours;
  for (std::uint32_t i = 0; i < 256; ++i) {
    const auto shade = static_cast<std::uint8_t>(i);
    colours.push_back(test::Rgba(shade, static_cast<std::uint8_t>(255 - shade), shade));
  }
  return colours;
}

// An open file of `count` images, and a folder with a file for each of them.
class Run {
 public:
  // `ending` is ".gim" or ".bmp".
  Run(int count, const std::string& ending) : prompts_(folder_ / "in", AnswerOf) {
    for (const char* part : {"program", "home", "in"}) {
      fs::create_directory(folder_ / part);
    }
    test::RcoBuilder builder;
    for (int i = 0; i < count; ++i) {
      constexpr int kSide = 64;
      const std::string label = "image" + std::to_string(i);
      gims_.push_back(test::BuildIndexedGim(kSide, kSide, 8, IconPixels(kSide, static_cast<unsigned>(i)), Colours()));
      builder.AddImage({.label = label, .compression = 1, .data = Bytes(2000), .unpackedSize = 1});
      WriteWholeFile(folder_ / ("in/" + label + ending),
                     ending == ".gim"
                         ? gims_.back()
                         : test::BuildBmp8(kSide, kSide, IconPixels(kSide, static_cast<unsigned>(i)), Colours()));
    }
    mod_.cAppPath = folder_ / "program/";
    mod_.cCurFile = folder_ / "home/screen.rco";
    WriteWholeFile(mod_.cCurFile, builder.Build().bytes);
    OpenGenRsc(mod_, document_);
  }

  void ReplaceAll() {
    CmdReplaceAll({.write = {.mod = mod_, .document = document_, .prompts = prompts_, .watch = watch_},
                   .progress = progress_,
                   .refresh = [] {}});
  }

  // What a user would otherwise do: zlib over the same data, and the file written once.
  void CompressAndWrite() {
    Bytes file(static_cast<std::size_t>(document_.dataAreas[0]));
    for (const Bytes& gim : gims_) {
      Append(file, test::DeflateWrapped(gim, kBestCompression));
      file.resize((file.size() + 3) / 4 * 4);
    }
    SaveStaged(folder_ / "home/beside.rco", file);
  }

  // Whether both sides do the same work: the files are equally long.
  bool Agrees() {
    ReplaceAll();
    CompressAndWrite();
    return FileLength(mod_.cCurFile) == FileLength(folder_ / "home/beside.rco");
  }

 private:
  test::TempFolder folder_;
  test::FolderPrompts prompts_;
  test::IdleWatch watch_;
  test::IdleProgress progress_;
  Mod mod_;
  RcoDocument document_;
  std::vector<Bytes> gims_;
};

}  // namespace

}  // namespace kelvane::bench

int main(int argc, char** argv) {
  using namespace kelvane::bench;
  std::vector<Figure> figures;
  for (const std::string ending : {".gim", ".bmp"}) {
    const auto many = std::make_shared<Run>(1000, ending);
    const auto few = std::make_shared<Run>(100, ending);
    if (!many->Agrees() || !few->Agrees()) {
      std::fprintf(stderr, "The file that was written isn't the one to compare with.\n");
      return 1;
    }
    figures.push_back({.name = "replace-all of 1000 " + ending + ", beside zlib and one write",
                       .ours = [many] { many->ReplaceAll(); },
                       .beside = [many] { many->CompressAndWrite(); },
                       .aim = kBesideZlibAim,
                       .waits = true});
    figures.push_back({.name = "replace-all of 1000 " + ending + ", beside 100",
                       .ours = [many] { many->ReplaceAll(); },
                       .beside = [few] { few->ReplaceAll(); },
                       .aim = kTenTimesAsManyAim,
                       .waits = true});
  }
  return RunFigures(argc, argv, figures);
}
