// Changes of files made by a child process that meets a bad end: killed, out of disk space, or without the right to
// write.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

namespace kelvane::test {

using Action = std::function<void()>;

// Runs `change` in a child process that is killed (SIGKILL) in front of one of its system calls that create, write,
// rename or delete files; `killAt` counts these from 0. False if the child made fewer such calls and came to its end,
// which must be a good one. An std::runtime_error where a child can't be watched.
[[nodiscard]] bool KilledAt(int killAt, const Action& change);

// Kills `change` at each of its calls in turn: every time `prepare` comes first, and `check`, told the number of the
// call, last. Gives the number of calls.
int KillAtEveryCall(const Action& prepare, const Action& change, const std::function<void(int)>& check);

// Runs `change` in a child process in which no file may become longer than `bytes`, as on a full disk. The number of
// the run-time failure that it ends with; 0 for none.
[[nodiscard]] int FailureWithDiskOf(std::int64_t bytes, const Action& change);

// Runs `change` in a child process that isn't the superuser's. The number of its run-time failure; 0 for none.
[[nodiscard]] int FailureWithoutRights(const Action& change);

// Runs `change` in such a child process that may not create, rename or delete anything in `folder`. The number of its
// run-time failure; 0 for none.
[[nodiscard]] int FailureInReadOnlyFolder(const std::filesystem::path& folder, const Action& change);

}  // namespace kelvane::test
