// The raw lists of the dialog frmOther: pointer tables in stored order, and all strings of the label and event areas.
#pragma once

#include <cstdint>

#include "common/Mod.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

struct RandomInfo {
  ListLines lstPage;
  ListLines lstAnim;
  ListLines lstLabel;
  ListLines lstNative;
  bool lstPageEnabled = false;  // and its caption
  bool lstAnimEnabled = false;
};

// Reads the open file. It stands on the header: a label length that was never brought up to date cuts lstLabel short.
// Failures: those of opening the file and of the two below.
[[nodiscard]] RandomInfo frmOther_Load(const Mod& mod);
[[nodiscard]] RandomInfo ReadRandomInfo(RcoFile& file);

// Adds the name of each entry that the table of `byteLength` bytes at `offset` points to, and " --- BLANK --- " for a
// pointer of zero or less. An offset below 1 adds nothing. `labelOffset` is the label area's. Failures: 9 for a
// negative length, 7 for one that no memory is spent on, 6 for more lines than 16 bits count and for offsets beyond 32
// bits.
void ListPointerTable(RcoFile& file, std::int32_t offset, std::int32_t byteLength, std::int32_t labelOffset,
                      ListLines& list);

// Fills `list` with the strings of the area that aren't empty. A length below 1 leaves it empty. Failures: 5 for a
// negative offset, 7.
void ReadStringArea(RcoFile& file, ListLines& list, std::int32_t offset, std::int32_t byteLength);

}  // namespace kelvane
