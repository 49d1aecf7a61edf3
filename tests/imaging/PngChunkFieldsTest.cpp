// What IHDR, PLTE and tRNS may say, and what comes of it.
#include <sys/resource.h>

#include "imaging/PngLoad.h"
#include "support/DeflateBits.h"

namespace kelvane {
namespace {

using namespace test;

// --- IHDR ---

TEST(PngIhdr, EveryFieldOutsideWhatIsAcceptedIsRefused) {
  const struct {
    const char* what;
    std::size_t offset;
    std::uint8_t value;
  } rows[] = {
      {"width 0", 3, 0},        {"negative width", 0, 0x80}, {"height 0", 7, 0},     {"negative height", 4, 0x80},
      {"compression 1", 10, 1}, {"filter method 1", 11, 1},  {"depth 0", 8, 0},      {"depth 3", 8, 3},
      {"depth 5", 8, 5},        {"depth 32", 8, 32},         {"depth 255", 8, 255},  {"colour type 1", 9, 1},
      {"colour type 5", 9, 5},  {"colour type 7", 9, 7},     {"interlace 2", 12, 2}, {"interlace 255", 12, 255},
  };
  for (const auto& row : rows) {
    Bytes header = PngHeaderData(1, 1, 8, 0);
    header[row.offset] = row.value;
    ExpectRefusedUntouched({PngChunkOf("IHDR", header), Idat(), Iend()}, row.what);
  }
}

TEST(PngIhdr, ABitmapOf2GigabytesOrMoreIsRefused) {
  const std::pair<std::int32_t, std::int32_t> sizes[] = {{0x7FFFFFFF, 1}, {1, 0x7FFFFFFF}, {0x4000000, 1},
                                                         {32768, 16384},  {65536, 65536},  {0x1000000, 0x1000000}};
  for (const auto& [width, height] : sizes) {
    ExpectRefusedUntouched({PngChunkOf("IHDR", PngHeaderData(width, height, 1, 0)), Idat(), Iend()});
  }
}

TEST(PngIhdr, AHeaderWhoseImageDataIsBeyond31BitsIsRefused) {
  ExpectRefusedUntouched({PngChunkOf("IHDR", PngHeaderData(20000, 20000, 16, 6)), Idat(), Iend()});
}

#if !defined(__SANITIZE_ADDRESS__)
// Kilobytes of memory that the process ever had in use.
long MostMemoryUsed() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}
#endif

TEST(PngIhdr, AHeaderThatPromisesGigabytesCostsNoMoreThanItsFailure) {
  // 1.6 gigabytes of pixels; the stream breaks off behind two rows.
  DeflateBits bits;
  bits.Block(false, 1).FixedSymbol(1);
  for (int i = 0; i < 160000 / 258; ++i) {
    bits.FixedSymbol(285).FixedDistance(0);
  }
  const Bytes broken = bits.FixedEnd().Block(true, 3).Take();
#if !defined(__SANITIZE_ADDRESS__)
  const long before = MostMemoryUsed();
#endif
  for (const std::uint8_t interlaceMethod : Values{0, 1}) {
    ExpectRefusedUntouched(
        {PngChunkOf("IHDR", PngHeaderData(20000, 20000, 8, 6, interlaceMethod)), PngChunkOf("IDAT", broken), Iend()});
  }
  // One row of half a gigabyte, and a stream that breaks off at once.
  for (const std::uint8_t interlaceMethod : Values{0, 1}) {
    ExpectRefusedUntouched({PngChunkOf("IHDR", PngHeaderData(33000000, 2, 16, 6, interlaceMethod)),
                            PngChunkOf("IDAT", Bytes{0x78, 0x9C, 0x07}), Iend()});
  }
#if !defined(__SANITIZE_ADDRESS__)
  EXPECT_LT(MostMemoryUsed() - before, 32 * 1024);
#endif
}

TEST(PngIhdr, ThePairingOfColourTypeAndDepthIsNotChecked) {
  for (const std::uint8_t colourType : Values{2, 4, 6}) {
    EXPECT_TRUE(LoadPng(PngFileOf({Ihdr(4, colourType), Idat(), Iend()})).loaded) << int{colourType};
  }
}

TEST(PngIhdr, MoreDataThanItsFieldsIsTaken) {
  Bytes header = PngHeaderData(1, 1, 8, 0);
  header.push_back(99);
  ExpectGrey7(LoadPng(PngFileOf({PngChunkOf("IHDR", header), Idat(), Iend()})));
}

TEST(PngIhdr, WithTooLittleDataAStreamGivesWhatStandsBehindItAndAFileFails) {
  Bytes header = PngHeaderData(1, 1, 8, 0);
  header.pop_back();  // the interlace method is then the first byte of the CRC, 0
  const Bytes png = PngFileOf({PngChunkWithCrc("IHDR", header, 0), Idat(), Iend()});
  ExpectGrey7(LoadPng(png));
  EXPECT_FALSE(LoadsAsFile(png));
}

// --- PLTE ---

TEST(PngPlte, ALengthThatIsNoMultipleOf3IsAFailure) {
  for (const std::uint8_t colourType : Values{2, 3, 6}) {
    for (const std::size_t length : {1U, 2U, 4U, 767U}) {
      ExpectRefusedUntouched({Ihdr(8, colourType), PngChunkOf("PLTE", Bytes(length)), Idat(), Iend()});
    }
  }
}

TEST(PngPlte, GreyImagesIgnoreItWithItsLengthAndCrc) {
  ExpectGrey7(LoadPng(PngFileOf({Ihdr(), PngChunkWithCrc("PLTE", Bytes(5, 9), kWrongCrc), Idat(), Iend()})));
  const Load load = LoadPng(PngFileOf({Ihdr(8, 4), PngChunkWithCrc("PLTE", Bytes(5, 9), kWrongCrc),
                                       PngChunkOf("IDAT", ZlibStream(Bytes{0, 7, 255})), Iend()}));
  ExpectGrey7(load);
}

TEST(PngPlte, ColourImagesTakeItAndDontUseIt) {
  const Load load = LoadPng(PngFileOf(
      {Ihdr(8, 2), PngChunkOf("PLTE", Bytes(9, 200)), PngChunkOf("IDAT", ZlibStream(Bytes{0, 1, 2, 3})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Rgb(1, 2, 3)});
}

// --- tRNS ---

TEST(PngTrns, ImagesWithAnAlphaChannelIgnoreIt) {
  const Load grey = LoadPng(PngFileOf(
      {Ihdr(8, 4), PngChunkOf("tRNS", Bytes{0, 7}), PngChunkOf("IDAT", ZlibStream(Bytes{0, 7, 255})), Iend()}));
  ExpectGrey7(grey);
  const Load rgba = LoadPng(PngFileOf({Ihdr(8, 6), PngChunkOf("tRNS", Bytes{0, 1, 0, 2, 0, 3}),
                                       PngChunkOf("IDAT", ZlibStream(Bytes{0, 1, 2, 3, 255})), Iend()}));
  ASSERT_TRUE(rgba.loaded);
  EXPECT_EQ(rgba.Pixels(), std::vector<Pixel>{Rgb(1, 2, 3)});
}

TEST(PngTrns, OfAnRgbImageItTakesTheLowBytesOfThreeSamples) {
  const Load load =
      LoadPng(PngFileOf({PngChunkOf("IHDR", PngHeaderData(2, 1, 8, 2)), PngChunkOf("tRNS", Bytes{77, 1, 88, 2, 99, 3}),
                         PngChunkOf("IDAT", ZlibStream(Bytes{0, 1, 2, 3, 77, 88, 99})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{kClear, Rgb(77, 88, 99)}));
}

TEST(PngTrns, TooShortForItsSamplesMeansNoTransparentColour) {
  const Load load = LoadPng(PngFileOf({Ihdr(8, 2), PngChunkOf("tRNS", Bytes{0, 1, 0, 2, 0}),
                                       PngChunkOf("IDAT", ZlibStream(Bytes{0, 1, 2, 0})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Rgb(1, 2, 0)});
}

TEST(PngTrns, OfAGreyImageItsColourIsLostAndAlphaIsTrue) {
  for (const std::uint8_t bitDepth : Values{1, 2, 4, 8}) {
    const Load load = LoadPng(PngFileOf(
        {Ihdr(bitDepth, 0), PngChunkOf("tRNS", Bytes{0, 0}), PngChunkOf("IDAT", ZlibStream(Bytes{0, 0})), Iend()}));
    ASSERT_TRUE(load.loaded);
    EXPECT_EQ(load.Pixels(), std::vector<Pixel>{kBlack}) << int{bitDepth};
    EXPECT_TRUE(load.host->Alpha());
  }
}

TEST(PngTrns, OfAGreyImageWithThePaletteOfAnEarlierHeaderItCountsAsTheIndexInItsHighestBits) {
  // Shift 8 / depth - 1: 1 for 4 bits, so that 6 stands for the index 3.
  const Load load =
      LoadPng(PngFileOf({Ihdr(4, 3), PngChunkOf("PLTE", Bytes(48, 40)), PngChunkOf("IHDR", PngHeaderData(2, 1, 4, 0)),
                         PngChunkOf("tRNS", Bytes{0, 6}), PngChunkOf("IDAT", ZlibStream(Bytes{0, 0x36})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{kClear, Grey(40)}));
}

TEST(PngTrns, WithMoreThan256EntriesStaysAsLongAsItIs) {
  Bytes alphas(300, 255);
  alphas[0] = 0;
  const Load load = LoadPng(PngFileOf({Ihdr(8, 3), PngChunkOf("PLTE", Bytes{1, 2, 3}), PngChunkOf("tRNS", alphas),
                                       PngChunkOf("IDAT", ZlibStream(Bytes{0, 0})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{kClear});
}

}  // namespace
}  // namespace kelvane
