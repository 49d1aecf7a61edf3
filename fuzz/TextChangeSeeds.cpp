// Rows of changes.
#include "Seeds.h"

namespace kelvane::fuzz {

std::vector<Bytes> Seeds() {
  Bytes scattered;
  for (int i = 0; i < 400; ++i) {
    scattered.push_back(static_cast<std::uint8_t>(i * 37 + i / 7));
  }
  Bytes ascending;
  for (int i = 0; i < 256; ++i) {
    ascending.push_back(static_cast<std::uint8_t>(i));
  }
  return {Bytes{0, 0, 0, 1, 3, 65, 66, 67, 1, 0}, Bytes(120, 31), scattered, ascending};
}

}  // namespace kelvane::fuzz
