#include "container/InsertLabel.h"

#include <algorithm>
#include <array>

#include "common/Bytes.h"
#include "common/Encoding.h"
#include "container/FileBracket.h"
#include "container/RcoFormat.h"
#include "container/TextRecords.h"

namespace kelvane {

namespace {

constexpr int kSections = 6;

// The walk over the items behind the place of a new label.
class LabelWalk {
 public:
  LabelWalk(LabelSection section, Int16 itemIndex, std::int32_t growth, RcoDocument& document)
      : section_(static_cast<int>(section)), itemIndex_(itemIndex), growth_(growth), document_(document) {
    counts_[0] = document.textCount;
    for (const int kind : {rco::kKindImage, rco::kKindVag, rco::kKindGmo}) {
      counts_[static_cast<std::size_t>(kind)] =
          std::count_if(document.genRsc.begin(), document.genRsc.end(),
                        [kind](const GenRsc& record) { return record.rscKind == Int16(kind); });
    }
    counts_[4] = document.pageCount;
    counts_[5] = document.animCount;
    if (section_ > static_cast<int>(LabelSection::Image)) {
      genCursor_ += counts_[1];
    }
    if (section_ > static_cast<int>(LabelSection::Vag)) {
      genCursor_ += counts_[2];
    }
  }

  // Shifts the labels and gives the place of the new one.
  std::int32_t Run() {
    for (int s = section_; s <= kSections; ++s) {
      const Int16 count = CountOf(s);
      if (count > Int16(0)) {
        for (i_ = 0; i_ < count; ++i_) {
          VisitItem(s, count);
        }
      }
      if (count == Int16(0) && s - 1 == section_ && CountOf(s - 1) == itemIndex_) {
        // The next section is empty: what the cursors have come to marks the place.
        relPos_ = LabelAt(s);
      }
    }
    return relPos_;
  }

 private:
  [[nodiscard]] Int16 CountOf(int s) const { return counts_[static_cast<std::size_t>(s - 1)]; }

  void VisitItem(int s, Int16 count) {
    // The end of a section is told by the first item of the next one. The next section's count is what is compared with
    // the place, not the section's own.
    if ((s == section_ && i_ == itemIndex_) || (s - 1 == section_ && i_ == Int16(0) && count == itemIndex_)) {
      relPos_ = LabelAt(s);
    }
    if (s != section_ || i_ >= itemIndex_) {
      Shift(s);
    }
    if (IsGeneral(s)) {
      ++genCursor_;
    }
  }

  static bool IsGeneral(int s) {
    return s >= static_cast<int>(LabelSection::Image) && s <= static_cast<int>(LabelSection::Gmo);
  }

  // The label offset of the item that the cursors are on.
  [[nodiscard]] std::int32_t LabelAt(int s) {
    if (IsGeneral(s)) {
      return At(document_.genRsc, genCursor_.Int()).labelOffset;
    }
    switch (static_cast<LabelSection>(s)) {
      case LabelSection::Text:
        return At(At(document_.textRsc, 0), i_.Int()).textLabel;
      case LabelSection::Page:
        return At(document_.pageRecs, i_.Int()).recLabel;
      default:
        return At(document_.animRecs, i_.Int()).recLabel;
    }
  }

  void Shift(int s) {
    const auto add = [this](std::int32_t& label) { label = AddInt32(label, growth_); };
    if (IsGeneral(s)) {
      add(At(document_.genRsc, genCursor_.Int()).labelOffset);
      return;
    }
    switch (static_cast<LabelSection>(s)) {
      case LabelSection::Text:
        for (std::vector<TextRec>& language : document_.textRsc) {
          add(At(language, i_.Int()).textLabel);
        }
        break;
      case LabelSection::Page:
        add(At(document_.pageRecs, i_.Int()).recLabel);
        break;
      default:
        add(At(document_.animRecs, i_.Int()).recLabel);
        break;
    }
  }

  int section_;
  Int16 itemIndex_;
  std::int32_t growth_;
  RcoDocument& document_;
  std::array<Int16, kSections> counts_;
  Int16 genCursor_;  // the running index in genRsc
  Int16 i_;
  std::int32_t relPos_ = 0;
};

void WriteRecLabels(RcoFile& file, const std::vector<EntryRec>& records) {
  for (const EntryRec& record : records) {
    file.WriteI32At(std::int64_t{record.recPos} + rco::entryLabel, record.recLabel);
  }
}

}  // namespace

std::int32_t MakeLabelRoom(LabelSection section, Int16 itemIndex, std::int32_t growth, RcoFile& file,
                           const WriteContext& context) {
  RcoDocument& document = context.document;
  const std::int32_t relPos = LabelWalk(section, itemIndex, growth, document).Run();

  BackupOnce(context.mod, context.watch);
  AddToFileLong(file, rco::hdrEventOffset, growth, false);
  for (const std::size_t area : {0U, 2U, 4U}) {
    std::int32_t& offset = document.dataAreas[area];
    offset = offset > 0 ? AddInt32(offset, growth) : offset;
  }
  file.WriteLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
  if (document.textCount > Int16(0)) {
    WriteTextRecords(file, document, 0);
  }
  if (document.genCount > Int16(0)) {
    FileHead head(file, document.labelBase);
    try {
      WriteGenRscFields(head, document);
    } catch (...) {
      head.TakeBack();  // the fields go to the file together or not at all
      throw;
    }
  }
  if (document.pageCount > Int16(0)) {
    WriteRecLabels(file, document.pageRecs);
  }
  if (document.animCount > Int16(0)) {
    WriteRecLabels(file, document.animRecs);
  }
  RecordFileDate(context.mod, context.watch);
  return relPos;
}

std::int32_t InsertLabel(LabelSection section, Int16 itemIndex, std::string_view label, RcoFile& file,
                         const WriteContext& context) {
  Bytes bytes = Utf8ToLatin1(label);
  const std::int32_t length = CheckedInt32(static_cast<std::int64_t>(bytes.size()));
  const std::int32_t growth = RoundUpTo4(AddInt32(length, 1));
  const std::int32_t relPos = MakeLabelRoom(section, itemIndex, growth, file, context);

  const std::int32_t abs = AddInt32(context.document.labelBase, relPos);
  BackupOnce(context.mod, context.watch);
  RequireArraySize(abs);
  RequireArraySize(file.Length() - abs);
  bytes.resize(bytes.size() + static_cast<std::size_t>(rco::kAlignment - length % rco::kAlignment));
  file.Splice(abs, 0, bytes);
  RecordFileDate(context.mod, context.watch);
  return abs;
}

}  // namespace kelvane
