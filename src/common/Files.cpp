#include "common/Files.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "common/Encoding.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

namespace fs = std::filesystem;

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void ThrowErrno(int error) {
  throw FailureFromErrno(error);
}

FileHandle OpenForReading(const fs::path& path) {
  std::error_code error;
  if (fs::is_directory(path, error)) {
    throw RuntimeFailure(FailureCode::PathAccessError);
  }
  FileHandle file(std::fopen(path.c_str(), "rb"));
  if (!file) {
    ThrowErrno(errno);
  }
  return file;
}

// `*` any run, `?` any one character; both texts are UTF-8.
bool MatchesWildcard(std::u16string_view name, std::u16string_view pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t starAt = std::u16string_view::npos;
  std::size_t resumeAt = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      starAt = p++;
      resumeAt = n;
    } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[n])) {
      ++p;
      ++n;
    } else if (starAt != std::u16string_view::npos) {
      p = starAt + 1;
      n = ++resumeAt;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', p) == std::u16string_view::npos;
}

// The first entry, by name, of the pattern's folder that matches its last part; empty if none does. The folder's own
// entries "." and ".." take part, as in any listing of it.
fs::path FindFirst(const fs::path& pattern) {
  const std::u16string wanted = Utf8ToUtf16(PathToUtf8(pattern.filename()));
  const fs::path folder = pattern.has_parent_path() ? pattern.parent_path() : fs::path(".");
  std::error_code error;
  std::vector<fs::path> names;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    names.push_back(it->path().filename());
  }
  if (!error) {
    names.emplace_back(".");
    names.emplace_back("..");
  }
  std::sort(names.begin(), names.end());
  for (const fs::path& name : names) {
    if (MatchesWildcard(Utf8ToUtf16(PathToUtf8(name)), wanted)) {
      return folder / name;
    }
  }
  return {};
}

// Writes to a file that was just opened, or reports why it couldn't be.
void WriteAndClose(FileHandle file, ByteView bytes) {
  if (!file) {
    // For a file that is to be made, a missing part of the path can only be a folder.
    ThrowErrno(errno == ENOENT ? ENOTDIR : errno);
  }
  if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) {
    ThrowErrno(errno);
  }
  if (std::fclose(file.release()) != 0) {
    ThrowErrno(errno);
  }
}

}  // namespace

bool FileExists(const fs::path& path, bool requireContent) {
  try {
    fs::path found = path;
    if (PathToUtf8(path.filename()).find_first_of("*?") != std::string::npos) {
      found = FindFirst(path);
    }
    std::error_code error;
    if (found.empty() || !found.has_filename() || !fs::exists(found, error)) {
      return false;
    }
    if (!requireContent) {
      return true;
    }
    const std::uintmax_t length = fs::file_size(found, error);
    return !error && length >= 1;
  } catch (const std::exception&) {
    return false;
  }
}

Bytes ReadWholeFile(const fs::path& path) {
  const FileHandle file = OpenForReading(path);
  Bytes bytes;
  std::error_code error;
  const std::uintmax_t length = fs::file_size(path, error);
  if (!error && length > static_cast<std::uintmax_t>(INT32_MAX)) {
    throw RuntimeFailure(FailureCode::OutOfMemory);
  }
  std::size_t filled = 0;
  if (!error) {
    // A large file is mostly read to be changed a little: room behind it spares moving all of its bytes elsewhere.
    bytes.reserve(static_cast<std::size_t>(length + length / 128));
    bytes.resize(static_cast<std::size_t>(length));
  }
  for (;;) {
    if (filled == bytes.size()) {
      // Either all is read or the length wasn't known beforehand; one more byte tells.
      const int next = std::fgetc(file.get());
      if (next == EOF) {
        break;
      }
      bytes.push_back(static_cast<std::uint8_t>(next));
      ++filled;
      bytes.resize(filled + (std::size_t{1} << 16));
    }
    const std::size_t got = std::fread(bytes.data() + filled, 1, bytes.size() - filled, file.get());
    filled += got;
    if (got == 0) {
      break;
    }
  }
  if (std::ferror(file.get()) != 0) {
    throw RuntimeFailure(FailureCode::DeviceIoError);
  }
  bytes.resize(filled);
  return bytes;
}

Bytes ReadFileStart(const fs::path& path, std::size_t count) {
  const FileHandle file = OpenForReading(path);
  Bytes bytes(count);
  bytes.resize(std::fread(bytes.data(), 1, count, file.get()));
  if (std::ferror(file.get()) != 0) {
    throw RuntimeFailure(FailureCode::DeviceIoError);
  }
  return bytes;
}

void WriteWholeFile(const fs::path& path, ByteView bytes) {
  WriteAndClose(FileHandle(std::fopen(path.c_str(), "wb")), bytes);
}

void OverwriteFile(const fs::path& path, ByteView bytes) {
  FileHandle file(std::fopen(path.c_str(), "r+b"));
  if (!file && errno == ENOENT) {
    file.reset(std::fopen(path.c_str(), "wb"));
  }
  WriteAndClose(std::move(file), bytes);
}

std::int64_t FileLength(const fs::path& path) {
  std::error_code error;
  const std::uintmax_t length = fs::file_size(path, error);
  if (error) {
    ThrowErrno(error.value());
  }
  return static_cast<std::int64_t>(length);
}

void CopyWholeFile(const fs::path& from, const fs::path& to) {
  std::error_code error;
  if (!fs::copy_file(from, to, fs::copy_options::overwrite_existing, error) && error) {
    ThrowErrno(error.value());
  }
}

void DeleteFile(const fs::path& path) {
  std::error_code error;
  if (fs::is_directory(path, error)) {
    throw RuntimeFailure(FailureCode::PathAccessError);
  }
  if (!fs::remove(path, error)) {
    ThrowErrno(error ? error.value() : ENOENT);
  }
}

void DeleteFileIfThere(const fs::path& path) {
  std::error_code error;
  if (fs::is_directory(path, error)) {
    throw RuntimeFailure(FailureCode::PathAccessError);
  }
  if (!fs::remove(path, error) && error && error != std::errc::not_a_directory) {
    ThrowErrno(error.value());
  }
}

void DeleteFileQuietly(const fs::path& path) noexcept {
  std::error_code error;
  // One call of the system is enough for a file that isn't there, which is what most of these find.
  if (fs::symlink_status(path, error).type() != fs::file_type::not_found && !fs::is_directory(path, error)) {
    fs::remove(path, error);
  }
}

FileDate DateOfFile(const fs::path& path) {
  std::error_code error;
  const fs::file_time_type time = fs::last_write_time(path, error);
  if (error) {
    ThrowErrno(error.value());
  }
  return std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count();
}

}  // namespace kelvane
