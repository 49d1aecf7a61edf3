// Whole files by path, and the test for a file's existence.
#pragma once

#include <cstdint>
#include <filesystem>

#include "common/Bytes.h"

namespace kelvane {

// Date of a file as it is compared by the watcher: nanoseconds of the file system's clock.
using FileDate = std::int64_t;

// Whether a file or folder of that path is there. The last part of the path may hold the wildcards `*` and `?`, and is
// matched as such. With `requireContent` its length must also be at least 1 byte. Never fails.
[[nodiscard]] bool FileExists(const std::filesystem::path& path, bool requireContent = false);

// The file's bytes. Failures: 53 where there is none, 75 for a folder, 70, 57, 7.
[[nodiscard]] Bytes ReadWholeFile(const std::filesystem::path& path);

// The first `count` bytes of a file, fewer where it is shorter. Failures: 53 where there is none, 75 for a folder, 70,
// 57.
[[nodiscard]] Bytes ReadFileStart(const std::filesystem::path& path, std::size_t count);

// Replaces what `path` held by `bytes`, in place: for files that are the program's or the user's exports. A file that a
// user cannot get again goes through SaveStaged. Failures: 76 where the folder is missing, 75, 70, 61, 57.
void WriteWholeFile(const std::filesystem::path& path, ByteView bytes);

// Writes `bytes` from the file's start on, making the file if it isn't there. What a longer file holds behind them
// stays. Failures: 76 where the folder is missing, 75, 70, 61, 57.
void OverwriteFile(const std::filesystem::path& path, ByteView bytes);

// Length in bytes; failure 53 where there is no such file.
[[nodiscard]] std::int64_t FileLength(const std::filesystem::path& path);

// Copies a file over whatever stands at `to`. Failures: 53, 70, 75, 61, 57.
void CopyWholeFile(const std::filesystem::path& from, const std::filesystem::path& to);

// Deletes a file; failure 53 where there is none, 70 or 75 where it can't be.
void DeleteFile(const std::filesystem::path& path);
// Deletes the file of that very name if there is one, before another is made in its place. Failures: 70, 75 for a
// folder.
void DeleteFileIfThere(const std::filesystem::path& path);
// Deletes a file if it is there; never fails. For temporary files.
void DeleteFileQuietly(const std::filesystem::path& path) noexcept;

// The date of last change; failure 53 where there is no such file.
[[nodiscard]] FileDate DateOfFile(const std::filesystem::path& path);

// Writes `bytes` into a sibling temporary file, flushes it to disk and renames it over `path`, so that whatever happens
// `path` holds either its old content or all of the new one. Permissions are kept and a symbolic link is followed. On a
// failure the temporary file is gone and `path` is as it was. Failures: 70 (a protected file too), 75, 76, 61, 57.
void SaveStaged(const std::filesystem::path& path, ByteView bytes);
// The same for a content in several parts.
void SaveStaged(const std::filesystem::path& path, std::span<const ByteView> parts);

// Copies `from` to `to` the same way, with the permissions of `from`: `to` holds all of it or isn't there. For backups.
void CopyDurably(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace kelvane
