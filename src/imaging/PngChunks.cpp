#include "imaging/PngChunks.h"

#include <algorithm>
#include <array>
#include <limits>

#include "common/Files.h"
#include "imaging/modParsers.h"

namespace kelvane {
namespace {

constexpr std::int64_t kSignatureElements = 58;
constexpr std::int64_t kSignatureBytes = 8;

}  // namespace

std::uint32_t PngChunk::Type() const {
  return static_cast<std::uint32_t>(SwapLong(ReadI32(typeAndData, 0)));
}

bool HasPngSignature(ByteView bytes) {
  return static_cast<std::int64_t>(bytes.size()) >= kSignatureElements && ReadI32(bytes, 0) == 0x474E5089 &&
         ReadI32(bytes, 4) == 0x0A1A0A0D;
}

PngFileSource::PngFileSource(const std::filesystem::path& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error || size >= static_cast<std::uintmax_t>(std::numeric_limits<std::int32_t>::max())) {
    return;
  }
  file_.open(path, std::ios::binary);
  opened_ = file_.is_open();
  length_ = static_cast<std::int64_t>(size) + 1;
}

bool PngFileSource::HasSignature() {
  std::array<std::uint8_t, kSignatureElements> first{};
  if (length_ <= kSignatureElements - 2) {
    Read(std::span(first).first(kSignatureBytes));
    return true;
  }
  Read(first);
  file_.clear();
  file_.seekg(kSignatureBytes);
  return HasPngSignature(first);
}

void PngFileSource::Read(std::span<std::uint8_t> bytes) {
  std::ranges::fill(bytes, std::uint8_t{0});
  file_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::int32_t PngFileSource::ReadLength() {
  std::array<std::uint8_t, 4> bytes;
  Read(bytes);
  return SwapLong(ReadI32(bytes, 0));
}

PngChunk PngFileSource::ReadRest(std::int32_t length) {
  const std::size_t size = static_cast<std::size_t>(length) + 4;
  chunkData_.resize(size + 4);
  Read(chunkData_);
  PngChunk chunk;
  chunk.length = length;
  chunk.typeAndData = ByteView(chunkData_).first(size);
  chunk.fields = chunk.Data();
  chunk.storedCrc = static_cast<std::uint32_t>(SwapLong(ReadI32(chunkData_, static_cast<std::int64_t>(size))));
  return chunk;
}

PngStreamSource::PngStreamSource(ByteView bytes, std::int32_t streamLength)
    : bytes_(bytes),
      chunkData_(bytes.first(std::min(bytes.size(), static_cast<std::size_t>(streamLength)))),
      streamLength_(streamLength) {}

bool PngStreamSource::HasSignature() const {
  return HasPngSignature(chunkData_);
}

std::int32_t PngStreamSource::ReadLength() {
  return SwapLong(ReadI32(chunkData_, position_));
}

PngChunk PngStreamSource::ReadRest(std::int32_t length) {
  const auto dataPosition = static_cast<std::size_t>(position_ + 8);
  const std::size_t crcPosition = dataPosition + static_cast<std::size_t>(length);
  if (crcPosition > chunkData_.size()) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  PngChunk chunk;
  chunk.length = length;
  chunk.typeAndData = chunkData_.subspan(dataPosition - 4, static_cast<std::size_t>(length) + 4);
  chunk.fields = chunkData_.subspan(dataPosition);
  // The last byte of the CRC may lie behind the span, and then behind the array too.
  for (std::size_t i = crcPosition; i < crcPosition + 4; ++i) {
    chunk.storedCrc = chunk.storedCrc << 8 | (i < bytes_.size() ? bytes_[i] : std::uint8_t{0});
  }
  position_ += std::int64_t{length} + 12;
  return chunk;
}

}  // namespace kelvane
