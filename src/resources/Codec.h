// The wrapper in which images and models are stored deflated: two head bytes and a raw deflate stream. Written heads
// are always 78 DA; read heads are passed over, and so is whatever stands behind the end of the stream.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

#include "common/Bytes.h"
#include "common/Int16.h"

namespace kelvane {

// What unpacks comes out in chunks of this many bytes; only the last one may be shorter.
inline constexpr std::int32_t kInflateChunk = 65536;

// Takes the chunks of a stream in their order. The bytes are there for the time of the call only.
using ChunkSink = std::function<void(ByteView)>;

// Whether data were never compressed: they begin with "MI" or "OM", as a plain image or model does.
[[nodiscard]] bool IsPlainData(ByteView data);

// Inflates a wrapper chunk by chunk into `sink`. False where not even one chunk came out: bad data, or an empty stream.
// True as soon as one did, also when the data behind it turn out bad or cut off. Failures: 9 for a wrapper below 3
// bytes, 6 where more than 2 GiB come out, and those of `sink`.
bool InflateChunks(ByteView wrapper, const ChunkSink& sink);

// `source` deflated into a wrapper, at a level of zlib. Nothing where zlib refuses the level or the source is empty.
// The stream gets as much room as the source takes: one that doesn't shrink comes out cut off at that length and counts
// as done, two bytes longer than the source.
[[nodiscard]] std::optional<Bytes> DeflateToWrapper(ByteView source, Int16 level);

// Unpacks `srcPath` into `dstPath`: plain data are copied as they are, a wrapper is inflated as by InflateChunks, and a
// false result leaves an empty file. Failures: 70 where both are the same file, which stays as it was; 9 for a source
// below 3 bytes that isn't plain, with an empty file left; 6, and those of files.
bool DecompressFile(const std::filesystem::path& srcPath, const std::filesystem::path& dstPath);

// The same for a source whose content is at hand: `source` is what `srcPath` holds. `also` is handed every chunk beside
// the file; it gets none where plain data are copied.
bool DecompressHeldFile(ByteView source, const std::filesystem::path& srcPath, const std::filesystem::path& dstPath,
                        const ChunkSink& also);

// The content of `srcPath` deflated into a wrapper. Nothing for a source below 10 bytes and where zlib refuses; nothing
// too for any failure on the way.
[[nodiscard]] std::optional<Bytes> DeflateFile(const std::filesystem::path& srcPath, Int16 level);

// Deflates `srcPath` into `dstPath`, which may be the same file. False, with nothing touched, for a source below 10
// bytes and where zlib refuses; false too for any failure on the way, which leaves a file that is both as it was.
bool CompressFile(const std::filesystem::path& srcPath, const std::filesystem::path& dstPath, Int16 level);

}  // namespace kelvane
