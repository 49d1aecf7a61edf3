// What is left of the destination when a GIM can't be converted.
#include <gtest/gtest.h>

#include "gim/ExpectedBitmap.h"
#include "gim/GimToBitmap.h"
#include "support/GimBuilder.h"

namespace kelvane {
namespace {

using namespace test;
using Values = std::vector<std::uint32_t>;

// Offsets in a file whose image block comes first.
constexpr std::int64_t kImageAt = 48;
constexpr std::int64_t kPixelOrder = kImageAt + 22;
constexpr std::int64_t kWidth = kImageAt + 24;
constexpr std::int64_t kHeight = kImageAt + 26;
constexpr std::int64_t kBits = kImageAt + 28;
constexpr std::int64_t kPitchAlign = kImageAt + 30;

void ExpectFalse(const Bytes& gim, bool force32, const std::optional<Bytes>& written) {
  const GimConversion conversion = GimToBitmap(gim, force32);
  EXPECT_FALSE(conversion.ok);
  EXPECT_EQ(conversion.written, written);
}

void ExpectUntouched(const Bytes& gim) {
  ExpectFalse(gim, false, std::nullopt);
  ExpectFalse(gim, true, std::nullopt);
}

// An image block with these fields and no data.
Bytes ImageOfFields(int width, int height, int bits, int pixelOrder) {
  Bytes gim = GimBuilder().Image({.width = 1, .height = 1, .pixels = {0}}).Build();
  WriteU16(gim, kWidth, static_cast<std::uint16_t>(width));
  WriteU16(gim, kHeight, static_cast<std::uint16_t>(height));
  WriteU16(gim, kBits, static_cast<std::uint16_t>(bits));
  WriteU16(gim, kPixelOrder, static_cast<std::uint16_t>(pixelOrder));
  return gim;
}

TEST(GimToBitmapFailure, APaletteWhoseColoursHaveNot32BitsLeavesTheDestinationUntouched) {
  Bytes gim = BuildIndexedGim(1, 1, 8, {0}, {Rgba(1, 2, 3)});
  for (const int bits : {0, 16, 24, 31, 33}) {
    WriteU16(gim, 48 + 28, static_cast<std::uint16_t>(bits));
    ExpectUntouched(gim);
  }
}

TEST(GimToBitmapFailure, AnIndexedImageWithoutAPaletteLeavesTheHeaderWhenForcedTo32Bits) {
  for (const int bits : {4, 8, 16}) {
    const Bytes gim = GimBuilder().Image({.width = 5, .height = 3, .bits = bits, .pixels = Values(15)}).Build();
    ExpectFalse(gim, true, Header32(5, 3));
  }
}

TEST(GimToBitmapFailure, NoImageBlockLeavesTheDestinationPartlyWritten) {
  const Bytes none = GimBuilder().Build();
  ExpectFalse(none, false, HeaderBytes({0, 0, 0, 54, 0, 1}));
  ExpectFalse(none, true, Header32(0, 0));
  // With a palette: of 2^0 entries.
  const Bytes palette = GimBuilder().Palette({.colours = {Rgba(1, 2, 3, 4), Rgba(5, 6, 7, 8)}}).Build();
  ExpectFalse(palette, false, Joined({HeaderBytes({0, 0, 0, 58, 0, 1}), {3, 2, 1, 4}}));
  ExpectFalse(palette, true, Header32(0, 0));
}

TEST(GimToBitmapFailure, A32BitImageWithAPaletteLeavesTheDestinationUntouched) {
  const GimImageBlock image = {.width = 1, .height = 1, .pixels = {1}};
  const GimPaletteBlock palette = {.colours = Values(256)};
  ExpectUntouched(GimBuilder().Palette(palette).Image(image).Build());
  ExpectUntouched(GimBuilder().Image(image).Palette(palette).Build());
}

TEST(GimToBitmapFailure, A16BitImageWithAPaletteLeavesTheDestinationUntouched) {
  const GimImageBlock image = {.width = 1, .height = 1, .bits = 16, .pixels = {1}};
  ExpectUntouched(GimBuilder().Palette({.colours = Values(256)}).Image(image).Build());
}

TEST(GimToBitmapFailure, APaletteOfNoEntriesLeavesTheDestinationUntouched) {
  ExpectUntouched(GimBuilder().Palette({}).Image({.width = 1, .height = 1, .bits = 8, .pixels = {0}}).Build());
}

TEST(GimToBitmapFailure, TruncatedPixelDataAreTrueAndTheMissingPixelsZero) {
  const Bytes gim = BuildRgbaGim(4, 3, Values(12, Rgba(1, 2, 3, 4)), false);
  const Bytes lastHalf = GimToBitmap(Bytes(gim.begin(), gim.end() - 26), false).written.value_or(Bytes{});
  // 26 bytes of the bottom two rows are gone: six pixels and the last two bytes, blue and alpha, of one.
  Bytes expected = Header32(4, 3);
  Append(expected, Bytes(16));
  Append(expected, Bytes{3, 2, 1, 4, 0, 2, 1, 0});
  Append(expected, Bytes(8));
  for (int i = 0; i < 4; ++i) {
    Append(expected, Bytes{3, 2, 1, 4});
  }
  EXPECT_EQ(lastHalf, expected);
}

TEST(GimToBitmapFailure, AFileThatIsCutAnywhereBehindTheHeadsOfItsBlocksIsTrue) {
  const Bytes gim = BuildIndexedGim(33, 9, 4, Values(297, 5), Values(16, Rgba(1, 2, 3, 4)));
  const std::size_t pixelsAt = 48 + 80 + 64 + 80;
  for (std::size_t length = pixelsAt; length < gim.size(); ++length) {
    const Bytes cut(gim.begin(), gim.begin() + static_cast<std::ptrdiff_t>(length));
    for (const bool force32 : {false, true}) {
      const GimConversion conversion = GimToBitmap(cut, force32);
      EXPECT_TRUE(conversion.ok);
      EXPECT_EQ(conversion.written.value_or(Bytes{}).size(), force32 ? 54U + 33 * 9 * 4 : 54U + 64 + 16 * 9);
    }
  }
}

TEST(GimToBitmapFailure, WidthOrHeightOver32767LeavesTheDestinationUntouched) {
  ExpectUntouched(ImageOfFields(32768, 1, 8, 0));
  ExpectUntouched(ImageOfFields(1, 32768, 8, 0));
  ExpectUntouched(ImageOfFields(65535, 65535, 4, 1));
  // Padding passes the limit where the image alone doesn't.
  ExpectUntouched(ImageOfFields(32767, 1, 8, 0));
  ExpectUntouched(ImageOfFields(1, 32767, 8, 1));
}

TEST(GimToBitmapFailure, RowBytesOver32767LeaveTheDestinationUntouched) {
  ExpectUntouched(ImageOfFields(8192, 1, 32, 0));
  ExpectUntouched(ImageOfFields(8189, 1, 32, 1));  // 8192 with its padding
  ExpectUntouched(ImageOfFields(16384, 1, 16, 0));
  EXPECT_TRUE(GimToBitmap(ImageOfFields(8188, 1, 32, 1), false).ok);
}

TEST(GimToBitmapFailure, RowBytesThatRoundUpOver32767LeaveHeaderAndPalette) {
  Bytes gim = ImageOfFields(32766, 1, 8, 0);
  WriteU16(gim, kPitchAlign, 1);
  ExpectFalse(gim, false, HeaderBytes({32766, 1, 8, 54, 32766, 256}));
}

TEST(GimToBitmapFailure, PixelBytesBeyond32BitsLeaveAnEmptyDestination) {
  // 32752 x 32760 x 4 bytes don't fit the header's field.
  const Bytes gim = ImageOfFields(32752, 32760, 8, 0);
  ExpectFalse(gim, true, Bytes{});
}

TEST(GimToBitmapFailure, AColourCountBeyond32BitsLeavesAnEmptyDestination) {
  ExpectFalse(ImageOfFields(1, 1, 31, 0), false, Bytes{});
  ExpectFalse(ImageOfFields(1, 1, 33, 0), false, Bytes{});
}

TEST(GimToBitmapFailure, PixelsBeyondMemoryLeaveTheHeaderWhenForcedTo32Bits) {
  // 20000 x 20000 pixels of 32 bits are more than an array may take.
  const Bytes image = ImageOfFields(20000, 20000, 8, 0);
  Bytes gim = GimBuilder().Palette({.colours = Values(256)}).Build();
  gim.insert(gim.end(), image.begin() + kImageAt, image.end());
  ExpectFalse(gim, true, Header32(20000, 20000));
}

struct BadFields {
  const char* what;
  std::int64_t field;
  std::int16_t value;
};

class HostileField : public testing::TestWithParam<BadFields> {};

TEST_P(HostileField, IsFalseAndLeavesTheDestinationUntouched) {
  for (const int bits : {4, 8, 32}) {
    for (const bool tiled : {false, true}) {
      Bytes gim =
          GimBuilder().Image({.width = 20, .height = 10, .bits = bits, .pixels = Values(200), .tiled = tiled}).Build();
      WriteI16(gim, GetParam().field, GetParam().value);
      ExpectUntouched(gim);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(GimToBitmapFailure, HostileField,
                         testing::Values(BadFields{"pitchAlign0", kPitchAlign, 0},
                                         BadFields{"pitchAlignNegative", kPitchAlign, -16},
                                         BadFields{"pitchAlignLowest", kPitchAlign, -32768},
                                         BadFields{"bits0", kBits, 0}, BadFields{"bitsNegative", kBits, -8},
                                         BadFields{"bitsLowest", kBits, -32768}, BadFields{"bitsHighest", kBits, 32767},
                                         BadFields{"width0", kWidth, 0}, BadFields{"widthNegative", kWidth, -20},
                                         BadFields{"widthLowest", kWidth, -32768}, BadFields{"height0", kHeight, 0},
                                         BadFields{"heightNegative", kHeight, -10},
                                         BadFields{"heightLowest", kHeight, -32768}),
                         [](const auto& test) { return test.param.what; });

TEST(GimToBitmapFailure, NegativeFieldsDoNotCancelEachOther) {
  Bytes gim = ImageOfFields(-16, 1, -8, 0);
  WriteI16(gim, kPitchAlign, -16);
  ExpectUntouched(gim);
  WriteI16(gim, kWidth, 16);
  ExpectUntouched(gim);
}

TEST(GimToBitmapFailure, TilesThatCutTheRowsEndAreFalse) {
  // 6 bytes hold 1.5 pixels, rounded to 2: rows of 8 bytes are no whole number of tiles.
  Bytes gim = ImageOfFields(1, 1, 32, 1);
  WriteU16(gim, kPitchAlign, 6);
  ExpectUntouched(gim);
  // Linear rows need no tiles.
  WriteU16(gim, kPixelOrder, 0);
  EXPECT_TRUE(GimToBitmap(gim, false).ok);
}

}  // namespace
}  // namespace kelvane
