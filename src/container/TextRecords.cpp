#include "container/TextRecords.h"

#include "common/Bytes.h"
#include "container/RcoFormat.h"

namespace kelvane {

Int16 TextRecordBytes(Int16 textCount) {
  return textCount * Int16(rco::kTextRecSize);
}

void WriteTextRecords(RcoFile& file, const RcoDocument& document, Int16 fromIndex) {
  for (std::int32_t lang = fromIndex.Int(); lang < document.langCount; ++lang) {
    Bytes block = AllocateBytes(TextRecordBytes(document.textCount).Int());
    const std::vector<TextRec>& records = At(document.textRsc, lang);
    for (std::int32_t item = 0; item < document.textCount.Int(); ++item) {
      const TextRec& record = At(records, item);
      const std::int32_t at = item * rco::kTextRecSize;
      WriteI32(block, at + rco::textLabel, record.textLabel);
      WriteI32(block, at + rco::textLength, record.textLength);
      WriteI32(block, at + rco::textOffset, record.textOffset);
    }
    file.Seek(std::int64_t{At(document.langPos, lang)} + rco::langRecords);
    file.Write(block);
  }
}

}  // namespace kelvane
