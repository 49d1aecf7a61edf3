// Files with pages, animations and all kinds of words, and all good and broken files of the builders.
#include <utility>

#include "Seeds.h"
#include "support/RcoBuilder.h"
#include "support/RcoSeeds.h"

namespace kelvane::fuzz {

namespace {

using namespace kelvane::test;

constexpr std::array<float, rco::kPositionWords> kPosition = {0, 1.5F, 1, 1, 0.5F, 0.1F, 1, 480, 272, 0, 1, 1, 1};

RcoBuilder WithResources() {
  RcoBuilder b;
  b.AddImage({.label = "image", .data = {1, 2, 3, 4}});
  b.AddGmo({.label = "model", .data = {5, 6, 7, 8}});
  b.AddLanguage(0x10001);
  b.AddLanguage(0x10000);
  b.AddText({.label = "text", .strings = {u"OK", u"OK"}});
  b.AddEvent("native:/event");
  return b;
}

EntrySpec AllWords(std::string label) {
  return {.label = std::move(label),
          .entryClass = 13,
          .position = kPosition,
          .body = {EventRef(0), TextRef(0), ImageRef(0), ModelRef(0), PageRef(0, kRefPage7), AnimRef(0), PageRef(0),
                   BlankRef(), PairOf(0x40C, 0x12), 0x111, 1.5F, 0x401}};
}

EntrySpec Operation(std::uint8_t entryClass, std::vector<EntrySpec> children = {}) {
  return {.entryClass = entryClass, .body = {1.0F, 2}, .children = std::move(children)};
}

}  // namespace

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  {
    RcoBuilder b = WithResources();
    b.AddPage({.label = "page", .body = {0x111, -1}, .children = {AllWords("a"), AllWords("b")}});
    b.AddPage({.label = "unsized", .entryClass = 1, .body = {7}, .statesSize = false});
    b.AddAnimation({.label = "anim", .children = {Operation(2), Operation(4), Operation(8, {Operation(7)})}});
    b.AddAnimation({.label = "last", .children = {Operation(3)}, .statesSize = false});
    seeds.push_back(b.Build().bytes);
    b.SetPointers(RcoTable::kPage, {3, -1, 0, 2, 1});
    seeds.push_back(b.Build().bytes);
  }
  {
    RcoBuilder b;
    b.AddPage({.label = "page", .children = {{.entryClass = 18, .children = {{.entryClass = 18}}}}});
    seeds.push_back(b.Build().bytes);
  }
  {
    RcoBuilder b;
    b.AddAnimation({.label = "anim", .children = {Operation(2)}});
    seeds.push_back(b.Build().bytes);
  }
  for (test::RcoSeed& seed : test::RcoSeeds()) {
    seeds.push_back(std::move(seed.bytes));
  }
  return seeds;
}

}  // namespace kelvane::fuzz
