// From samples to pixels: conversions, transparency, palettes.
#include <algorithm>

#include "imaging/PngFilters.h"
#include "imaging/PngLoad.h"
#include "imaging/PngPixels.h"
#include "support/GuardedBytes.h"

namespace kelvane {
namespace {

using namespace test;

// --- Conversion of pixels ---

TEST(PngPixels, RgbaOf8BitsIsPremultiplied) {
  EXPECT_EQ(PixelsOfImage(OneRow(6, 8, {200, 100, 50, 128, 200, 100, 50, 255, 255, 255, 255, 1, 9, 8, 7, 254})),
            (std::vector<Pixel>{{25, 50, 100, 128}, Rgb(200, 100, 50), {1, 1, 1, 1}, {6, 7, 8, 254}}));
}

TEST(PngPixels, AnRgbaPixelOfAlpha0IsStoredAsAllZero) {
  EXPECT_EQ(PixelsOfImage(OneRow(6, 8, {200, 100, 50, 0})), std::vector<Pixel>{kClear});
}

TEST(PngPixels, RgbaOf16BitsTakesTheHighBytes) {
  EXPECT_EQ(
      PixelsOfImage(OneRow(
          6, 16, {0xC8FF, 0x64FF, 0x32FF, 0x80FF, 0x0102, 0x0304, 0x0506, 0xFF00, 0xFFFF, 0xFFFF, 0xFFFF, 0x00FF})),
      (std::vector<Pixel>{{25, 50, 100, 128}, Rgb(1, 3, 5), kClear}));
}

TEST(PngPixels, GreyWithAlphaOf8BitsIsPremultiplied) {
  EXPECT_EQ(PixelsOfImage(OneRow(4, 8, {200, 128, 200, 255, 200, 0})),
            (std::vector<Pixel>{{100, 100, 100, 128}, Grey(200), kClear}));
}

TEST(PngPixels, GreyWithAlphaOf16BitsTakesTheHighBytes) {
  EXPECT_EQ(PixelsOfImage(OneRow(4, 16, {0xC8FF, 0x80FF, 0xC800, 0xFF00, 0xC8FF, 0x00FF})),
            (std::vector<Pixel>{{100, 100, 100, 128}, Grey(200), kClear}));
}

TEST(PngPixels, RgbOf8BitsIsOpaque) {
  EXPECT_EQ(PixelsOfImage(OneRow(2, 8, {1, 2, 3, 255, 254, 253})),
            (std::vector<Pixel>{Rgb(1, 2, 3), Rgb(255, 254, 253)}));
}

TEST(PngPixels, RgbOf16BitsCountsHighBytesOnlySoThatPixelsDifferingInLowOnesComeOutAlike) {
  EXPECT_EQ(PixelsOfImage(OneRow(2, 16, {0x0100, 0x0200, 0x0300, 0x01FF, 0x02FF, 0x03FF})),
            (std::vector<Pixel>{Rgb(1, 2, 3), Rgb(1, 2, 3)}));
}

TEST(PngPixels, GreyOf8BitsIsOpaque) {
  EXPECT_EQ(PixelsOfImage(OneRow(0, 8, {0, 1, 128, 255})), (std::vector<Pixel>{kBlack, Grey(1), Grey(128), kWhite}));
}

TEST(PngPixels, GreyOf4BitsIsShownInStepsOf17) {
  EXPECT_EQ(PixelsOfImage(OneRow(0, 4, {0, 1, 14, 15, 7})),
            (std::vector<Pixel>{kBlack, Grey(17), Grey(238), kWhite, Grey(119)}));
}

TEST(PngPixels, GreyOf2BitsIsShownInStepsOf85) {
  EXPECT_EQ(PixelsOfImage(OneRow(0, 2, {0, 1, 2, 3, 1})),
            (std::vector<Pixel>{kBlack, Grey(85), Grey(170), kWhite, Grey(85)}));
}

TEST(PngPixels, GreyOf1BitIsBlackAndWhite) {
  EXPECT_EQ(PixelsOfImage(OneRow(0, 1, {0, 1, 1, 0, 0, 0, 0, 0, 1})),
            (std::vector<Pixel>{kBlack, kWhite, kWhite, kBlack, kBlack, kBlack, kBlack, kBlack, kWhite}));
}

TEST(PngPixels, GreyOf16BitsNeverConvertsAndTheHostIsEmptied) {
  const Load load = LoadImage(OneRow(0, 16, {0x1234, 0x5678}));
  EXPECT_FALSE(load.loaded);
  EXPECT_TRUE(load.Emptied());
}

TEST(PngPixels, APaletteImageOf16BitsNeverConvertsAndTheHostIsEmptied) {
  PngImage image = OneRow(3, 16, {0, 0});
  image.palette = Bytes{1, 2, 3};
  const Load load = LoadImage(image);
  EXPECT_FALSE(load.loaded);
  EXPECT_TRUE(load.Emptied());
}

TEST(PngPixels, PaletteImagesOfEveryDepthShowTheirEntries) {
  const struct {
    std::uint8_t bitDepth;
    std::vector<std::uint16_t> samples;
  } rows[] = {{1, {0, 1, 1, 0, 1, 0, 1, 1, 1}}, {2, {3, 0, 2, 1, 2}}, {4, {3, 0, 2, 1, 2}}, {8, {3, 0, 2, 1, 2}}};
  const Pixel colours[] = {Rgb(10, 20, 30), Rgb(40, 50, 60), Rgb(70, 80, 90), Rgb(100, 110, 120)};
  for (const auto& row : rows) {
    PngImage image = OneRow(3, row.bitDepth, row.samples);
    image.palette = Bytes{10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120};
    std::vector<Pixel> expected;
    for (const std::uint16_t sample : row.samples) {
      expected.push_back(colours[sample]);
    }
    EXPECT_EQ(PixelsOfImage(image), expected) << int{row.bitDepth};
  }
}

TEST(PngPixels, A4BitPaletteImageOfWidth3PassesOverTheUnusedSampleOfARow) {
  // The unused sample is 15, which the palette doesn't have.
  Bytes png = PngFileOf({PngChunkOf("IHDR", PngHeaderData(3, 2, 4, 3)), PngChunkOf("PLTE", Bytes{1, 1, 1, 2, 2, 2}),
                         PngChunkOf("IDAT", ZlibStream(Bytes{0, 0x01, 0x1F, 0, 0x11, 0x0F})), PngChunkOf("IEND", {})});
  const Load load = LoadPng(png);
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{Grey(1), Grey(2), Grey(2), Grey(2), Grey(2), Grey(1)}));
}

