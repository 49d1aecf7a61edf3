// An input as a row of decisions.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/Bytes.h"

namespace kelvane::fuzz {

// Takes the input's bytes one by one; zeros at the end.
class Script {
 public:
  explicit Script(ByteView input) : input_(input) {}
  [[nodiscard]] bool AtEnd() const { return position_ >= input_.size(); }
  std::uint8_t Next() { return AtEnd() ? 0 : input_[position_++]; }
  // The next two bytes, little-endian.
  std::uint16_t NextU16() {
    const std::uint8_t low = Next();
    return static_cast<std::uint16_t>(low | Next() << 8);
  }

 private:
  ByteView input_;
  std::size_t position_ = 0;
};

}  // namespace kelvane::fuzz
