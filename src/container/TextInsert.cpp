#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "common/Bytes.h"
#include "container/InsertLabel.h"
#include "container/InsertRun.h"
#include "container/Inserts.h"
#include "container/NewEntryFixups.h"
#include "container/RcoFormat.h"

namespace kelvane {

namespace {

// Where the string of a new text is: at that of the text now at `index`, or behind the last one.
std::int32_t NewTextOffset(const RcoDocument& document, Int16 index, std::size_t language) {
  const std::vector<TextRec>& texts = At(document.textRsc, static_cast<std::int64_t>(language));
  if (index < document.textCount) {
    return At(texts, index.Int()).textOffset;
  }
  const TextRec& last = At(texts, document.textCount.Int() - 1);
  return CheckedInt32(std::int64_t{last.textOffset} + last.textLength + 4 - last.textLength % 4);
}

// The text records that one insert puts in, one for each language; an offset that can't be worked out stays 0.
std::vector<TextRec> NewTextRecords(Statements& run, const RcoDocument& document, Int16 index, std::int32_t textLabel) {
  std::vector<TextRec> records;
  run([&] {
    RequireArraySize(document.langCount);
    records.assign(document.langCount, {.textLabel = textLabel});
  });
  for (std::size_t language = 0; language < records.size(); ++language) {
    run([&] { records[language].textOffset = NewTextOffset(document, index, language); });
  }
  return records;
}

Bytes TextRecordBytesOf(const TextRec& record) {
  Bytes bytes(rco::kTextRecSize);
  WriteI32(bytes, 0, record.textLabel);
  WriteI32(bytes, 4, record.textLength);
  WriteI32(bytes, 8, record.textOffset);
  return bytes;
}

// Puts a record into each language. The file is written anew from its slices; if one of them can't be taken it is what
// it was.
void SpliceTextRecords(RcoFile& file, const std::vector<std::int32_t>& insertAt, const std::vector<TextRec>& records) {
  RequireArraySize(static_cast<std::int64_t>(records.size()));
  Bytes whole = file.Image();
  file.Assign({});
  try {
    file.Seek(0);
    std::int64_t from = 0;
    for (std::size_t language = 0; language < records.size(); ++language) {
      const std::int64_t to = At(insertAt, static_cast<std::int64_t>(language));
      WriteFileSlice(file, whole, from, to);
      file.Write(TextRecordBytesOf(records[language]));
      from = to;
    }
    WriteFileSlice(file, whole, from, static_cast<std::int64_t>(whole.size()));
  } catch (...) {
    file.Assign(std::move(whole));
    throw;
  }
}

// The pointers to the language records. Their distances are worked out in 16 bits, with the old number of texts and a
// record more, and 44 bytes where the languages have 48: firmware tools rely on these values. One that lies too far
// behind stays 0: the table has room for it all the same.
std::vector<std::int32_t> LanguagePointers(Statements& run, const RcoDocument& document, std::int32_t textRoot) {
  std::vector<std::int32_t> pointers(document.langCount);
  for (std::size_t language = 0; language < pointers.size(); ++language) {
    run([&] {
      const Int16 distance = document.textCount * rco::kTextRecSize + rco::langTextCount + rco::kTextRecSize;
      const Int16 number = static_cast<std::int64_t>(language) + 1;
      pointers[language] = CheckedInt32(std::int64_t{textRoot} + rco::kEntryHeadSize + (distance * number).Int());
    });
  }
  return pointers;
}

}  // namespace

void InsertTextRsc(Int16 index, const std::string& label, const WriteContext& context, const AfterInsert& after) {
  RcoDocument& document = context.document;
  RunInsert(context, after, std::nullopt, [&](Statements& run, RcoFile& file) {
    std::int32_t labelPos = 0;
    run([&] { labelPos = InsertLabel(LabelSection::Text, index, label, file, context); });
    std::int32_t relPos = 0;
    run([&] { relPos = Difference(labelPos, document.labelBase); });
    const std::vector<TextRec> newRecords = NewTextRecords(run, document, index, relPos);

    std::int32_t textRoot = 0;
    std::vector<std::int32_t> insertAt;
    run([&] {
      textRoot = file.ReadI32At(rco::hdrTextRoot);
      for (std::int32_t language = 0; language < document.langCount; ++language) {
        const std::int64_t distance = std::int64_t{document.textCount.Int()} * rco::kTextRecSize + rco::langRecords;
        insertAt.push_back(CheckedInt32(std::int64_t{textRoot} + rco::kEntryHeadSize + distance * language +
                                        rco::langRecords + std::int64_t{index.Int()} * rco::kTextRecSize));
      }
    });
    const std::int32_t ptrDelta = std::int32_t{document.langCount} * 4;
    run([&] { FixForNewTextEntry(rco::kTextRecSize, 1, ptrDelta, file, document); });
    run([&] { SpliceTextRecords(file, insertAt, newRecords); });

    const std::vector<std::int32_t> pointers = LanguagePointers(run, document, textRoot);
    run([&] {
      std::array<std::int32_t, 2> p{};
      file.ReadLongsAt(rco::hdrTextPtrs, p);
      InsertPointers(file, std::int64_t{p[0]} + p[1] - ptrDelta, pointers);
    });
  });
}

}  // namespace kelvane
