#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

#include "common/Files.h"
#include "imaging/Fakes.h"
#include "imaging/c32bppDIB.h"
#include "imaging/cBMPparser.h"
#include "support/BmpBuilder.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::RecordingSurface;
using test::TempFolder;

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

TEST(c32bppDIB, IsEmptyAfterConstruction) {
  const c32bppDIB image;
  EXPECT_EQ(image.handle(), nullptr);
  EXPECT_EQ(image.BitsPointer(), nullptr);
  EXPECT_EQ(image.Width(), 0);
  EXPECT_EQ(image.Height(), 0);
  EXPECT_EQ(image.ScanWidth(), 0);
  EXPECT_TRUE(image.Pixels().empty());
  EXPECT_FALSE(image.Alpha());
  EXPECT_FALSE(image.ManageOwnDC());
  EXPECT_EQ(image.ImageType(), ImageKind::None);
  EXPECT_EQ(image.systemClass(), 0);
}

TEST(c32bppDIB, TheSystemClassFollowsThePlatformsVersion) {
  const struct {
    SystemVersion version;
    std::int32_t systemClass;
  } rows[] = {
      {{.is9xFamily = false, .minorVersion = 0, .build = 0}, 0},
      {{.is9xFamily = false, .minorVersion = 10, .build = 2600}, 0},
      {{.is9xFamily = true, .minorVersion = 0, .build = 950}, 1},
      {{.is9xFamily = true, .minorVersion = 9, .build = 2999}, 1},
      {{.is9xFamily = true, .minorVersion = 9, .build = 3000}, 3},
      {{.is9xFamily = true, .minorVersion = 10, .build = 950}, 3},
      {{.is9xFamily = true, .minorVersion = 90, .build = 3000}, 3},
      // Only the low 16 bits of the build count, and they are signed.
      {{.is9xFamily = true, .minorVersion = 0, .build = 0x04000000 + 950}, 1},
      {{.is9xFamily = true, .minorVersion = 0, .build = 0x8000}, 1},
      {{.is9xFamily = true, .minorVersion = 0, .build = 0x7FFF}, 3},
  };
  for (const auto& row : rows) {
    const c32bppDIB image(nullptr, row.version);
    EXPECT_EQ(image.systemClass(), row.systemClass) << row.version.minorVersion << ' ' << row.version.build;
  }
}

TEST(InitializeDIB, GivesZeroedPixelsWithoutRowPadding) {
  c32bppDIB image;
  ASSERT_TRUE(image.InitializeDIB(3, 5));
  EXPECT_EQ(image.Width(), 3);
  EXPECT_EQ(image.Height(), 5);
  EXPECT_EQ(image.ScanWidth(), 12);
  EXPECT_EQ(image.handle(), image.BitsPointer());
  ASSERT_EQ(image.Pixels().size(), 60U);
  EXPECT_TRUE(std::ranges::all_of(image.Pixels(), [](std::uint8_t byte) { return byte == 0; }));
}

TEST(InitializeDIB, ANegativeHeightCountsAsItsAbsoluteValue) {
  c32bppDIB image;
  ASSERT_TRUE(image.InitializeDIB(2, -4));
  EXPECT_EQ(image.Height(), 4);
  EXPECT_EQ(image.Pixels().size(), 32U);
}

TEST(InitializeDIB, RefusesWhatIsNoSizeAndLeavesTheObjectEmpty) {
  const struct {
    std::int32_t width;
    std::int32_t height;
  } sizes[] = {{-1, 1},        {0, 1},         {1, 0},         {kLeast, 1},        {1, kLeast},
               {536870912, 1}, {1, 536870912}, {23171, 23171}, {0x10000, 0x10000}, {0x40000000, 0x40000000},
               {kMost, kMost}, {16384, 16385}, {16385, 16384}, {268435457, 1}};
  for (const auto& size : sizes) {
    c32bppDIB image;
    ASSERT_TRUE(image.InitializeDIB(1, 1));
    EXPECT_FALSE(image.InitializeDIB(size.width, size.height)) << size.width << 'x' << size.height;
    EXPECT_EQ(image.handle(), nullptr);
    EXPECT_EQ(image.Width(), 0);
    EXPECT_EQ(image.Height(), 0);
  }
}

