#include "imaging/GifLzw.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "common/RuntimeFailure.h"

namespace kelvane {

namespace {

constexpr std::int32_t kLeastCodeSize = 2;
constexpr std::int32_t kMostCodeSize = 8;
constexpr std::uint32_t kMostCodeBits = 12;
// How much is decoded ahead of what is read.
constexpr std::size_t kBatch = 16384;
// A string has at most 4096 bytes, and its last piece is written whole.
constexpr std::size_t kRoomForString = 4096 + 8;
// A code and the bits before it in its first byte.
constexpr std::size_t kBytesOfCode = 3;

// The blocks' contents, one behind the other.
Bytes Join(ByteView subBlocks) {
  Bytes data;
  data.reserve(subBlocks.size() + kBytesOfCode);
  while (!subBlocks.empty() && subBlocks[0] != 0) {
    const std::size_t length = std::min<std::size_t>(subBlocks[0], subBlocks.size() - 1);
    Append(data, subBlocks.subspan(1, length));
    subBlocks = subBlocks.subspan(1 + length);
  }
  return data;
}

// Writes the 8 bytes of a piece, the lowest one first.
void Store(std::uint8_t* target, std::uint64_t piece) {
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(target, &piece, sizeof piece);
  } else {
    for (std::size_t i = 0; i < sizeof piece; ++i) {
      target[i] = static_cast<std::uint8_t>(piece >> 8 * i);
    }
  }
}

}  // namespace

GifLzw::GifLzw(std::int32_t codeSize, ByteView subBlocks) : data_(Join(subBlocks)), dataBits_(data_.size() * 8) {
  if (codeSize < kLeastCodeSize || codeSize > kMostCodeSize) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  data_.resize(data_.size() + kBytesOfCode);
  clearCode_ = 1U << codeSize;
  for (std::uint32_t code = 0; code < clearCode_; ++code) {
    strings_[code] = {.lastPiece = code, .before = 0, .length = 1, .first = static_cast<std::uint8_t>(code)};
  }
  Clear(at_);
}

bool GifLzw::Read(std::span<std::uint8_t> target) {
  if (filled_ - read_ < target.size()) {
    DecodeAhead(target.size() + kBatch);
  }
  if (filled_ - read_ < target.size()) {
    return false;
  }
  std::memcpy(target.data(), decoded_.data() + read_, target.size());
  read_ += target.size();
  return true;
}

// Forgets all strings but those of one index.
void GifLzw::Clear(Progress& at) const {
  at.codeBits = static_cast<std::uint32_t>(std::bit_width(clearCode_));
  at.nextCode = clearCode_ + 2;
  at.previous = kNone;
}

// Decodes until at least `enough` indexes can be read, or to the end.
void GifLzw::DecodeAhead(std::size_t enough) {
  if (decoded_.size() < enough + kRoomForString) {
    decoded_.resize(enough + kRoomForString);
  }
  std::memmove(decoded_.data(), decoded_.data() + read_, filled_ - read_);
  filled_ -= read_;
  read_ = 0;
  // A copy, which the compiler can keep in registers.
  Progress at = at_;
  at.target = decoded_.data() + filled_;
  const std::uint8_t* const end = decoded_.data() + enough;
  while (!ended_ && at.target < end) {
    ended_ = !DecodeCode(at);
  }
  filled_ = static_cast<std::size_t>(at.target - decoded_.data());
  at_ = at;
}

// False at the end.
inline bool GifLzw::DecodeCode(Progress& at) {
  if (at.bitPosition + at.codeBits > dataBits_) {
    return false;
  }
  const std::uint8_t* const source = data_.data() + at.bitPosition / 8;
  const std::uint32_t bits = source[0] | std::uint32_t{source[1]} << 8 | std::uint32_t{source[2]} << 16;
  const std::uint32_t code = bits >> at.bitPosition % 8 & ((1U << at.codeBits) - 1);
  at.bitPosition += at.codeBits;
  if (code == clearCode_) {
    Clear(at);
    return true;
  }
  if (at.previous == kNone) {
    // Only single indexes are known.
    if (code > clearCode_) {
      return false;
    }
  } else {
    // The next code to be given out stands for the previous string and its own first index.
    const bool isNext = code == at.nextCode && at.nextCode < kMostCodes;
    if (code == clearCode_ + 1 || (code >= at.nextCode && !isNext)) {
      return false;
    }
    if (at.nextCode < kMostCodes) {
      AddString(at, strings_[isNext ? at.previous : code].first);
    }
  }
  Emit(at, code);
  at.previous = code;
  return true;
}

inline void GifLzw::AddString(Progress& at, std::uint8_t last) {
  const String& prefix = strings_[at.previous];
  String& added = strings_[at.nextCode];
  const std::uint32_t inPiece = prefix.length % kPieceBytes;
  added.lastPiece = (inPiece == 0 ? 0 : prefix.lastPiece) | std::uint64_t{last} << 8 * inPiece;
  added.before = static_cast<std::uint16_t>(inPiece == 0 ? at.previous : prefix.before);
  added.length = static_cast<std::uint16_t>(prefix.length + 1);
  added.first = prefix.first;
  ++at.nextCode;
  if (at.nextCode == 1U << at.codeBits && at.codeBits < kMostCodeBits) {
    ++at.codeBits;
  }
}

inline void GifLzw::Emit(Progress& at, std::uint32_t code) const {
  const String* string = &strings_[code];
  const std::size_t length = string->length;
  std::size_t piece = (length - 1) / kPieceBytes * kPieceBytes;
  Store(at.target + piece, string->lastPiece);
  while (piece > 0) {
    piece -= kPieceBytes;
    string = &strings_[string->before];
    Store(at.target + piece, string->lastPiece);
  }
  at.target += length;
}

}  // namespace kelvane
