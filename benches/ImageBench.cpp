// Loading a GIF and an icon from memory into the image object, beside the toolkit's readers to the same premultiplied
// pixels of blue, green, red, alpha.
#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>
#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>

#include "Figures.h"
#include "imaging/c32bppDIB.h"
#include "imaging/cGIFparser.h"
#include "imaging/cICOparser.h"
#include "support/GifBuilder.h"
#include "support/IcoBuilder.h"
#include "support/PngBuilder.h"

namespace kelvane::bench {
namespace {

void Check(bool good, const char* what) {
  if (!good) {
    throw std::runtime_error(what);
  }
}

// Indexes as a photograph's: soft shapes with noise upon them. Or as a drawing's: areas of one colour.
Bytes Indexes(std::uint32_t side, bool photo) {
  Bytes indexes;
  indexes.reserve(std::size_t{side} * side);
  std::uint32_t noise = 1;
  for (std::uint32_t y = 0; y < side; ++y) {
    for (std::uint32_t x = 0; x < side; ++x) {
      noise = noise * 1664525 + 1013904223;
      const double shape = 100 + 60 * std::sin(x * 7.0 / side) + 60 * std::cos(y * 5.0 / side);
      const std::uint32_t area = (x * 9 / side) * 31 + (y * 7 / side) * 17 + ((x + y) * 5 / side) * 3;
      indexes.push_back(static_cast<std::uint8_t>(photo ? static_cast<std::uint32_t>(shape) + (noise >> 29) : area));
    }
  }
  return indexes;
}

Bytes MakeGif(std::uint32_t side, bool photo, int transIndex, bool interlaced) {
  std::vector<test::GifColour> table(256);
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i] = {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i * 3), static_cast<std::uint8_t>(255 - i)};
  }
  const auto pixels = static_cast<std::uint16_t>(side);
  const test::GifFrame frame{.width = pixels,
                             .height = pixels,
                             .interlaced = interlaced,
                             .codeSize = 8,
                             .lzw = test::GifLzwEncode(8, Indexes(side, photo))};
  return test::Join({test::GifHeader(pixels, pixels, table), test::GifControl(transIndex), test::GifImage(frame),
                     test::GifTrailer()});
}

Bytes MakeIcon(std::int32_t side, std::uint16_t bitCount) {
  return test::BuildIco({.images = {test::PlainIcoImage(side, bitCount, 60, 90, 120, 128)}});
}

Bytes MakePngIcon(std::int32_t side) {
  test::PngImage png;
  png.width = side;
  png.height = side;
  for (std::int32_t i = 0; i < side * side; ++i) {
    const auto shade = static_cast<std::uint16_t>((i / side + i % side) & 0xFF);
    png.samples.insert(png.samples.end(), {shade, static_cast<std::uint16_t>(255 - shade), 128, shade});
  }
  const auto size = static_cast<std::uint8_t>(side);
  return test::BuildIco({.images = {{.width = size, .height = size, .data = test::BuildPng(png)}}});
}

void LoadOurGif(const Bytes& file) {
  c32bppDIB image;
  Check(cGIFparser().LoadStream(file, image, 0, static_cast<std::int32_t>(file.size())), "our GIF");
}

void LoadOurIcon(const Bytes& file) {
  // The parser repairs headers in place, so it needs bytes of its own.
  Bytes own = file;
  c32bppDIB image;
  Check(cICOparser().LoadStream(own, 0, 0, image, 0, static_cast<std::int32_t>(own.size())), "our icon");
}

void LoadByQt(const Bytes& file, const char* format) {
  QByteArray bytes =
      QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()), static_cast<qsizetype>(file.size()));
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, format);
  QImage image = reader.read();
  Check(!image.isNull(), "QImageReader");
  if (image.format() != QImage::Format_RGB32) {
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
  }
}

constexpr double kAim = 1;

Figure GifFigure(const std::string& what, Bytes made) {
  const auto file = std::make_shared<const Bytes>(std::move(made));
  return {.name = "GIF " + what,
          .ours = [file] { LoadOurGif(*file); },
          .beside = [file] { LoadByQt(*file, "gif"); },
          .aim = kAim};
}

Figure IconFigure(const std::string& what, Bytes made) {
  const auto file = std::make_shared<const Bytes>(std::move(made));
  return {.name = "icon " + what,
          .ours = [file] { LoadOurIcon(*file); },
          .beside = [file] { LoadByQt(*file, "ico"); },
          .aim = kAim};
}

std::vector<Figure> AllFigures() {
  std::vector<Figure> figures;
  for (const std::uint32_t side : {64U, 256U, 1024U}) {
    for (const bool photo : {true, false}) {
      for (const bool transparent : {false, true}) {
        const std::string what = std::to_string(side) + (photo ? " photo" : " drawn");
        figures.push_back(
            GifFigure(what + (transparent ? " transparent" : ""), MakeGif(side, photo, transparent ? 40 : -1, false)));
      }
    }
  }
  figures.push_back(GifFigure("1024 photo interlaced", MakeGif(1024, true, -1, true)));
  for (const std::int32_t side : {16, 32, 48, 128}) {
    for (const int bitCount : {1, 4, 8, 24, 32}) {
      figures.push_back(IconFigure(std::to_string(side) + " at " + std::to_string(bitCount) + " bits",
                                   MakeIcon(side, static_cast<std::uint16_t>(bitCount))));
    }
  }
  for (const std::int32_t side : {64, 256}) {
    figures.push_back(IconFigure(std::to_string(side) + " as PNG", MakePngIcon(side)));
  }
  return figures;
}

}  // namespace
}  // namespace kelvane::bench

int main(int argc, char** argv) {
  return kelvane::bench::RunFigures(argc, argv, kelvane::bench::AllFigures());
}
