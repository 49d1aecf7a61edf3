#include "PngPictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <png.h>
#include <stdexcept>
#include <zlib.h>

namespace kelvane::bench {
namespace {

struct Colour {
  double red, green, blue, alpha;  // 0 to 1
};

class Noise {
 public:
  double Next() {
    seed_ = seed_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<double>(seed_ >> 40) / static_cast<double>(1 << 24);
  }
  // Roughly normal, of deviation 1.
  double Normal() { return (Next() + Next() + Next() + Next() - 2) * 1.73; }

 private:
  std::uint64_t seed_ = 1;
};

// A smooth random surface: the sum of some waves, the shorter the weaker.
double Surface(double x, double y, double phase) {
  double sum = 0;
  double weight = 0.5;
  double scale = 2;
  for (int wave = 0; wave < 6; ++wave) {
    sum += weight * std::sin(x * scale + phase + 1.7 * std::sin(y * scale * 0.8 + phase * 2)) *
           std::cos(y * scale * 0.9 - phase);
    scale *= 2.3;
    weight *= 0.62;
  }
  return 0.5 + sum / 2.2;
}

Colour PhotoAt(double x, double y, Noise& noise) {
  const double light = Surface(x * 3, y * 3, 1);
  const double grain = noise.Normal() * 0.008;
  const auto channel = [&](double phase) {
    return std::clamp(light * 0.75 + Surface(x * 2, y * 2, phase) * 0.25 + grain + noise.Normal() * 0.004, 0.0, 1.0);
  };
  const double distance = std::hypot(x - 0.5, y - 0.5);
  return {channel(2), channel(3), channel(4), std::clamp((0.55 - distance) * 8, 0.0, 1.0)};
}

// Panels, rounded buttons, ruled lines and letter-like strokes, with soft edges one pixel wide.
Colour DrawnAt(int px, int py, int side) {
  const int cell = std::max(16, side / 12);
  const int x = px % cell;
  const int y = py % cell;
  const int kind = (px / cell * 7 + py / cell * 3) % 5;
  const Colour panel = {0.93, 0.94, 0.96, 1};
  const double radius = std::hypot(x - cell * 0.5, y - cell * 0.5);
  switch (kind) {
    case 0: {
      const double edge = std::clamp(cell * 0.4 - radius + 0.5, 0.0, 1.0);
      return {0.2 * edge, 0.5 * edge, 0.9 * edge, edge};
    }
    case 1: {
      const double shade = 0.4 + 0.5 * y / cell;
      return {shade * 0.8, shade, shade * 0.7, 1};
    }
    case 2:
      return (x / 2 * 5 + y / 3 * 11 + x * y / 7) % 9 < 3 && y % 12 > 3 ? Colour{0.1, 0.1, 0.15, 1} : panel;
    case 3:
      return x == 0 || y == 0 || y % 16 == 0 ? Colour{0.6, 0.62, 0.7, 1} : panel;
    default:
      return {0, 0, 0, 0};
  }
}

// Samples of 16 bits, red, green, blue, alpha.
std::vector<std::uint16_t> Paint(Content content, int side) {
  std::vector<std::uint16_t> samples;
  samples.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4);
  Noise noise;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const Colour colour = content == Content::Photo
                                ? PhotoAt(static_cast<double>(x) / side, static_cast<double>(y) / side, noise)
                                : DrawnAt(x, y, side);
      for (const double value : {colour.red, colour.green, colour.blue, colour.alpha}) {
        samples.push_back(static_cast<std::uint16_t>(std::lround(value * 65535)));
      }
    }
  }
  return samples;
}

// A palette of 6 reds, 7 greens and 6 blues, with shades that dither by position.
std::uint8_t PaletteIndex(const std::uint16_t* rgb, int x, int y) {
  const double threshold = ((x * 3 + y * 5) % 8) / 8.0;
  const auto step = [&](std::uint16_t value, int steps) {
    return std::min(steps - 1, static_cast<int>(value / 65535.0 * (steps - 1) + threshold));
  };
  return static_cast<std::uint8_t>((step(rgb[0], 6) * 7 + step(rgb[1], 7)) * 6 + step(rgb[2], 6));
}

