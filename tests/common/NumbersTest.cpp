#include <gtest/gtest.h>
#include <string>

#include "common/Numbers.h"
#include "common/RuntimeFailure.h"

namespace kelvane {
namespace {

template <class Action>
int NumberOf(Action action) {
  try {
    action();
  } catch (const RuntimeFailure& failure) {
    return failure.Number();
  }
  return 0;
}

TEST(Hex, IsUpperCaseWithoutLeadingZeros) {
  EXPECT_EQ(HexOf(std::int32_t{0}), "0");
  EXPECT_EQ(HexOf(std::int32_t{0x2000C}), "2000C");
  EXPECT_EQ(HexOf(std::int32_t{-1}), "FFFFFFFF");
  EXPECT_EQ(HexOf(std::int16_t{-1}), "FFFF");
}

TEST(PadLeft, FillsUpToTheWidth) {
  EXPECT_EQ(PadLeft("1F", 8, '0'), "0000001F");
  EXPECT_EQ(PadLeft("12345678", 8, '0'), "12345678");
}

TEST(PadLeft, ANegativeCountIsFailure5AndNotATruncation) {
  EXPECT_EQ(NumberOf([] { (void)PadLeft("403", 2, '0'); }), 5);
}

TEST(PadLeft, AWidthOfTheTextOrOfNothingAddsNothing) {
  EXPECT_EQ(PadLeft("", 0, '0'), "");
  EXPECT_EQ(PadLeft("", 3, ' '), "   ");
  EXPECT_EQ(PadLeft("7", 1, '0'), "7");
  EXPECT_EQ(NumberOf([] { (void)PadLeft("7", 0, '0'); }), 5);
  EXPECT_EQ(NumberOf([] { (void)PadLeft("", -1, '0'); }), 5);
}

struct HexCase {
  const char* text;
  std::int32_t asLong;
  std::int32_t asShort;
};

TEST(HexToValue, ReadsBothWidths) {
  constexpr HexCase kCases[] = {
      {"0", 0, 0},
      {"40C", 0x40C, 0x40C},
      {"040c", 0x40C, 0x40C},
      {"7FFF", 0x7FFF, 0x7FFF},
      {"8000", 0x8000, -32768},
      {"FFFE", 0xFFFE, -2},
      {"12:4", 0x12, 0x12},
      {" 12", 0, 0},
      {"-1", 0, 0},
      {"&H1", 0, 0},
      {"0x12", 0, 0},
      {"AbCd", 0xABCD, -21555},
      {"000G", 0, 0},
      {"1] 0xFF", 1, 1},
  };
  for (const HexCase& test : kCases) {
    EXPECT_EQ(HexToValue(test.text, true), test.asLong) << test.text;
    EXPECT_EQ(HexToValue(test.text, false), test.asShort) << test.text;
  }
}

TEST(HexToValue, StopsAtTheFirstCharacterThatIsNoDigit) {
  EXPECT_EQ(HexToValue("1f] 0x", true), 0x1F);
  EXPECT_EQ(HexToValue("", true), 0);
  EXPECT_EQ(HexToValue("G1", true), 0);
}

TEST(HexToValue, EightDigitsAreASigned32BitValueAndFourASigned16BitOne) {
  EXPECT_EQ(HexToValue("FFFFFFFF", true), -1);
  EXPECT_EQ(HexToValue("80000000", true), -2147483647 - 1);
  EXPECT_EQ(HexToValue("FFFF", true), 0xFFFF);
  EXPECT_EQ(HexToValue("FFFF", false), -1);
  EXPECT_EQ(HexToValue("040C", false), 0x40C);
}

TEST(HexToValue, MoreDigitsAreFailure6) {
  EXPECT_EQ(NumberOf([] { (void)HexToValue("123456789", true); }), 6);
  EXPECT_EQ(NumberOf([] { (void)HexToValue("12345", false); }), 6);
}

TEST(LeadingNumber, ReadsTheNumberThatATextBeginsWith) {
  EXPECT_EQ(LeadingNumber("1.6"), 1.6);
  EXPECT_EQ(LeadingNumber("1:5"), 1);
  EXPECT_EQ(LeadingNumber("  -2.5abc"), -2.5);
  EXPECT_EQ(LeadingNumber("+.5"), 0.5);
  EXPECT_EQ(LeadingNumber("1e2"), 100);
  EXPECT_EQ(LeadingNumber("1D2"), 100);
  EXPECT_EQ(LeadingNumber("1e"), 1);
  EXPECT_EQ(LeadingNumber("1e+x"), 1);
  EXPECT_EQ(LeadingNumber("1 2"), 12);
  EXPECT_EQ(LeadingNumber("1.2.3"), 1.2);
}

TEST(LeadingNumber, ATextThatBeginsWithNoneIsZero) {
  EXPECT_EQ(LeadingNumber(""), 0);
  EXPECT_EQ(LeadingNumber("abc"), 0);
  EXPECT_EQ(LeadingNumber("."), 0);
  EXPECT_EQ(LeadingNumber("-"), 0);
  EXPECT_EQ(LeadingNumber("inf"), 0);
  EXPECT_EQ(LeadingNumber("nan"), 0);
  EXPECT_EQ(LeadingNumber("0x1F"), 0);
}

TEST(LeadingNumber, AnAmpersandBeginsHexadecimalAndOctal) {
  EXPECT_EQ(LeadingNumber("&H1F"), 31);
  EXPECT_EQ(LeadingNumber("&HFFFF"), -1);
  EXPECT_EQ(LeadingNumber("&H10000"), 65536);
  EXPECT_EQ(LeadingNumber("&O17"), 15);
  EXPECT_EQ(LeadingNumber("&17"), 0);
}

TEST(LeadingNumber, TooLargeIsFailure6AndTooNearToZeroIsZero) {
  EXPECT_EQ(NumberOf([] { (void)LeadingNumber("1e999"); }), 6);
  EXPECT_EQ(LeadingNumber("1e-999"), 0);
}

TEST(LeadingNumber, WhatIsTooLargeIsToldByTheFirstDigitAndNotByTheExponentAlone) {
  const std::string zeros(400, '0');
  for (const std::string& text : {std::string("0.5e400"), std::string(".001e312"), "-1" + zeros, "1" + zeros + "e-10",
                                  std::string("1e+99999999999999999999"), "0." + zeros + "1e800"}) {
    EXPECT_EQ(NumberOf([&] { (void)LeadingNumber(text); }), 6) << text;
  }
  for (const std::string& text : {std::string("0.5e-400"), "0." + zeros + "1", "." + zeros + "1e50",
                                  std::string("-7e-99999999999999999999"), std::string("0e999"), zeros + "e5"}) {
    EXPECT_EQ(LeadingNumber(text), 0) << text;
  }
  EXPECT_EQ(LeadingNumber("1" + zeros + "e-395"), 1e5);
  EXPECT_EQ(LeadingNumber("0." + zeros + "1e402"), 10);
}

TEST(SingleOf, IsTheNearestSingle) {
  EXPECT_EQ(SingleOf(0.1), 0.1F);
  EXPECT_EQ(SingleOf(-3.4028234663852886e38), -3.4028234663852886e38F);
  EXPECT_EQ(SingleOf(3.40282356e38), 3.4028234663852886e38F);
  EXPECT_EQ(SingleOf(1e-50), 0.0F);
}

TEST(SingleOf, BeyondTheLargestSingleIsFailure6) {
  EXPECT_EQ(NumberOf([] { (void)SingleOf(3.40282357e38); }), 6);
  EXPECT_EQ(NumberOf([] { (void)SingleOf(-1e39); }), 6);
}

}  // namespace
}  // namespace kelvane
