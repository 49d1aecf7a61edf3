#include "container/GapBuffer.h"

#include <algorithm>
#include <cstring>

namespace kelvane {

namespace {

// How much wider than needed a gap is made.
constexpr std::size_t kSpareGap = std::size_t{1} << 16;

}  // namespace

void GapBuffer::RequireInside(std::int64_t position, std::int64_t length) const {
  if (position < 0 || length < 0 || position > Size() - length) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
}

void GapBuffer::Read(std::int64_t position, std::span<std::uint8_t> target) const {
  RequireInside(position, static_cast<std::int64_t>(target.size()));
  const std::size_t at = static_cast<std::size_t>(position);
  const std::size_t before = at < gapAt_ ? std::min(target.size(), gapAt_ - at) : 0;
  std::copy_n(bytes_.data() + at, before, target.data());
  std::copy_n(bytes_.data() + at + before + gapSize_, target.size() - before, target.data() + before);
}

void GapBuffer::Write(std::int64_t position, ByteView source) {
  RequireInside(position, static_cast<std::int64_t>(source.size()));
  const std::size_t at = static_cast<std::size_t>(position);
  const std::size_t before = at < gapAt_ ? std::min(source.size(), gapAt_ - at) : 0;
  std::copy_n(source.data(), before, bytes_.data() + at);
  std::copy_n(source.data() + before, source.size() - before, bytes_.data() + at + before + gapSize_);
}

ByteView GapBuffer::Look(std::int64_t position, std::int64_t length) const {
  if (position < 0 || length < 0 || position > Size() - length) {
    return {};
  }
  const std::size_t at = static_cast<std::size_t>(position);
  const std::size_t count = static_cast<std::size_t>(length);
  if (at + count <= gapAt_) {
    return {bytes_.data() + at, count};
  }
  return at >= gapAt_ ? ByteView(bytes_.data() + at + gapSize_, count) : ByteView();
}

void GapBuffer::MoveGapTo(std::size_t position) {
  if (gapSize_ > 0 && position < gapAt_) {
    std::memmove(bytes_.data() + position + gapSize_, bytes_.data() + position, gapAt_ - position);
  } else if (gapSize_ > 0 && position > gapAt_) {
    std::memmove(bytes_.data() + gapAt_, bytes_.data() + gapAt_ + gapSize_, position - gapAt_);
  }
  gapAt_ = position;
}

void GapBuffer::RequireGap(std::size_t size) {
  if (gapSize_ >= size) {
    return;
  }
  const std::size_t more = size - gapSize_ + kSpareGap;
  const std::size_t behind = bytes_.size() - gapAt_ - gapSize_;
  bytes_.resize(bytes_.size() + more);
  std::memmove(bytes_.data() + bytes_.size() - behind, bytes_.data() + gapAt_ + gapSize_, behind);
  gapSize_ += more;
}

void GapBuffer::Splice(std::int64_t position, std::int64_t removed, ByteView inserted) {
  RequireInside(position, removed);
  MoveGapTo(static_cast<std::size_t>(position));
  // What is removed joins the gap only once there is room: a failure for memory leaves the content as it was.
  const std::size_t joining = static_cast<std::size_t>(removed);
  RequireGap(inserted.size() > joining ? inserted.size() - joining : 0);
  gapSize_ += joining;
  std::copy(inserted.begin(), inserted.end(), bytes_.begin() + position);
  gapAt_ += inserted.size();
  gapSize_ -= inserted.size();
}

void GapBuffer::Grow(std::int64_t size) {
  MoveGapTo(static_cast<std::size_t>(Size()));
  bytes_.resize(gapAt_);
  bytes_.resize(static_cast<std::size_t>(size));
  gapAt_ = bytes_.size();
  gapSize_ = 0;
}

std::array<ByteView, 2> GapBuffer::Parts() const {
  const ByteView all(bytes_);
  return {all.first(gapAt_), all.subspan(gapAt_ + gapSize_)};
}

const Bytes& GapBuffer::Whole() {
  Grow(Size());
  return bytes_;
}

}  // namespace kelvane
