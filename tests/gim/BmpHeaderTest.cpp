#include <gtest/gtest.h>

#include "gim/BmpHeader.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

const Bytes kHeader = {'B', 'M', 1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,
                       17,  18,  19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34,
                       35,  36,  37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52};

const BitmapHeader kFields = {.bfType = 0x4D42,
                              .bfSize = 0x04030201,
                              .bfReserved = 0x08070605,
                              .bfOffBits = 0x0C0B0A09,
                              .biSize = 0x100F0E0D,
                              .biWidth = 0x14131211,
                              .biHeight = 0x18171615,
                              .biPlanes = 0x1A19,
                              .biBitCount = 0x1C1B,
                              .biCompression = 0x201F1E1D,
                              .biSizeImage = 0x24232221,
                              .biXPelsPerMeter = 0x28272625,
                              .biYPelsPerMeter = 0x2C2B2A29,
                              .biClrUsed = 0x302F2E2D,
                              .biClrImportant = 0x34333231};

TEST(BitmapHeader, ReadsEveryFieldFromItsOffset) {
  EXPECT_EQ(ReadBitmapHeader(ByteView(kHeader)), kFields);
}

TEST(BitmapHeader, WritesEveryFieldToItsOffset) {
  Bytes bytes = {0xAA};
  AppendBitmapHeader(bytes, kFields);
  Bytes expected = {0xAA};
  Append(expected, kHeader);
  EXPECT_EQ(bytes, expected);
}

TEST(BitmapHeader, BytesBeyondTheEndReadAsZeros) {
  const BitmapHeader header = ReadBitmapHeader(ByteView(kHeader).first(20));
  EXPECT_EQ(header.biSize, 0x100F0E0D);
  EXPECT_EQ(header.biWidth, 0x1211);
  EXPECT_EQ(header.biHeight, 0);
  EXPECT_EQ(header.biBitCount, 0);
}

TEST(BitmapHeader, IsReadFromAFile) {
  const test::TempFolder folder;
  const auto path = folder.Write("a.bmp", kHeader);
  EXPECT_EQ(ReadBitmapHeader(path), kFields);
  EXPECT_EQ(test::NumberOf([&] { (void)ReadBitmapHeader(folder / "none.bmp"); }), 53);
}

TEST(BitmapRowBytes, RoundsToTheNearestTiesToEvenAndThenUpToFour) {
  EXPECT_EQ(BitmapRowBytes(4, 1), 0);    // 0.5
  EXPECT_EQ(BitmapRowBytes(4, 2), 4);    // 1
  EXPECT_EQ(BitmapRowBytes(4, 3), 4);    // 1.5, then 2
  EXPECT_EQ(BitmapRowBytes(4, 9), 4);    // 4.5, then 4
  EXPECT_EQ(BitmapRowBytes(4, 11), 8);   // 5.5, then 6
  EXPECT_EQ(BitmapRowBytes(4, 20), 12);  // 10
  EXPECT_EQ(BitmapRowBytes(8, 5), 8);
  EXPECT_EQ(BitmapRowBytes(16, 3), 8);
  EXPECT_EQ(BitmapRowBytes(32, 3), 12);
}

}  // namespace
}  // namespace kelvane
