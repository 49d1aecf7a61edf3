// Every well-formed kind of PNG beside libpng: colour types, depths, filters, interlacing, transparency, many sizes.
#include <csetjmp>
#include <cstring>
#include <png.h>

#include "imaging/PngLoad.h"

namespace kelvane {
namespace {

using namespace test;

struct Reader {
  ByteView bytes;
  std::size_t position = 0;
};

void ReadBytes(png_structp png, png_bytep to, std::size_t count) {
  auto* const reader = static_cast<Reader*>(png_get_io_ptr(png));
  if (count > reader->bytes.size() - reader->position) {
    png_error(png, "the file ends");
  }
  std::memcpy(to, reader->bytes.data() + reader->position, count);
  reader->position += count;
}

// The picture as libpng reads it, its colours multiplied by alpha / 255, truncated. Of 16-bit samples the high byte.
std::vector<Pixel> PixelsByLibpng(ByteView bytes) {
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  Reader reader{bytes};
  png_set_read_fn(png, &reader, ReadBytes);
  png_read_info(png, info);
  png_set_expand(png);
  png_set_strip_16(png);
  png_set_gray_to_rgb(png);
  png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
  (void)png_set_interlace_handling(png);
  png_read_update_info(png, info);
  const std::size_t height = png_get_image_height(png, info);
  const std::size_t rowBytes = png_get_rowbytes(png, info);
  Bytes data(height * rowBytes);
  std::vector<png_bytep> rows;
  for (std::size_t y = 0; y < height; ++y) {
    rows.push_back(data.data() + y * rowBytes);
  }
  png_read_image(png, rows.data());
  png_read_end(png, nullptr);
  png_destroy_read_struct(&png, &info, nullptr);
  std::vector<Pixel> pixels;
  for (std::size_t i = 0; i < data.size(); i += 4) {
    const auto times = [&](std::uint8_t colour) { return static_cast<std::uint8_t>(colour * data[i + 3] / 255); };
    pixels.push_back({times(data[i + 2]), times(data[i + 1]), times(data[i]), data[i + 3]});
  }
  return pixels;
}

struct Kind {
  std::uint8_t colourType;
  std::uint8_t bitDepth;
  bool transparency;
};

class PngMatrix : public testing::TestWithParam<Kind> {
 protected:
  std::uint32_t Random() {
    seed_ = seed_ * 1664525 + 1013904223;
    return seed_ >> 8;
  }

  PngImage Picture(std::int32_t width, std::int32_t height) {
    const Kind kind = GetParam();
    PngImage image;
    image.width = width;
    image.height = height;
    image.bitDepth = kind.bitDepth;
    image.colourType = kind.colourType;
    const std::size_t channels = static_cast<std::size_t>(PngChannels(kind.colourType));
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * channels;
    const std::uint32_t values = 1U << kind.bitDepth;
    for (std::size_t i = 0; i < count; ++i) {
      // Smooth and noisy stretches, and alphas at both ends.
      const std::uint32_t noise = Random();
      std::uint32_t sample = i % 50 < 25 ? noise : static_cast<std::uint32_t>(i * 3);
      if (kind.colourType >= 4 && i % channels == channels - 1 && noise % 3 != 0) {
        sample = noise % 2 == 0 ? values - 1 : 0;
      }
      image.samples.push_back(static_cast<std::uint16_t>(sample % values));
    }
    if (kind.colourType == 3) {
      image.palette.emplace();
      for (std::uint32_t i = 0; i < values * 3; ++i) {
        image.palette->push_back(static_cast<std::uint8_t>(Random()));
      }
      if (kind.transparency) {
        image.transparency.emplace();
        for (std::uint32_t i = 0; i < (values + 1) / 2; ++i) {
          image.transparency->push_back(static_cast<std::uint8_t>(i % 5 == 0 ? 0 : Random()));
        }
      }
    }
    if (kind.colourType == 2 && kind.transparency) {
      MakeFirstColourTransparent(image);
    }
    return image;
  }

