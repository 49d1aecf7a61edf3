// Memory as on a small machine: an allocation above the limit fails. So sizes that an input only promises cost no time,
// and the code under test shows what it does without memory.
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kLimit = std::size_t{16} << 20;

}  // namespace

void* operator new(std::size_t size) {
  if (size <= kLimit) {
    if (void* memory = std::malloc(size > 0 ? size : 1)) {
      return memory;
    }
  }
  throw std::bad_alloc();
}

void* operator new[](std::size_t size) {
  return operator new(size);
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete[](void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
