#include "imaging/OneFrameGif.h"

#include "imaging/modParsers.h"

namespace kelvane {

namespace {

constexpr std::int32_t kHeaderBytes = 13;
constexpr std::int32_t kFlagsAt = 10;
constexpr std::int32_t kControlBytes = 8;
constexpr std::int32_t kDescriptorBytes = 10;
constexpr std::uint8_t kExtension = 0x21;
constexpr std::uint8_t kHasTable = 0x80;
constexpr std::uint8_t kInterlaced = 0x40;

}  // namespace

OneFrameGif::OneFrameGif(ByteView gif) {
  std::int32_t position = kHeaderBytes;
  const auto takeTable = [&](std::uint8_t flags) {
    if ((flags & kHasTable) != 0) {
      table_ = SpanOf(gif, position, 6 << (flags & 7));
      position += static_cast<std::int32_t>(table_.size());
    }
  };
  takeTable(At(gif, kFlagsAt));
  if (At(gif, position) == kExtension) {
    position += kControlBytes;
  }
  const ByteView descriptor = SpanOf(gif, position, kDescriptorBytes);
  width_ = ReadU16(descriptor, 5);
  height_ = ReadU16(descriptor, 7);
  interlaced_ = (descriptor[9] & kInterlaced) != 0;
  position += kDescriptorBytes;
  takeTable(descriptor[9]);
  const std::int32_t codeSize = At(gif, position);
  lzw_.emplace(codeSize, gif.subspan(static_cast<std::size_t>(position) + 1));
}

std::int32_t OneFrameGif::RowOf(std::int32_t n) const {
  if (!interlaced_) {
    return n;
  }
  // Four passes: every 8th row from 0 and from 4, every 4th from 2, every 2nd from 1.
  struct Pass {
    std::int32_t first;
    std::int32_t step;
  };
  constexpr Pass kPasses[] = {{0, 8}, {4, 8}, {2, 4}};
  for (const Pass& pass : kPasses) {
    const std::int32_t rows = height_ > pass.first ? (height_ - pass.first - 1) / pass.step + 1 : 0;
    if (n < rows) {
      return pass.first + n * pass.step;
    }
    n -= rows;
  }
  return 1 + n * 2;
}

}  // namespace kelvane
