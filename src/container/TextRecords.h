// Writing the text records of the document back to the file.
#pragma once

#include "common/Int16.h"
#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// Writes the records of language `fromIndex` and of all later ones back to where the file holds them. Failures: 6 for
// more than 2730 texts, 9 for none or for a language without its records.
void WriteTextRecords(RcoFile& file, const RcoDocument& document, Int16 fromIndex);

// The bytes that one language's records take. Failure 6 for more than 2730 texts: the count is kept in 16 bits.
[[nodiscard]] Int16 TextRecordBytes(Int16 textCount);

}  // namespace kelvane