TEST(PngPixels, AnIndexOutsideThePaletteFailsAndEmptiesTheHost) {
  for (const std::uint8_t bitDepth : Values{1, 2, 4, 8}) {
    for (const std::size_t at : {0U, 8U, 16U}) {
      PngImage image = OneRow(3, bitDepth, std::vector<std::uint16_t>(17));
      image.samples[at] = 1;
      image.palette = Bytes{1, 2, 3};
      const Load load = LoadImage(image);
      EXPECT_FALSE(load.loaded) << int{bitDepth} << ' ' << at;
      EXPECT_TRUE(load.Emptied()) << int{bitDepth} << ' ' << at;
      image.palette = Bytes{1, 2, 3, 4, 5, 6};
      EXPECT_TRUE(LoadImage(image).loaded) << int{bitDepth} << ' ' << at;
    }
  }
}

TEST(PngPixels, ColourTypesWithSamplesOfLessThan8BitsLeaveAllPixelsZero) {
  for (const std::uint8_t colourType : Values{2, 4, 6}) {
    for (const std::uint8_t bitDepth : Values{1, 2, 4}) {
      const Load load = LoadPng(PngOfRaw(3, 2, bitDepth, colourType, Bytes{4, 0xFF, 0xFF, 0xFF}));
      ASSERT_TRUE(load.loaded) << int{colourType} << ' ' << int{bitDepth};
      EXPECT_EQ(load.Pixels(), std::vector<Pixel>(6, kClear));
    }
  }
}

TEST(PngPixels, RowsAreStoredBottomFirst) {
  const Load load = LoadPng(PngOfRaw(1, 3, 8, 0, Bytes{0, 1, 0, 2, 0, 3}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.host->BitsPointer()[0], 3);
  EXPECT_EQ(load.host->BitsPointer()[4], 2);
  EXPECT_EQ(load.host->BitsPointer()[8], 1);
}

// Every kernel over many widths, so that each meets its wide steps and what is left behind them. Behind the samples are
// the bytes that may be read, behind the pixels none.
TEST(PngPixels, TheProcessorsOwnInstructionsGiveTheSameAsPortableOnes) {
  const PngPixelKernels& best = BestPngPixelKernels();
  const PngPixelKernels& portable = PortablePngPixelKernels();
  const struct {
    ConvertPixels one;
    ConvertPixels other;
    std::size_t sampleBytes;  // of a pixel
  } rows[] = {{best.grey8, portable.grey8, 1},  {best.greyAlpha8, portable.greyAlpha8, 2},
              {best.rgb8, portable.rgb8, 3},    {best.greyAlpha16, portable.greyAlpha16, 4},
              {best.rgba8, portable.rgba8, 4},  {best.rgb16, portable.rgb16, 6},
              {best.rgba16, portable.rgba16, 8}};
  Bytes noise(std::size_t{70} * 8 + kPngRowSlack);
  std::uint32_t seed = 5;
  for (std::uint8_t& byte : noise) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(seed >> 24);
  }
  for (const auto& row : rows) {
    for (std::size_t count = 0; count < 70; ++count) {
      const GuardedBytes samples(ByteView(noise).first(count * row.sampleBytes + kPngRowSlack));
      GuardedBytes left(Bytes(count * 4, 0xEE));
      GuardedBytes right(Bytes(count * 4, 0xDD));
      row.one(samples.data(), left.data(), count);
      row.other(samples.data(), right.data(), count);
      EXPECT_TRUE(std::ranges::equal(left.View(), right.View())) << row.sampleBytes << ' ' << count;
    }
  }
}

