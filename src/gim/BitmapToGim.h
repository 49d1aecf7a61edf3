// Bitmap to GIM, with or without a palette.
#pragma once

#include <filesystem>
#include <optional>

#include "common/Bytes.h"
#include "common/Int16.h"

namespace kelvane {

// Converts a BMP file of 4, 8 or 32 bits a pixel to a GIM file. Of its header width, height and depth count, and
// palette and pixels follow the 54 bytes at once. With `convert32` a 32-bit bitmap is indexed. `pixelOrder` goes into
// the file; 0 is linear, anything else tiled. `firstColTrans` clears the palette's entry of the top left pixel of a 4
// or 8-bit bitmap. Nothing for another depth, and for a bitmap that is to be indexed and has 256 colours or more.
//
// An indexed 32-bit bitmap keeps the row padding of 32-bit pixels, and its block sizes are of it; below 16 colours only
// the left half of its indexes, a byte each, reaches the file. Firmware files were made so, and it stays so.
//
// Failures: 6 for width or height beyond 16 bits and for 32-bit rows of more than 8192 pixels; 9 for an empty or
// top-down bitmap and for rows of no bytes; 5 and 11 for bits a pixel that ComputeGimPadding fails on; 7.
[[nodiscard]] std::optional<Bytes> BitmapToGim(ByteView bmp, bool convert32, Int16 pixelOrder, bool firstColTrans);

// The same from file to file. On false, and on a failure of the conversion, `dstPath` wasn't touched.
bool BitmapToGim(const std::filesystem::path& srcPath, const std::filesystem::path& dstPath, bool convert32,
                 Int16 pixelOrder, bool firstColTrans);

}  // namespace kelvane
