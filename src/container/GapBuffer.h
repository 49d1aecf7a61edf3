// A byte buffer in which inserting and removing costs what lies between the place and the last one.
//
// Replacing many resources from the front of a file to its end so moves every byte once and not once a resource.
#pragma once

#include <array>
#include <cstdint>

#include "common/Bytes.h"

namespace kelvane {

class GapBuffer {
 public:
  GapBuffer() = default;
  explicit GapBuffer(Bytes content) : bytes_(std::move(content)), gapAt_(bytes_.size()) {}

  [[nodiscard]] std::int64_t Size() const { return static_cast<std::int64_t>(bytes_.size() - gapSize_); }

  // All that follows but Look takes ranges that lie inside, and places from 0 to Size(); anything else is failure 9.

  void Read(std::int64_t position, std::span<std::uint8_t> target) const;
  void Write(std::int64_t position, ByteView source);
  // The range as it lies in memory, until the next change; empty where it leaves the content or the gap lies in it.
  [[nodiscard]] ByteView Look(std::int64_t position, std::int64_t length) const;
  // Replaces `removed` bytes at `position` by `inserted`, which must not lie in this buffer.
  void Splice(std::int64_t position, std::int64_t removed, ByteView inserted);
  // Appends zeros up to a size that isn't below the present one.
  void Grow(std::int64_t size);

  // The content as the parts before and behind the gap.
  [[nodiscard]] std::array<ByteView, 2> Parts() const;
  // The content in one piece; closes the gap.
  [[nodiscard]] const Bytes& Whole();

 private:
  void RequireInside(std::int64_t position, std::int64_t length) const;
  void MoveGapTo(std::size_t position);
  void RequireGap(std::size_t size);

  Bytes bytes_;  // the content with a gap in it
  std::size_t gapAt_ = 0;
  std::size_t gapSize_ = 0;
};

}  // namespace kelvane
