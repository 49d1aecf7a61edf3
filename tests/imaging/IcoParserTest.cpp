// The directory of icons and cursors: what counts as one, its repair, the choice among images, PNG images.
#include <gtest/gtest.h>

#include "imaging/IcoLoad.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using namespace test;

TEST(cICOparser, IdType3IsNotAnIcon) {
  EXPECT_TRUE(Loads({.type = 1, .images = {Marked(16, 1)}}));
  EXPECT_TRUE(Loads({.type = 2, .images = {Marked(16, 1)}}));
  EXPECT_FALSE(Loads({.type = 3, .images = {Marked(16, 1)}}));
  EXPECT_FALSE(Loads({.type = 0, .images = {Marked(16, 1)}}));
}

TEST(cICOparser, IdCount0IsNotAnIcon) {
  EXPECT_FALSE(Loads({.images = {Marked(16, 1)}, .count = 0}));
}

TEST(cICOparser, AReservedWordOtherThan0IsNotAnIcon) {
  EXPECT_FALSE(Loads({.reserved = 1, .images = {Marked(16, 1)}}));
}

TEST(cICOparser, ImageSizesThatExceedTheStreamByOneByteAreNotAnIcon) {
  IcoImage image = Marked(16, 1);
  const auto size = static_cast<std::int32_t>(image.data.size());
  image.bytesInRes = size + 1;
  EXPECT_FALSE(Loads({.images = {image}}));
  image.bytesInRes = size;
  EXPECT_TRUE(Loads({.images = {image}}));
  // The sum counts, not each size.
  image.bytesInRes = size / 2 + 1;
  IcoImage other = Marked(16, 1);
  other.bytesInRes = size + size / 2;
  EXPECT_FALSE(Loads({.images = {image, other}}));
}

TEST(cICOparser, ADirectoryThatDoesNotFitIsNotAnIcon) {
  EXPECT_FALSE(Loads({.images = {}, .count = 1}));
  EXPECT_FALSE(Loads({.images = {Marked(16, 1)}, .count = 500}));
  Bytes file = BuildIco({.images = {Marked(16, 1)}});
  for (std::size_t length = 0; length < file.size(); ++length) {
    Bytes shorter(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
    c32bppDIB image;
    EXPECT_FALSE(Load(image, shorter)) << length;
    EXPECT_EQ(image.handle(), nullptr) << length;
  }
}

TEST(cICOparser, Of16And32AskedFor0The32IsChosen) {
  EXPECT_EQ(Chosen({Marked(16, 1), Marked(32, 2)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 2), Marked(16, 1)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 2), Marked(16, 1)}, -5, 0), Mark(2));
}

TEST(cICOparser, OfTwoImagesOfASizeTheDeeperIsChosen) {
  EXPECT_EQ(Chosen({Marked(32, 1, 8), Marked(32, 2, 32)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 2, 32), Marked(32, 1, 8)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 1, 4), Marked(32, 2, 24), Marked(32, 3, 8)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(32, 1, 1), Marked(32, 2, 4)}), Mark(2));
}

TEST(cICOparser, OfTwoIdenticalEntriesTheLaterIsChosen) {
  EXPECT_EQ(Chosen({Marked(32, 1), Marked(32, 2)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(16, 1), Marked(16, 2), Marked(16, 3)}), Mark(3));
}

TEST(cICOparser, AskedFor24Between16And32The16IsChosen) {
  EXPECT_EQ(Chosen({Marked(16, 1), Marked(32, 2)}, 24, 24), Mark(1));
  EXPECT_EQ(Chosen({Marked(32, 2), Marked(16, 1)}, 24, 24), Mark(1));
}

TEST(cICOparser, OfEqualDistancesTheBiggerIsChosen) {
  // 29 x 10 is 290 pixels: 34 more than 16 x 16 and 34 less than 18 x 18.
  EXPECT_EQ(Chosen({Marked(16, 1), Marked(18, 2)}, 29, 10), Mark(2));
  EXPECT_EQ(Chosen({Marked(18, 2), Marked(16, 1)}, 29, 10), Mark(2));
}

