#include "container/Inserts.h"

#include <algorithm>
#include <array>
#include <optional>

#include "common/Bytes.h"
#include "common/Files.h"
#include "container/FileBracket.h"
#include "container/GenScan.h"
#include "container/InsertLabel.h"
#include "container/NewEntryFixups.h"
#include "container/RcoFormat.h"

namespace kelvane {

namespace {

using PointerLongs = std::array<std::int32_t, rco::kPointerLongs>;

struct EntryHeadFields {
  std::uint8_t entryClass = 0;
  std::uint8_t entryTable = 0;
  std::int32_t entryLabel = 0;
  std::int32_t entrySize = 0;
  std::int32_t entryNext = 0;
  std::int32_t entryPrev = 0;
  std::int32_t entryParent = 0;
};

Bytes EntryHeadBytes(const EntryHeadFields& fields) {
  Bytes head(rco::kEntryHeadSize);
  head[rco::entryClass] = fields.entryClass;
  head[rco::entryTable] = fields.entryTable;
  WriteI32(head, rco::entryLabel, fields.entryLabel);
  WriteI32(head, rco::entryHeadSize, rco::kEntryHeadSize);
  WriteI32(head, rco::entrySize, fields.entrySize);
  WriteI32(head, rco::entryNext, fields.entryNext);
  WriteI32(head, rco::entryPrev, fields.entryPrev);
  WriteI32(head, rco::entryParent, fields.entryParent);
  return head;
}

// Puts `inserted` at `position`. Neither what lies before nor what lies behind may be empty: failure 9.
void SpliceBetween(RcoFile& file, std::int64_t position, ByteView inserted) {
  RequireArraySize(position);
  RequireArraySize(file.Length() - position);
  file.Splice(position, 0, inserted);
}

// Puts pointers at a place of a pointer table. Something must lie behind it.
void InsertPointers(RcoFile& file, std::int64_t position, const std::vector<std::int32_t>& pointers) {
  RequireArraySize(file.Length() - position);
  Bytes bytes(pointers.size() * 4);
  for (std::size_t i = 0; i < pointers.size(); ++i) {
    WriteI32(bytes, static_cast<std::int64_t>(i) * 4, pointers[i]);
  }
  file.Splice(position, 0, bytes);
}

// The open file of an insert, and the document as it was before its steps.
class InsertedFile {
 public:
  explicit InsertedFile(RcoDocument& document) : document_(document), before_(document) {}

  [[nodiscard]] RcoFile& File() { return file_; }

  // Where the file can't be written it stays the old one, and so do the records: the next change works by them.
  void Close() {
    try {
      file_.Close();
    } catch (...) {
      document_ = std::move(before_);
      throw;
    }
  }

 private:
  RcoFile file_;
  RcoDocument& document_;
  RcoDocument before_;
};

// The handler around an insert: the steps of `splice` run on one open file, and giving up closes it with what was
// changed. Then the file is written and opened anew, and line `selected` of lst chosen, if there is one to choose.
template <class Splice>
void RunInsert(const WriteContext& context, const AfterInsert& after, std::optional<Int16> selected, Splice&& splice) {
  InsertedFile inserted(context.document);
  RunStatements(
      context.prompts,
      [&](Statements& run) {
        run([&] { BackupOnce(context.mod, context.watch); });
        run([&] { inserted.File().Open(context.mod.cCurFile); });
        splice(run, inserted.File());
        run([&] { inserted.Close(); });
        run([&] { RecordFileDate(context.mod, context.watch); });
        run([&] { RecordFileDate(context.mod, context.watch); });
        run([&] { after.reopen(); });
        if (selected) {
          run([&] { after.selectLine(*selected); });
        }
      },
      [&] { inserted.Close(); });
}

// What an insert of a general resource works out on its way.
class GenInsert {
 public:
  GenInsert(const NewGenRsc& resource, const WriteContext& context, RcoFile& file)
      : resource_(resource), document_(context.document), context_(context), file_(file) {}

  void Run(Statements& run) {
    run([&] { FindPlace(); });
    run([&] {
      newOffset_ = AddInt32(frontLen_, -At(document_.dataAreas, std::int64_t{resource_.kind.Int() - 1} * 2));
    });
    run([&] { ReadData(); });
    run([&] { file_.Splice(frontLen_, 0, data_); });
    MoveData(run);

    run([&] {
      labelPos_ = InsertLabel(Section(), resource_.position - FirstOfKind(), resource_.label, file_, context_);
    });
    run([&] { root_ = file_.ReadI32At(RootField()); });
    run([&] {
      if (resource_.position + 1 < document_.genCount) {
        insertAt_ = AddInt32(At(document_.genRsc, resource_.position.Int()).entryPos, -rco::kEntryPosBias);
      }
    });
    run([&] {
      FixForNewEntry({.entryDelta = BodySize() + rco::kEntryHeadSize, .index = resource_.position}, file_, document_);
    });
    Bytes entry;
    run([&] { entry = BuildEntry(); });
    run([&] { SpliceBetween(file_, insertAt_, entry); });
    run([&] { AddPointer(); });
  }

