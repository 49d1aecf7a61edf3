// A file with three labels and one table of pointers, scanned.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "container/RcoFormat.h"
#include "pages/EntryScan.h"
#include "pages/TableBytes.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane::test {

constexpr std::int32_t kPointers = 0x100;
constexpr std::int32_t kLabels = 0x40;
constexpr std::int32_t kEnd = 0x1000;

// Labels "one" at 0, "two" at 4, "three" at 8.
class EntryScan : public ::testing::Test {
 protected:
  EntryScan() {
    bytes_.Text(kLabels, "one").Text(kLabels + 4, "two").Text(kLabels + 8, "three");
    document_.labelBase = kLabels;
  }

  // Points the table's pair of the header to kPointers and writes the pointers there.
  void Pointers(bool isPageTable, std::initializer_list<std::int64_t> pointers) {
    bytes_.Words(PairAt(isPageTable), {kPointers, static_cast<std::int64_t>(pointers.size()) * 4});
    bytes_.Words(kPointers, pointers);
  }

  void Scan(bool isPageTable, std::int32_t endBound = kEnd, bool expert = false) {
    RcoFile file(folder_.Write("f.rco", bytes_.Content()));
    file.Seek(PairAt(isPageTable));
    ScanEntryTable(file, endBound, document_, isPageTable, expert);
  }

  static std::int32_t PairAt(bool isPageTable) { return isPageTable ? rco::hdrPagePtrs : rco::hdrAnimPtrs; }

  TempFolder folder_;
  TableBytes bytes_;
  RcoDocument document_;
};

// `count` pointers to the entry at `position`.
inline void FillPointers(TableBytes& bytes, std::int32_t pairAt, std::int32_t count, std::int32_t position) {
  bytes.Words(pairAt, {kPointers, std::int64_t{count} * 4}).Reach(kPointers + count * 4);
  for (std::int32_t i = 0; i < count; ++i) {
    bytes.Words(kPointers + i * 4, {position});
  }
}

}  // namespace kelvane::test
