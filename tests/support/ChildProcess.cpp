#include "support/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <set>
#include <stdexcept>
#include <string>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Failures.h"

namespace kelvane::test {

namespace {

constexpr int kOtherException = 255;
constexpr uid_t kNobody = 65534;

[[noreturn]] void Throw(const char* what) {
  throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

// Runs `change` and ends the process with the number of its failure. No destructors and no handlers of the parent's
// run.
[[noreturn]] void EndWithFailureOf(const Action& change) {
  int number = kOtherException;
  try {
    number = NumberOf(change);
  } catch (...) {
    number = kOtherException;
  }
  _exit(number);
}

template <class Child>
pid_t Fork(Child&& child) {
  const pid_t pid = fork();
  if (pid < 0) {
    Throw("fork");
  }
  if (pid == 0) {
    child();
    _exit(kOtherException);
  }
  return pid;
}

int WaitFor(pid_t pid) {
  int status = 0;
  while (waitpid(pid, &status, 0) < 0) {
    if (errno != EINTR) {
      Throw("waitpid");
    }
  }
  return status;
}

int FailureNumber(int status) {
  if (!WIFEXITED(status) || WEXITSTATUS(status) == kOtherException) {
    throw std::runtime_error("the child process came to an unexpected end");
  }
  return WEXITSTATUS(status);
}

// The end of a child process that makes `change` without the superuser's rights, who may write anywhere.
int StatusWithoutRights(const Action& change) {
  return WaitFor(Fork([&] {
    if (geteuid() != 0 || setuid(kNobody) == 0) {
      EndWithFailureOf(change);
    }
  }));
}

// Whether a call changes files; reading, seeking and closing don't.
bool ChangesFiles(std::uint64_t number, const std::uint64_t* arguments) {
  static const std::set<std::uint64_t> kChanging = {
      SYS_write,     SYS_pwrite64,  SYS_writev,   SYS_pwritev,         SYS_ftruncate, SYS_truncate,  SYS_fallocate,
      SYS_fsync,     SYS_fdatasync, SYS_sendfile, SYS_copy_file_range, SYS_unlinkat,  SYS_renameat2, SYS_linkat,
      SYS_symlinkat, SYS_mkdirat,   SYS_fchmod,   SYS_fchmodat,        SYS_fchown,    SYS_fchownat,  SYS_utimensat,
#ifdef SYS_rename
      SYS_rename,    SYS_renameat,  SYS_unlink,   SYS_rmdir,           SYS_link,      SYS_symlink,   SYS_mkdir,
      SYS_creat,     SYS_chmod,     SYS_chown,
#endif
  };
  if (kChanging.contains(number)) {
    return true;
  }
#ifdef SYS_open
  if (number == SYS_open) {
    return (arguments[1] & (O_CREAT | O_TRUNC)) != 0;
  }
#endif
  return number == SYS_openat && (arguments[2] & (O_CREAT | O_TRUNC)) != 0;
}

// Whether the stopped child is about to make a call that changes files.
bool StandsAtChange(pid_t pid) {
  __ptrace_syscall_info info{};
  if (ptrace(PTRACE_GET_SYSCALL_INFO, pid, sizeof info, &info) < 0) {
    Throw("PTRACE_GET_SYSCALL_INFO");
  }
  return info.op == PTRACE_SYSCALL_INFO_ENTRY && ChangesFiles(info.entry.nr, info.entry.args);
}

pid_t StartWatched(const Action& change) {
  const pid_t pid = Fork([&] {
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    EndWithFailureOf(change);
  });
  WaitFor(pid);
  if (ptrace(PTRACE_SETOPTIONS, pid, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) < 0) {
    Throw("PTRACE_SETOPTIONS");
  }
  return pid;
}

}  // namespace

bool KilledAt(int killAt, const Action& change) {
  const pid_t pid = StartWatched(change);
  int calls = 0;
  long signalToPass = 0;
  while (true) {
    if (ptrace(PTRACE_SYSCALL, pid, nullptr, signalToPass) < 0) {
      Throw("PTRACE_SYSCALL");
    }
    const int status = WaitFor(pid);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
      return false;
    }
    if (!WIFSTOPPED(status)) {
      throw std::runtime_error("the child process came to an unexpected end");
    }
    const bool atCall = WSTOPSIG(status) == (SIGTRAP | 0x80);
    signalToPass = atCall ? 0 : WSTOPSIG(status);
    if (atCall && StandsAtChange(pid) && calls++ == killAt) {
      kill(pid, SIGKILL);
      WaitFor(pid);
      return true;
    }
  }
}

int KillAtEveryCall(const Action& prepare, const Action& change, const std::function<void(int)>& check) {
  for (int call = 0;; ++call) {
    prepare();
    const bool killed = KilledAt(call, change);
    check(call);
    if (!killed) {
      return call;
    }
  }
}

int FailureWithDiskOf(std::int64_t bytes, const Action& change) {
  return FailureNumber(WaitFor(Fork([&] {
    signal(SIGXFSZ, SIG_IGN);  // so that writing fails
    const rlimit limit{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
    if (setrlimit(RLIMIT_FSIZE, &limit) == 0) {
      EndWithFailureOf(change);
    }
  })));
}

int FailureWithoutRights(const Action& change) {
  return FailureNumber(StatusWithoutRights(change));
}

int FailureInReadOnlyFolder(const std::filesystem::path& folder, const Action& change) {
  namespace fs = std::filesystem;
  const fs::perms before = fs::status(folder).permissions();
  fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                              fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec);
  const int status = StatusWithoutRights(change);
  fs::permissions(folder, before);
  return FailureNumber(status);
}

}  // namespace kelvane::test