TEST(InitializeDIB, ABitmapTakesAtMostAGibibyte) {
  c32bppDIB image;
  ASSERT_TRUE(image.InitializeDIB(16384, 16384));
  EXPECT_EQ(image.Pixels().size(), std::size_t{1} << 30);
}

TEST(DestroyDIB, EmptiesTheObjectButKeepsWhoManagesItsContext) {
  c32bppDIB image;
  ASSERT_TRUE(image.InitializeDIB(2, 2));
  image.ManageOwnDC(true);
  image.DestroyDIB();
  EXPECT_EQ(image.handle(), nullptr);
  EXPECT_EQ(image.Width(), 0);
  EXPECT_EQ(image.Height(), 0);
  EXPECT_FALSE(image.Alpha());
  EXPECT_TRUE(image.ManageOwnDC());
}

// An image of the given pixels, by way of a BMP file.
void Fill(c32bppDIB& image, std::int32_t width, std::int32_t height, const Bytes& pixels) {
  const Bytes file = test::BuildBmp({.width = width, .height = height, .bits = pixels});
  ASSERT_TRUE(cBMPparser().LoadStream(file, image, 0, static_cast<std::int32_t>(file.size())));
}

const Bytes kOpaque = {1, 2, 3, 255, 4, 5, 6, 255};
const Bytes kWithoutAlpha = {1, 2, 3, 0, 4, 5, 6, 0};

TEST(Render, WithoutABitmapOrATargetNothingIsDrawn) {
  RecordingSurface surface;
  std::int32_t width = 0;
  const c32bppDIB empty;
  EXPECT_FALSE(empty.Render(&surface, 0, 0, width, 0, 100));
  EXPECT_TRUE(surface.drawings.empty());
  c32bppDIB image;
  Fill(image, 2, 1, kOpaque);
  EXPECT_FALSE(image.Render(nullptr, 0, 0, width, 0, 100));
  EXPECT_EQ(width, 0);
}

TEST(Render, DestWidth0LeavesTheBitmapsWidthInTheCallersVariable) {
  c32bppDIB image;
  Fill(image, 2, 1, kOpaque);
  for (const std::int32_t asked : {0, -1, kLeast}) {
    RecordingSurface surface;
    std::int32_t width = asked;
    EXPECT_TRUE(image.Render(&surface, 3, -4, width, asked, 100));
    EXPECT_EQ(width, 2);
    ASSERT_EQ(surface.drawings.size(), 1U);
    EXPECT_EQ(surface.drawings[0], (RecordingSurface::Drawing{.pixels = kOpaque,
                                                              .sourceWidth = 2,
                                                              .sourceHeight = 1,
                                                              .x = 3,
                                                              .y = -4,
                                                              .width = 2,
                                                              .height = 1,
                                                              .constantAlpha = 255,
                                                              .perPixelAlpha = true}));
  }
}

TEST(Render, TheWholeBitmapIsStretchedToTheRectangle) {
  c32bppDIB image;
  Fill(image, 2, 1, kOpaque);
  RecordingSurface surface;
  std::int32_t width = 7;
  EXPECT_TRUE(image.Render(&surface, 0, 0, width, 9, 100));
  EXPECT_EQ(width, 7);
  ASSERT_EQ(surface.drawings.size(), 1U);
  EXPECT_EQ(surface.drawings[0].width, 7);
  EXPECT_EQ(surface.drawings[0].height, 9);
}

TEST(Render, BlendPct0Or200DrawsNothingAndIsTrue) {
  c32bppDIB image;
  Fill(image, 2, 1, kOpaque);
  for (const std::int32_t blendPct : {0, 200, -100, 300}) {
    RecordingSurface surface;
    std::int32_t width = 0;
    EXPECT_TRUE(image.Render(&surface, 0, 0, width, 0, blendPct));
    EXPECT_TRUE(surface.drawings.empty());
    EXPECT_EQ(width, 0);
  }
}

