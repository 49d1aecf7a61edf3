#include "support/Deflate.h"

#include <stdexcept>
#include <zlib.h>

namespace kelvane::test {

namespace {

constexpr int kRawWindowBits = -15;
constexpr int kMemoryLevel = 8;

}  // namespace

Bytes RawDeflate(ByteView bytes, int level) {
  z_stream stream{};
  if (deflateInit2(&stream, level, Z_DEFLATED, kRawWindowBits, kMemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("deflateInit2 failed");
  }
  Bytes out(deflateBound(&stream, static_cast<uLong>(bytes.size())));
  Bytes input(bytes.begin(), bytes.end());  // zlib's next_in points to bytes that aren't const
  stream.next_in = input.data();
  stream.avail_in = static_cast<uInt>(input.size());
  stream.next_out = out.data();
  stream.avail_out = static_cast<uInt>(out.size());
  const int outcome = deflate(&stream, Z_FINISH);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  if (outcome != Z_STREAM_END) {
    throw std::runtime_error("deflate failed");
  }
  return out;
}

Bytes DeflateWrapped(ByteView bytes, int level) {
  Bytes out = {0x78, 0xDA};
  Append(out, RawDeflate(bytes, level));
  return out;
}

Bytes DeflateWrappedWithAdler(ByteView bytes, int level) {
  Bytes out = DeflateWrapped(bytes, level);
  const uLong sum = adler32(adler32(0, nullptr, 0), bytes.data(), static_cast<uInt>(bytes.size()));
  for (int shift = 24; shift >= 0; shift -= 8) {
    out.push_back(static_cast<std::uint8_t>(sum >> shift));
  }
  return out;
}

}  // namespace kelvane::test
