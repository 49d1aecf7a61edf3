// Choices without order, for files and changes of all sorts.
#include <random>

#include "Seeds.h"

namespace kelvane::fuzz {

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds = {{}};  // without a choice everything is as small as can be
  for (unsigned seed = 0; seed < 40; ++seed) {
    std::mt19937 random(seed);
    Bytes choices(1500);
    for (std::uint8_t& choice : choices) {
      choice = static_cast<std::uint8_t>(random());
    }
    seeds.push_back(std::move(choices));
  }
  return seeds;
}

}  // namespace kelvane::fuzz
