// Any bytes as a zlib stream, beside an inflate as plain as can be and beside zlib's own. The first three bytes choose
// the destination's size and the reading of long lengths.
#include <algorithm>
#include <zlib.h>

#include "FuzzTarget.h"
#include "imaging/InflateBuffer.h"
#include "support/PlainInflate.h"

namespace kelvane {
namespace {

using fuzz::Require;

void Check(ByteView compressed, std::size_t rawLength, bool allow64K) {
  constexpr std::uint8_t kUntouched = 0xEE;
  const test::PlainInflated plain = test::PlainInflate(compressed, rawLength, allow64K);
  Bytes raw(rawLength + 8, kUntouched);
  const InflateOutcome outcome = InflateBufferOutcome(raw, compressed, static_cast<std::int32_t>(rawLength), allow64K);
  Require(outcome.runtimeError == plain.runtimeError, "a run-time error is one for both");
  Require(static_cast<int>(outcome.status) == plain.status, "the status is the same");
  Require(std::equal(plain.out.begin(), plain.out.end(), raw.begin()), "the bytes are the same");
  Require(
      std::all_of(raw.begin() + std::ssize(plain.out), raw.end(), [](std::uint8_t byte) { return byte == kUntouched; }),
      "the rest is as it was");

  // For a destination of no bytes zlib takes a stream of one byte too.
  Bytes byZlib(rawLength);
  uLongf size = rawLength;
  if (!allow64K && rawLength > 0 && uncompress(byZlib.data(), &size, compressed.data(), compressed.size()) == Z_OK) {
    Require(outcome.Succeeded() && size == plain.out.size(), "what zlib takes is taken");
    Require(std::equal(plain.out.begin(), plain.out.end(), byZlib.begin()), "the bytes are zlib's");
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) {
    return 0;
  }
  // Mostly small, since the plain inflate is slow; with a special byte up to half a megabyte, so that the window
  // slides.
  const std::size_t number = std::size_t{data[0]} << 8 | data[1];
  const std::size_t rawLength = (data[2] & 0xF0) == 0xA0 ? number * 8 : number % 4096;
  kelvane::Check({data + 3, size - 3}, rawLength, (data[2] & 1) != 0);
  return 0;
}
