// Thousands of random changes of random files.

#include <gtest/gtest.h>
#include <random>

#include "support/ChangeSequence.h"
#include "support/FastFolder.h"

namespace kelvane {
namespace {

using test::ChangeSequence;
using test::FastFolder;
using test::Pick;

Pick PickBy(unsigned seed) {
  return [random = std::mt19937(seed)](std::uint32_t limit) mutable {
    return static_cast<std::uint32_t>(random() % limit);
  };
}

TEST(ChangeSequence, AfterEachChangeAllElseIsAsItWasAndEveryOffsetPointsWhereItMust) {
  const FastFolder folder;
  std::map<std::string, int> counts;
  int steps = 0;
  for (unsigned seed = 0; seed < 1000; ++seed) {
    SCOPED_TRACE(seed);
    std::optional<ChangeSequence> sequence;
    ASSERT_NO_THROW(sequence.emplace(folder.Path(), PickBy(seed)));
    for (int step = 0; step < 40 && !sequence->IsDone(); ++step) {
      ASSERT_NO_THROW(sequence->Step()) << "step " << step;
      ++steps;
    }
    for (const auto& [name, count] : sequence->Counts()) {
      counts[name] += count;
    }
  }
  EXPECT_GE(steps, 20000);
  // Every kind of change took part, most of them in rows that can be compared.
  for (const char* name :
       {"replacement", "change of a text", "insert of a resource", "insert of a text", "insert of a page",
        "change of a page's word", "change of an animation's word", "change of a position", "opening again",
        "insert of a resource, wild", "insert of a text, wild", "insert of a page, wild"}) {
    EXPECT_GE(counts[name], 200) << name;
  }
}

}  // namespace
}  // namespace kelvane