TEST(PngPixels, EveryColourIsMultipliedByEveryAlphaOver255Truncated) {
  for (const PngPixelKernels& kernels : {BestPngPixelKernels(), PortablePngPixelKernels()}) {
    for (int alpha = 0; alpha < 256; ++alpha) {
      Bytes samples;
      for (int colour = 0; colour < 256; ++colour) {
        Append(samples, Bytes{static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(alpha)});
      }
      samples.resize(samples.size() + kPngRowSlack);
      Bytes pixels(1024);
      kernels.greyAlpha8(samples.data(), pixels.data(), 256);
      for (int colour = 0; colour < 256; ++colour) {
        const auto product = static_cast<std::uint8_t>(colour * alpha / 255);
        const auto at = static_cast<std::size_t>(colour) * 4;
        ASSERT_EQ((Pixel{pixels[at], pixels[at + 1], pixels[at + 2], pixels[at + 3]}),
                  (Pixel{product, product, product, static_cast<std::uint8_t>(alpha)}));
      }
    }
  }
}

// --- Transparency ---

TEST(PngTransparency, AnRgbImageWithATrnsColourHasThatColourAllZeroAndAlphaTrue) {
  PngImage image = OneRow(2, 8, {10, 20, 30, 10, 20, 31, 10, 20, 30, 0, 0, 0, 30, 20, 10});
  image.transparency = Bytes{0, 10, 0, 20, 0, 30};
  const Load load = LoadImage(image);
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{kClear, Rgb(10, 20, 31), kClear, kBlack, Rgb(30, 20, 10)}));
  EXPECT_TRUE(load.host->Alpha());
}

TEST(PngTransparency, AnRgbImageWithoutTrnsHasAlphaTrueAndAllAlphaBytes255) {
  const Load load = LoadImage(OneRow(2, 8, {10, 20, 30, 0, 0, 0}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{Rgb(10, 20, 30), kBlack}));
  EXPECT_TRUE(load.host->Alpha());
}

TEST(PngTransparency, Of16BitRgbBothHalvesOfTheTrnsSamplesAreComparedWithTheHighBytes) {
  PngImage image = OneRow(2, 16,
                          {0x0100, 0x0200, 0x0300,    // the high bytes of the key
                           0x1100, 0x1200, 0x1300,    // its low bytes
                           0x01FF, 0x02FF, 0x03FF,    // other low bytes of its own
                           0x0100, 0x0200, 0x1300,    // some of both
                           0x0001, 0x0002, 0x0003});  // in low bytes only
  image.transparency = Bytes{0x01, 0x11, 0x02, 0x12, 0x03, 0x13};
  EXPECT_EQ(PixelsOfImage(image), (std::vector<Pixel>{kClear, kClear, kClear, Rgb(1, 2, 0x13), kBlack}));
}

TEST(PngTransparency, AGrey8BitImageWithTrnsHasAllPixelsOpaqueAndAlphaTrue) {
  PngImage image = OneRow(0, 8, {5, 6, 7});
  image.transparency = Bytes{0, 6};
  const Load load = LoadImage(image);
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{Grey(5), Grey(6), Grey(7)}));
  EXPECT_TRUE(load.host->Alpha());
}

TEST(PngTransparency, APaletteImageWithATrnsOf3EntriesIsOpaqueFromEntry3On) {
  PngImage image = OneRow(3, 8, {0, 1, 2, 3, 4});
  image.palette = Bytes{200, 100, 50, 200, 100, 50, 200, 100, 50, 200, 100, 50, 200, 100, 50};
  image.transparency = Bytes{0, 128, 255};
  const Load load = LoadImage(image);
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(),
            (std::vector<Pixel>{kClear, {25, 50, 100, 128}, Rgb(200, 100, 50), Rgb(200, 100, 50), Rgb(200, 100, 50)}));
  EXPECT_TRUE(load.host->Alpha());
}

