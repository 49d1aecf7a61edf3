#include "imaging/InflateBuffer.h"

#include <algorithm>

namespace kelvane {

InflateOutcome InflateBufferOutcome(std::span<std::uint8_t> raw, ByteView compressed, std::int32_t rawLength,
                                    bool allow64K) {
  const std::int64_t room =
      std::clamp(static_cast<std::int64_t>(rawLength), std::int64_t{0}, static_cast<std::int64_t>(raw.size()));
  InflateStream stream(compressed, 0, room, allow64K);
  auto out = raw.begin();
  for (ByteView run = stream.Read(0); !run.empty(); run = stream.Read(0)) {
    out = std::copy(run.begin(), run.end(), out);
  }
  return stream.Outcome();
}

bool InflateBuffer(std::span<std::uint8_t> raw, ByteView compressed, std::int32_t rawLength, bool allow64K) {
  return InflateBufferOutcome(raw, compressed, rawLength, allow64K).Succeeded();
}

}  // namespace kelvane
