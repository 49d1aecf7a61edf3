// The chunks of a PNG: CRCs, their order, both modes with their counters, and what failures leave.
#include <string>

#include "imaging/PngLoad.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using namespace test;

bool NoZlib(std::string_view, std::string_view) {
  return false;
}

// --- CRCs ---

TEST(PngCrc, WithoutZlibNoneIsVerifiedAndAPngWithWrongOnesLoads) {
  const Bytes png =
      PngFileOf({PngChunkWithCrc("IHDR", PngHeaderData(1, 1, 8, 3), kWrongCrc),
                 PngChunkWithCrc("PLTE", Bytes{1, 2, 3}, kWrongCrc), PngChunkWithCrc("tRNS", Bytes{128}, kWrongCrc),
                 PngChunkWithCrc("IDAT", ZlibStream(Bytes{0, 0}), kWrongCrc), Iend()});
  const Load load = LoadPng(png, NoZlib);
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{{1, 1, 0, 128}}));
  EXPECT_FALSE(LoadPng(png).loaded);
}

TEST(PngCrc, TheLookupIsAskedForCrc32OfZlib) {
  std::vector<std::string> asked;
  (void)LoadPng(SoundPng(), [&](std::string_view dll, std::string_view function) {
    asked.push_back(std::string(dll) + ' ' + std::string(function));
    return true;
  });
  EXPECT_EQ(asked, std::vector<std::string>{"zlib.dll crc32"});
}

