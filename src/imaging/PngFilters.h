// Undoing the filters of PNG rows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kelvane {

// What a row and the rows beside it may be read and written beyond their end.
inline constexpr std::size_t kPngRowSlack = 16;

// Undoes a filter: `raw` is the row as it stands in the file, behind its filter byte, `above` the row before it with
// its filter undone, and all zeros for the first row of an image or pass. `length` bytes go to `row`, which is neither
// of the other two. All three have kPngRowSlack bytes behind them, which are read, and of `row` also written.
using UnfilterRow = void (*)(const std::uint8_t* raw, const std::uint8_t* above, std::uint8_t* row, std::size_t length);

struct PngFilters {
  UnfilterRow sub;
  UnfilterRow up;
  UnfilterRow average;
  UnfilterRow paeth;
};

// The filters for pixels of `sourceStep` bytes: 1, 2, 3, 4, 6 or 8.
[[nodiscard]] PngFilters PngFiltersFor(std::int32_t sourceStep);
// The same without instructions of a particular processor.
[[nodiscard]] PngFilters PortablePngFiltersFor(std::int32_t sourceStep);

// Which of the bytes to the left, above, and above to the left is nearest to left + above - aboveLeft; of equally near
// ones the first named.
[[nodiscard]] std::uint8_t PaethPredictor(std::uint8_t left, std::uint8_t above, std::uint8_t aboveLeft);

}  // namespace kelvane