TEST(cICOparser, APerfectScoreEndsTheSearchByCoincidence) {
  // Wanted are 2 x 25,036 = 50,072 pixels, so 50,072.32 ends the search; 12 x 12 at 32 bits scores 100,000 less 49,928
  // and 0.32, which is just that.
  EXPECT_EQ(Chosen({Marked(32, 1), Marked(12, 2)}, 2, 25036), Mark(2));
  // Without the coincidence the bigger image is nearer.
  EXPECT_EQ(Chosen({Marked(32, 1), Marked(12, 2)}, 2, 25037), Mark(1));
}

TEST(cICOparser, AWantedSizeThatOverflowsFails) {
  Bytes file = BuildIco({.images = {Marked(16, 1), Marked(32, 2)}});
  c32bppDIB image;
  EXPECT_EQ(NumberOf([&] { (void)Load(image, file, 65536, 65536); }), 6);
  // One entry needs no choice.
  EXPECT_EQ(Chosen({Marked(16, 1)}, 65536, 65536), Mark(1));
}

TEST(cICOparser, AnEntryWithoutDepthIsPassedOver) {
  IcoImage without = Marked(32, 1);
  without.bitCount = 0;
  WriteU16(without.data, 14, 0);
  EXPECT_EQ(Chosen({without, Marked(16, 2)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(16, 2), without}), Mark(2));
  EXPECT_EQ(Chosen({without}), Bytes());
  EXPECT_EQ(Chosen({without, without}), Bytes());
}

TEST(cICOparser, ADepthOf33OrMoreScores0) {
  IcoImage deep = Marked(32, 1);
  WriteU16(deep.data, 14, 33);
  EXPECT_EQ(Chosen({deep, Marked(16, 2)}), Mark(2));
  EXPECT_EQ(Chosen({Marked(16, 2), deep}), Mark(2));
  EXPECT_EQ(Chosen({deep, deep}), Bytes());
}

TEST(cICOparser, TheDirectoryTakesTheDepthFromTheImage) {
  // The directory says 1 bit and 32 bits; the images have it the other way round.
  IcoImage deep = Marked(32, 1, 32);
  deep.bitCount = 1;
  IcoImage flat = Marked(32, 2, 1);
  flat.bitCount = 32;
  EXPECT_EQ(Chosen({deep, flat}), Mark(1));
}

TEST(cICOparser, AnImageWithoutDepthTakesItFromTheDirectoryInTheCallersBytes) {
  IcoImage image = Marked(16, 1);
  WriteU16(image.data, 14, 0);
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(PixelsOf(loaded.Pixels().first(4)), Mark(1));
  EXPECT_EQ(ReadU16(file, HeaderAt(1) + 14), 32);
}

TEST(cICOparser, APngEntryIsReadByThePngParser) {
  Bytes file = BuildIco({.images = {Png(16, 16)}});
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(loaded.ImageType(), ImageKind::Png);
  EXPECT_TRUE(loaded.Alpha());
  EXPECT_EQ(loaded.Width(), 16);
  EXPECT_EQ(PixelsOf(loaded.Pixels()), Bytes(1024, 255));
}

TEST(cICOparser, A256By256PngEntryIsAccepted) {
  Bytes file = BuildIco({.images = {Png(256, 256)}});
  EXPECT_EQ(file[6], 0);
  EXPECT_EQ(file[7], 0);
  c32bppDIB loaded;
  ASSERT_TRUE(Load(loaded, file));
  EXPECT_EQ(loaded.Width(), 256);
  EXPECT_EQ(loaded.Height(), 256);
  // Its height counts as 256: wanted that large, it is nearer than 128 by 128.
  EXPECT_EQ(Chosen({Png(256, 256), Marked(128, 1)}, 256, 256), Bytes(4, 255));
  EXPECT_EQ(Chosen({Png(256, 256), Marked(128, 1)}, 128, 128), Mark(1));
}

