#include <gtest/gtest.h>

#include "imaging/Fakes.h"
#include "imaging/modParsers.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

int NumberOf(std::int32_t bitDepth, std::int32_t width) {
  return test::NumberOf([=] { (void)AlignedRowBytes(bitDepth, width); });
}

TEST(AlignedRowBytes, PadsToThirtyTwoBits) {
  EXPECT_EQ(AlignedRowBytes(1, 1), 4);
  EXPECT_EQ(AlignedRowBytes(1, 32), 4);
  EXPECT_EQ(AlignedRowBytes(1, 33), 8);
  EXPECT_EQ(AlignedRowBytes(4, 9), 8);
  EXPECT_EQ(AlignedRowBytes(8, 5), 8);
  EXPECT_EQ(AlignedRowBytes(24, 1), 4);
  EXPECT_EQ(AlignedRowBytes(24, 3), 12);
  EXPECT_EQ(AlignedRowBytes(32, 7), 28);
  EXPECT_EQ(AlignedRowBytes(8, 0), 0);
  EXPECT_EQ(AlignedRowBytes(0, 100), 0);
  EXPECT_EQ(AlignedRowBytes(32, 67108862), 268435448);
}

TEST(AlignedRowBytes, FailsWhereTheBitsOverflow) {
  EXPECT_EQ(NumberOf(32, 67108864), 6);
  EXPECT_EQ(NumberOf(1, 2147483617), 6);
  EXPECT_EQ(NumberOf(256, 1), 6);
  EXPECT_EQ(NumberOf(-1, 1), 6);
}

TEST(SwapLong, ReversesAllFourBytesTheSignBitIncluded) {
  EXPECT_EQ(SwapLong(0x01020304), 0x04030201);
  EXPECT_EQ(SwapLong(0), 0);
  EXPECT_EQ(SwapLong(-1), -1);
  EXPECT_EQ(SwapLong(0x00000080), static_cast<std::int32_t>(0x80000000U));
  EXPECT_EQ(SwapLong(static_cast<std::int32_t>(0x80000001U)), 0x01000080);
  EXPECT_EQ(SwapLong(static_cast<std::int32_t>(0x800000FFU)), static_cast<std::int32_t>(0xFF000080U));
}

TEST(IsArrayEmptyMark, TellsAnArrayThatWasNeverDimensioned) {
  EXPECT_TRUE(IsArrayEmptyMark(Bytes()));
  EXPECT_FALSE(IsArrayEmptyMark(Bytes{0}));
}

TEST(ArrayToPicture, GivesNothingWithoutALoader) {
  const Bytes stream = {1, 2, 3};
  EXPECT_EQ(ArrayToPicture(nullptr, stream, 0, 3), nullptr);
}

TEST(ArrayToPicture, HandsOverTheSpanOnly) {
  test::FakePictures pictures;
  pictures.picture = std::make_unique<test::FakePicture>();
  const Bytes stream = {1, 2, 3, 4};
  EXPECT_NE(ArrayToPicture(&pictures, stream, 1, 2), nullptr);
  ASSERT_EQ(pictures.asked.size(), 1U);
  EXPECT_EQ(pictures.asked[0], (Bytes{2, 3}));
}

TEST(SpanOf, FailsOutsideTheStream) {
  const Bytes stream = {1, 2, 3, 4};
  EXPECT_EQ(SpanOf(stream, 4, 0).size(), 0U);
  EXPECT_EQ(SpanOf(stream, 0, 4).size(), 4U);
  EXPECT_EQ(test::NumberOf([&] { (void)SpanOf(stream, 1, 4); }), 9);
  EXPECT_EQ(test::NumberOf([&] { (void)SpanOf(stream, -1, 2); }), 9);
  EXPECT_EQ(test::NumberOf([&] { (void)SpanOf(stream, 2, -1); }), 9);
  EXPECT_EQ(test::NumberOf([&] { (void)SpanOf(stream, INT32_MAX, INT32_MAX); }), 9);
}

}  // namespace
}  // namespace kelvane
