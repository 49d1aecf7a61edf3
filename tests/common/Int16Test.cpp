#include <gtest/gtest.h>
#include <limits>

#include "common/Int16.h"

namespace kelvane {
namespace {

TEST(Int16, HoldsTheWholeRange) {
  EXPECT_EQ(Int16(32767).Int(), 32767);
  EXPECT_EQ(Int16(-32768).Int(), -32768);
}

TEST(Int16, AValueOutsideIsFailure6AndNotAWrap) {
  EXPECT_THROW(Int16(32768), RuntimeFailure);
  EXPECT_THROW(Int16(-32769), RuntimeFailure);
  EXPECT_THROW(Int16(32767) + Int16(1), RuntimeFailure);
  EXPECT_THROW(Int16(-32768) - Int16(1), RuntimeFailure);
  EXPECT_THROW(Int16(256) * Int16(128), RuntimeFailure);
  Int16 counter(32767);
  EXPECT_THROW(++counter, RuntimeFailure);
  EXPECT_EQ(counter.Int(), 32767);
}

TEST(Int16, ANegativeIndexIsFailure9) {
  EXPECT_EQ(Int16(7).Index(), 7U);
  try {
    (void)Int16(-1).Index();
    FAIL();
  } catch (const RuntimeFailure& failure) {
    EXPECT_EQ(failure.Number(), 9);
  }
}

TEST(Rounding, IsToTheNearestWithTiesToEven) {
  EXPECT_EQ(RoundToInt32(4.5), 4);
  EXPECT_EQ(RoundToInt32(5.5), 6);
  EXPECT_EQ(RoundToInt32(-0.5), 0);
  EXPECT_EQ(RoundToInt32(-1.5), -2);
  EXPECT_EQ(RoundToInt32(2.4999), 2);
  EXPECT_EQ(RoundToInt16(127.5).Int(), 128);
}

TEST(Rounding, OutsideTheRangeIsFailure6) {
  EXPECT_EQ(RoundToInt32(2147483647.0), 2147483647);
  EXPECT_THROW((void)RoundToInt32(2147483648.0), RuntimeFailure);
  EXPECT_THROW((void)RoundToInt32(std::numeric_limits<double>::quiet_NaN()), RuntimeFailure);
  EXPECT_THROW((void)RoundToInt16(32767.5), RuntimeFailure);
}

TEST(Int32, SumsAreChecked) {
  EXPECT_EQ(AddInt32(2147483000, 647), 2147483647);
  EXPECT_THROW((void)AddInt32(2147483647, 1), RuntimeFailure);
  EXPECT_THROW((void)AddInt32(-2147483647, -2), RuntimeFailure);
}

TEST(Int32, RoundsUpToMultiplesOf4) {
  EXPECT_EQ(RoundUpTo4(0), 0);
  EXPECT_EQ(RoundUpTo4(1), 4);
  EXPECT_EQ(RoundUpTo4(4), 4);
  EXPECT_EQ(RoundUpTo4(1001), 1004);
}

}  // namespace
}  // namespace kelvane
