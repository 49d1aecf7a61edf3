// Deflated bytes in the wrappers that stand in RCO files, made with zlib directly.
#pragma once

#include "common/Bytes.h"

namespace kelvane::test {

// 78 DA and a raw deflate stream, without a checksum. Level 0 to 9.
[[nodiscard]] Bytes DeflateWrapped(ByteView bytes, int level = 9);
// The same with the Adler-32 of `bytes` behind it, big-endian, as other tools write it.
[[nodiscard]] Bytes DeflateWrappedWithAdler(ByteView bytes, int level = 9);
// The raw deflate stream alone.
[[nodiscard]] Bytes RawDeflate(ByteView bytes, int level = 9);

}  // namespace kelvane::test
