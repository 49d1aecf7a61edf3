#include "Seeds.h"
#include "support/GifBuilder.h"

namespace kelvane::fuzz {

namespace {

using namespace test;

Bytes Counted(std::size_t count, std::size_t colours) {
  Bytes indexes(count);
  for (std::size_t i = 0; i < count; ++i) {
    indexes[i] = static_cast<std::uint8_t>(i * i / 7 % colours);
  }
  return indexes;
}

std::vector<GifColour> Table(std::size_t colours) {
  std::vector<GifColour> table(colours);
  for (std::size_t i = 0; i < colours; ++i) {
    table[i] = {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(2 * i), static_cast<std::uint8_t>(255 - i)};
  }
  return table;
}

}  // namespace

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  for (std::uint8_t codeSize = 2; codeSize <= 8; ++codeSize) {
    const std::size_t colours = std::size_t{1} << codeSize;
    for (const bool interlaced : {false, true}) {
      GifFrame frame{.width = 40, .height = 25, .interlaced = interlaced, .codeSize = codeSize};
      frame.lzw = GifLzwEncode(codeSize, Counted(1000, colours));
      seeds.push_back(Join({GifHeader(40, 25, Table(colours)), GifImage(frame), GifTrailer()}));
      seeds.push_back(Join({GifHeader(40, 25, Table(colours)), GifControl(1), GifImage(frame), GifTrailer()}));
      frame.table = Table(colours);
      seeds.push_back(Join({GifHeader(1, 1, {}, "GIF87a"), GifControl(1), GifImage(frame)}));
    }
  }
  const GifFrame small{.left = 3, .top = 4, .width = 2, .height = 2, .lzw = GifLzwEncode(2, {0, 1, 2, 3})};
  const Bytes header = GifHeader(10, 10, Table(4));
  seeds.push_back(Join({header, GifApplication("NETSCAPE2.0", {1, 0, 0}), GifComment("comment"), GifControl(-1),
                        GifImage(small), GifControl(2), GifImage(small), GifTrailer()}));
  seeds.push_back(Join({header, GifControl(200), GifImage(small)}));
  seeds.push_back(Join({header, GifImage({.width = 60000, .height = 60000, .lzw = small.lzw})}));
  seeds.push_back(Join({header, GifImage({.width = 2, .height = 2, .lzw = {0xFF, 0xFF}})}));
  seeds.push_back(Join({header, GifImage({.width = 2, .height = 2, .codeSize = 9})}));
  seeds.push_back({'g', 'i', 'f', '8', '9', 'a'});
  // Strings of all lengths, and a full table.
  const GifFrame plain{.width = 300, .height = 300, .lzw = GifLzwEncode(2, Bytes(90000, 1))};
  seeds.push_back(Join({header, GifImage(plain)}));
  const GifFrame full{.width = 200,
                      .height = 100,
                      .codeSize = 8,
                      .lzw = GifLzwEncode(8, Counted(20000, 251), {.clearWhenFull = false})};
  seeds.push_back(Join({GifHeader(1, 1, Table(256)), GifControl(0), GifImage(full)}));
  return seeds;
}

}  // namespace kelvane::fuzz
