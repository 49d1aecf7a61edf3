// A block of zero bytes that costs no memory where it isn't written: for sizes that a header only promises.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

namespace kelvane {

class ZeroBytes {
 public:
  ZeroBytes() = default;
  // Throws std::bad_alloc where memory is short.
  explicit ZeroBytes(std::size_t size) : bytes_(static_cast<std::uint8_t*>(std::calloc(size, 1))) {
    if (!bytes_) {
      throw std::bad_alloc();
    }
  }

  [[nodiscard]] std::uint8_t* data() { return bytes_.get(); }
  [[nodiscard]] const std::uint8_t* data() const { return bytes_.get(); }
  [[nodiscard]] bool empty() const { return !bytes_; }

 private:
  struct Free {
    void operator()(std::uint8_t* block) const { std::free(block); }
  };
  std::unique_ptr<std::uint8_t[], Free> bytes_;
};

}  // namespace kelvane
