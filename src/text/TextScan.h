// The scan of the text tables.
#pragma once

#include <cstdint>
#include <string>

#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

// Language records of more bytes than these, all together, must lie inside the file, else it is failure 7: so counts
// that are only claimed cost little. Screens hold some 100 KB of them.
inline constexpr std::int64_t kMaxClaimedTableBytes = 1 << 24;

// Fills cboTextLang, lstText, textRsc, textCount, langCount, langPos and textDataBase from the open file; labelBase
// must be read already. The second language of the file is selected. What the document held of texts before is gone,
// also where the file has none. Failures: 9 where the first language counts no text, 6 for more than 2730 texts or
// 32767 languages, 7 as told above, 5. What was filled up to there stays.
void ScanTextRsc(RcoFile& file, RcoDocument& document);

// The name of a language by the code in its record.
[[nodiscard]] std::string LanguageName(std::uint32_t code);

}  // namespace kelvane
