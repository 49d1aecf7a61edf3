// The open file.
//
// Opening reads the whole file into memory; reads, patches and splices work on that image, and Close writes it back if
// it changed, staged and renamed into place. So the name holds either the old file or the new one at any time, and
// procedures that are nested in an open operation see what was changed before them.
#pragma once

#include <cstdint>
#include <filesystem>

#include "common/Bytes.h"
#include "container/GapBuffer.h"

namespace kelvane {

class RcoFile {
 public:
  RcoFile() = default;
  // Opens at once; see Open.
  explicit RcoFile(const std::filesystem::path& path) { Open(path); }
  RcoFile(const RcoFile&) = delete;
  RcoFile& operator=(const RcoFile&) = delete;
  // Closes a file that is still open, as the end of a failed operation: what was changed so far is written, and a
  // failure to write it can't be told any more.
  ~RcoFile();

  // Reads `path` whole; what was open before is closed first. The position becomes 0. Failures: 53, 76, 75, 70, 57, 7.
  void Open(const std::filesystem::path& path);
  // Writes the image back if it changed, and closes. The file counts as closed even if writing fails. Failures: 70, 75,
  // 76, 61, 57. Does nothing on a closed file.
  void Close();
  // Closes without writing what changed.
  void Discard();
  // Writes the image back if it changed and stays open. After a failure the file is closed.
  void Flush();
  [[nodiscard]] bool IsOpen() const { return open_; }
  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

  // All that follows is failure 52 on a closed file. Positions are byte offsets from 0; a negative one is failure 5.

  [[nodiscard]] std::int64_t Length() const;
  [[nodiscard]] std::int64_t Position() const { return position_; }
  void Seek(std::int64_t position);
  // Moves the position by `count` bytes, backwards too.
  void Skip(std::int64_t count) { Seek(position_ + count); }

  // Reading moves the position behind what was asked for. Bytes beyond the end of the file read as zeros.
  void Read(std::span<std::uint8_t> target);
  // `count` bytes; failure 9 for a count below 1, 7 for one above kMaxArrayBytes.
  [[nodiscard]] Bytes ReadBytes(std::int64_t count);
  [[nodiscard]] std::int32_t ReadI32();
  [[nodiscard]] std::int16_t ReadI16();
  [[nodiscard]] std::int32_t ReadI32At(std::int64_t position);
  [[nodiscard]] std::int16_t ReadI16At(std::int64_t position);
  // `target.size()` longs from `position` on.
  void ReadLongsAt(std::int64_t position, std::span<std::int32_t> target);

  // The bytes as they lie in memory, until the next change; empty where they leave the file or aren't in one piece.
  // Doesn't move the position.
  [[nodiscard]] ByteView Look(std::int64_t position, std::int64_t length) const;

  // Writing moves the position behind what was written; beyond the end the file grows, with zeros in a gap. Failure 7
  // for a gap that no memory is spent on (see kMaxArrayBytes).
  void Write(ByteView bytes);
  void WriteI32(std::int32_t value);
  void WriteI32At(std::int64_t position, std::int32_t value);
  void WriteI16At(std::int64_t position, std::int16_t value);
  void WriteLongsAt(std::int64_t position, std::span<const std::int32_t> values);

  // Replaces `removed` bytes at `position` by `inserted`; what lies behind moves. The part to remove is cut at the
  // file's end; a position behind it fills the gap with zeros first, with failure 7 as above. Doesn't move the
  // position.
  void Splice(std::int64_t position, std::int64_t removed, ByteView inserted);
  // Replaces the whole content.
  void Assign(Bytes content);

  // The whole content, as long as nothing is written or spliced.
  [[nodiscard]] const Bytes& Image();

 private:
  void RequireOpen() const;

  std::filesystem::path path_;
  GapBuffer image_;
  std::int64_t position_ = 0;
  bool open_ = false;
  bool changed_ = false;
};

}  // namespace kelvane
