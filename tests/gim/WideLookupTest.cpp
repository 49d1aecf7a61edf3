#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>

#include "gim/WideLookup.h"

namespace kelvane {
namespace {

// All words of what the system tells of its processors.
std::set<std::string> WordsOfProcessors() {
  std::ifstream in("/proc/cpuinfo");
  return {std::istream_iterator<std::string>(in), {}};
}

TEST(WideLookup, IsThereWhereTheProcessorHasTheInstructionsAndNowhereElse) {
  const std::set<std::string> words = WordsOfProcessors();
  ASSERT_FALSE(words.empty()) << "this test needs /proc/cpuinfo";
  const bool has = words.contains("avx512vbmi") && words.contains("avx512bw") && words.contains("avx512vl");
  EXPECT_EQ(BestWideLookup() != nullptr, has);
}

}  // namespace
}  // namespace kelvane