  // The first pixel's colour is the transparent one, and comes again. Of 16-bit samples both bytes are made alike: all
  // three comparisons with the key then agree with the standard's.
  static void MakeFirstColourTransparent(PngImage& image) {
    for (std::uint16_t& sample : image.samples) {
      sample = image.bitDepth == 16 ? static_cast<std::uint16_t>((sample & 0xFF) * 257) : sample;
    }
    image.transparency.emplace();
    for (std::size_t i = 0; i < 3; ++i) {
      image.samples[image.samples.size() / 2 / 3 * 3 + i] = image.samples[i];
      image.transparency->push_back(static_cast<std::uint8_t>(image.samples[i] >> 8));
      image.transparency->push_back(static_cast<std::uint8_t>(image.samples[i]));
    }
  }

 private:
  std::uint32_t seed_ = 1;
};

TEST_P(PngMatrix, LoadsTheSamePixelsAsLibpng) {
  const std::pair<std::int32_t, std::int32_t> sizes[] = {{1, 1},   {1, 2},   {2, 2},  {3, 5},   {5, 3},
                                                         {7, 8},   {8, 8},   {9, 9},  {16, 1},  {17, 4},
                                                         {33, 17}, {100, 3}, {3, 70}, {131, 40}};
  for (const auto& [width, height] : sizes) {
    for (const bool interlaced : {false, true}) {
      if (interlaced && height == 1) {
        continue;  // never loads
      }
      // Filters 0 to 4 throughout, and all of them mixed.
      for (std::uint8_t filter = 0; filter < 6; ++filter) {
        PngImage image = Picture(width, height);
        image.interlaced = interlaced;
        image.filter = [filter](std::int32_t row) {
          return filter < 5 ? filter : static_cast<std::uint8_t>((row * 7 + 3) % 5);
        };
        const Bytes png = BuildPng(image, {.level = 6, .idatBytes = std::size_t{filter} * 100});
        const Load load = LoadPng(png);
        ASSERT_TRUE(load.loaded) << width << 'x' << height << ' ' << interlaced << ' ' << int{filter};
        EXPECT_EQ(load.host->Width(), width);
        EXPECT_EQ(load.host->Height(), height);
        ASSERT_EQ(load.Pixels(), PixelsByLibpng(png))
            << width << 'x' << height << ' ' << interlaced << ' ' << int{filter};
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AllKinds, PngMatrix,
                         testing::Values(Kind{0, 1, false}, Kind{0, 2, false}, Kind{0, 4, false}, Kind{0, 8, false},
                                         Kind{2, 8, false}, Kind{2, 8, true}, Kind{2, 16, false}, Kind{2, 16, true},
                                         Kind{3, 1, false}, Kind{3, 2, false}, Kind{3, 4, false}, Kind{3, 8, false},
                                         Kind{3, 1, true}, Kind{3, 2, true}, Kind{3, 4, true}, Kind{3, 8, true},
                                         Kind{4, 8, false}, Kind{4, 16, false}, Kind{6, 8, false}, Kind{6, 16, false}),
                         [](const testing::TestParamInfo<Kind>& kind) {
                           return "Type" + std::to_string(kind.param.colourType) + "Depth" +
                                  std::to_string(kind.param.bitDepth) + (kind.param.transparency ? "Trns" : "");
                         });

// Rows of more bytes than the inflate's window, so that it must slide and grow.
TEST(PngLarge, AWideAndATallImageEqualLibpngs) {
  for (const auto& [width, height] : {std::pair{100000, 3}, std::pair{700, 900}}) {
    for (const bool interlaced : {false, true}) {
      PngImage image{.width = width,
                     .height = height,
                     .interlaced = interlaced,
                     .samples = {},
                     .filter = {},
                     .palette = {},
                     .transparency = {}};
      std::uint32_t seed = 3;
      const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
      image.samples.reserve(count);
      for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 1664525 + 1013904223;
        image.samples.push_back(static_cast<std::uint16_t>((i / 7 + (seed >> 29)) % 256));
      }
      image.filter = [](std::int32_t row) { return static_cast<std::uint8_t>(row % 5); };
      const Bytes png = BuildPng(image, {.level = 6, .idatBytes = 8192});
      const Load load = LoadPng(png);
      ASSERT_TRUE(load.loaded);
      ASSERT_TRUE(load.Pixels() == PixelsByLibpng(png)) << width << ' ' << interlaced;
    }
  }
}

}  // namespace
}  // namespace kelvane