 private:
  void FindPlace() {
    if (resource_.position > document_.genCount - 1) {
      frontLen_ = CheckedInt32(file_.Length());
      RequireArraySize(frontLen_);
      return;
    }
    frontLen_ = GetGenDataPos(document_, resource_.position);
    RequireArraySize(frontLen_);
    RequireArraySize(file_.Length() - frontLen_);
  }

  // The records from the place on are the ones that move, so the record before it is the one that grows. Where the
  // place is the first of its kind that is a record, and an area, of the kind before.
  void MoveData(Statements& run) {
    FileHead front(file_, frontLen_);
    try {
      run([&] { ApplyDataDelta(static_cast<std::int32_t>(data_.size()), resource_.position - 1, front, document_); });
    } catch (const Abandoned&) {
      front.TakeBack();  // the fields would have gone to the file in the next statement
      throw;
    }
  }

  void ReadData() {
    data_ = ReadWholeFile(resource_.dataFile);
    fileLen_ = CheckedInt32(static_cast<std::int64_t>(data_.size()));
    RequireArraySize(fileLen_);
    data_.resize(static_cast<std::size_t>(RoundUpTo4(fileLen_)));
  }

  [[nodiscard]] bool IsVag() const { return resource_.kind == Int16(rco::kKindVag); }
  [[nodiscard]] bool IsImage() const { return resource_.kind == Int16(rco::kKindImage); }
  [[nodiscard]] LabelSection Section() const { return static_cast<LabelSection>(resource_.kind.Int() + 1); }
  [[nodiscard]] std::int32_t BodySize() const { return IsVag() ? rco::kVagBodySize : rco::kGeneralBodySize; }
  [[nodiscard]] std::int32_t RootField() const {
    return IsImage() ? rco::hdrImageRoot : IsVag() ? rco::hdrVagRoot : rco::hdrGmoRoot;
  }

  // The lowest record of the kind; 0 where there is none.
  [[nodiscard]] Int16 FirstOfKind() const {
    const auto first = std::find_if(document_.genRsc.begin(), document_.genRsc.end(),
                                    [this](const GenRsc& record) { return record.rscKind == resource_.kind; });
    return first == document_.genRsc.end() ? Int16(0) : Int16(first - document_.genRsc.begin());
  }

  [[nodiscard]] Bytes BuildEntry() const {
    // Both distances have the new entry's own length, whatever the neighbours are; the neighbours keep theirs.
    const std::int32_t length = BodySize() + rco::kEntryHeadSize;
    Bytes entry = EntryHeadBytes({.entryClass = 1,
                                  .entryTable = IsImage() ? rco::kTableImage
                                                : IsVag() ? rco::kTableVag
                                                          : rco::kTableGmo,
                                  .entryLabel = AddInt32(labelPos_, -document_.labelBase),
                                  .entryNext = length,
                                  .entryPrev = length,
                                  .entryParent = AddInt32(insertAt_, -root_)});
    entry.resize(static_cast<std::size_t>(length));
    WriteI32(entry, rco::bodyDataSize, fileLen_);
    WriteI32(entry, rco::bodyDataOffset, newOffset_);
    if (IsVag()) {
      WriteI16(entry, rco::bodyFormat, 1);
      WriteI16(entry, rco::bodyChannels, resource_.extra > 0 ? 2 : 1);
      WriteI32(entry, rco::bodyChannel1Size, AddInt32(fileLen_, -resource_.extra));
      WriteI32(entry, rco::bodyChannel1Offset, newOffset_);
      WriteI32(entry, rco::bodyChannel2Size, resource_.extra);
      // A difference where a sum would be the channel's place: this is the value that an entry gets.
      WriteI32(entry, rco::bodyChannel2Offset, AddInt32(newOffset_, -resource_.extra));
    } else {
      WriteI16(entry, rco::bodyFormat, IsImage() ? rco::kFormatGim : 0);
      WriteI16(entry, rco::bodyCompression, rco::kCompressionZlib);
      WriteI32(entry, rco::bodyUnpackedSize, resource_.extra);
    }
    return entry;
  }

  // The pointer goes to the end of its table, whatever the position is. The table's length is the new one already.
  void AddPointer() {
    PointerLongs p{};
    file_.ReadLongsAt(rco::kPointerLongsAt, p);
    const std::int64_t t = resource_.kind.Int();
    InsertPointers(file_, std::int64_t{At(p, t * 2)} + At(p, t * 2 + 1) - 4, {insertAt_});
  }

