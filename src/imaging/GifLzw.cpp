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
constexpr std::size_t kRoomForString = 4096 + 4;
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

}  // namespace

GifLzw::GifLzw(std::int32_t codeSize, ByteView subBlocks) : data_(Join(subBlocks)), dataBits_(data_.size() * 8) {
  if (codeSize < kLeastCodeSize || codeSize > kMostCodeSize) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  data_.resize(data_.size() + kBytesOfCode);
  clearCode_ = 1U << codeSize;
  for (std::uint32_t code = 0; code < clearCode_; ++code) {
    const auto index = static_cast<std::uint8_t>(code);
    strings_[code] = {.lastPiece = {index}, .before = 0, .length = 1};
    firsts_[code] = index;
  }
  Clear();
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
void GifLzw::Clear() {
  codeBits_ = static_cast<std::uint32_t>(std::countr_zero(clearCode_)) + 1;
  nextCode_ = clearCode_ + 2;
  previous_ = kNone;
}

// Decodes until at least `enough` indexes can be read, or to the end.
void GifLzw::DecodeAhead(std::size_t enough) {
  if (decoded_.size() < enough + kRoomForString) {
    decoded_.resize(enough + kRoomForString);
  }
  std::memmove(decoded_.data(), decoded_.data() + read_, filled_ - read_);
  filled_ -= read_;
  read_ = 0;
  while (!ended_ && filled_ < enough) {
    ended_ = !DecodeCode();
  }
}

// False at the end.
bool GifLzw::DecodeCode() {
  if (bitPosition_ + codeBits_ > dataBits_) {
    return false;
  }
  const std::uint8_t* source = data_.data() + bitPosition_ / 8;
  const std::uint32_t bits = source[0] | std::uint32_t{source[1]} << 8 | std::uint32_t{source[2]} << 16;
  const std::uint32_t code = bits >> bitPosition_ % 8 & ((1U << codeBits_) - 1);
  bitPosition_ += codeBits_;
  if (code == clearCode_) {
    Clear();
    return true;
  }
  // The next code to be given out stands for the previous string and its own first index.
  const bool isKnown = code < (previous_ == kNone ? clearCode_ : nextCode_) && code != clearCode_ + 1;
  const bool isNext = previous_ != kNone && code == nextCode_ && nextCode_ < kMostCodes;
  if (!isKnown && !isNext) {
    return false;
  }
  if (previous_ != kNone && nextCode_ < kMostCodes) {
    AddString(previous_, firsts_[isNext ? previous_ : code]);
  }
  Emit(code);
  previous_ = code;
  return true;
}

void GifLzw::AddString(std::uint32_t prefix, std::uint8_t last) {
  String added = strings_[prefix];
  const std::size_t inPiece = added.length % added.lastPiece.size();
  if (inPiece == 0) {
    added.before = static_cast<std::uint16_t>(prefix);
  }
  added.lastPiece[inPiece] = last;
  ++added.length;
  strings_[nextCode_] = added;
  firsts_[nextCode_] = firsts_[prefix];
  ++nextCode_;
  if (nextCode_ == 1U << codeBits_ && codeBits_ < kMostCodeBits) {
    ++codeBits_;
  }
}

void GifLzw::Emit(std::uint32_t code) {
  const std::size_t length = strings_[code].length;
  std::uint8_t* target = decoded_.data() + filled_;
  for (std::size_t piece = (length - 1) / 4 * 4;; piece -= 4) {
    std::memcpy(target + piece, strings_[code].lastPiece.data(), 4);
    if (piece == 0) {
      break;
    }
    code = strings_[code].before;
  }
  filled_ += length;
}

}  // namespace kelvane
