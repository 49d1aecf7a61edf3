#include <gtest/gtest.h>

#include "imaging/Fakes.h"
#include "imaging/Premultiply.h"
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

TEST(Premultiply, DividesEveryProductBy255Truncated) {
  Bytes pixels;
  Bytes alphas;
  Bytes expected;
  for (std::uint32_t colour = 0; colour < 256; ++colour) {
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha) {
      const std::uint32_t other = 255 - colour;
      Append(pixels, Bytes{static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(other), 255, 77});
      Append(alphas, Bytes{1, 2, 3, static_cast<std::uint8_t>(alpha)});
      Append(expected,
             Bytes{static_cast<std::uint8_t>(colour * alpha / 255), static_cast<std::uint8_t>(other * alpha / 255),
                   static_cast<std::uint8_t>(alpha), static_cast<std::uint8_t>(alpha)});
    }
  }
  Premultiply(pixels, alphas);
  EXPECT_EQ(pixels, expected);
}

TEST(Premultiply, APixelMayCarryItsOwnAlpha) {
  for (std::size_t count = 0; count < 20; ++count) {
    Bytes pixels;
    Bytes expected;
    for (std::size_t i = 0; i < count; ++i) {
      Append(pixels, Bytes{200, 10, 255, 128});
      Append(expected, Bytes{100, 5, 128, 128});
    }
    Premultiply(pixels, pixels);
    EXPECT_EQ(pixels, expected);
  }
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
