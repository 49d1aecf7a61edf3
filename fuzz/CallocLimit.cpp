// The same limit for calloc, which image objects take their pixels from: the linker leads every call of it here.
#include <cstddef>

namespace {

constexpr std::size_t kLimit = std::size_t{16} << 20;

}  // namespace

extern "C" void* __real_calloc(std::size_t count, std::size_t size);  // NOLINT(bugprone-reserved-identifier)

extern "C" void* __wrap_calloc(std::size_t count, std::size_t size) {  // NOLINT(bugprone-reserved-identifier)
  return size > 0 && count > kLimit / size ? nullptr : __real_calloc(count, size);
}
