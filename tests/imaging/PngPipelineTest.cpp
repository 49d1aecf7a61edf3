// From image data to rows: data of the wrong length, filters, interlacing.
#include "imaging/PngFilters.h"
#include "imaging/PngLoad.h"
#include "imaging/PngPixels.h"
#include "support/DeflateBits.h"

namespace kelvane {
namespace {

using namespace test;

// --- Image data of another length ---

TEST(PngData, ShorterThanExpectedTheMissingRowsReadAsZeros) {
  const Load rgb = LoadPng(PngOfRaw(1, 3, 8, 2, Bytes{0, 1, 2, 3}));
  ASSERT_TRUE(rgb.loaded);
  EXPECT_EQ(rgb.Pixels(), (std::vector<Pixel>{Rgb(1, 2, 3), kBlack, kBlack}));
  const Load rgba = LoadPng(PngOfRaw(1, 3, 8, 6, Bytes{0, 1, 2, 3, 255}));
  ASSERT_TRUE(rgba.loaded);
  EXPECT_EQ(rgba.Pixels(), (std::vector<Pixel>{Rgb(1, 2, 3), kClear, kClear}));
}

TEST(PngData, EndingWithinARowTheRestOfItReadsAsZeros) {
  // The second row is filtered: what is missing of it is added to the row above.
  const Load load = LoadPng(PngOfRaw(3, 3, 8, 0, Bytes{0, 10, 20, 30, 2, 1}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(),
            (std::vector<Pixel>{Grey(10), Grey(20), Grey(30), Grey(11), Grey(20), Grey(30), kBlack, kBlack, kBlack}));
}

TEST(PngData, OfNoBytesAtAllIsAnImageOfZeros) {
  const Load load = LoadPng(PngOfRaw(2, 2, 8, 0, Bytes{}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>(4, kBlack));
}

TEST(PngData, MissingRowsOfAPaletteImageShowEntry0OrFail) {
  PngImage image = OneRow(3, 8, {1});
  image.palette = Bytes{7, 7, 7, 8, 8, 8};
  Bytes png = BuildPng(image);
  const Bytes taller = PngFileOf({PngChunkOf("IHDR", PngHeaderData(1, 3, 8, 3)), PngChunkOf("PLTE", *image.palette),
                                  PngChunkOf("IDAT", ZlibStream(Bytes{0, 1})), PngChunkOf("IEND", {})});
  EXPECT_EQ(LoadPng(taller).Pixels(), (std::vector<Pixel>{Grey(8), Grey(7), Grey(7)}));
}

TEST(PngData, MissingPassesReadAsZeros) {
  const Load load = LoadPng(PngOfRaw(2, 2, 8, 0, Bytes{0, 9}, 1));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{Grey(9), kBlack, kBlack, kBlack}));
}

TEST(PngData, LongerThanExpectedIsAFailureThatLeavesTheHostUntouched) {
  for (const std::uint8_t colourType : Values{0, 2, 3, 4, 6}) {
    Bytes raw(static_cast<std::size_t>(PngChannels(colourType)) * 4 + 2);
    EXPECT_TRUE(LoadPng(PngOfRaw(2, 2, 8, colourType, raw)).loaded) << int{colourType};
    raw.push_back(0);
    const Load load = LoadPng(PngOfRaw(2, 2, 8, colourType, raw));
    EXPECT_FALSE(load.loaded) << int{colourType};
    EXPECT_TRUE(load.Untouched()) << int{colourType};
  }
}

TEST(PngData, OfAnInterlacedImageMayBeLongerByABytePerRowOfAPassWithoutColumns) {
  // 2 by 2: passes of 1, 1 and 2 pixels, and 2 bytes that the passes 2 and 4 are counted with.
  Bytes raw = {0, 1, 0, 2, 0, 3, 4};
  raw.resize(9);
  EXPECT_EQ(LoadPng(PngOfRaw(2, 2, 8, 0, raw, 1)).Pixels(), (std::vector<Pixel>{Grey(1), Grey(2), Grey(3), Grey(4)}));
  raw.push_back(0);
  EXPECT_FALSE(LoadPng(PngOfRaw(2, 2, 8, 0, raw, 1)).loaded);
}

TEST(PngData, AWrongChecksumOrHeaderOfTheStreamIsMadeGoodByTheBuiltInInflate) {
  const Bytes header = PngHeaderData(1, 1, 8, 0);
  const Bytes sound = ZlibStream(Bytes{0, 7});
  Bytes wrongAdler = sound;
  wrongAdler.back() ^= 1;
  Bytes noAdler(sound.begin(), sound.end() - 4);
  Bytes wrongHeader = sound;
  wrongHeader[0] = wrongHeader[1] = 0xFF;
  for (const Bytes& data : {wrongAdler, noAdler, wrongHeader}) {
    const Load load = LoadPng(PngFileOf(header, data));
    ASSERT_TRUE(load.loaded);
    EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Grey(7)});
  }
}

