// The palette builder, the count of a bitmap's colours, and the choice between a palette and 32 bits a pixel.
//
// A colour is a whole pixel of 32 bits as it lies in the bitmap: blue, green, red, alpha. Pixels that differ in alpha
// only are of two colours.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "common/Bytes.h"
#include "common/Int16.h"
#include "common/Prompts.h"
#include "gim/BmpHeader.h"

namespace kelvane {

// The most colours of a palette that is of use, and the entries that a palette begins with.
inline constexpr std::int32_t kPaletteColours = 256;
// What a palette grows to when it is full, so that callers can count on.
inline constexpr std::int32_t kPaletteOverflowColours = 4096;

// The index of `colour` among the first `count` entries of `palette`, which has kPaletteColours entries at first; a new
// colour is added and `count` raised. Once `count` is 256 or more the result is 0 and only tells that the palette is
// full, but `count` goes on: up to 4096 colours are kept, and beyond that every colour that isn't found raises it.
// Failure 6 for a count above 32767.
Int16 FindOrAddColour(std::uint32_t colour, std::vector<std::uint32_t>& palette, Int16& count);

// What FindOrAddColour does with a colour that it didn't find.
Int16 AddColour(std::uint32_t colour, std::vector<std::uint32_t>& palette, Int16& count);

// Counts the colours of a bitmap from its bfOffBits on, `colours` going on from what it was: the exact count up to 256,
// or a higher one as soon as there are more. 4 and 8 bits a pixel need no count, and `colours` stays. False for a depth
// other than 4, 8 and 32 bits. Failures: 5 for a negative bfOffBits, 6 for more than 2^31 - 1 pixels or a count above
// 32767. A bitmap that is cut off goes on with zeros.
bool CountBitmapColours(ByteView bmp, Int16& colours);
// The same for a file; a wrong depth is told unless `quiet` is set. Failures beside: those of reading.
bool CountBitmapColours(const std::filesystem::path& path, Int16& colours, bool quiet, Prompts& prompts);

// Whether a bitmap of so many colours is to get a palette, by the setting `impt32bitMode`: 0 always, 1 where the
// palette takes less than it saves, 2 never; more than 256 colours never do. Failure 6 for more than 2^31 - 1 pixels in
// mode 1.
[[nodiscard]] bool ShouldUsePalette(Int16 colours, const BitmapHeader& header, Int16 impt32bitMode);
// The same for a file, whose header is read in mode 1 only. Failures beside: those of reading.
[[nodiscard]] bool ShouldUsePalette(Int16 colours, const std::filesystem::path& path, Int16 impt32bitMode);

}  // namespace kelvane
