#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

#include "imaging/c32bppDIB.h"

namespace kelvane {
namespace {

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
               {kMost, kMost}};
  for (const auto& size : sizes) {
    c32bppDIB image;
    ASSERT_TRUE(image.InitializeDIB(1, 1));
    EXPECT_FALSE(image.InitializeDIB(size.width, size.height)) << size.width << 'x' << size.height;
    EXPECT_EQ(image.handle(), nullptr);
    EXPECT_EQ(image.Width(), 0);
    EXPECT_EQ(image.Height(), 0);
  }
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
