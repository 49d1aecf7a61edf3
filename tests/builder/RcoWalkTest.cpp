// The walker takes what the builder writes, and finds every offset that is wrong.
#include <gtest/gtest.h>

#include "support/RcoBuilder.h"
#include "support/RcoWalk.h"

namespace kelvane {
namespace {

using test::BuiltRco;
using test::RcoBuilder;
using test::RcoContents;

BuiltRco Everything() {
  RcoBuilder b;
  b.AddImage({.label = "i0", .compression = 1, .data = {1, 2, 3}, .unpackedSize = 9});
  b.AddImage({.label = "i1", .format = 0, .data = {4, 5, 6, 7}});
  b.AddVag({.label = "v0", .channel1 = {1, 2, 3}, .channel2 = Bytes{4, 5}});
  b.AddVag({.label = "v1", .channel1 = {6}});
  b.AddGmo({.label = "m0", .data = {8, 9}});
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "t0", .strings = {u"a", u"bcd"}});
  b.AddText({.label = "t1", .strings = {u"ef", test::NoText()}});
  b.AddPage({.label = "p0", .body = {1, 2}, .children = {{.label = "p1", .body = {3}, .statesSize = false}}});
  b.AddPage({.label = "p2", .body = {4}});
  b.AddAnimation({.label = "a0", .body = {5}});
  b.AddAnimation({.label = "a1", .body = {6}, .children = {{.body = {7}}}});
  b.AddEvent("native:/go");
  b.Options().trailing = {0xEE};
  return b.Build();
}

// Whether the walker, or the comparison with what the file held before, finds that the file was changed.
bool IsFound(const RcoContents& before, const Bytes& changed) {
  try {
    return !Difference(before, test::WalkRco(changed).contents).empty();
  } catch (const std::exception&) {
    return true;
  }
}

TEST(RcoWalk, GivesWhatTheBuilderPutIn) {
  const BuiltRco built = Everything();
  const RcoContents contents = test::WalkRco(built.bytes).contents;
  ASSERT_EQ(contents.resources[0].size(), 2U);
  EXPECT_EQ(contents.resources[0][1].label, "i1");
  EXPECT_EQ(contents.resources[0][0].data, (Bytes{1, 2, 3}));
  ASSERT_EQ(contents.resources[1].size(), 2U);
  EXPECT_EQ(contents.resources[1][0].channels, (std::vector<std::int32_t>{0, 4}));
  EXPECT_EQ(contents.resources[1][0].data, (Bytes{1, 2, 3, 0, 4, 5}));
  ASSERT_EQ(contents.texts.size(), 2U);
  EXPECT_EQ(contents.texts[1].label, "t1");
  EXPECT_EQ(contents.texts[0].strings[0], (Bytes{'a', 0, 0, 0}));
  EXPECT_EQ(contents.texts[1].strings[1], Bytes());
  ASSERT_EQ(contents.pages.size(), 3U);
  EXPECT_EQ(contents.pages[1].label, "p1");
  EXPECT_EQ(contents.pages[1].depth, 1);
  EXPECT_EQ(ReadI32(contents.pages[1].entry, 40), 3);
  ASSERT_EQ(contents.animations.size(), 3U);
  EXPECT_EQ(contents.animations[1].label, "a1");
  EXPECT_EQ(contents.pointers[static_cast<std::size_t>(test::RcoTable::kAnim)], (std::vector<int>{0, 1}));
  EXPECT_EQ(contents.trailing, Bytes{0xEE});
}

TEST(RcoWalk, AnyByteThatIsChangedIsFound) {
  const BuiltRco built = Everything();
  const RcoContents contents = test::WalkRco(built.bytes).contents;
  for (std::size_t at = 0; at < built.bytes.size(); ++at) {
    Bytes changed = built.bytes;
    changed[at] ^= 0x04;
    EXPECT_TRUE(IsFound(contents, changed)) << "at " << at;
  }
}

TEST(RcoWalk, AnyLongThatIs4MoreOrLessIsFound) {
  const BuiltRco built = Everything();
  const RcoContents contents = test::WalkRco(built.bytes).contents;
  for (std::int64_t at = 0; at + 4 <= built.layout.labels.offset; at += 4) {
    for (const std::int32_t delta : {4, -4}) {
      Bytes changed = built.bytes;
      WriteI32(changed, at, ReadI32(changed, at) + delta);
      EXPECT_TRUE(IsFound(contents, changed)) << "at " << at;
    }
  }
}

TEST(RcoWalk, ABytePutInOrTakenOutAnywhereIsFound) {
  const BuiltRco built = Everything();
  const RcoContents contents = test::WalkRco(built.bytes).contents;
  for (std::size_t at = 0; at < built.bytes.size(); ++at) {
    Bytes longer = built.bytes;
    longer.insert(longer.begin() + static_cast<std::ptrdiff_t>(at), std::uint8_t{0x55});
    EXPECT_TRUE(IsFound(contents, longer)) << "at " << at;
    Bytes shorter = built.bytes;
    shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(at));
    EXPECT_TRUE(IsFound(contents, shorter)) << "at " << at;
  }
}

}  // namespace
}  // namespace kelvane