// One row of samples as a PNG keeps them, before filtering.
Bytes RowOf(const PngKind& kind, const std::uint16_t* samples, int side, int y) {
  Bytes row;
  const auto put = [&](std::uint16_t value) {
    row.push_back(static_cast<std::uint8_t>(value >> 8));
    if (kind.bitDepth == 16) {
      row.push_back(static_cast<std::uint8_t>(value));
    }
  };
  for (int x = 0; x < side; ++x, samples += 4) {
    switch (kind.colourType) {
      case PNG_COLOR_TYPE_PALETTE:
        row.push_back(PaletteIndex(samples, x, y));
        break;
      case PNG_COLOR_TYPE_GRAY:
        put(static_cast<std::uint16_t>((samples[0] * 3 + samples[1] * 6 + samples[2]) / 10));
        break;
      default:
        std::for_each(samples, samples + (kind.colourType == PNG_COLOR_TYPE_RGBA ? 4 : 3), put);
    }
  }
  return row;
}

void SetPalette(png_structp png, png_infop info) {
  std::array<png_color, 252> palette;
  for (int i = 0; i < 252; ++i) {
    palette[static_cast<std::size_t>(i)] = {static_cast<png_byte>(i / 42 * 51), static_cast<png_byte>(i / 6 % 7 * 42),
                                            static_cast<png_byte>(i % 6 * 51)};
  }
  png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
}

void AppendBytes(png_structp png, png_bytep bytes, std::size_t count) {
  auto* const file = static_cast<Bytes*>(png_get_io_ptr(png));
  file->insert(file->end(), bytes, bytes + count);
}

}  // namespace

Bytes MakePng(const PngKind& kind, Content content, int side) {
  const std::vector<std::uint16_t> samples = Paint(content, side);
  std::vector<Bytes> rows;
  std::vector<png_bytep> pointers;
  for (int y = 0; y < side; ++y) {
    rows.push_back(RowOf(kind, &samples[static_cast<std::size_t>(y) * static_cast<std::size_t>(side) * 4], side, y));
    pointers.push_back(rows.back().data());
  }
  Bytes file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &file, AppendBytes, nullptr);
  png_set_IHDR(png, info, static_cast<png_uint_32>(side), static_cast<png_uint_32>(side), kind.bitDepth,
               kind.colourType, kind.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE,
               PNG_FILTER_TYPE_BASE);
  if (kind.colourType == PNG_COLOR_TYPE_PALETTE) {
    SetPalette(png, info);
  }
  png_write_info(png, info);
  png_write_image(png, pointers.data());
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

ImageData ImageDataOf(ByteView png) {
  ImageData data;
  for (std::size_t at = 8; at + 12 <= png.size();) {
    const std::size_t length = static_cast<std::size_t>(png[at]) << 24 | static_cast<std::size_t>(png[at + 1]) << 16 |
                               static_cast<std::size_t>(png[at + 2]) << 8 | png[at + 3];
    if (png[at + 4] == 'I' && png[at + 5] == 'D') {
      Append(data.compressed, png.subspan(at + 8, length));
    }
    at += length + 12;
  }
  // Count what comes out.
  z_stream z{};
  Bytes piece(1 << 16);
  inflateInit(&z);
  z.next_in = data.compressed.data();
  z.avail_in = static_cast<uInt>(data.compressed.size());
  int status = Z_OK;
  while (status == Z_OK) {
    z.next_out = piece.data();
    z.avail_out = static_cast<uInt>(piece.size());
    status = inflate(&z, Z_NO_FLUSH);
  }
  data.rawLength = z.total_out;
  inflateEnd(&z);
  if (status != Z_STREAM_END) {
    throw std::runtime_error("the image data is broken");
  }
  return data;
}

}  // namespace kelvane::bench
