// Good files of all kinds, deflated heads, and broken files.
#include "Seeds.h"
#include "support/RcoSeeds.h"

namespace kelvane::fuzz {

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  for (const test::RcoSeed& seed : test::RcoSeeds()) {
    seeds.push_back(seed.bytes);
    // The last byte of an input says how a failure is answered: both ways.
    seeds.push_back(seed.bytes);
    seeds.back().push_back(1);
  }
  return seeds;
}

}  // namespace kelvane::fuzz
