// The first bytes of the open file as the write engine patches them.
#pragma once

#include <cstdint>
#include <vector>

#include "common/Int16.h"
#include "container/RcoFile.h"

namespace kelvane {

// Fields in front of `end`, a file offset; anything that reaches `end` is failure 9. What is written can be taken back,
// for a change of the file that is given up before it was made.
class FileHead {
 public:
  FileHead(RcoFile& file, std::int64_t end) : file_(file), end_(end) {}

  void SetEnd(std::int64_t end) { end_ = end; }

  [[nodiscard]] std::uint8_t ReadU8(std::int64_t position) const;
  [[nodiscard]] std::int16_t ReadI16(std::int64_t position) const;
  [[nodiscard]] std::int32_t ReadI32(std::int64_t position) const;
  // The bytes as they lie in memory, until the next change; empty where they reach `end` or aren't in one piece.
  [[nodiscard]] ByteView Look(std::int64_t position, std::int64_t length) const;
  void WriteI16(std::int64_t position, std::int16_t value);
  void WriteI32(std::int64_t position, std::int32_t value);
  // Adds to the 32-bit value at `position`; failure 6 where the sum doesn't fit.
  void AddI32(std::int64_t position, std::int32_t delta);

  // Puts back what stood there before the first write through this object.
  void TakeBack();

 private:
  struct Patch {
    std::int64_t position;
    Bytes before;
  };

  void RequireInside(std::int64_t position, std::int64_t length) const;
  void Remember(std::int64_t position, std::int64_t length);

  RcoFile& file_;
  std::int64_t end_;
  std::vector<Patch> patches_;
  std::int64_t lengthBefore_ = 0;  // of the file, before the first patch
};

}  // namespace kelvane
