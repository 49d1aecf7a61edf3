// The heads of GIM files as they are written.
#pragma once

#include "common/Bytes.h"
#include "common/Int16.h"

namespace kelvane {

struct GimHeads {
  bool usePalette = false;
  Int16 sourceBits;  // of the bitmap
  Int16 outBits;     // of the GIM
  Int16 pixelOrder;
  Int16 width;
  Int16 height;
  // What the block sizes count with: of the width and height as they were padded for the source's depth.
  Int16 paddedWidth;
  Int16 paddedHeight;
};

// Number of colours of a palette with `bits` bits an index.
[[nodiscard]] std::int32_t PaletteColours(Int16 bits);

// Append the parts of a file: signature, root and picture head; the head of the palette block; that of the image block.
// Failure 6 for sizes beyond signed 32 bits.
void AppendFileHead(Bytes& gim, const GimHeads& heads);
void AppendPaletteHead(Bytes& gim, const GimHeads& heads);
void AppendImageHead(Bytes& gim, const GimHeads& heads);

}  // namespace kelvane
