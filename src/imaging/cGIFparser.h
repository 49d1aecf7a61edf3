// Reads the first frame of a GIF, with its transparency.
#pragma once

#include <cstdint>

#include "common/Bytes.h"
#include "imaging/c32bppDIB.h"

namespace kelvane {

// The frame is found by walking the blocks and copied out into a minimal GIF of one frame. A decoder of our own gives
// its colour indexes, which the toolkit's readers would hide: the colours of a frame with a transparent index come from
// the source's table, those of another frame from the copy. Image data that is broken or doesn't hold all pixels is
// refused as a whole.
class cGIFparser {
 public:
  // Fills `cHost` from `streamLength` bytes of `inStream` from `streamStart` on. False: no GIF, or a broken one; the
  // host is empty then. Failure 9 for a span outside `inStream`.
  bool LoadStream(ByteView inStream, c32bppDIB& cHost, std::int32_t streamStart, std::int32_t streamLength);

 private:
  // What the walk over the blocks finds, as offsets in gifData_.
  struct Frame {
    std::int32_t headerSize = 13;  // header, logical screen and global table
    std::int32_t colours = 0;      // of the table that counts: the local one if there is one
    bool localTable = false;
    std::int32_t controlStart = -1;  // the graphic control block; -1 without
    bool transparentFlag = false;
    std::int32_t transIndex = -1;
    std::int32_t imageStart = 0;
    std::int32_t imageEnd = 0;  // of the terminator of the image data
  };

  bool ParseGifSource(c32bppDIB& cHost);
  bool WalkToFrame(Frame& frame) const;
  std::int32_t WalkExtension(Frame& frame, std::int32_t position) const;
  void SkipSubBlocks(std::int32_t& position) const;
  [[nodiscard]] Bytes Rebuild(const Frame& frame) const;
  bool RenderRebuiltGif(ByteView rebuilt, std::int32_t transIndex, std::int32_t tableOffset, c32bppDIB& cHost) const;

  ByteView gifData_;
};

}  // namespace kelvane
