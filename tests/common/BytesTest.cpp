#include <functional>
#include <gtest/gtest.h>

#include "common/Bytes.h"

namespace kelvane {
namespace {

FailureCode CodeOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeFailure& failure) {
    return failure.Code();
  }
  ADD_FAILURE() << "no failure";
  return FailureCode::DeviceIoError;
}

TEST(Bytes, IntegersAreLittleEndian) {
  const Bytes bytes = {0x01, 0x02, 0x03, 0x84};
  EXPECT_EQ(ReadU16(bytes, 0), 0x0201);
  EXPECT_EQ(ReadI16(bytes, 2), -0x7BFD);
  EXPECT_EQ(ReadU32(bytes, 0), 0x84030201U);
  EXPECT_EQ(ReadI32(bytes, 0), -0x7BFCFDFF);
}

TEST(Bytes, WritingReplacesTheBytesAtTheOffsetOnly) {
  Bytes bytes(8, 0xEE);
  WriteU16(bytes, 1, 0x1234);
  WriteI32(bytes, 4, -2);
  EXPECT_EQ(bytes, (Bytes{0xEE, 0x34, 0x12, 0xEE, 0xFE, 0xFF, 0xFF, 0xFF}));
}

TEST(Bytes, AccessOutsideIsFailure9) {
  Bytes bytes(4);
  EXPECT_EQ(CodeOf([&] { (void)ReadU32(bytes, 1); }), FailureCode::SubscriptOutOfRange);
  EXPECT_EQ(CodeOf([&] { (void)ReadU16(bytes, -1); }), FailureCode::SubscriptOutOfRange);
  EXPECT_EQ(CodeOf([&] { WriteU32(bytes, 2, 0); }), FailureCode::SubscriptOutOfRange);
  EXPECT_EQ(CodeOf([&] { CopyInto(bytes, 3, Bytes{1, 2}); }), FailureCode::SubscriptOutOfRange);
  EXPECT_EQ(CodeOf([&] { (void)At(bytes, 4); }), FailureCode::SubscriptOutOfRange);
  EXPECT_EQ(CodeOf([&] { (void)At(bytes, -1); }), FailureCode::SubscriptOutOfRange);
}

TEST(Bytes, AnArrayOfNoBytesIsFailure9) {
  EXPECT_EQ(CodeOf([] { (void)AllocateBytes(0); }), FailureCode::SubscriptOutOfRange);
  EXPECT_EQ(CodeOf([] { (void)AllocateBytes(-5); }), FailureCode::SubscriptOutOfRange);
  EXPECT_EQ(AllocateBytes(3), Bytes(3));
}

TEST(Bytes, AnArrayBeyondTheLimitIsFailure7) {
  EXPECT_EQ(CodeOf([] { (void)AllocateBytes(kMaxArrayBytes + 1); }), FailureCode::OutOfMemory);
}

}  // namespace
}  // namespace kelvane
