#include "pages/PointerTable.h"

#include <algorithm>

#include "common/Bytes.h"

namespace kelvane {

namespace {

constexpr std::int32_t kPointerSize = 4;

}  // namespace

std::int32_t PointerCount(std::int32_t byteLength) {
  if (byteLength < 0) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  if (byteLength > kMaxArrayBytes) {
    throw RuntimeFailure(FailureCode::OutOfMemory);
  }
  return byteLength / kPointerSize;
}

std::vector<std::int32_t> ReadPointers(RcoFile& file, std::int32_t offset, std::int32_t byteLength) {
  const std::int64_t count = PointerCount(byteLength);
  file.Seek(offset);  // fails before anything is allocated
  const std::int64_t inFile = (file.Length() - offset + kPointerSize - 1) / kPointerSize;
  std::vector<std::int32_t> pointers(static_cast<std::size_t>(std::clamp(inFile, std::int64_t{0}, count)));
  file.ReadLongsAt(offset, pointers);
  return pointers;
}

}  // namespace kelvane
