// Small files made of words and names at given offsets, for tests that state every byte themselves.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "common/Bytes.h"

namespace kelvane::test {

class TableBytes {
 public:
  // Words one behind the other from `offset` on.
  TableBytes& Words(std::int32_t offset, std::initializer_list<std::int64_t> words) {
    for (const std::int64_t word : words) {
      Reach(offset + 4);
      WriteU32(bytes_, offset, static_cast<std::uint32_t>(word));
      offset += 4;
    }
    return *this;
  }

  // Latin-1 text and its NUL.
  TableBytes& Text(std::int32_t offset, std::string_view text) {
    Reach(offset + static_cast<std::int32_t>(text.size()) + 1);
    for (const char character : text) {
      bytes_[static_cast<std::size_t>(offset++)] = static_cast<std::uint8_t>(character);
    }
    bytes_[static_cast<std::size_t>(offset)] = 0;
    return *this;
  }

  // The fields of an entry's head that the scan reads: type, label, own length, children, distances to its neighbours.
  TableBytes& Head(std::int32_t offset, std::int32_t type, std::int32_t label, std::int32_t size, std::int32_t children,
                   std::int32_t next = 0, std::int32_t previous = 0) {
    return Words(offset, {type, label, 40, size, children, next, previous, 0, 0, 0});
  }

  // Makes the file at least that long.
  TableBytes& Reach(std::int32_t length) {
    if (static_cast<std::size_t>(length) > bytes_.size()) {
      bytes_.resize(static_cast<std::size_t>(length));
    }
    return *this;
  }

  [[nodiscard]] const Bytes& Content() const { return bytes_; }

 private:
  Bytes bytes_;
};

}  // namespace kelvane::test
