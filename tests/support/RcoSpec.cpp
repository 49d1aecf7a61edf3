#include "support/RcoSpec.h"

#include <bit>

namespace kelvane::test {

BodyItem::BodyItem(float value) : content_(Words{std::bit_cast<std::uint32_t>(value)}) {}

std::int32_t BodyItem::WordCount() const {
  const Words* words = AsWords();
  return words != nullptr ? static_cast<std::int32_t>(words->size()) : 2;
}

}  // namespace kelvane::test
