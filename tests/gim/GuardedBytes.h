// Bytes right in front of memory that can't be touched: a step behind their end ends the process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

namespace kelvane::test {

class GuardedBytes {
 public:
  explicit GuardedBytes(std::size_t most) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    usable_ = (most + page - 1) / page * page;
    mapped_ = usable_ + page;
    void* const memory = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
      throw std::runtime_error("there is no memory");
    }
    start_ = static_cast<std::uint8_t*>(memory);
    if (mprotect(start_ + usable_, page, PROT_NONE) != 0) {
      throw std::runtime_error("memory can't be guarded");
    }
  }
  GuardedBytes(const GuardedBytes&) = delete;
  GuardedBytes& operator=(const GuardedBytes&) = delete;
  ~GuardedBytes() { munmap(start_, mapped_); }

  // The `count` bytes in front of the guard.
  [[nodiscard]] std::span<std::uint8_t> Last(std::size_t count) { return {start_ + usable_ - count, count}; }

 private:
  std::uint8_t* start_ = nullptr;
  std::size_t usable_ = 0;
  std::size_t mapped_ = 0;
};

}  // namespace kelvane::test
