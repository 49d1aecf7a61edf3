// Any bytes as a wrapper to inflate, beside zlib in one go, and as data to deflate.
#include <algorithm>
#include <optional>
#include <zlib.h>

#include "FuzzTarget.h"
#include "common/RuntimeFailure.h"
#include "resources/Codec.h"

namespace kelvane {
namespace {

using fuzz::Require;

// Of what unpacks so much is compared.
constexpr std::size_t kCompared = std::size_t{1} << 20;

// What zlib makes of the stream behind a wrapper's head, in one call.
struct OneCall {
  Bytes out;
  bool ended = false;
};

OneCall InflateInOneCall(ByteView wrapper) {
  OneCall outcome;
  outcome.out.resize(kCompared);
  Bytes source(wrapper.begin() + 2, wrapper.end());
  z_stream stream{};
  Require(inflateInit2(&stream, -15) == Z_OK, "zlib is there");
  stream.next_in = source.data();
  stream.avail_in = static_cast<uInt>(source.size());
  stream.next_out = outcome.out.data();
  stream.avail_out = static_cast<uInt>(outcome.out.size());
  outcome.ended = inflate(&stream, Z_FINISH) == Z_STREAM_END;
  outcome.out.resize(stream.total_out);
  inflateEnd(&stream);
  return outcome;
}

// The chunks of a wrapper, put together up to kCompared bytes.
Bytes InflatedInChunks(ByteView wrapper) {
  Bytes out;
  std::int64_t chunks = 0;
  std::size_t last = kInflateChunk;
  const bool result = InflateChunks(wrapper, [&](ByteView chunk) {
    Require(last == kInflateChunk, "every chunk but the last is whole");
    last = chunk.size();
    Require(last >= 1 && last <= kInflateChunk, "a chunk has bytes, and no more than its size");
    ++chunks;
    Append(out, chunk.first(std::min(chunk.size(), kCompared - out.size())));
  });
  Require(result == (chunks > 0), "the result tells whether a chunk came out");
  return out;
}

void CheckInflate(ByteView wrapper) {
  if (wrapper.size() < 3) {
    try {
      InflateChunks(wrapper, [](ByteView) { Require(false, "nothing comes out of a short wrapper"); });
      Require(false, "a wrapper below 3 bytes is a failure");
    } catch (const RuntimeFailure& failure) {
      Require(failure.Code() == FailureCode::SubscriptOutOfRange, "it is failure 9");
    }
    return;
  }
  const Bytes chunks = InflatedInChunks(wrapper);
  const OneCall whole = InflateInOneCall(wrapper);
  Require(chunks.size() <= whole.out.size() && std::equal(chunks.begin(), chunks.end(), whole.out.begin()),
          "what comes out is what zlib gives, or the beginning of it");
  Require(!whole.ended || chunks.size() == whole.out.size(), "a stream with an end comes out whole");
}

void CheckDeflate(ByteView data) {
  const std::optional<Bytes> wrapper = DeflateToWrapper(data, 9);
  Require(wrapper.has_value() == !data.empty(), "all data but none deflate");
  if (!wrapper) {
    return;
  }
  Require(wrapper->size() > 2 && wrapper->size() <= data.size() + 2, "a stream is cut off at the length of its data");
  Require((*wrapper)[0] == 0x78 && (*wrapper)[1] == 0xDA, "the head is written");
  const Bytes back = InflatedInChunks(*wrapper);
  Require(back.size() <= data.size() && std::equal(back.begin(), back.end(), data.begin()),
          "what comes back is the data");
  if (wrapper->size() < data.size() + 2) {
    Require(back.size() == std::min(data.size(), kCompared), "data that shrank come back whole");
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const kelvane::ByteView input(data, size);
  kelvane::CheckInflate(input);
  kelvane::CheckDeflate(input);
  return 0;
}
