// Loading a PNG from memory into the image object, beside what else one would load it with, all to premultiplied pixels
// of blue, green, red, alpha, and beside a bare uncompress of the same image data. And the built-in inflate beside
// zlib's. Figures are the best of several rounds, in which the contenders take turns.
//
// bench_png [LARGEST SIDE]
#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <png.h>
#include <spng.h>
#include <stdexcept>
#include <zlib.h>

#include "PeakMemory.h"
#include "PngPictures.h"
#include "imaging/InflateBuffer.h"
#include "imaging/PngPixels.h"
#include "imaging/cPNGparser.h"

#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wunused-function"
#endif
#include <stb/stb_image.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

namespace kelvane::bench {
namespace {

void Check(bool good, const char* what) {
  if (!good) {
    throw std::runtime_error(what);
  }
}

// From rows of red, green, blue, alpha to what all contenders must come to, by the fastest means at hand.
void ToPremultiplied(std::uint8_t* pixels, std::size_t count) {
  BestPngPixelKernels().rgba8(pixels, pixels, count);
}

class Contenders {
 public:
  explicit Contenders(const Bytes& png, bool hasAlpha)
      : png_(png),
        hasAlpha_(hasAlpha),
        data_(ImageDataOf(png)),
        raw_(data_.rawLength),
        qtBytes_(
            QByteArray::fromRawData(reinterpret_cast<const char*>(png.data()), static_cast<qsizetype>(png.size()))) {}

  // Ends the bench unless ours and an independent reader come to the same pixels.
  void RequireAgreement() {
    c32bppDIB ours;
    LoadOurs(ours);
    int width = 0;
    int height = 0;
    int channels = 0;
    stbi_set_flip_vertically_on_load(1);
    stbi_uc* const pixels =
        stbi_load_from_memory(png_.data(), static_cast<int>(png_.size()), &width, &height, &channels, 4);
    stbi_set_flip_vertically_on_load(0);
    Check(pixels != nullptr && width == ours.Width() && height == ours.Height(), "the sizes differ");
    ToPremultiplied(pixels, ours.Pixels().size() / 4);
    const bool same = std::equal(ours.Pixels().begin(), ours.Pixels().end(), pixels);
    stbi_image_free(pixels);
    Check(same, "the pixels differ");
  }

  void Ours() {
    c32bppDIB image;
    LoadOurs(image);
  }

  void Libpng() {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    Check(png_image_begin_read_from_memory(&image, png_.data(), png_.size()) != 0, "libpng");
    image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    image.format = hasAlpha_ ? PNG_FORMAT_RGBA : PNG_FORMAT_BGRA;
    pixels_.resize(PNG_IMAGE_SIZE(image));
    Check(png_image_finish_read(&image, nullptr, pixels_.data(), 0, nullptr) != 0, "libpng");
    if (hasAlpha_) {
      ToPremultiplied(pixels_.data(), pixels_.size() / 4);
    }
  }

  void Libspng() {
    spng_ctx* const context = spng_ctx_new(0);
    std::size_t size = 0;
    Check(spng_set_png_buffer(context, png_.data(), png_.size()) == 0, "libspng");
    Check(spng_decoded_image_size(context, SPNG_FMT_RGBA8, &size) == 0, "libspng");
    pixels_.resize(size);
    Check(spng_decode_image(context, pixels_.data(), size, SPNG_FMT_RGBA8, SPNG_DECODE_TRNS) == 0, "libspng");
    spng_ctx_free(context);
    ToPremultiplied(pixels_.data(), size / 4);
  }

  void Stb() {
    int width = 0;
    int height = 0;
    int channels = 0;
    stbi_uc* const pixels =
        stbi_load_from_memory(png_.data(), static_cast<int>(png_.size()), &width, &height, &channels, 4);
    Check(pixels != nullptr, "stb_image");
    ToPremultiplied(pixels, static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    stbi_image_free(pixels);
  }

  void Qt() {
    QBuffer buffer(&qtBytes_);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");
    QImage image = reader.read();
    Check(!image.isNull(), "QImageReader");
    if (image.format() != QImage::Format_RGB32) {
      image.convertTo(QImage::Format_ARGB32_Premultiplied);
    }
  }

  void Uncompress() {
    uLongf size = raw_.size();
    Check(uncompress(raw_.data(), &size, data_.compressed.data(), data_.compressed.size()) == Z_OK, "uncompress");
  }

  void Inflate() {
    Check(InflateBuffer(raw_, data_.compressed, static_cast<std::int32_t>(raw_.size()), false), "InflateBuffer");
  }

 private:
  void LoadOurs(c32bppDIB& image) {
    Check(cPNGparser().LoadStream(png_, image, 0, static_cast<std::int32_t>(png_.size())), "ours");
  }

  const Bytes& png_;
  bool hasAlpha_;
  ImageData data_;
  Bytes raw_;
  Bytes pixels_;
  QByteArray qtBytes_;
};

using Contender = void (Contenders::*)();
struct Named {
  const char* name;
  Contender run;
};
// Ours first, the bare uncompress last but one.
constexpr Named kContenders[] = {{"ours", &Contenders::Ours},       {"libpng", &Contenders::Libpng},
                                 {"libspng", &Contenders::Libspng}, {"stb", &Contenders::Stb},
                                 {"Qt", &Contenders::Qt},           {"uncompr", &Contenders::Uncompress},
                                 {"inflate", &Contenders::Inflate}};
constexpr std::size_t kCount = std::size(kContenders);
constexpr std::size_t kUncompress = kCount - 2;
constexpr std::size_t kInflate = kCount - 1;

double Seconds(Contenders& contenders, Contender run, int times) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < times; ++i) {
    (contenders.*run)();
  }
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / times;
}

// The best time of each contender, in seconds.
std::vector<double> Measure(Contenders& contenders) {
  constexpr int kRounds = 5;
  constexpr double kWorthMeasuring = 0.004;
  std::vector<double> best(kCount);
  std::vector<int> times(kCount);
  for (std::size_t i = 0; i < kCount; ++i) {
    const double once = Seconds(contenders, kContenders[i].run, 1);
    times[i] = std::clamp(static_cast<int>(kWorthMeasuring / once), 1, 1000);
    best[i] = once;
  }
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t i = 0; i < kCount; ++i) {
      best[i] = std::min(best[i], Seconds(contenders, kContenders[i].run, times[i]));
    }
  }
  return best;
}

