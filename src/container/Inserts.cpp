#include "container/Inserts.h"

#include <algorithm>
#include <array>

#include "common/Bytes.h"
#include "common/Files.h"
#include "container/GenScan.h"
#include "container/InsertLabel.h"
#include "container/InsertRun.h"
#include "container/NewEntryFixups.h"
#include "container/RcoFormat.h"

namespace kelvane {

namespace {

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

// What an insert of a general resource works out on its way.
class GenInsert {
 public:
  GenInsert(const NewGenRsc& resource, const WriteContext& context, RcoFile& file)
      : resource_(resource), document_(context.document), context_(context), file_(file) {}

  void Run(Statements& run) {
    run([&] { FindPlace(); });
    run([&] {
      newOffset_ = Difference(frontLen_, At(document_.dataAreas, std::int64_t{resource_.kind.Int() - 1} * 2));
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
    const Bytes entry = BuildEntry(run);
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

  // A field that can't be worked out stays 0.
  [[nodiscard]] Bytes BuildEntry(Statements& run) const {
    std::int32_t label = 0;
    run([&] { label = Difference(labelPos_, document_.labelBase); });
    std::int32_t parent = 0;
    run([&] { parent = Difference(insertAt_, root_); });
    // Both distances have the new entry's own length, whatever the neighbours are; the neighbours keep theirs.
    const std::int32_t length = BodySize() + rco::kEntryHeadSize;
    Bytes entry = EntryHeadBytes({.entryClass = 1,
                                  .entryTable = IsImage() ? rco::kTableImage
                                                : IsVag() ? rco::kTableVag
                                                          : rco::kTableGmo,
                                  .entryLabel = label,
                                  .entryNext = length,
                                  .entryPrev = length,
                                  .entryParent = parent});
    entry.resize(static_cast<std::size_t>(length));
    WriteI32(entry, rco::bodyDataSize, fileLen_);
    WriteI32(entry, rco::bodyDataOffset, newOffset_);
    if (IsVag()) {
      WriteI16(entry, rco::bodyFormat, 1);
      WriteI16(entry, rco::bodyChannels, resource_.extra > 0 ? 2 : 1);
      run([&] { WriteI32(entry, rco::bodyChannel1Size, Difference(fileLen_, resource_.extra)); });
      WriteI32(entry, rco::bodyChannel1Offset, newOffset_);
      WriteI32(entry, rco::bodyChannel2Size, resource_.extra);
      // A difference where a sum would be the channel's place: this is the value that an entry gets.
      run([&] { WriteI32(entry, rco::bodyChannel2Offset, Difference(newOffset_, resource_.extra)); });
    } else {
      WriteI16(entry, rco::bodyFormat, IsImage() ? rco::kFormatGim : 0);
      WriteI16(entry, rco::bodyCompression, rco::kCompressionZlib);
      WriteI32(entry, rco::bodyUnpackedSize, resource_.extra);
    }
    return entry;
  }

  // The pointer goes to the end of its table, whatever the position is. The table's length is the new one already.
  void AddPointer() {
    std::array<std::int32_t, rco::kPointerLongs> p{};
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

    std::int32_t entryLabel = 0;
    run([&] { entryLabel = Difference(labelPos, document.labelBase); });
    std::int32_t entryParent = 0;
    // Also a child of the root gets its distance to a record: the parent's place holds record 0 then.
    run([&] { entryParent = Difference(insertAt, At(document.pageRecs, parent.Int()).recPos); });
    Bytes entry = EntryHeadBytes({.entryClass = page.entryClass,
                                  .entryTable = rco::kTablePage,
                                  .entryLabel = entryLabel,
                                  .entrySize = entryLen,
                                  .entryNext = entryLen,
                                  .entryPrev = entryLen,
                                  .entryParent = entryParent});
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
