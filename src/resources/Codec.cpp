#include "resources/Codec.h"

#include <array>
#include <memory>
#include <span>
#include <system_error>
#include <zlib.h>

#include "common/FileWriter.h"
#include "common/Files.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::uint8_t, 2> kWrittenHead = {0x78, 0xDA};
constexpr int kRawStream = -15;  // window bits of a stream without a frame of its own
constexpr int kMemoryLevel = 8;
// The first two bytes of plain data as a little-endian value.
constexpr std::int16_t kPlainImage = 0x494D;  // "MI"
constexpr std::int16_t kPlainModel = 0x4D4F;  // "OM"
constexpr std::int64_t kSmallestSource = 10;

// Whether making `dstPath` anew takes away what `srcPath` holds. A link to the source is replaced and takes nothing.
bool WouldReplaceSource(const fs::path& srcPath, const fs::path& dstPath) {
  std::error_code error;
  return fs::equivalent(srcPath, dstPath, error) && !fs::is_symlink(dstPath, error);
}

// A zlib stream that is ended with its scope. zlib takes input through a pointer that isn't const and leaves it alone.
class Stream {
 public:
  using End = int (*)(z_stream*);

  Stream(ByteView input, End end) : end_(end) {
    stream_.next_in = const_cast<std::uint8_t*>(input.data());
    stream_.avail_in = static_cast<uInt>(input.size());
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { end_(&stream_); }

  z_stream* operator->() { return &stream_; }
  z_stream* Get() { return &stream_; }

  void SetOutput(std::span<std::uint8_t> output) {
    stream_.next_out = output.data();
    stream_.avail_out = static_cast<uInt>(output.size());
  }

 private:
  z_stream stream_{};
  End end_;
};

}  // namespace

bool IsPlainData(ByteView data) {
  if (data.size() < kWrittenHead.size()) {
    return false;
  }
  const std::int16_t start = ReadI16(data, 0);
  return start == kPlainImage || start == kPlainModel;
}

bool InflateChunks(ByteView wrapper, const ChunkSink& sink) {
  if (wrapper.size() <= kWrittenHead.size()) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  // Not filled first: most images are far smaller than a chunk.
  const auto memory = std::make_unique_for_overwrite<std::uint8_t[]>(kInflateChunk);
  const std::span<std::uint8_t> output(memory.get(), kInflateChunk);
  Stream stream(wrapper.subspan(kWrittenHead.size()), inflateEnd);
  // An init that fails shows as the first inflate's failure.
  inflateInit2(stream.Get(), kRawStream);
  stream.SetOutput(output);
  std::int32_t written = 0;
  bool result = false;
  for (;;) {
    if (inflate(stream.Get(), Z_NO_FLUSH) < 0) {
      return result;
    }
    const std::int64_t got = static_cast<std::int64_t>(stream->total_out) - written;
    if (got < 1) {
      return result;
    }
    sink(output.first(static_cast<std::size_t>(got)));
    stream.SetOutput(output);
    result = true;
    // By a whole chunk even behind a short one, which makes `got` negative in the next pass and so ends the loop.
    written = AddInt32(written, kInflateChunk);
  }
}

std::optional<Bytes> DeflateToWrapper(ByteView source, Int16 level) {
  Bytes wrapper(kWrittenHead.begin(), kWrittenHead.end());
  wrapper.resize(kWrittenHead.size() + source.size());
  const std::span<std::uint8_t> room = std::span(wrapper).subspan(kWrittenHead.size());
  Stream stream(source, deflateEnd);
  if (deflateInit2(stream.Get(), level.Int(), Z_DEFLATED, kRawStream, kMemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
    return std::nullopt;
  }
  stream.SetOutput(room);
  // One call: with its room full it leaves the stream cut off and answers Z_OK.
  if (deflate(stream.Get(), Z_FINISH) < 0 || stream->avail_out >= room.size()) {
    return std::nullopt;
  }
  wrapper.resize(wrapper.size() - stream->avail_out);
  return wrapper;
}

bool DecompressFile(const fs::path& srcPath, const fs::path& dstPath) {
  // The source is open while the destination is deleted, and would be lost with it.
  if (std::error_code error; fs::equivalent(srcPath, dstPath, error)) {
    throw RuntimeFailure(FailureCode::PermissionDenied);
  }
  return DecompressHeldFile(ReadWholeFile(srcPath), srcPath, dstPath, {});
}

bool DecompressHeldFile(ByteView source, const fs::path& srcPath, const fs::path& dstPath, const ChunkSink& also) {
  if (IsPlainData(source)) {
    CopyWholeFile(srcPath, dstPath);
    return true;
  }
  FileWriter destination;
  destination.Replace(dstPath);
  const bool result = InflateChunks(source, [&](ByteView chunk) {
    destination.Write(chunk);
    if (also) {
      also(chunk);
    }
  });
  destination.Close();
  return result;
}

std::optional<Bytes> DeflateFile(const fs::path& srcPath, Int16 level) {
  try {
    if (FileLength(srcPath) < kSmallestSource) {
      return std::nullopt;
    }
    return DeflateToWrapper(ReadWholeFile(srcPath), level);
  } catch (...) {
    (void)CurrentFailure();  // what is no run-time failure goes on
    return std::nullopt;
  }
}

bool CompressFile(const fs::path& srcPath, const fs::path& dstPath, Int16 level) {
  const std::optional<Bytes> wrapper = DeflateFile(srcPath, level);
  if (!wrapper) {
    return false;
  }
  try {
    if (WouldReplaceSource(srcPath, dstPath)) {
      SaveStaged(dstPath, *wrapper);
      return true;
    }
    FileWriter destination;
    destination.Replace(dstPath);
    destination.Write(*wrapper);
    destination.Close();
    return true;
  } catch (...) {
    (void)CurrentFailure();
    return false;
  }
}

}  // namespace kelvane