TEST(Render, TheConstantAlphaOfABlendTiesToEven) {
  const struct {
    std::int32_t blendPct;
    int constantAlpha;
  } rows[] = {{100, 255},   {50, 128}, {150, 128}, {-50, 128}, {1, 3},  // 2.55
              {99, 252},                                                // 252.45
              {10, 26},                                                 // 25.5
              {30, 76},                                                 // 76.5
              {70, 178},                                                // 178.5
              {90, 230},                                                // 229.5
              {kLeast, 122}};                                           // 48 percent: 122.4
  c32bppDIB image;
  Fill(image, 2, 1, kOpaque);
  for (const auto& row : rows) {
    RecordingSurface surface;
    std::int32_t width = 0;
    EXPECT_TRUE(image.Render(&surface, 0, 0, width, 0, row.blendPct));
    ASSERT_EQ(surface.drawings.size(), 1U);
    EXPECT_EQ(surface.drawings[0].constantAlpha, row.constantAlpha) << row.blendPct;
  }
}

TEST(Render, TheRoadFollowsTheSystemClassAlone) {
  const SystemVersion class0 = {};
  const SystemVersion class1 = {.is9xFamily = true};
  const SystemVersion class3 = {.is9xFamily = true, .minorVersion = 10};
  const struct {
    SystemVersion version;
    Bytes pixels;
    int constantAlpha;
    bool perPixelAlpha;
    bool isWin95Alpha;
  } rows[] = {{class0, kOpaque, 128, true, false}, {class0, kWithoutAlpha, 128, false, false},
              {class1, kOpaque, 128, true, false}, {class1, kWithoutAlpha, 128, false, false},
              {class3, kOpaque, 255, false, true}, {class3, kWithoutAlpha, 255, false, false}};
  for (const auto& row : rows) {
    c32bppDIB image(nullptr, row.version);
    Fill(image, 2, 1, row.pixels);
    EXPECT_EQ(image.isWin95Alpha(), row.isWin95Alpha);
    RecordingSurface surface;
    std::int32_t width = 0;
    EXPECT_TRUE(image.Render(&surface, 0, 0, width, 0, 50));
    ASSERT_EQ(surface.drawings.size(), 1U);
    EXPECT_EQ(surface.drawings[0].constantAlpha, row.constantAlpha) << image.systemClass();
    EXPECT_EQ(surface.drawings[0].perPixelAlpha, row.perPixelAlpha) << image.systemClass();
  }
}

TEST(Render, TheResultIsTheTargets) {
  c32bppDIB image;
  Fill(image, 2, 1, kOpaque);
  RecordingSurface surface;
  surface.succeeds = false;
  std::int32_t width = 0;
  EXPECT_FALSE(image.Render(&surface, 0, 0, width, 0, 100));
}

TEST(SaveToFile, ABitmapOf1By1GivesAFileOf58Bytes) {
  const TempFolder folder;
  c32bppDIB image;
  Fill(image, 1, 1, {1, 2, 3, 128});
  EXPECT_TRUE(image.SaveToFile(folder / "a.bmp"));
  EXPECT_EQ(ReadWholeFile(folder / "a.bmp"),
            (Bytes{'B', 'M', 58, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 32,
                   0,   0,   0,  0, 0, 4, 0, 0, 0, 0, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 128}));
}

TEST(SaveToFile, PixelsAreWrittenAsTheyAreBottomRowFirst) {
  const TempFolder folder;
  c32bppDIB image;
  // Not premultiplied in the source: 200 x 128 / 255 is 100.
  Fill(image, 1, 300, [] {
    Bytes rows(1200, 128);
    rows[0] = 200;
    return rows;
  }());
  EXPECT_TRUE(image.SaveToFile(folder / "a.bmp", true));
  const Bytes file = ReadWholeFile(folder / "a.bmp");
  ASSERT_EQ(file.size(), 1254U);
  EXPECT_EQ(ReadI32(file, 2), 1254);
  EXPECT_EQ(ReadI32(file, 18), 1);
  EXPECT_EQ(ReadI32(file, 22), 300);
  EXPECT_EQ(ReadI32(file, 34), 1200);
  EXPECT_EQ(file[54], 100);
  EXPECT_EQ(file[55], 64);
  EXPECT_EQ(file[57], 128);
}

