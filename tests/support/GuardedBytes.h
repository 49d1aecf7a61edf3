// Bytes behind which no memory is.
#pragma once

#include <cstring>
#include <new>
#include <span>
#include <sys/mman.h>
#include <unistd.h>

#include "common/Bytes.h"

namespace kelvane::test {

// A copy of some bytes that ends with a page of memory, before one that may not be touched: reading or writing a single
// byte behind the end kills the process.
class GuardedBytes {
 public:
  explicit GuardedBytes(ByteView bytes) : size_(bytes.size()) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t accessible = (size_ + page - 1) / page * page;
    mappedSize_ = accessible + page;
    void* const mapped = mmap(nullptr, mappedSize_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) {
      throw std::bad_alloc();
    }
    mapped_ = static_cast<std::uint8_t*>(mapped);
    if (mprotect(mapped_ + accessible, page, PROT_NONE) != 0) {
      munmap(mapped_, mappedSize_);
      throw std::bad_alloc();
    }
    data_ = mapped_ + accessible - size_;
    if (!bytes.empty()) {
      std::memcpy(data_, bytes.data(), size_);
    }
  }
  GuardedBytes(const GuardedBytes&) = delete;
  GuardedBytes& operator=(const GuardedBytes&) = delete;
  ~GuardedBytes() { munmap(mapped_, mappedSize_); }

  [[nodiscard]] std::uint8_t* data() { return data_; }
  [[nodiscard]] const std::uint8_t* data() const { return data_; }
  [[nodiscard]] ByteView View() const { return {data_, size_}; }

 private:
  std::size_t size_;
  std::size_t mappedSize_ = 0;
  std::uint8_t* mapped_ = nullptr;
  std::uint8_t* data_ = nullptr;
};

}  // namespace kelvane::test
