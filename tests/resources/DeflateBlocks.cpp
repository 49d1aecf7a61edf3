#include "resources/DeflateBlocks.h"

#include <stdexcept>

namespace kelvane::test {

Bytes StoredBlock(ByteView data, bool last) {
  const unsigned length = static_cast<unsigned>(data.size());
  if (length > 0xFFFF) {
    throw std::runtime_error("a stored block holds 65,535 bytes at most");
  }
  const auto low = [](unsigned value) { return static_cast<std::uint8_t>(value & 0xFF); };
  Bytes block = {low(last ? 1U : 0U), low(length), low(length >> 8), low(~length), low(~length >> 8)};
  Append(block, data);
  return block;
}

void BitWriter::Put(unsigned value, int bits) {
  for (int i = 0; i < bits; ++i) {
    if (used_ == 8) {
      bytes_.push_back(0);
      used_ = 0;
    }
    bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | ((value >> i & 1U) << used_));
    ++used_;
  }
}

void BitWriter::PutCode(unsigned code, int bits) {
  for (int i = bits - 1; i >= 0; --i) {
    Put(code >> i & 1U, 1);
  }
}

}  // namespace kelvane::test
