#include "support/GifBuilder.h"

#include <algorithm>
#include <bit>
#include <map>
#include <utility>

namespace kelvane::test {

namespace {

void AppendU16(Bytes& bytes, std::uint16_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

void AppendTable(Bytes& bytes, const std::vector<GifColour>& table) {
  for (const GifColour& colour : table) {
    bytes.insert(bytes.end(), {colour.red, colour.green, colour.blue});
  }
}

// Bit 7 and the size of a table that is there.
std::uint8_t TableFlags(const std::vector<GifColour>& table) {
  return table.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(0x80 | (std::bit_width(table.size()) - 2));
}

Bytes BytesOf(const std::string& text) {
  return {text.begin(), text.end()};
}

}  // namespace

Bytes GifHeader(std::uint16_t screenWidth, std::uint16_t screenHeight, const std::vector<GifColour>& globalTable,
                const std::string& signature) {
  Bytes bytes = BytesOf(signature);
  AppendU16(bytes, screenWidth);
  AppendU16(bytes, screenHeight);
  bytes.insert(bytes.end(), {TableFlags(globalTable), 0, 0});
  AppendTable(bytes, globalTable);
  return bytes;
}

Bytes GifControl(int transIndex) {
  const bool flag = transIndex >= 0;
  return {
      0x21, 0xF9, 4, static_cast<std::uint8_t>(flag ? 1 : 0), 10, 0, static_cast<std::uint8_t>(flag ? transIndex : 0),
      0};
}

Bytes GifComment(const std::string& text) {
  return Join({{0x21, 0xFE}, GifSubBlocks(BytesOf(text))});
}

Bytes GifApplication(const std::string& name, const Bytes& data) {
  return Join({{0x21, 0xFF, static_cast<std::uint8_t>(name.size())}, BytesOf(name), GifSubBlocks(data)});
}

Bytes GifImage(const GifFrame& frame) {
  Bytes bytes = {0x2C};
  AppendU16(bytes, frame.left);
  AppendU16(bytes, frame.top);
  AppendU16(bytes, frame.width);
  AppendU16(bytes, frame.height);
  bytes.push_back(static_cast<std::uint8_t>(TableFlags(frame.table) | (frame.interlaced ? 0x40 : 0)));
  AppendTable(bytes, frame.table);
  bytes.push_back(frame.codeSize);
  Append(bytes, GifSubBlocks(frame.lzw));
  return bytes;
}

Bytes GifTrailer() {
  return {0x3B};
}

Bytes Join(const std::vector<Bytes>& blocks) {
  Bytes all;
  for (const Bytes& block : blocks) {
    Append(all, block);
  }
  return all;
}

Bytes GifSubBlocks(const Bytes& content, std::size_t most) {
  Bytes bytes;
  for (std::size_t at = 0; at < content.size(); at += most) {
    const std::size_t length = std::min(most, content.size() - at);
    bytes.push_back(static_cast<std::uint8_t>(length));
    Append(bytes, ByteView(content).subspan(at, length));
  }
  bytes.push_back(0);
  return bytes;
}

Bytes GifLzwEncode(std::uint8_t codeSize, const Bytes& indexes, const GifLzwOptions& options) {
  const std::uint32_t clearCode = 1U << codeSize;
  std::map<std::pair<std::uint32_t, std::uint8_t>, std::uint32_t> strings;
  std::uint32_t nextCode = clearCode + 2;
  GifCodeWriter writer(codeSize + 1U);
  if (options.clearFirst) {
    writer.Write(clearCode);
  }
  std::uint32_t current = 0;
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    if (i == 0) {
      current = indexes[0];
      continue;
    }
    const auto known = strings.find({current, indexes[i]});
    if (known != strings.end()) {
      current = known->second;
      continue;
    }
    writer.Write(current);
    if (nextCode < 4096) {
      strings[{current, indexes[i]}] = nextCode;
      // The reader knows this code one code later than we do.
      writer.SetBits(std::min(12U, static_cast<std::uint32_t>(std::bit_width(nextCode))));
      ++nextCode;
    } else if (options.clearWhenFull) {
      writer.Write(clearCode);
      strings.clear();
      nextCode = clearCode + 2;
      writer.SetBits(codeSize + 1U);
    }
    current = indexes[i];
  }
  if (!indexes.empty()) {
    writer.Write(current);
    if (nextCode < 4096) {
      writer.SetBits(std::min(12U, static_cast<std::uint32_t>(std::bit_width(nextCode))));
    }
  }
  if (options.endCode) {
    writer.Write(clearCode + 1);
  }
  return writer.Written();
}

void GifCodeWriter::Write(std::uint32_t code) {
  for (std::uint32_t bit = 0; bit < bits_; ++bit, ++bitPosition_) {
    if (bitPosition_ % 8 == 0) {
      bytes_.push_back(0);
    }
    bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | (code >> bit & 1) << bitPosition_ % 8);
  }
}

}  // namespace kelvane::test
