// Rows of changes, on the file as it is built and with words of its entries overwritten.
#include "Seeds.h"
#include "container/RcoFormat.h"
#include "support/RcoSeeds.h"

namespace kelvane::fuzz {

namespace {

constexpr std::uint8_t kAnim = 0;
constexpr std::uint8_t kPosition = 1;
constexpr std::uint8_t kPage = 2;

// One change of each row of a line, answered by `answer` and no more than a few digits or one row.
void AddChanges(Bytes& script, std::uint8_t operation, std::uint8_t line, std::uint8_t answer) {
  for (std::uint8_t row = 0; row < 12; ++row) {
    Append(script, Bytes{operation, line, row, answer, row});
  }
}

// Puts a type of a reference in the place of a word.
Bytes Overwriting(std::int32_t place, std::uint8_t choice) {
  const std::int32_t word = place / 4;
  return {1, static_cast<std::uint8_t>(word), static_cast<std::uint8_t>(word >> 8), choice};
}

}  // namespace

std::vector<Bytes> Seeds() {
  std::vector<Bytes> seeds;
  for (std::uint8_t line = 0; line < 5; ++line) {
    for (const std::uint8_t operation : {kAnim, kPosition, kPage}) {
      Bytes script = {0};
      AddChanges(script, operation, line, 1);
      seeds.push_back(script);
    }
  }
  // Every type in the place of the first word behind the position block, and of the first word of a page without one.
  const test::RcoLayout layout = test::SmallRcoOfEverything().Build().layout;
  for (std::uint8_t type = 0; type < 16; ++type) {
    for (std::size_t page = 0; page < layout.pages.size(); ++page) {
      for (const std::int32_t word : {0, rco::kPositionWords}) {
        Bytes script = Overwriting(layout.pages[page].entry + rco::kEntryHeadSize + word * 4,
                                   static_cast<std::uint8_t>(0x40 + type));
        Append(script, Bytes{kPage, static_cast<std::uint8_t>(page), 0, 1, 1, 2, 3, 4, 5, 6, 7, 8});
        seeds.push_back(script);
      }
    }
  }
  // Wild lengths and distances of an entry, and a wild table of pointers.
  for (std::uint8_t choice = 0; choice < 16; ++choice) {
    for (const std::int32_t place :
         {layout.pages[0].entry + rco::entrySize, layout.animEntries[0].entry + rco::entrySize,
          layout.Pointers(test::RcoTable::kPage).offset, rco::hdrEventOffset}) {
      Bytes script = Overwriting(place, choice);
      AddChanges(script, kPage, 0, 1);
      Append(script, Bytes{kAnim, 0, 0, 1, 2, kPosition, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13});
      seeds.push_back(script);
    }
  }
  return seeds;
}

}  // namespace kelvane::fuzz
