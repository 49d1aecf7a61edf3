// The offsets that move when a new entry is put in. Everything is patched on the file in its old layout; the new bytes
// are spliced in afterwards.
#pragma once

#include <cstdint>

#include "common/Int16.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

struct NewEntry {
  std::int32_t entryDelta = 0;  // bytes that will be inserted among the entries
  Int16 index;                  // the record before which the new entry will stand
  std::int32_t countDelta = 1;  // new children of the parent
  std::int32_t ptrDelta = 4;    // bytes that will be inserted into a pointer table
  Int16 depth = -1;             // -1 for a general entry, else the page depth: 0 for a child of the root
  Int16 parent = -1;            // index in pageRecs of a page entry's parent
};

// For a new general or page entry. Failures: 6 for a pointer table of more than 32767 pointers and for sums, 9 for an
// index without a record.
void FixForNewEntry(const NewEntry& entry, RcoFile& file, RcoDocument& document);

// For a new text in all languages: `recordSize` bytes in each language, `ptrDelta` bytes in the pointer table.
// Failures: 6 where a language lies more than 32767 bytes behind the first, 9.
void FixForNewTextEntry(std::int32_t recordSize, std::int32_t countDelta, std::int32_t ptrDelta, RcoFile& file,
                        RcoDocument& document);

}  // namespace kelvane