TEST(PngTransparency, OfPackedPaletteIndexesEveryEntryHasItsAlpha) {
  for (const std::uint8_t bitDepth : Values{1, 2, 4}) {
    PngImage image = OneRow(3, bitDepth, {0, 1, 0, 1, 1, 1, 0, 0, 0, 1, 0});
    image.palette = Bytes{200, 100, 50, 9, 9, 9};
    image.transparency = Bytes{128};
    std::vector<Pixel> expected;
    for (const std::uint16_t sample : image.samples) {
      expected.push_back(sample == 0 ? Pixel{25, 50, 100, 128} : Grey(9));
    }
    EXPECT_EQ(PixelsOfImage(image), expected) << int{bitDepth};
  }
}

TEST(PngTransparency, AlphaFollowsTheColourTypeAndTrns) {
  const struct {
    std::uint8_t colourType;
    bool hasTrns;
    bool alpha;
  } rows[] = {{0, false, false}, {0, true, true},  {3, false, false}, {3, true, true},  {2, false, true},
              {2, true, true},   {4, false, true}, {4, true, true},   {6, false, true}, {6, true, true}};
  for (const auto& row : rows) {
    PngImage image = OneRow(row.colourType, 8,
                            std::vector<std::uint16_t>(static_cast<std::size_t>(PngChannels(row.colourType)) * 2));
    if (row.colourType == 3) {
      image.palette = Bytes{1, 2, 3};
    }
    if (row.hasTrns) {
      image.transparency = Bytes{0, 0, 0, 0, 0, 0};
    }
    const Load load = LoadImage(image);
    ASSERT_TRUE(load.loaded);
    EXPECT_EQ(load.host->Alpha(), row.alpha) << int{row.colourType} << ' ' << row.hasTrns;
    EXPECT_EQ(load.host->ImageType(), ImageKind::Png);
  }
}

TEST(PngTransparency, ATableTooShortForTheColoursThatAnEarlierHeaderReadItForFails) {
  // Read as an RGB image's, tRNS has 6 bytes; as a palette's alphas they serve six entries.
  const auto png = [](std::uint8_t index) {
    return PngFileOf({PngChunkOf("IHDR", PngHeaderData(1, 1, 8, 2)), PngChunkOf("PLTE", Bytes(60, 200)),
                      PngChunkOf("tRNS", Bytes{10, 20, 30, 40, 50, 255}), PngChunkOf("IHDR", PngHeaderData(1, 1, 8, 3)),
                      PngChunkOf("IDAT", ZlibStream(Bytes{0, index})), PngChunkOf("IEND", {})});
  };
  EXPECT_EQ(LoadPng(png(5)).Pixels(), std::vector<Pixel>{Grey(200)});
  const Load load = LoadPng(png(6));
  EXPECT_FALSE(load.loaded);
  EXPECT_TRUE(load.Emptied());
}

TEST(PngTransparency, A16BitRgbImageWhoseTableLacksTheHighBytesFailsOnAnyColourButTheKey) {
  // Read as that of a 16-bit grey image, tRNS has 2 bytes: its key is 7, which is blue in an RGB image.
  const auto png = [](const Bytes& pixel) {
    Bytes raw = {0};
    Append(raw, pixel);
    return PngFileOf({PngChunkOf("IHDR", PngHeaderData(1, 1, 16, 0)), PngChunkOf("tRNS", Bytes{0, 7}),
                      PngChunkOf("IHDR", PngHeaderData(1, 1, 16, 2)), PngChunkOf("IDAT", ZlibStream(raw)),
                      PngChunkOf("IEND", {})});
  };
  EXPECT_EQ(LoadPng(png({0, 1, 0, 1, 7, 1})).Pixels(), std::vector<Pixel>{kClear});
  const Load load = LoadPng(png({0, 1, 0, 1, 8, 1}));
  EXPECT_FALSE(load.loaded);
  EXPECT_TRUE(load.Emptied());
}

// --- Palettes that the file doesn't give ---

TEST(PngDefaultPalette, A1BitPaletteImageWithoutPlteShowsCyanForIndex1) {
  EXPECT_EQ(PixelsOfImage(OneRow(3, 1, {0, 1})), (std::vector<Pixel>{kBlack, Rgb(0, 255, 255)}));
}

TEST(PngDefaultPalette, OtherPaletteImagesWithoutPlteAreBlack) {
  for (const std::uint8_t bitDepth : Values{2, 4, 8}) {
    EXPECT_EQ(PixelsOfImage(OneRow(3, bitDepth, {0, 1, 2, 3})), std::vector<Pixel>(4, kBlack));
  }
}

}  // namespace
}  // namespace kelvane