TEST(SaveToFile, AnExistingLongerFileIsNotTruncated) {
  const TempFolder folder;
  folder.Write("a.bmp", Bytes(70, 0xEE));
  c32bppDIB image;
  Fill(image, 1, 1, {1, 2, 3, 255});
  EXPECT_TRUE(image.SaveToFile(folder / "a.bmp"));
  const Bytes file = ReadWholeFile(folder / "a.bmp");
  ASSERT_EQ(file.size(), 70U);
  EXPECT_EQ(Bytes(file.begin() + 54, file.begin() + 59), (Bytes{1, 2, 3, 255, 0xEE}));
}

TEST(SaveToFile, WithoutANameABitmapOrAFolderItIsFalse) {
  const TempFolder folder;
  c32bppDIB image;
  EXPECT_FALSE(image.SaveToFile(folder / "a.bmp"));
  EXPECT_EQ(test::NumberOf([&] { (void)image.BmpBytes(); }), 9);
  Fill(image, 1, 1, {1, 2, 3, 255});
  EXPECT_FALSE(image.SaveToFile(""));
  EXPECT_FALSE(image.SaveToFile(folder / "none/a.bmp"));
  EXPECT_FALSE(image.SaveToFile(folder.Path()));
  EXPECT_EQ(folder.Names(), std::vector<std::string>());
}

TEST(ImageKind, EveryKindHasItsNumberAndAName) {
  const struct {
    ImageKind kind;
    int number;
    const char* name;
  } rows[] = {{ImageKind::None, 0, "none"},
              {ImageKind::BitmapWithoutAlpha, 1, "bitmap without alpha"},
              {ImageKind::Metafile, 2, "metafile"},
              {ImageKind::Icon, 3, "icon"},
              {ImageKind::EnhancedMetafile, 4, "enhanced metafile"},
              {ImageKind::Cursor, 5, "cursor"},
              {ImageKind::BitmapWithAlpha, 6, "bitmap with alpha"},
              {ImageKind::PremultipliedBitmap, 7, "premultiplied bitmap"},
              {ImageKind::IconWithAlpha, 8, "icon with alpha"},
              {ImageKind::Gif, 9, "GIF"},
              {ImageKind::Png, 10, "PNG"},
              {ImageKind::CursorWithAlpha, 11, "cursor with alpha"}};
  for (const auto& row : rows) {
    EXPECT_EQ(static_cast<int>(row.kind), row.number);
    EXPECT_EQ(NameOf(row.kind), row.name);
  }
}

TEST(LoadDIBinDC, GivesAContextOverThePixelsUntilItIsTakenOut) {
  c32bppDIB image;
  EXPECT_EQ(image.LoadDIBinDC(true), nullptr);
  ASSERT_TRUE(image.InitializeDIB(2, 3));
  const Canvas* canvas = image.LoadDIBinDC(true);
  ASSERT_NE(canvas, nullptr);
  EXPECT_EQ(canvas->width, 2);
  EXPECT_EQ(canvas->height, 3);
  EXPECT_EQ(canvas->pixels.data(), image.BitsPointer());
  EXPECT_EQ(canvas->pixels.size(), 24U);
  EXPECT_EQ(image.LoadDIBinDC(true), canvas);
  EXPECT_EQ(image.LoadDIBinDC(false), nullptr);
  EXPECT_EQ(image.LoadDIBinDC(false), nullptr);
}

TEST(LoadDIBinDC, AManagedContextStaysWhenTheBitmapIsTakenOut) {
  c32bppDIB image;
  ASSERT_TRUE(image.InitializeDIB(2, 3));
  image.ManageOwnDC(true);
  EXPECT_TRUE(image.ManageOwnDC());
  const Canvas* canvas = image.LoadDIBinDC(true);
  ASSERT_NE(canvas, nullptr);
  EXPECT_EQ(image.LoadDIBinDC(false), nullptr);
  EXPECT_TRUE(canvas->pixels.empty());
  EXPECT_EQ(image.LoadDIBinDC(true), canvas);
  image.ManageOwnDC(false);
  EXPECT_FALSE(image.ManageOwnDC());
  EXPECT_EQ(image.LoadDIBinDC(false), nullptr);
}

}  // namespace
}  // namespace kelvane
