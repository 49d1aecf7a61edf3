#include "imaging/cPNGparser.h"

#include <algorithm>
#include <array>
#include <utility>
#include <zlib.h>

#include "common/Int16.h"
#include "imaging/InflateStream.h"
#include "imaging/PngDecoder.h"
#include "imaging/modParsers.h"

namespace kelvane {
namespace {

// What a chunk holds is refused.
[[noreturn]] void Refuse() {
  throw RuntimeFailure(FailureCode::InvalidCall);
}

void Require(bool accepted) {
  if (!accepted) {
    Refuse();
  }
}

template <std::size_t Size>
bool IsOneOf(std::uint8_t value, const std::array<std::uint8_t, Size>& accepted) {
  return std::ranges::find(accepted, value) != accepted.end();
}

bool HasZlibOnly(std::string_view dllName, std::string_view functionName) {
  return dllName == "zlib.dll" && (functionName == "crc32" || functionName == "uncompress");
}

// Runs a load whose failures, whatever they are, are a false result.
template <class Load>
bool Quietly(Load&& load) {
  try {
    return load();
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

cPNGparser::cPNGparser(DllLookup lookup) : lookup_(lookup ? std::move(lookup) : HasZlibOnly) {}

bool cPNGparser::LoadStream(ByteView inStream, c32bppDIB& cHost, std::int32_t streamStart, std::int32_t streamLength) {
  if (streamStart < 0 || static_cast<std::size_t>(streamStart) > inStream.size() || streamLength < 0) {
    return false;
  }
  host_ = &cHost;
  const bool loaded = Quietly([&] {
    PngStreamSource source(inStream.subspan(static_cast<std::size_t>(streamStart)), streamLength);
    return source.HasSignature() && ParsePngSource(source);
  });
  host_ = nullptr;
  return loaded;
}

bool cPNGparser::LoadFile(const std::filesystem::path& fileName, c32bppDIB& cHost) {
  host_ = &cHost;
  const bool loaded = Quietly([&] {
    PngFileSource source(fileName);
    return source.Opened() && source.HasSignature() && ParsePngSource(source);
  });
  host_ = nullptr;
  return loaded;
}

bool cPNGparser::ParsePngSource(PngChunkSource& source) {
  if (LoadWithGdiPlus()) {
    return true;
  }
  fields_.transColour = -1;
  ImageData data;
  data.arraySize = source.Length() / 2 + 1;
  checksCrcs_ = IsDllFunctionAvailable("zlib.dll", "crc32");
  // Without an IHDR there is no size to inflate to.
  if (!ReadChunks(source, data) || data.bytes.empty() || rawLength_ == 0) {
    return false;
  }
  return InflateIdat(data);
}

bool cPNGparser::ReadChunks(PngChunkSource& source, ImageData& data) {
  for (std::int64_t used = source.FirstUsed();;) {
    const std::int32_t length = source.ReadLength();
    used += std::int64_t{length} + 12;
    if (length < 0 || used > source.Length()) {
      return false;
    }
    const PngChunk chunk = source.ReadRest(length);
    const std::uint32_t type = chunk.Type();
    if (type == PngChunkType("IEND")) {
      return true;
    }
    if (length == 0) {
      continue;
    }
    switch (type) {
      case PngChunkType("IHDR"):
        ReadIhdr(chunk);
        break;
      case PngChunkType("PLTE"):
        ReadPlte(chunk);
        break;
      case PngChunkType("tRNS"):
        ReadTrns(chunk);
        break;
      case PngChunkType("IDAT"):
        ReadIdat(chunk, source, data);
        break;
      default:
        // Gamma, background and texts have no say in the pixels.
        break;
    }
  }
}

void cPNGparser::VerifyCrc(const PngChunk& chunk) const {
  if (checksCrcs_ && chunk.storedCrc != 0) {
    const ByteView covered = chunk.typeAndData;
    Require(crc32(0, covered.data(), static_cast<uInt>(covered.size())) == chunk.storedCrc);
  }
}

void cPNGparser::ReadIhdr(const PngChunk& chunk) {
  VerifyCrc(chunk);
  rawLength_ = 0;
  const ByteView& fields = chunk.fields;
  fields_.pngWidth = SwapLong(ReadI32(fields, 0));
  fields_.pngHeight = SwapLong(ReadI32(fields, 4));
  fields_.bitDepth = At(fields, 8);
  fields_.colourType = At(fields, 9);
  fields_.interlaceMethod = At(fields, 12);
  const std::uint8_t compressionMethod = At(fields, 10);
  const std::uint8_t filterMethod = At(fields, 11);
  Require(fields_.pngWidth >= 1 && fields_.pngHeight >= 1);
  Require(compressionMethod == 0 && filterMethod == 0);
  // Which depths go with which colour type is not looked at.
  Require(IsOneOf<5>(fields_.bitDepth, {1, 2, 4, 8, 16}));
  Require(IsOneOf<5>(fields_.colourType, {kPngGrey, kPngRgb, kPngPalette, kPngGreyAlpha, kPngRgba}));
  Require(fields_.interlaceMethod <= 1);
  (void)CheckedInt32(std::int64_t{AlignedRowBytes(32, fields_.pngWidth)} * fields_.pngHeight);
  rawLength_ = CalculateRawSize(fields_);
}

void cPNGparser::ReadPlte(const PngChunk& chunk) {
  if (fields_.colourType == kPngGrey || fields_.colourType == kPngGreyAlpha) {
    return;
  }
  VerifyCrc(chunk);
  Require(chunk.length % 3 == 0);
  const ByteView data = chunk.Data();
  fields_.palette.assign(data.begin(), data.end());
}

void cPNGparser::ReadTrns(const PngChunk& chunk) {
  if (fields_.colourType == kPngGreyAlpha || fields_.colourType == kPngRgba) {
    return;
  }
  try {
    ReadTransparency(chunk);
  } catch (const std::exception&) {
    // No failure: the image goes on without a transparent colour.
    fields_.transColour = -1;
  }
}

void cPNGparser::ReadTransparency(const PngChunk& chunk) {
  VerifyCrc(chunk);
  const ByteView data = chunk.Data();
  Bytes& transparency = fields_.transparency;
  transparency.assign(data.begin(), data.end());
  switch (fields_.colourType) {
    case kPngGrey:
      if (fields_.bitDepth == 16) {
        fields_.transColour = At(transparency, 1);
      } else {
        // A grey image has no palette yet, so this fails, and no grey becomes transparent.
        Require(fields_.bitDepth != 0);
        fields_.transColour = UnpackSample(fields_, 8 / fields_.bitDepth - 1, At(transparency, 1)).index;
      }
      break;
    case kPngRgb:
      fields_.transColour = At(transparency, 1) << 16 | At(transparency, 3) << 8 | At(transparency, 5);
      break;
    default:
      transparency.resize(std::max<std::size_t>(transparency.size(), 256), 255);
      fields_.transColour = 0;
  }
}

void cPNGparser::ReadIdat(const PngChunk& chunk, const PngChunkSource& source, ImageData& data) const {
  VerifyCrc(chunk);
  const ByteView more = chunk.Data();
  if (data.bytes.empty() && source.KeepsChunks()) {
    data.bytes = more;
  } else {
    if (data.own.empty()) {
      data.own.reserve(static_cast<std::size_t>(source.Available()));
      Append(data.own, data.bytes);
    }
    Append(data.own, more);
    data.bytes = data.own;
  }
  const auto size = static_cast<std::int64_t>(data.bytes.size());
  if (size > data.arraySize) {
    data.arraySize = size + source.Length() / 4;
  }
}

bool cPNGparser::InflateIdat(const ImageData& data) {
  // zlib's uncompress would come first, and the built-in inflate where that reports an error. The built-in one alone
  // gives the result of both: whatever uncompress accepts it decodes to the same bytes.
  InflateStream stream(data.bytes, data.arraySize - static_cast<std::int64_t>(data.bytes.size()), rawLength_, false);
  try {
    BuildDefaultPalette(fields_);
  } catch (const RuntimeFailure&) {
    // Grey of 16 bits keeps a black palette.
  }
  c32bppDIB decoded;
  switch (PngDecoder(fields_, stream).Decode(decoded)) {
    case PngDecodeResult::InflateFailed:
      return false;
    case PngDecodeResult::ConversionFailed:
      host_->DestroyDIB();
      return false;
    case PngDecodeResult::Done:
      break;
  }
  host_->TakeBitmap(decoded, ParserKey());
  const bool hasIndexes = fields_.colourType == kPngGrey || fields_.colourType == kPngPalette;
  host_->Alpha(!hasIndexes || fields_.transColour != -1 || !IsArrayEmptyMark(fields_.transparency), ParserKey());
  host_->ImageType(ImageKind::Png, ParserKey());
  return true;
}

bool cPNGparser::IsDllFunctionAvailable(std::string_view dllName, std::string_view functionName) const {
  return lookup_(dllName, functionName);
}

}  // namespace kelvane