TEST(PngData, DistancesBeyondTheStandardsAreMadeGoodByTheBuiltInInflate) {
  // A row of 40000 grey pixels: 32769 of them stored, then 3 from 32769 back by the code that the standard lacks.
  Bytes stored(32769);
  for (std::size_t i = 1; i < stored.size(); ++i) {
    stored[i] = static_cast<std::uint8_t>(i);
  }
  DeflateBits bits;
  bits.Block(false, 0).Stored(stored).Block(true, 1).FixedSymbol(257).FixedDistance(30).Bits(0, 14).FixedEnd();
  const Load load = LoadPng(PngFileOf(PngHeaderData(40000, 1, 8, 0), bits.Take()));
  ASSERT_TRUE(load.loaded);
  const std::vector<Pixel> pixels = load.Pixels();
  EXPECT_EQ(pixels[32767], Grey(0));
  EXPECT_EQ(pixels[32768], kBlack);
  EXPECT_EQ(pixels[32769], Grey(1));
  EXPECT_EQ(pixels[32770], Grey(2));
  EXPECT_EQ(pixels[32771], kBlack);
}

TEST(PngData, AStreamCutOffReadsTheZerosBehindItInTheArrayOfTheImageData) {
  // The end of a fixed block is seven zero bits: cut off, the block still ends.
  const Bytes cut = DeflateBits().Block(true, 1).FixedSymbol(0).FixedSymbol(7).Take();
  const Load load = LoadPng(PngFileOf(PngHeaderData(1, 1, 8, 0), cut));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Grey(7)});
  // More blocks would be stored ones of wrong lengths.
  const Bytes notFinal = DeflateBits().Block(false, 1).FixedSymbol(0).FixedSymbol(7).Take();
  EXPECT_FALSE(LoadPng(PngFileOf(PngHeaderData(1, 1, 8, 0), notFinal)).loaded);
}

// --- Filters ---

TEST(PngFilter, ANumberAbove4InANonInterlacedRowTakesTheRowAsItStands) {
  for (const std::uint8_t filter : Values{5, 7, 255}) {
    const Load load = LoadPng(PngOfRaw(2, 2, 8, 0, Bytes{1, 10, 20, filter, 1, 2}));
    ASSERT_TRUE(load.loaded) << int{filter};
    EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{Grey(10), Grey(30), Grey(1), Grey(2)}));
  }
}

TEST(PngFilter, ARowTakenAsItStandsIsWhatTheNextRowIsFilteredBy) {
  const Load load = LoadPng(PngOfRaw(1, 2, 8, 0, Bytes{9, 10, 2, 1}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{Grey(10), Grey(11)}));
}

TEST(PngFilter, ANumberAbove4InAPassOfAnInterlacedImageFailsAndEmptiesTheHost) {
  for (const std::size_t row : {0U, 2U, 4U}) {
    Bytes raw = {0, 1, 0, 2, 0, 3, 4};
    ASSERT_TRUE(LoadPng(PngOfRaw(2, 2, 8, 0, raw, 1)).loaded);
    raw[row] = 5;
    const Load load = LoadPng(PngOfRaw(2, 2, 8, 0, raw, 1));
    EXPECT_FALSE(load.loaded) << row;
    EXPECT_TRUE(load.Emptied()) << row;
  }
}

TEST(PngFilter, ANumberAbove4FailsInAnInterlacedImageOfPixelsThatAreNotConvertedToo) {
  EXPECT_FALSE(LoadPng(PngOfRaw(2, 2, 4, 6, Bytes{9, 0, 0}, 1)).loaded);
  EXPECT_TRUE(LoadPng(PngOfRaw(2, 2, 4, 6, Bytes{9, 0, 0}, 0)).loaded);
}

// --- Interlacing ---

TEST(PngInterlaced, A2By2ImageDecodesPasses1And6And7AndTheOthersConsumeNoData) {
  const Load load = LoadPng(PngOfRaw(2, 2, 8, 0, Bytes{0, 1, 0, 2, 0, 3, 4}, 1));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{Grey(1), Grey(2), Grey(3), Grey(4)}));
}

TEST(PngInterlaced, A1By1ImageFailsAndEmptiesTheHost) {
  const Load load = LoadPng(PngOfRaw(1, 1, 8, 0, Bytes{0, 7}, 1));
  EXPECT_FALSE(load.loaded);
  EXPECT_TRUE(load.Emptied());
}

TEST(PngInterlaced, AnyImageOnePixelHighFails) {
  const Load load = LoadPng(PngOfRaw(9, 1, 8, 0, Bytes(13), 1));
  EXPECT_FALSE(load.loaded);
  EXPECT_TRUE(load.Emptied());
}

TEST(PngInterlaced, AnImageWhoseLargestPassIsNotTheSeventhLoads) {
  PngImage image{.width = 8,
                 .height = 3,
                 .colourType = 0,
                 .interlaced = true,
                 .samples = {},
                 .filter = {},
                 .palette = {},
                 .transparency = {}};
  std::vector<Pixel> expected;
  for (std::uint16_t i = 0; i < 24; ++i) {
    image.samples.push_back(static_cast<std::uint16_t>(i * 10));
    expected.push_back(Grey(static_cast<std::uint8_t>(i * 10)));
  }
  EXPECT_EQ(PixelsOfImage(image), expected);
}

TEST(PngInterlaced, EveryPassBeginsWithoutARowAbove) {
  // 1 by 3: pass 1 has row 0, pass 5 row 2, pass 7 row 1; each is filtered by the row above it, which isn't there.
  const Load load = LoadPng(PngOfRaw(1, 3, 8, 0, Bytes{2, 10, 2, 20, 2, 30}, 1));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{Grey(10), Grey(30), Grey(20)}));
}

}  // namespace
}  // namespace kelvane
