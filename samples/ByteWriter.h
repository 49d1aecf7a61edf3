// Appends numbers to bytes, in either order.
#pragma once

#include <string_view>

#include "common/Bytes.h"

namespace kelvane::sample {

inline void AddLittle(Bytes& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) {
    bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  }
}

inline void AddBig(Bytes& bytes, std::uint32_t value, int count) {
  for (int i = count - 1; i >= 0; --i) {
    bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  }
}

inline void AddText(Bytes& bytes, std::string_view text) {
  bytes.insert(bytes.end(), text.begin(), text.end());
}

}  // namespace kelvane::sample