  const NewGenRsc& resource_;
  RcoDocument& document_;
  const WriteContext& context_;
  RcoFile& file_;
  std::int32_t frontLen_ = 0;
  std::int32_t newOffset_ = 0;  // of the data, inside its area
  Bytes data_;                  // padded
  std::int32_t fileLen_ = 0;    // without padding
  std::int32_t labelPos_ = 0;
  std::int32_t root_ = 0;
  std::int32_t insertAt_ = 0;
};

// The text records that one insert puts in, one for each language.
std::vector<TextRec> NewTextRecords(const RcoDocument& document, Int16 index, std::int32_t textLabel) {
  RequireArraySize(document.langCount);
  std::vector<TextRec> records(document.langCount);
  for (std::size_t language = 0; language < records.size(); ++language) {
    const std::vector<TextRec>& texts = At(document.textRsc, static_cast<std::int64_t>(language));
    records[language].textLabel = textLabel;
    if (index >= document.textCount) {
      const TextRec& last = At(texts, document.textCount.Int() - 1);
      records[language].textOffset =
          CheckedInt32(std::int64_t{last.textOffset} + last.textLength + 4 - last.textLength % 4);
    } else {
      records[language].textOffset = At(texts, index.Int()).textOffset;
    }
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
// record more, and 44 bytes where the languages have 48: firmware tools rely on these values.
std::vector<std::int32_t> LanguagePointers(const RcoDocument& document, std::int32_t textRoot) {
  std::vector<std::int32_t> pointers;
  pointers.reserve(document.langCount);
  const Int16 distance = document.textCount * rco::kTextRecSize + rco::langTextCount + rco::kTextRecSize;
  for (std::int32_t language = 0; language < document.langCount; ++language) {
    pointers.push_back(CheckedInt32(std::int64_t{textRoot} + rco::kEntryHeadSize + (distance * (language + 1)).Int()));
  }
  return pointers;
}

// The nearest record in front of `index` whose depth is below `depth`; record 0 where there is none.
Int16 ParentOf(const RcoDocument& document, Int16 index, Int16 depth) {
  for (Int16 i = index - 1; i >= 0; --i) {
    if (At(document.pageRecs, i.Int()).recDepth < depth.Int()) {
      return i;
    }
  }
  return 0;
}

}  // namespace

void InsertGenRsc(const NewGenRsc& resource, const WriteContext& context, const AfterInsert& after) {
  RunInsert(context, after, resource.position,
            [&](Statements& run, RcoFile& file) { GenInsert(resource, context, file).Run(run); });
}

void InsertTextRsc(Int16 index, const std::string& label, const WriteContext& context, const AfterInsert& after) {
  RcoDocument& document = context.document;
  RunInsert(context, after, std::nullopt, [&](Statements& run, RcoFile& file) {
    std::int32_t relPos = 0;
    run([&] { relPos = AddInt32(InsertLabel(LabelSection::Text, index, label, file, context), -document.labelBase); });
    std::vector<TextRec> newRecords;
    run([&] { newRecords = NewTextRecords(document, index, relPos); });

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

    run([&] {
      const std::vector<std::int32_t> pointers = LanguagePointers(document, textRoot);
      PointerLongs p{};
      file.ReadLongsAt(rco::kPointerLongsAt, p);
      InsertPointers(file, std::int64_t{p[0]} + p[1] - ptrDelta, pointers);
    });
  });
}

void InsertPageRsc(const NewPageRsc& page, const WriteContext& context, const AfterInsert& after) {
  RcoDocument& document = context.document;
  RunInsert(context, after, page.index, [&](Statements& run, RcoFile& file) {
    std::int32_t labelPos = 0;
    run([&] { labelPos = InsertLabel(LabelSection::Page, page.index, page.label, file, context); });
    Int16 parent;
    run([&] { parent = ParentOf(document, page.index, page.depth); });
    std::int32_t entryLen = 0;
    run([&] {
      RequireArraySize(static_cast<std::int64_t>(page.body.size()));
      entryLen = rco::kEntryHeadSize + 4 * static_cast<std::int32_t>(page.body.size());
    });
    std::int32_t insertAt = 0;
    run([&] {
      if (page.index + 1 < document.pageCount) {
        insertAt = At(document.pageRecs, page.index.Int()).recPos;
      }
    });
    run([&] {
      FixForNewEntry({.entryDelta = entryLen, .index = page.index, .depth = page.depth, .parent = parent}, file,
                     document);
    });

    Bytes entry;
    run([&] {
      // Also a child of the root gets its distance to a record: the parent's place holds record 0 then.
      entry = EntryHeadBytes({.entryClass = page.entryClass,
                              .entryTable = rco::kTablePage,
                              .entryLabel = AddInt32(labelPos, -document.labelBase),
                              .entrySize = entryLen,
                              .entryNext = entryLen,
                              .entryPrev = entryLen,
                              .entryParent = AddInt32(insertAt, -At(document.pageRecs, parent.Int()).recPos)});
    });
    for (const std::int32_t word : page.body) {
      entry.resize(entry.size() + 4);
      WriteI32(entry, static_cast<std::int64_t>(entry.size()) - 4, word);
    }
    run([&] { SpliceBetween(file, insertAt, entry); });
    run([&] {
      std::array<std::int32_t, 2> table{};
      file.ReadLongsAt(rco::hdrPagePtrs, table);
      InsertPointers(file, std::int64_t{table[0]} + table[1] - 4, {insertAt});
    });
  });
}

}  // namespace kelvane
