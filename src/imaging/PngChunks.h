// Where the chunks of a PNG come from: a file, read as far as it is needed, or a span of bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>

#include "common/Bytes.h"

namespace kelvane {

struct PngChunk {
  std::int32_t length = 0;
  // `length` + 4 bytes, which the CRC is over.
  ByteView typeAndData;
  // The data and what else can be addressed behind it: nothing in a file, the rest of the span in a stream. A field
  // that lies behind the data of a chunk too short for it is read from there.
  ByteView fields;
  std::uint32_t storedCrc = 0;

  [[nodiscard]] ByteView Data() const { return typeAndData.subspan(4); }
  // The type, with its first letter highest.
  [[nodiscard]] std::uint32_t Type() const;
};

// The type of four letters as PngChunk::Type gives it.
constexpr std::uint32_t PngChunkType(const char (&letters)[5]) {
  std::uint32_t type = 0;
  for (int i = 0; i < 4; ++i) {
    type = type << 8 | static_cast<std::uint8_t>(letters[i]);
  }
  return type;
}

// Whether the first 8 of `bytes` are the signature, and there are at least 58.
[[nodiscard]] bool HasPngSignature(ByteView bytes);

class PngChunkSource {
 public:
  virtual ~PngChunkSource() = default;

  // The 4 bytes of the next chunk's length. Failure 9 where the source doesn't reach so far.
  virtual std::int32_t ReadLength() = 0;
  // The rest of a chunk of that length, valid until the next call. Failure 9 where the source doesn't reach so far.
  virtual PngChunk ReadRest(std::int32_t length) = 0;
  // What `used`, the count of bytes that chunks take, begins with, and what it must not exceed.
  [[nodiscard]] virtual std::int64_t FirstUsed() const = 0;
  [[nodiscard]] virtual std::int64_t Length() const = 0;
  // The bytes that there are.
  [[nodiscard]] virtual std::int64_t Available() const = 0;
  // Whether the bytes of a chunk stay where they are until the source is gone.
  [[nodiscard]] virtual bool KeepsChunks() const = 0;
};

// Reads behind the end of the file give zeros.
class PngFileSource : public PngChunkSource {
 public:
  // False in Opened() for what is no file that can be read.
  explicit PngFileSource(const std::filesystem::path& path);

  [[nodiscard]] bool Opened() const { return opened_; }
  // A file of fewer than 56 bytes is not looked at.
  bool HasSignature();

  std::int32_t ReadLength() override;
  PngChunk ReadRest(std::int32_t length) override;
  [[nodiscard]] std::int64_t FirstUsed() const override { return 9; }
  [[nodiscard]] std::int64_t Length() const override { return length_; }
  [[nodiscard]] std::int64_t Available() const override { return length_ - 1; }
  [[nodiscard]] bool KeepsChunks() const override { return false; }

 private:
  void Read(std::span<std::uint8_t> bytes);

  std::ifstream file_;
  bool opened_ = false;
  std::int64_t length_ = 0;  // the file's and 1 more
  Bytes chunkData_;
};

class PngStreamSource : public PngChunkSource {
 public:
  // The chunks in `streamLength` bytes from the beginning of `bytes`, which may hold more or fewer.
  PngStreamSource(ByteView bytes, std::int32_t streamLength);

  [[nodiscard]] bool HasSignature() const;

  std::int32_t ReadLength() override;
  PngChunk ReadRest(std::int32_t length) override;
  // One less than the signature's length: the last chunk may lack a byte.
  [[nodiscard]] std::int64_t FirstUsed() const override { return 7; }
  [[nodiscard]] std::int64_t Length() const override { return streamLength_; }
  [[nodiscard]] std::int64_t Available() const override { return std::ssize(chunkData_); }
  [[nodiscard]] bool KeepsChunks() const override { return true; }

 private:
  ByteView bytes_;
  ByteView chunkData_;
  std::int32_t streamLength_;
  std::int64_t position_ = 8;
};

}  // namespace kelvane
