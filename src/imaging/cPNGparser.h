// The parser of PNG images, from a file or from a span of bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

#include "common/Bytes.h"
#include "imaging/PngChunks.h"
#include "imaging/PngFields.h"
#include "imaging/c32bppDIB.h"

namespace kelvane {

// Fills an image object with a PNG. An object of the class serves one load. Every failure is a false result; the host
// is then as it was, or empty if the image data was in order and its pixels could not be converted.
//
// A chunk is acted on when it is met, in whatever order chunks come; all image work begins behind IEND, without which
// nothing is loaded. CRCs are checked on IHDR, PLTE and IDAT, where a mismatch is a failure, and on tRNS, which is
// skipped then; a stored CRC of 0 passes.
class cPNGparser {
 public:
  // Whether a library has a function; asked with "zlib.dll" and "crc32", by which CRCs are checked at all.
  using DllLookup = std::function<bool(std::string_view dllName, std::string_view functionName)>;

  // Without a lookup: zlib is there.
  explicit cPNGparser(DllLookup lookup = {});
  cPNGparser(const cPNGparser&) = delete;
  cPNGparser& operator=(const cPNGparser&) = delete;

  // The PNG in `streamLength` bytes of `inStream` from `streamStart` on.
  bool LoadStream(ByteView inStream, c32bppDIB& cHost, std::int32_t streamStart, std::int32_t streamLength);
  bool LoadFile(const std::filesystem::path& fileName, c32bppDIB& cHost);

  // From IHDR, in pixels.
  [[nodiscard]] std::int32_t Height() const { return fields_.pngHeight; }
  [[nodiscard]] std::int32_t Width() const { return fields_.pngWidth; }
  // The host's during a load, null otherwise.
  [[nodiscard]] const std::uint8_t* BitPointer() const { return host_ ? host_->BitsPointer() : nullptr; }
  [[nodiscard]] const void* handle() const { return host_ ? host_->handle() : nullptr; }

 private:
  // The image data of all chunks. The array that holds it is larger, and its rest is zeros, which the inflate may read.
  struct ImageData {
    ByteView bytes;
    Bytes own;
    std::int64_t arraySize = 0;
  };

  bool ParsePngSource(PngChunkSource& source);
  // The platform's own decoder would come first; this platform has none.
  [[nodiscard]] static bool LoadWithGdiPlus() { return false; }
  bool ReadChunks(PngChunkSource& source, ImageData& data);
  void ReadIhdr(const PngChunk& chunk);
  void ReadPlte(const PngChunk& chunk);
  void ReadTrns(const PngChunk& chunk);
  void ReadTransparency(const PngChunk& chunk);
  void ReadIdat(const PngChunk& chunk, const PngChunkSource& source, ImageData& data) const;
  void VerifyCrc(const PngChunk& chunk) const;
  bool InflateIdat(const ImageData& data);
  [[nodiscard]] bool IsDllFunctionAvailable(std::string_view dllName, std::string_view functionName) const;

  DllLookup lookup_;
  c32bppDIB* host_ = nullptr;
  PngFields fields_;
  bool checksCrcs_ = false;
  std::int32_t rawLength_ = 0;
};

}  // namespace kelvane