// Ratios of ours to another, gathered over all pictures.
struct Ratios {
  double logSum = 0;
  double worst = 0;
  int count = 0;

  void Add(double ratio) {
    logSum += std::log(ratio);
    worst = std::max(worst, ratio);
    ++count;
  }
  [[nodiscard]] double Mean() const { return std::exp(logSum / count); }
};

void Run(int largestSide) {
  const PngKind kinds[] = {
      {"rgb", PNG_COLOR_TYPE_RGB, 8, false},           {"rgba", PNG_COLOR_TYPE_RGBA, 8, false},
      {"palette", PNG_COLOR_TYPE_PALETTE, 8, false},   {"grey", PNG_COLOR_TYPE_GRAY, 8, false},
      {"rgb16", PNG_COLOR_TYPE_RGB, 16, false},        {"rgba16", PNG_COLOR_TYPE_RGBA, 16, false},
      {"rgb-interlaced", PNG_COLOR_TYPE_RGB, 8, true}, {"rgba-interlaced", PNG_COLOR_TYPE_RGBA, 8, true}};
  std::printf("%-16s %-6s %5s  %9s  ours is so many times as long as", "kind", "", "side", "ours, us");
  for (std::size_t i = 1; i < kInflate; ++i) {
    std::printf(" %8s", kContenders[i].name);
  }
  std::printf("  inflate/uncompr\n");
  std::vector<Ratios> ratios(kCount);
  std::map<std::string, std::vector<Ratios>> byClass;
  for (const PngKind& kind : kinds) {
    for (const Content content : {Content::Photo, Content::Drawn}) {
      for (const int side : {64, 256, 1024, 4096}) {
        if (side > largestSide) {
          continue;
        }
        const Bytes png = MakePng(kind, content, side);
        Contenders contenders(png, kind.colourType == PNG_COLOR_TYPE_RGBA);
        contenders.RequireAgreement();
        const std::vector<double> seconds = Measure(contenders);
        const char* const contentName = content == Content::Photo ? "photo" : "drawn";
        std::printf("%-16s %-6s %5d  %9.0f  %34s", kind.name.c_str(), contentName, side, seconds[0] * 1e6, "");
        std::vector<Ratios>& ofClass = byClass[kind.name + ' ' + contentName];
        ofClass.resize(kCount);
        for (std::size_t i = 1; i < kInflate; ++i) {
          std::printf(" %8.2f", seconds[0] / seconds[i]);
          ratios[i].Add(seconds[0] / seconds[i]);
          ofClass[i].Add(seconds[0] / seconds[i]);
        }
        const double inflate = seconds[kInflate] / seconds[kUncompress];
        std::printf("  %.2f\n", inflate);
        std::fflush(stdout);
        ratios[kInflate].Add(inflate);
        ofClass[kInflate].Add(inflate);
      }
    }
  }
  std::printf("\nGeometric means:\n");
  for (const auto& [name, ofClass] : byClass) {
    std::printf("%-30s %44s", name.c_str(), "");
    for (std::size_t i = 1; i < kInflate; ++i) {
      std::printf(" %8.2f", ofClass[i].Mean());
    }
    std::printf("  %.2f\n", ofClass[kInflate].Mean());
  }
  std::printf("\n");
  for (std::size_t i = 1; i < kUncompress; ++i) {
    std::printf("load beside %-8s mean %.2f, worst %.2f (aim: below 1 in every class)\n", kContenders[i].name,
                ratios[i].Mean(), ratios[i].worst);
  }
  std::printf("load beside a bare uncompress: mean %.2f, worst %.2f (aim: mean at most 1.35)\n",
              ratios[kUncompress].Mean(), ratios[kUncompress].worst);
  std::printf("InflateBuffer beside uncompress: mean %.2f, worst %.2f (aim: at most 2)\n", ratios[kInflate].Mean(),
              ratios[kInflate].worst);
}

void RunMemory() {
  constexpr int kSide = 2048;
  const Bytes png = MakePng({"rgba", PNG_COLOR_TYPE_RGBA, 8, false}, Content::Photo, kSide);
  PrintPeakMemory("memory of loading 2048x2048, beside the pixels' bytes", std::int64_t{4} * kSide * kSide, [&] {
    c32bppDIB image;
    Check(cPNGparser().LoadStream(png, image, 0, static_cast<std::int32_t>(png.size())), "ours");
  });
}

}  // namespace
}  // namespace kelvane::bench

int main(int argc, char** argv) {
  kelvane::bench::Run(argc > 1 ? std::atoi(argv[1]) : 4096);
  kelvane::bench::RunMemory();
}
