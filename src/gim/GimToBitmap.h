// GIM to bitmap, with the depth kept or expanded to 32 bits a pixel.
#pragma once

#include <filesystem>
#include <optional>

#include "common/Bytes.h"

namespace kelvane {

struct GimConversion {
  // Whether the bitmap was written in full.
  bool ok = false;
  // What the destination holds afterwards; nothing where it wasn't touched. A failure may leave a part of the bitmap.
  std::optional<Bytes> written;
};

// Converts a GIM file to a BMP file. With `force32` every pixel gets 32 bits; otherwise depth and palette stay, and so
// does the order of the two pixels in a byte of a 4-bit row, which BMP has the other way round: BitmapToGim brings such
// a file back as it was. Bytes that a cut-off file lacks count as zeros. Never fails.
[[nodiscard]] GimConversion GimToBitmap(ByteView gim, bool force32);

// The same into a file, for a GIM file whose content is at hand. The result is false where the bitmap wasn't written in
// full, for whatever reason. `tempS.gim` in `tempFolder` is deleted on every way out, though nothing makes it.
bool GimBytesToBitmap(ByteView gim, const std::filesystem::path& dstPath, bool force32,
                      const std::filesystem::path& tempFolder);

// The same from file to file.
bool GimToBitmap(const std::filesystem::path& srcPath, const std::filesystem::path& dstPath, bool force32,
                 const std::filesystem::path& tempFolder);

}  // namespace kelvane
