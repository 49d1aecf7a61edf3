// A place in the bytes of a file, for reading them in the file's own order.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "common/Bytes.h"
#include "common/Int16.h"

namespace kelvane {

class ByteCursor {
 public:
  explicit ByteCursor(ByteView bytes) : bytes_(bytes) {}

  [[nodiscard]] std::int32_t Position() const { return position_; }
  [[nodiscard]] std::int64_t Length() const { return static_cast<std::int64_t>(bytes_.size()); }

  // Moves by `count` bytes, backwards too. Failures: 5 in front of the first byte, 6 beyond signed 32 bits.
  void Skip(std::int64_t count) {
    const std::int32_t position = CheckedInt32(position_ + count);
    if (position < 0) {
      throw RuntimeFailure(FailureCode::InvalidCall);
    }
    position_ = position;
  }

  // Reads `Size` bytes and moves behind them. Bytes beyond the end read as zeros.
  template <std::size_t Size>
  [[nodiscard]] std::array<std::uint8_t, Size> Read() {
    std::array<std::uint8_t, Size> target{};
    const ByteView there = Take(Size);
    std::copy(there.begin(), there.end(), target.begin());
    return target;
  }

  // Moves behind `count` bytes and gives those of them that are there.
  [[nodiscard]] ByteView Take(std::int64_t count) {
    const std::int64_t start = std::min<std::int64_t>(position_, Length());
    const std::int64_t there = std::min(count, Length() - start);
    Skip(count);
    return bytes_.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(there));
  }

 private:
  ByteView bytes_;
  std::int32_t position_ = 0;
};

}  // namespace kelvane
