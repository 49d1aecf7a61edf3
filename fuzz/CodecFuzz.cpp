// Any bytes as a wrapper to inflate, and as data to deflate.
#include <algorithm>
#include <optional>

#include "FuzzTarget.h"
#include "common/RuntimeFailure.h"
#include "resources/Codec.h"

namespace kelvane {
namespace {

using fuzz::Require;

void CheckInflate(ByteView wrapper) {
  std::int64_t chunks = 0;
  std::size_t last = kInflateChunk;
  try {
    const bool result = InflateChunks(wrapper, [&](ByteView chunk) {
      Require(last == kInflateChunk, "every chunk but the last is whole");
      last = chunk.size();
      Require(last >= 1 && last <= kInflateChunk, "a chunk has bytes, and no more than its size");
      ++chunks;
    });
    Require(result == (chunks > 0), "the result tells whether a chunk came out");
    Require(wrapper.size() >= 3, "a wrapper below 3 bytes is a failure");
  } catch (const RuntimeFailure& failure) {
    Require(failure.Code() == FailureCode::SubscriptOutOfRange && wrapper.size() < 3, "only a short wrapper fails");
  }
}

void CheckDeflate(ByteView data) {
  const std::optional<Bytes> wrapper = DeflateToWrapper(data, 9);
  Require(wrapper.has_value() == !data.empty(), "all data but none deflate");
  if (!wrapper) {
    return;
  }
  Require(wrapper->size() > 2 && wrapper->size() <= data.size() + 2, "a stream is cut off at the length of its data");
  Require((*wrapper)[0] == 0x78 && (*wrapper)[1] == 0xDA, "the head is written");
  Bytes back;
  InflateChunks(*wrapper, [&](ByteView chunk) { Append(back, chunk); });
  if (wrapper->size() < data.size() + 2) {
    Require(back.size() == data.size(), "data that shrank come back whole");
  }
  Require(back.size() <= data.size() && std::equal(back.begin(), back.end(), data.begin()),
          "what comes back is the data");
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const kelvane::ByteView input(data, size);
  kelvane::CheckInflate(input);
  kelvane::CheckDeflate(input);
  return 0;
}
