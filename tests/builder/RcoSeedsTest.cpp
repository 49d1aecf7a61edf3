#include <algorithm>
#include <gtest/gtest.h>
#include <set>

#include "support/RcoSeeds.h"

namespace kelvane::test {
namespace {

TEST(RcoSeeds, NamesAreUniqueAndFitForFiles) {
  std::set<std::string> names;
  for (const RcoSeed& seed : RcoSeeds()) {
    EXPECT_TRUE(names.insert(seed.name).second) << seed.name;
    EXPECT_EQ(seed.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"), std::string::npos) << seed.name;
    EXPECT_LT(seed.bytes.size(), 5000U) << seed.name;
  }
  EXPECT_EQ(names.size(),
            GoodRcoSeeds().size() + PackedRcoSeeds().size() + TruncatedRcoSeeds().size() + WildRcoSeeds().size());
  EXPECT_GT(names.size(), 150U);
}

TEST(RcoSeeds, GoodFilesBeginLikeOnes) {
  for (const RcoSeed& seed : GoodRcoSeeds()) {
    ASSERT_GE(seed.bytes.size(), 164U) << seed.name;
    EXPECT_EQ(ReadU32(seed.bytes, 0), 0x46525000U) << seed.name;
    const std::uint32_t version = ReadU32(seed.bytes, 4);
    EXPECT_TRUE(version == 113 || version == 112 || version == 0) << seed.name;
  }
}

TEST(RcoSeeds, PackedFilesSaySo) {
  for (const RcoSeed& seed : PackedRcoSeeds()) {
    EXPECT_EQ(ReadU32(seed.bytes, 4), 144U) << seed.name;
  }
}

TEST(RcoSeeds, TruncatedFilesAreTheBeginningOfAWholeOne) {
  const Bytes whole = SmallRcoOfEverything().Build().bytes;
  int cuts = 0;
  for (const RcoSeed& seed : TruncatedRcoSeeds()) {
    if (seed.name.substr(0, 4) == "cut_") {
      ++cuts;
      ASSERT_LT(seed.bytes.size(), whole.size()) << seed.name;
      EXPECT_TRUE(std::equal(seed.bytes.begin(), seed.bytes.end(), whole.begin())) << seed.name;
    }
  }
  EXPECT_EQ(cuts, 17);
}

TEST(RcoSeeds, WildFilesDifferFromTheWholeOneInOneNumber) {
  const Bytes whole = SmallRcoOfEverything().Build().bytes;
  for (const RcoSeed& seed : WildRcoSeeds()) {
    if (seed.name == "pointers_repeat") {
      continue;
    }
    ASSERT_EQ(seed.bytes.size(), whole.size()) << seed.name;
    const auto first = std::mismatch(whole.begin(), whole.end(), seed.bytes.begin());
    ASSERT_NE(first.first, whole.end()) << seed.name;
    const auto start = (first.first - whole.begin()) / 4 * 4;
    const auto rest = std::min<std::ptrdiff_t>(start + 4, static_cast<std::ptrdiff_t>(whole.size()));
    EXPECT_TRUE(std::equal(whole.begin() + rest, whole.end(), seed.bytes.begin() + rest)) << seed.name;
  }
}

}  // namespace
}  // namespace kelvane::test
