// The scan of the three general resource tables.
#pragma once

#include <cstdint>

#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// Fills genRsc, genCount and the lines of lst from the open file; labelBase and dataAreas must be read already. True if
// at least one record was made. Without any data area the list comes out empty and genRsc and genCount keep what they
// held. Failures: 6 for more than 32767 entries, 9 where a table's count is negative, 5.
bool ScanGenRsc(RcoFile& file, RcoDocument& document);

// The absolute file offset of a resource's data. Failure 9 for an index without a record, 6.
[[nodiscard]] std::int32_t GetGenDataPos(const RcoDocument& document, Int16 index);

}  // namespace kelvane
