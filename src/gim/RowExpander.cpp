#include "gim/RowExpander.h"

#include <cstring>

namespace kelvane {

namespace {

// Writes what `table` has for every byte of a row, one behind the other.
template <class Entry>
void ExpandAll(ByteView row, const std::vector<Entry>& table, std::uint8_t* target) {
  constexpr std::size_t kStride = 8;  // unrolled, so many take half the time of one by one
  const Entry* entries = table.data();
  const std::uint8_t* bytes = row.data();
  const std::size_t count = row.size();
  std::size_t b = 0;
  for (; b + kStride <= count; b += kStride) {
    for (std::size_t i = 0; i < kStride; ++i) {
      std::memcpy(target + (b + i) * sizeof(Entry), entries + bytes[b + i], sizeof(Entry));
    }
  }
  for (; b < count; ++b) {
    std::memcpy(target + b * sizeof(Entry), entries + bytes[b], sizeof(Entry));
  }
}

// Both indexes of every byte.
void SplitBytes(ByteView row, Bytes& indexes) {
  indexes.resize(row.size() * 2);
  std::uint8_t* target = indexes.data();
  for (std::size_t b = 0; b < row.size(); ++b) {
    target[2 * b] = row[b] & 0x0F;
    target[2 * b + 1] = static_cast<std::uint8_t>(row[b] >> 4);
  }
}

}  // namespace

RowExpander::RowExpander(const std::vector<std::uint32_t>& palette, int bits, const WideLookup* wide)
    : palette_(palette), bits_(bits), wide_(wide) {
  if (wide_ != nullptr) {
    for (std::size_t i = 0; i < palette.size(); ++i) {
      split_.Set(i, palette[i]);
    }
  } else if (bits == 4) {
    pairs_.resize(256);
    for (std::size_t byte = 0; byte < pairs_.size(); ++byte) {
      pairs_[byte] = {palette[byte & 0x0F], palette[byte >> 4]};
    }
  }
}

void RowExpander::Expand(ByteView row, std::uint8_t* target) {
  if (wide_ == nullptr) {
    if (bits_ == 4) {
      ExpandAll(row, pairs_, target);
    } else {
      ExpandAll(row, palette_, target);
    }
    return;
  }
  if (bits_ == 4) {
    SplitBytes(row, indexes_);
    wide_->expand(split_, indexes_.data(), indexes_.size(), target);
  } else {
    wide_->expand(split_, row.data(), row.size(), target);
  }
}

}  // namespace kelvane
