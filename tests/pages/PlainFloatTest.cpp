#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "common/Numbers.h"
#include "pages/PlainFloat.h"

namespace kelvane {
namespace {

std::int32_t WordOf(float value) {
  return std::bit_cast<std::int32_t>(value);
}

TEST(FloatText, HasNoTrailingZerosNoLeadingBlankAndAPointOnlyWhenNeeded) {
  EXPECT_EQ(FloatText(0.0F), "0");
  EXPECT_EQ(FloatText(1.0F), "1");
  EXPECT_EQ(FloatText(1.5F), "1.5");
  EXPECT_EQ(FloatText(-1.5F), "-1.5");
  EXPECT_EQ(FloatText(480.0F), "480");
  EXPECT_EQ(FloatText(0.1F), "0.1");
  EXPECT_EQ(FloatText(-0.25F), "-0.25");
  EXPECT_EQ(FloatText(100.0F), "100");
  EXPECT_EQ(FloatText(272.125F), "272.125");
}

TEST(FloatText, KeepsTo7SignificantDigits) {
  EXPECT_EQ(FloatText(3.14159274F), "3.141593");
  EXPECT_EQ(FloatText(0.123456789F), "0.1234568");
  EXPECT_EQ(FloatText(1234567.5F), "1234568");  // half way between two texts: the even one
  EXPECT_EQ(FloatText(123.4F), "123.4");        // 123.40000152...
}

TEST(FloatText, VeryLargeAndVerySmallValuesHaveAnExponent) {
  EXPECT_EQ(FloatText(9999999.0F), "9999999");
  EXPECT_EQ(FloatText(1e7F), "1E+07");
  EXPECT_EQ(FloatText(16777216.0F), "1.677722E+07");
  EXPECT_EQ(FloatText(1e20F), "1E+20");
  EXPECT_EQ(FloatText(3.4028234663852886e38F), "3.402823E+38");
  EXPECT_EQ(FloatText(0.00001F), "0.00001");
  EXPECT_EQ(FloatText(0.0000123F), "0.0000123");
  EXPECT_EQ(FloatText(1e-6F), "1E-06");
  EXPECT_EQ(FloatText(1.5e-7F), "1.5E-07");
  EXPECT_EQ(FloatText(-1.401298464e-45F), "-1.401298E-45");
}

TEST(FloatText, KeepsTheSignOfZero) {
  EXPECT_EQ(FloatText(-0.0F), "-0");
  EXPECT_EQ(WordOf(static_cast<float>(LeadingNumber("-0"))), WordOf(-0.0F));
}

TEST(FloatText, WhatIsNoNumberReadsBackAs0) {
  EXPECT_EQ(FloatText(std::numeric_limits<float>::quiet_NaN()), "NaN");
  EXPECT_EQ(FloatText(std::numeric_limits<float>::infinity()), "Infinity");
  EXPECT_EQ(FloatText(-std::numeric_limits<float>::infinity()), "-Infinity");
  EXPECT_EQ(LeadingNumber("NaN"), 0);
  EXPECT_EQ(LeadingNumber("-Infinity"), 0);
}

// The C library's own formatting is the other opinion here: of the decimals of 7 digits around a value, if one reads
// back to it, the text does.
TEST(FloatText, ReadsBackToTheSameSingleWhenever7DigitsCan) {
  std::mt19937 random(5);
  int told = 0;
  for (int round = 0; round < 100000; ++round) {
    // All powers of two come first: their neighbours lie closer on one side.
    const std::uint32_t bits = round < 254 ? static_cast<std::uint32_t>(round + 1) << 23 : random() & 0x7FFFFFFF;
    const float x = std::bit_cast<float>(bits);
    if (!std::isfinite(x)) {
      continue;
    }
    char nearest[32];
    std::snprintf(nearest, sizeof nearest, "%.6e", static_cast<double>(x));
    const double step = std::pow(10.0, std::atof(std::strchr(nearest, 'e') + 1) - 6);
    const double middle = std::atof(nearest);
    bool canBeTold = false;
    for (const double candidate : {middle - step, middle, middle + step}) {
      canBeTold = canBeTold || static_cast<float>(candidate) == x;
    }
    const std::string text = FloatText(x);
    EXPECT_EQ(static_cast<float>(LeadingNumber(text)) == x, canBeTold) << text;
    EXPECT_EQ(std::atof(text.c_str()), middle);
    told += canBeTold ? 1 : 0;
  }
  EXPECT_GT(told, 1000);
}

TEST(IsPlainFloat, NumbersOfAtMost5DecimalPlacesAre) {
  for (const float value : {0.0F, 1.5F, 480.0F, -272.0F, 0.1F, 0.3F, 0.00001F, 0.12345F, -99.999F, 1e7F, 1e20F, 1e30F,
                            16777210.0F, -0.0F}) {
    EXPECT_TRUE(IsPlainFloat(WordOf(value))) << value;
  }
}

TEST(IsPlainFloat, ANumberOfMoreThan5DecimalPlacesIsNot) {
  for (const float value : {0.1234567F, 0.000001F, 0.123456F, 1.0F / 3, 1.000001F}) {
    EXPECT_FALSE(IsPlainFloat(WordOf(value))) << value;
  }
}

TEST(IsPlainFloat, ANumberOfMoreThan7DigitsIsNot) {
  EXPECT_FALSE(IsPlainFloat(WordOf(16777216.0F)));
  EXPECT_FALSE(IsPlainFloat(WordOf(1234567.5F)));
  EXPECT_FALSE(IsPlainFloat(WordOf(131071.99F)));
  EXPECT_FALSE(IsPlainFloat(WordOf(3.4028234663852886e38F)));
}

TEST(IsPlainFloat, SmallIntegersAndFlagsAreNot) {
  for (const std::int32_t word : {1, 2, 0x111, 0x401, 0xFFFF, 0x10000, 0x7FFFFF, -1}) {
    EXPECT_FALSE(IsPlainFloat(word)) << word;
  }
}

TEST(IsPlainFloat, WhatIsNoNumberIsNot) {
  EXPECT_FALSE(IsPlainFloat(0x7F800000));
  EXPECT_FALSE(IsPlainFloat(static_cast<std::int32_t>(0xFF800000)));
  EXPECT_FALSE(IsPlainFloat(0x7FC00000));
  EXPECT_FALSE(IsPlainFloat(0x7F800001));
}

TEST(HexWordText, Has8Digits) {
  EXPECT_EQ(HexWordText(0x1F), "0x0000001F");
  EXPECT_EQ(HexWordText(-1), "0xFFFFFFFF");
}

}  // namespace
}  // namespace kelvane