TEST(cICOparser, APngTakesItsSizeFromItsHeader) {
  IcoImage png = Png(32, 32);
  png.width = 1;
  png.height = 1;
  EXPECT_EQ(Chosen({png, Marked(16, 1)}), Bytes(4, 255));
}

TEST(cICOparser, APngOfASizeThatADirectoryCannotTellRefusesTheFile) {
  for (const auto& [width, height] : {std::pair{257, 16}, {16, 257}, {512, 512}}) {
    IcoImage png = Png(16, 16);
    png.data = Png(width, height).data;
    EXPECT_EQ(Chosen({Marked(32, 1), png}), Bytes()) << width;
  }
}

TEST(cICOparser, ThePngsDepthCountsAsItWillBeRead) {
  // Beside a bitmap of 8 bits and the same size, the later one unless it is deeper.
  const struct {
    std::uint8_t bitDepth;
    std::uint8_t colourType;
    bool deeper;
  } rows[] = {{16, 0, true}, {16, 2, true}, {8, 6, true},  {8, 4, true},
              {8, 2, true},  {8, 3, false}, {8, 0, false}, {4, 3, false}};
  for (const auto& row : rows) {
    const Bytes chosen = Chosen({Png(32, 32, row.bitDepth, row.colourType), Marked(32, 1, 8)});
    EXPECT_EQ(chosen != Mark(1), row.deeper) << int{row.bitDepth} << ' ' << int{row.colourType};
  }
  // 24 bits and no more for colour type 2 of 8 bits; 32 for 16 bits.
  EXPECT_EQ(Chosen({Png(32, 32, 8, 2), Marked(32, 1, 24)}), Mark(1));
  EXPECT_EQ(Chosen({Png(32, 32, 16, 2), Marked(32, 1, 24)}), Bytes(4, 255));
}

TEST(cICOparser, APngWhoseEntryHasNoDepthRefusesTheFile) {
  IcoImage png = Png(16, 16);
  png.bitCount = 0;
  EXPECT_EQ(Chosen({Marked(32, 1), png}), Bytes());
}

TEST(cICOparser, OneBrokenPngRefusesTheWholeFile) {
  for (const std::size_t broken : {std::size_t{0}, std::size_t{7}, std::size_t{12}}) {
    IcoImage png = Png(16, 16);
    png.data[broken] ^= 1;
    EXPECT_EQ(Chosen({png, Marked(32, 1)}), Bytes()) << broken;
    EXPECT_EQ(Chosen({Marked(32, 1), png}), Bytes()) << broken;
  }
  IcoImage noDepth = Png(16, 16);
  noDepth.data[24] = 0;
  EXPECT_EQ(Chosen({noDepth, Marked(32, 1)}), Bytes());
}

TEST(cICOparser, AnOffsetOutsideTheStreamFails) {
  for (const std::int32_t offset : {1 << 20, -1, INT32_MAX, INT32_MIN}) {
    IcoImage image = Marked(16, 1);
    image.imageOffset = offset;
    Bytes file = BuildIco({.images = {image}});
    c32bppDIB loaded;
    const int failure = NumberOf([&] { (void)Load(loaded, file); });
    EXPECT_TRUE(failure == 6 || failure == 9) << offset;
  }
}

TEST(cICOparser, SizesThatOverflowFail) {
  IcoImage image = Marked(16, 1);
  image.bytesInRes = INT32_MAX;
  Bytes file = BuildIco({.images = {image}});
  c32bppDIB loaded;
  EXPECT_EQ(NumberOf([&] { (void)Load(loaded, file); }), 6);
}

TEST(cICOparser, ThePlaceInTheArrayPlaysNoPart) {
  Bytes file = BuildIco({.images = {Marked(16, 1)}});
  c32bppDIB loaded;
  EXPECT_TRUE(cICOparser().LoadStream(file, 0, 0, loaded, 1000, static_cast<std::int32_t>(file.size())));
  EXPECT_EQ(NumberOf([&] {
              (void)cICOparser().LoadStream(file, 0, 0, loaded, 0, static_cast<std::int32_t>(file.size()) + 1);
            }),
            9);
}

}  // namespace
}  // namespace kelvane
