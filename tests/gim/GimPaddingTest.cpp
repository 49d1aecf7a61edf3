#include <gtest/gtest.h>

#include "gim/GimPadding.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::NumberOf;

struct Size {
  int width;
  int height;
  bool operator==(const Size&) const = default;
};

Size Padded(int width, int height, int pitchAlign, int pixelOrder, int bits) {
  const GimPadding padding = ComputeGimPadding(width, height, pitchAlign, pixelOrder, bits);
  return {padding.paddedWidth.Int(), padding.paddedHeight.Int()};
}

TEST(ComputeGimPadding, AUnitOf16BytesHoldsSoManyPixelsByDepth) {
  EXPECT_EQ(Padded(1, 1, 16, 1, 4), (Size{32, 8}));
  EXPECT_EQ(Padded(1, 1, 16, 1, 8), (Size{16, 8}));
  EXPECT_EQ(Padded(1, 1, 16, 1, 16), (Size{8, 8}));
  EXPECT_EQ(Padded(1, 1, 16, 1, 32), (Size{4, 8}));
}

TEST(ComputeGimPadding, A16By8ImageAt8BitsHasNoPadding) {
  EXPECT_EQ(Padded(16, 8, 16, 1, 8), (Size{16, 8}));
}

TEST(ComputeGimPadding, TheWorkedCase) {
  EXPECT_EQ(Padded(100, 30, 16, 1, 8), (Size{112, 32}));
}

TEST(ComputeGimPadding, LinearOrderKeepsTheHeight) {
  EXPECT_EQ(Padded(100, 30, 16, 0, 8), (Size{112, 30}));
}

TEST(ComputeGimPadding, AnyPixelOrderOtherThan0IsTiled) {
  EXPECT_EQ(Padded(16, 9, 16, 2, 8), (Size{16, 16}));
  EXPECT_EQ(Padded(16, 9, 16, -1, 8), (Size{16, 16}));
}

TEST(ComputeGimPadding, PixelsOfAUnitRoundToTheNearestTiesToEven) {
  EXPECT_EQ(Padded(1, 1, 6, 0, 32), (Size{2, 1}));    // 1.5
  EXPECT_EQ(Padded(1, 1, 10, 0, 32), (Size{2, 1}));   // 2.5
  EXPECT_EQ(Padded(1, 1, 16, 0, 24), (Size{5, 1}));   // 5.33
  EXPECT_EQ(Padded(1, 1, 3, 0, 32), (Size{1, 1}));    // 0.75
  EXPECT_EQ(Padded(9, 1, 8, 0, 8), (Size{16, 1}));    // 8
  EXPECT_EQ(Padded(1, 1, 16, 0, 5), (Size{26, 1}));   // 25.6
  EXPECT_EQ(Padded(1, 1, 16, 0, 1), (Size{128, 1}));  // 128
}

TEST(ComputeGimPadding, ResultsBeyond16BitsAreFailure6) {
  EXPECT_EQ(Padded(32752, 32760, 16, 1, 8), (Size{32752, 32760}));
  EXPECT_EQ(NumberOf([] { Padded(32753, 1, 16, 1, 8); }), 6);
  EXPECT_EQ(NumberOf([] { Padded(1, 32761, 16, 1, 8); }), 6);
  EXPECT_EQ(Padded(1, 32761, 16, 0, 8), (Size{16, 32761}));
  EXPECT_EQ(NumberOf([] { Padded(1, 1, 32767, 0, 1); }), 6);  // 262136 pixels a unit
}

TEST(ComputeGimPadding, NoBitsAndUnitsOfNoPixelsAreFailure11) {
  EXPECT_EQ(NumberOf([] { Padded(16, 8, 16, 1, 0); }), 11);
  EXPECT_EQ(NumberOf([] { Padded(16, 8, 0, 1, 8); }), 11);
  EXPECT_EQ(NumberOf([] { Padded(16, 8, 2, 1, 32); }), 11);  // 0.5 rounds to 0
}

TEST(ComputeGimPadding, NegativeUnitsAreFailure5) {
  EXPECT_EQ(NumberOf([] { Padded(16, 8, -16, 1, 8); }), 5);
  EXPECT_EQ(NumberOf([] { Padded(16, 8, 16, 1, -8); }), 5);
}

TEST(ComputeGimPadding, NegativeSizesStayBelowOne) {
  EXPECT_EQ(Padded(-1, -1, 16, 1, 8), (Size{0, 0}));
  EXPECT_EQ(Padded(-17, -30, 16, 1, 8), (Size{-16, -24}));
  EXPECT_EQ(Padded(-17, -30, 16, 0, 8), (Size{-16, -30}));
}

}  // namespace
}  // namespace kelvane
