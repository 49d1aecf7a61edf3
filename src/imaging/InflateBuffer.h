// The built-in inflate from a whole buffer to a whole buffer.
#pragma once

#include <cstdint>
#include <span>

#include "common/Bytes.h"
#include "imaging/InflateStream.h"

namespace kelvane {

// Decodes the zlib stream `compressed` into the first `rawLength` bytes of `raw` and tells how that ended. A stream
// that yields fewer bytes is no failure, and the rest of `raw` stays as it was; one that yields more is a run-time
// error. After any failure the bytes decoded so far stand in `raw`. The header's 2 bytes may have any value and the
// checksum may be wrong or missing. `allow64K` as told with InflateStream.
[[nodiscard]] InflateOutcome InflateBufferOutcome(std::span<std::uint8_t> raw, ByteView compressed,
                                                  std::int32_t rawLength, bool allow64K);

// The same; true for success.
bool InflateBuffer(std::span<std::uint8_t> raw, ByteView compressed, std::int32_t rawLength, bool allow64K);

}  // namespace kelvane
