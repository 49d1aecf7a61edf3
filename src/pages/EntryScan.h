// The walk over the page and the animation table: from their pointers to the records and lines of lstPage and lstAnim.
#pragma once

#include <cstdint>
#include <vector>

#include "common/Int16.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// Reads a table whose pair of offset and byte length the file is positioned on: the page table into lstPage, pageRecs
// and pageCount, the animation table into lstAnim, animRecs and animCount. `endBound` is the file offset where the
// table's last entry ends; labelBase must be read already. The count is that of the pointers: of an animation table it
// counts the top-level animations only. `expert` adds each entry's type to its line.
//
// The lines are added to what the list holds. On a failure everything stays filled as far as it came: 6 for more lines
// than 16 bits count and for offsets beyond 32 bits, 9 for a page at depth 7 or deeper, for more than 4096 animation
// records and for a table of negative length, 7 for one that is too large, 5 for a negative offset.
void ScanEntryTable(RcoFile& file, std::int32_t endBound, RcoDocument& document, bool isPageTable, bool expert);

// Reads `childCount` entries from the file's position on into the records above `recIndex`, which is raised by one for
// each of them, and adds a line for each; what stands below them is read by nested calls. `usedBytes` and `totalBytes`
// give the length of a last child that has none of its own: the rest of its parent's. A negative count reads nothing.
// Failures: 6, 9 and 5 as above.
void ScanChildEntries(std::int32_t childCount, std::vector<EntryRec>& recs, Int16& recIndex, RcoFile& file,
                      ListLines& list, Int16 depth, std::int32_t usedBytes, std::int32_t totalBytes);

// Ascending, with all zero and negative pointers behind the positive ones, in the order in which an exchange sort
// leaves them: how many zeros stand in front of a negative one decides how long a table counts.
void SortEntryPointers(std::vector<std::int32_t>& pointers);

}  // namespace kelvane