TEST(PngCrc, AWrongOneOnTrnsLoadsWithoutTransparency) {
  const Load load =
      LoadPng(PngFileOf({Ihdr(8, 3), PngChunkOf("PLTE", Bytes{1, 2, 3}), PngChunkWithCrc("tRNS", Bytes{128}, kWrongCrc),
                         PngChunkOf("IDAT", ZlibStream(Bytes{0, 0})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Rgb(1, 2, 3)});
  EXPECT_FALSE(load.host->Alpha());
}

TEST(PngCrc, AWrongOneOnASecondTrnsTakesTheFirstOnesColourAway) {
  const Load load = LoadPng(
      PngFileOf({Ihdr(8, 3), PngChunkOf("PLTE", Bytes{1, 2, 3}), PngChunkOf("tRNS", Bytes{128}),
                 PngChunkWithCrc("tRNS", Bytes{0}, kWrongCrc), PngChunkOf("IDAT", ZlibStream(Bytes{0, 0})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Rgb(1, 2, 3)});
  EXPECT_TRUE(load.host->Alpha());  // the table of the first is still there
}

TEST(PngCrc, AWrongOneOnATextChunkGoesUnnoticed) {
  const Bytes text = {'T', 'i', 't', 'l', 'e', 0, 'x'};
  ExpectGrey7(LoadPng(PngFileOf({Ihdr(), PngChunkWithCrc("tEXt", text, kWrongCrc), Idat(), Iend()})));
}

TEST(PngCrc, AWrongOneOnIendGoesUnnoticed) {
  ExpectGrey7(LoadPng(PngFileOf({Ihdr(), Idat(), PngChunkWithCrc("IEND", {}, kWrongCrc)})));
}

TEST(PngCrc, AWrongOneOnIhdrPlteOrIdatIsAFailure) {
  const Bytes header = PngHeaderData(1, 1, 8, 3);
  const Bytes palette = {1, 2, 3};
  const Bytes data = ZlibStream(Bytes{0, 0});
  ExpectRefusedUntouched(
      {PngChunkWithCrc("IHDR", header, kWrongCrc), PngChunkOf("PLTE", palette), PngChunkOf("IDAT", data), Iend()});
  ExpectRefusedUntouched(
      {PngChunkOf("IHDR", header), PngChunkWithCrc("PLTE", palette, kWrongCrc), PngChunkOf("IDAT", data), Iend()});
  ExpectRefusedUntouched(
      {PngChunkOf("IHDR", header), PngChunkOf("PLTE", palette), PngChunkWithCrc("IDAT", data, kWrongCrc), Iend()});
}

TEST(PngCrc, AnIdatWhoseStoredCrcIs0IsAcceptedUnchecked) {
  ExpectGrey7(LoadPng(PngFileOf({Ihdr(), PngChunkWithCrc("IDAT", IdatData(), 0), Iend()})));
}

TEST(PngCrc, AStoredCrcOf0PassesOnEveryChunk) {
  const Load load = LoadPng(
      PngFileOf({PngChunkWithCrc("IHDR", PngHeaderData(1, 1, 8, 3), 0), PngChunkWithCrc("PLTE", Bytes{1, 2, 3}, 0),
                 PngChunkWithCrc("tRNS", Bytes{128}, 0), PngChunkWithCrc("IDAT", ZlibStream(Bytes{0, 0}), 0), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), (std::vector<Pixel>{{1, 1, 0, 128}}));
}

// --- Chunks and their order ---

TEST(PngChunkLoop, AZeroLengthIdatIsSkipped) {
  ExpectGrey7(LoadPng(PngFileOf({Ihdr(), PngChunkOf("IDAT", {}), Idat(), PngChunkOf("IDAT", {}), Iend()})));
}

TEST(PngChunkLoop, AZeroLengthIdatAsTheOnlyOneFailsForWantOfImageData) {
  ExpectRefusedUntouched({Ihdr(), PngChunkOf("IDAT", {}), Iend()});
  ExpectRefusedUntouched({Ihdr(), Iend()});
}

TEST(PngChunkLoop, ChunksOfLength0AreIgnoredWhateverTheirTypeAndCrc) {
  std::vector<Bytes> chunks;
  for (const char* type : {"IHDR", "PLTE", "tRNS", "IDAT", "abcd"}) {
    chunks.push_back(PngChunkWithCrc(type, {}, kWrongCrc));
  }
  chunks.insert(chunks.begin() + 2, Ihdr());
  chunks.push_back(Idat());
  chunks.push_back(Iend());
  ExpectGrey7(LoadPng(PngFileOf(chunks)));
}

TEST(PngChunkLoop, AChunkWhoseLengthRunsPastTheEndIsAFailureEvenBehindACompleteImage) {
  Bytes tooLong = PngChunkOf("tEXt", Bytes(10));
  tooLong[3] = 200;
  const Bytes png = PngFileOf({Ihdr(), Idat(), tooLong, Iend()});
  const Load load = LoadPng(png);
  EXPECT_FALSE(load.loaded);
  EXPECT_TRUE(load.Untouched());
  EXPECT_FALSE(LoadsAsFile(png));
}

TEST(PngChunkLoop, LengthsBeyond31BitsAreAFailure) {
  for (const std::uint8_t highest : Values{0x7F, 0x80, 0xFF}) {
    Bytes chunk = PngChunkOf("tEXt", Bytes(10));
    chunk[0] = highest;
    const Bytes png = PngFileOf({Ihdr(), Idat(), chunk, Iend()});
    EXPECT_FALSE(LoadPng(png).loaded) << int{highest};
    EXPECT_FALSE(LoadsAsFile(png)) << int{highest};
  }
  // -12 would lead back to the same chunk for ever.
  Bytes chunk = PngChunkOf("tEXt", Bytes(10));
  chunk[0] = chunk[1] = chunk[2] = 0xFF;
  chunk[3] = 0xF4;
  const Bytes png = PngFileOf({Ihdr(), Idat(), chunk, Iend()});
  EXPECT_FALSE(LoadPng(png).loaded);
  EXPECT_FALSE(LoadsAsFile(png));
}

TEST(PngChunkLoop, DataBehindIendIsNeverLookedAt) {
  for (const Bytes& behind : {Bytes(40, 0xFF), PngChunkWithCrc("IDAT", Bytes(9), kWrongCrc), Bytes{1}}) {
    Bytes png = PngFileOf({Ihdr(), Idat(), Iend()});
    Append(png, behind);
    ExpectGrey7(LoadPng(png));
    EXPECT_TRUE(LoadsAsFile(png));
  }
}

TEST(PngChunkLoop, AnIendWithDataStopsToo) {
  ExpectGrey7(LoadPng(PngFileOf({Ihdr(), Idat(), PngChunkOf("IEND", Bytes(3)), PngChunkOf("IDAT", Bytes(9))})));
}

TEST(PngChunkLoop, WithoutIendNothingIsLoaded) {
  const Bytes png = PngFileOf({Ihdr(), Idat()});
  EXPECT_FALSE(LoadPng(png).loaded);
  EXPECT_FALSE(LoadsAsFile(png));
}

TEST(PngChunkLoop, WithoutIhdrTheLoadFails) {
  const Bytes filler = PngChunkOf("tEXt", Bytes(20));
  ExpectRefusedUntouched({filler, Idat(), Iend()});
  // Also where the image data holds nothing at all.
  ExpectRefusedUntouched({filler, PngChunkOf("IDAT", ZlibStream({})), Iend()});
}

TEST(PngChunkLoop, APaletteBehindTheImageDataIsStillUsed) {
  const Load load =
      LoadPng(PngFileOf({Ihdr(8, 3), PngChunkOf("IDAT", ZlibStream(Bytes{0, 1})), PngChunkOf("tRNS", Bytes{255, 0}),
                         PngChunkOf("PLTE", Bytes{1, 2, 3, 4, 5, 6}), PngChunkOf("tRNS", Bytes{255, 255}), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Rgb(4, 5, 6)});
}

TEST(PngChunkLoop, TheHeaderMayStandBehindTheImageData) {
  ExpectGrey7(LoadPng(PngFileOf({Idat(), PngChunkOf("tEXt", Bytes(3)), Ihdr(), Iend()})));
}

TEST(PngChunkLoop, APaletteBeforeTheHeaderIsTakenForThatOfAGreyImageAndIgnored) {
  const Load load = LoadPng(
      PngFileOf({PngChunkOf("PLTE", Bytes{9, 9, 9}), Ihdr(8, 3), PngChunkOf("IDAT", ZlibStream(Bytes{0, 0})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{kBlack});
}

TEST(PngChunkLoop, ATrnsBeforeTheHeaderGivesAlphaButNoTransparentColour) {
  const Load load = LoadPng(PngFileOf({PngChunkOf("tRNS", Bytes{0, 7}), Ihdr(), Idat(), Iend()}));
  ExpectGrey7(load);
  EXPECT_TRUE(load.host->Alpha());
}

TEST(PngChunkLoop, OfSeveralHeadersAndPalettesTheLastIsUsed) {
  const Load load =
      LoadPng(PngFileOf({PngChunkOf("IHDR", PngHeaderData(9, 9, 16, 6)), Ihdr(8, 3), PngChunkOf("PLTE", Bytes{1, 1, 1}),
                         PngChunkOf("PLTE", Bytes{2, 2, 2}), PngChunkOf("IDAT", ZlibStream(Bytes{0, 0})), Iend()}));
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(), std::vector<Pixel>{Grey(2)});
}

TEST(PngChunkLoop, ImageDataNeedNotBeConsecutive) {
  PngImage image = OneRow(0, 8, {1, 2, 3, 4, 5, 6, 7, 8});
  const Bytes data = ZlibStream(PngRawData(image));
  std::vector<Bytes> chunks = {PngChunkOf("IHDR", PngHeaderData(8, 1, 8, 0))};
  for (const std::uint8_t byte : data) {
    chunks.push_back(PngChunkOf("IDAT", Bytes{byte}));
    chunks.push_back(PngChunkOf("tEXt", Bytes{byte, byte}));
  }
  chunks.push_back(Iend());
  const Bytes png = PngFileOf(chunks);
  const Load load = LoadPng(png);
  ASSERT_TRUE(load.loaded);
  EXPECT_EQ(load.Pixels(),
            (std::vector<Pixel>{Grey(1), Grey(2), Grey(3), Grey(4), Grey(5), Grey(6), Grey(7), Grey(8)}));
  EXPECT_TRUE(LoadsAsFile(png));
}

// --- The two modes ---

TEST(PngStreamMode, TheLastChunkMayOverrunTheEndByOneByte) {
  const Bytes png = PngFileOf({Ihdr(), Idat(), Iend()});
  c32bppDIB host;
  const auto size = static_cast<std::int32_t>(png.size());
  // The array ends with the span, or goes on behind it.
  EXPECT_TRUE(cPNGparser().LoadStream(ByteView(png).first(png.size() - 1), host, 0, size - 1));
  EXPECT_TRUE(cPNGparser().LoadStream(png, host, 0, size - 1));
  EXPECT_FALSE(cPNGparser().LoadStream(ByteView(png).first(png.size() - 2), host, 0, size - 2));
  EXPECT_FALSE(cPNGparser().LoadStream(png, host, 0, size - 2));
}

TEST(PngFileMode, TheLastChunkMustEndWithTheFile) {
  Bytes png = PngFileOf({Ihdr(), Idat(), Iend()});
  EXPECT_TRUE(LoadsAsFile(png));
  png.pop_back();
  EXPECT_FALSE(LoadsAsFile(png));
}

TEST(PngStreamMode, ReadsTheSpanThatItIsGiven) {
  Bytes array(13, 0xEE);
  const Bytes png = PngFileOf({Ihdr(), Idat(), Iend()});
  Append(array, png);
  array.resize(array.size() + 9, 0xEE);
  c32bppDIB host;
  ASSERT_TRUE(cPNGparser().LoadStream(array, host, 13, static_cast<std::int32_t>(png.size())));
  EXPECT_EQ(PixelsOf(host), std::vector<Pixel>{Grey(7)});
}

TEST(PngStreamMode, RefusesASpanThatLiesOutside) {
  const Bytes png = PngFileOf({Ihdr(), Idat(), Iend()});
  const auto size = static_cast<std::int32_t>(png.size());
  c32bppDIB host;
  EXPECT_FALSE(cPNGparser().LoadStream(png, host, -1, size));
  EXPECT_FALSE(cPNGparser().LoadStream(png, host, 0, -1));
  EXPECT_FALSE(cPNGparser().LoadStream(png, host, size + 1, size));
  EXPECT_FALSE(cPNGparser().LoadStream(png, host, size, size));
  EXPECT_FALSE(cPNGparser().LoadStream({}, host, 0, size));
}

TEST(PngStreamMode, ASpanSaidToBeLongerThanTheArrayLoadsIfTheChunksLieInTheArray) {
  const Bytes png = PngFileOf({Ihdr(), Idat(), Iend()});
  const auto size = static_cast<std::int32_t>(png.size());
  c32bppDIB host;
  EXPECT_TRUE(cPNGparser().LoadStream(png, host, 0, size + 1000));
  EXPECT_FALSE(cPNGparser().LoadStream(ByteView(png).first(png.size() - 14), host, 0, size + 1000));
}

TEST(PngSignature, AWrongOneIsRefusedInBothModes) {
  for (std::size_t i = 0; i < 8; ++i) {
    Bytes png = PngFileOf({Ihdr(), Idat(), Iend()});
    png[i] ^= 1;
    const Load load = LoadPng(png);
    EXPECT_FALSE(load.loaded) << i;
    EXPECT_TRUE(load.Untouched()) << i;
    EXPECT_FALSE(LoadsAsFile(png)) << i;
  }
}

TEST(PngSignature, A57ByteFileStartingWithItIsRefusedInStreamModeAndPassesInFileMode) {
  Bytes bytes = PngSignature();
  bytes.resize(57);
  EXPECT_FALSE(HasPngSignature(bytes));
  PngStreamSource stream(bytes, 57);
  EXPECT_FALSE(stream.HasSignature());
  // The first read is padded with zeros to 58 bytes.
  const TempFolder folder;
  PngFileSource file(folder.Write("picture.png", bytes));
  ASSERT_TRUE(file.Opened());
  EXPECT_TRUE(file.HasSignature());
  bytes.push_back(0);
  EXPECT_TRUE(HasPngSignature(bytes));
}

TEST(PngSignature, AFileOfLessThan56BytesSkipsTheTest) {
  const TempFolder folder;
  PngFileSource shortFile(folder.Write("short.png", Bytes(55)));
  EXPECT_TRUE(shortFile.HasSignature());
  PngFileSource longer(folder.Write("longer.png", Bytes(56)));
  EXPECT_FALSE(longer.HasSignature());
  c32bppDIB host;
  EXPECT_FALSE(cPNGparser().LoadFile(folder / "short.png", host));
}

TEST(PngFileMode, LoadsWhatStreamModeLoads) {
  PngImage image = OneRow(6, 8, {200, 100, 50, 128, 1, 2, 3, 255});
  const TempFolder folder;
  c32bppDIB host;
  ASSERT_TRUE(cPNGparser().LoadFile(folder.Write("picture.png", BuildPng(image, {.level = 6, .idatBytes = 5})), host));
  EXPECT_EQ(PixelsOf(host), (std::vector<Pixel>{{25, 50, 100, 128}, Rgb(1, 2, 3)}));
  EXPECT_TRUE(host.Alpha());
  EXPECT_EQ(host.ImageType(), ImageKind::Png);
}

TEST(PngFileMode, WhatCantBeReadIsRefused) {
  const TempFolder folder;
  c32bppDIB host;
  EXPECT_FALSE(cPNGparser().LoadFile(folder / "missing.png", host));
  EXPECT_FALSE(cPNGparser().LoadFile(folder.Path(), host));
}

TEST(PngParser, TellsTheSizeOfTheHeaderAndLetsTheHostGo) {
  cPNGparser parser;
  c32bppDIB host;
  const Bytes png = SoundPng();
  ASSERT_TRUE(parser.LoadStream(png, host, 0, static_cast<std::int32_t>(png.size())));
  EXPECT_EQ(parser.Width(), 5);
  EXPECT_EQ(parser.Height(), 4);
  EXPECT_EQ(parser.BitPointer(), nullptr);
  EXPECT_EQ(parser.handle(), nullptr);
}

TEST(PngParser, NeverChangesTheStream) {
  const Bytes png = SoundPng();
  Bytes copy = png;
  c32bppDIB host;
  ASSERT_TRUE(cPNGparser().LoadStream(copy, host, 0, static_cast<std::int32_t>(copy.size())));
  EXPECT_EQ(copy, png);
}

// --- What failures leave ---

TEST(PngFailure, EachLeavesTheHostAsToldForIt) {
  const Bytes header = PngHeaderData(1, 2, 8, 3);
  const Bytes palette = PngChunkOf("PLTE", Bytes{1, 2, 3});
  const Bytes sound = PngChunkOf("IDAT", ZlibStream(Bytes{0, 0, 0, 0}));
  const Bytes broken = PngChunkOf("IDAT", Bytes{0x78, 0x9C, 0x07});
  const Bytes noSuchColour = PngChunkOf("IDAT", ZlibStream(Bytes{0, 0, 0, 1}));
  const Bytes noSuchColourAndBroken = [] {
    // Two rows in a stored block, the second with a wrong index, then a block of type 3.
    const Bytes data = {0x78, 0x01, 0x00, 4, 0, 0xFB, 0xFF, 0, 0, 0, 1, 0x07};
    return PngChunkOf("IDAT", data);
  }();
  Bytes noSignature = PngFileOf({PngChunkOf("IHDR", header), palette, sound, Iend()});
  noSignature[1] = 'p';
  Bytes tooLong = PngChunkOf("tEXt", Bytes(10));
  tooLong[2] = 1;
  enum { Untouched, Emptied };
  const struct {
    const char* what;
    Bytes png;
    int state;
  } rows[] = {
      {"no signature", noSignature, Untouched},
      {"chunk too long", PngFileOf({PngChunkOf("IHDR", header), palette, sound, tooLong, Iend()}), Untouched},
      {"CRC of IHDR", PngFileOf({PngChunkWithCrc("IHDR", header, kWrongCrc), palette, sound, Iend()}), Untouched},
      {"CRC of PLTE",
       PngFileOf({PngChunkOf("IHDR", header), PngChunkWithCrc("PLTE", Bytes{1, 2, 3}, kWrongCrc), sound, Iend()}),
       Untouched},
      {"CRC of IDAT",
       PngFileOf({PngChunkOf("IHDR", header), palette, PngChunkWithCrc("IDAT", Bytes{0x78}, kWrongCrc), Iend()}),
       Untouched},
      {"IHDR field", PngFileOf({PngChunkOf("IHDR", PngHeaderData(1, 1, 3, 3)), palette, sound, Iend()}), Untouched},
      {"PLTE length", PngFileOf({PngChunkOf("IHDR", header), PngChunkOf("PLTE", Bytes(4)), sound, Iend()}), Untouched},
      {"no image data", PngFileOf({PngChunkOf("IHDR", header), palette, Iend()}), Untouched},
      {"inflate", PngFileOf({PngChunkOf("IHDR", header), palette, broken, Iend()}), Untouched},
      {"inflate behind a pixel without a colour",
       PngFileOf({PngChunkOf("IHDR", header), palette, noSuchColourAndBroken, Iend()}), Untouched},
      {"conversion", PngFileOf({PngChunkOf("IHDR", header), palette, noSuchColour, Iend()}), Emptied},
  };
  ASSERT_TRUE(LoadPng(PngFileOf({PngChunkOf("IHDR", header), palette, sound, Iend()})).loaded);
  for (const auto& row : rows) {
    const Load load = LoadPng(row.png);
    EXPECT_FALSE(load.loaded) << row.what;
    EXPECT_EQ(load.Untouched(), row.state == Untouched) << row.what;
    EXPECT_EQ(load.Emptied(), row.state == Emptied) << row.what;
  }
}

TEST(PngFailure, AFileCutOffAnywhereIsRefusedInBothModes) {
  PngImage image = OneRow(2, 8, std::vector<std::uint16_t>(90));
  for (std::uint16_t i = 0; i < 90; ++i) {
    image.samples[i] = static_cast<std::uint16_t>(i * 37 % 256);
  }
  const Bytes png = BuildPng(image, {.level = 9, .idatBytes = 17});
  ASSERT_TRUE(LoadPng(png).loaded);
  const TempFolder folder;
  c32bppDIB host;
  for (std::size_t length = 0; length < png.size(); ++length) {
    const Bytes cut(png.begin(), png.begin() + static_cast<std::ptrdiff_t>(length));
    // In a stream the CRC of IEND may lack its last byte.
    EXPECT_EQ(LoadPng(cut).loaded, length == png.size() - 1) << length;
    EXPECT_FALSE(cPNGparser().LoadFile(folder.Write("cut.png", cut), host)) << length;
  }
}

TEST(PngSuccess, ReplacesWhatTheHostHeld) {
  const Load load = LoadPng(PngFileOf({Ihdr(), Idat(), Iend()}));
  ExpectGrey7(load);
  EXPECT_EQ(load.host->Width(), 1);
  EXPECT_EQ(load.host->Height(), 1);
  EXPECT_FALSE(load.host->Alpha());
  EXPECT_EQ(load.host->ImageType(), ImageKind::Png);
}

}  // namespace
}  // namespace kelvane
