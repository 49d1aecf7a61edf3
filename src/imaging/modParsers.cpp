#include "imaging/modParsers.h"

#include "common/Int16.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

bool IsArrayEmptyMark(ByteView array) {
  return array.empty();
}

std::int32_t AlignedRowBytes(std::int32_t bitDepth, std::int32_t width) {
  if (bitDepth < 0 || bitDepth > 255) {
    throw RuntimeFailure(FailureCode::Overflow);
  }
  const std::int32_t bits = CheckedInt32(std::int64_t{bitDepth} * width);
  const auto padded = static_cast<std::uint32_t>(AddInt32(bits, 31)) & ~std::uint32_t{31};
  return static_cast<std::int32_t>(padded) / 8;
}

std::unique_ptr<Picture> ArrayToPicture(PictureLoader* pictures, ByteView stream, std::int32_t streamStart,
                                        std::int32_t streamLength) {
  const ByteView span = SpanOf(stream, streamStart, streamLength);
  return pictures == nullptr ? nullptr : pictures->Load(span);
}

ByteView SpanOf(ByteView stream, std::int32_t streamStart, std::int32_t streamLength) {
  if (streamStart < 0 || streamLength < 0 ||
      std::int64_t{streamStart} + streamLength > static_cast<std::int64_t>(stream.size())) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  return stream.subspan(static_cast<std::size_t>(streamStart), static_cast<std::size_t>(streamLength));
}

}  // namespace kelvane
