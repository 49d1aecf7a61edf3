// The one place that needs more of the system than the standard library has: flushing a file and its folder to disk,
// and a temporary file whose name nobody else has. POSIX calls.

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "common/Files.h"
#include "common/RuntimeFailure.h"

namespace kelvane {

namespace fs = std::filesystem;

namespace {

// A file descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) {
      close(fd_);
    }
  }
  [[nodiscard]] int Get() const { return fd_; }
  // Closes now and tells whether that succeeded.
  bool Close() {
    const int fd = fd_;
    fd_ = -1;
    return close(fd) == 0;
  }

 private:
  int fd_;
};

// The pattern of the name of the temporary file: the target's own name, cut where it would become longer than a name
// may be.
std::string StagedName(const fs::path& target) {
  constexpr std::string_view kRandomEnd = ".XXXXXX";
  std::string name = "." + target.filename().string();
  name.resize(std::min(name.size(), std::size_t{NAME_MAX} - kRandomEnd.size()));
  return (target.parent_path() / name.append(kRandomEnd)).string();
}

// The temporary file of one save: removed unless it was renamed away.
class StagedFile {
 public:
  explicit StagedFile(const fs::path& target) : name_(StagedName(target)), file_(mkstemp(name_.data())) {
    if (file_.Get() < 0) {
      throw FailureFromErrno(errno == ENOENT ? ENOTDIR : errno);
    }
  }
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;
  ~StagedFile() {
    if (!renamed_) {
      unlink(name_.c_str());
    }
  }

  // The permissions and, as far as the user may, the owner of `model`; those of a new file where it isn't there.
  void TakeOver(const fs::path& model) {
    struct stat old {};
    if (stat(model.c_str(), &old) != 0) {
      const mode_t mask = umask(0);
      umask(mask);
      Require(fchmod(file_.Get(), 0666 & ~mask));
      return;
    }
    struct stat own {};
    Require(fstat(file_.Get(), &own));
    if ((own.st_uid != old.st_uid || own.st_gid != old.st_gid) && fchown(file_.Get(), old.st_uid, old.st_gid) != 0) {
      errno = 0;  // not the owner: the file then belongs to who wrote it, as with any editor
    }
    Require(fchmod(file_.Get(), old.st_mode & 07777));
  }

  void Write(std::span<const ByteView> parts) {
    for (const ByteView part : parts) {
      WritePart(part);
    }
    Require(fsync(file_.Get()));
    if (!file_.Close()) {
      throw FailureFromErrno(errno);
    }
  }

  void RenameOver(const fs::path& target) {
    Require(rename(name_.c_str(), target.c_str()));
    renamed_ = true;
  }

 private:
  void WritePart(ByteView bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
      const ssize_t put = write(file_.Get(), bytes.data() + done, bytes.size() - done);
      if (put < 0 && errno != EINTR) {
        throw FailureFromErrno(errno);
      }
      done += put > 0 ? static_cast<std::size_t>(put) : 0;
    }
  }

  static void Require(int result) {
    if (result != 0) {
      throw FailureFromErrno(errno);
    }
  }

  std::string name_;
  Descriptor file_;
  bool renamed_ = false;
};

// Follows a chain of symbolic links to the name that a rename has to replace; a link to nothing gives that name.
fs::path RealTarget(const fs::path& path) {
  fs::path target = fs::absolute(path);
  constexpr int kMostLinks = 40;
  for (int i = 0; i < kMostLinks; ++i) {
    std::error_code error;
    if (!fs::is_symlink(target, error)) {
      return target;
    }
    const fs::path next = fs::read_symlink(target);
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  throw RuntimeFailure(FailureCode::PathAccessError);
}

// A rename asks for the right to write to the folder alone: without this a file that its owner has protected would be
// replaced like any other.
void RequireWritable(const fs::path& target) {
  if (access(target.c_str(), W_OK) != 0 && errno != ENOENT) {
    throw FailureFromErrno(errno);
  }
}

// Writes `parts` to `path` by way of a staged file with the permissions of `model`.
void SaveLike(const fs::path& path, const fs::path& model, std::span<const ByteView> parts) {
  const fs::path target = RealTarget(path);
  std::error_code error;
  if (fs::is_directory(target, error)) {
    throw RuntimeFailure(FailureCode::PathAccessError);
  }
  RequireWritable(target);
  {
    StagedFile staged(target);
    staged.TakeOver(model);
    staged.Write(parts);
    staged.RenameOver(target);
  }
  // The rename itself must reach the disk too. A folder that can't be flushed doesn't undo a save that is done.
  const Descriptor folder(open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.Get() >= 0) {
    fsync(folder.Get());
  }
}

}  // namespace

void SaveStaged(const fs::path& path, ByteView bytes) {
  SaveLike(path, path, {&bytes, 1});
}

void SaveStaged(const fs::path& path, std::span<const ByteView> parts) {
  SaveLike(path, path, parts);
}

void CopyDurably(const fs::path& from, const fs::path& to) {
  const Bytes content = ReadWholeFile(from);
  const ByteView whole(content);
  SaveLike(to, from, {&whole, 1});
}

}  // namespace kelvane
