#include "Seeds.h"
#include "support/Deflate.h"
#include "support/DeflateBits.h"
#include "support/GimBuilder.h"

namespace kelvane::fuzz {

namespace {

using namespace test;

Bytes Repeating(std::size_t count, std::size_t period) {
  Bytes bytes(count);
  for (std::size_t i = 0; i < count; ++i) {
    bytes[i] = static_cast<std::uint8_t>(i % period * 37);
  }
  return bytes;
}

}  // namespace

std::vector<Bytes> Seeds() {
  const Bytes gim = BuildRgbaGim(16, 16, std::vector<std::uint32_t>(256, Rgba(1, 2, 3)));
  std::vector<Bytes> seeds = {{}, {'M', 'I'}, {0x78, 0xDA}, {0x78, 0xDA, 0x03, 0x00}, {0x78, 0xDA, 0x07}, gim};
  for (const int level : {0, 1, 9}) {
    seeds.push_back(DeflateWrapped(gim, level));
  }
  seeds.push_back(DeflateWrappedWithAdler(gim));
  for (const std::size_t count : {65535U, 65536U, 65537U, 200000U}) {
    const Bytes whole = DeflateWrapped(Repeating(count, 101));
    seeds.push_back(whole);
    seeds.emplace_back(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2));
    Bytes broken = whole;
    broken[whole.size() * 2 / 3] ^= 0xFF;
    seeds.push_back(broken);
  }
  // A broken block in the same chunk as a good one, behind a whole chunk, and right where a chunk is full.
  for (const std::size_t stored : {std::size_t{100}, std::size_t{32800}, std::size_t{32768}}) {
    const Bytes content = Repeating(stored, 101);
    DeflateBits bits;
    bits.Block(false, 0).Stored(content).Block(false, 0).Stored(content).Block(true, 3);
    seeds.push_back(bits.Take());
  }
  return seeds;
}

}  // namespace kelvane::fuzz
