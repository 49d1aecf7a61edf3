#include "pages/EntryScan.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "common/Bytes.h"
#include "common/Numbers.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"
#include "pages/PointerTable.h"

namespace kelvane {

namespace {

constexpr std::size_t kAnimRecords = 4096;
// How many entries are still to come at each depth of a page table. An entry at depth 7 has no counter for its
// children, whether it has any or not: failure 9.
constexpr std::size_t kDepths = 8;
using DepthCounters = std::array<std::int32_t, kDepths>;

// What an animation's operation does; empty for a type without a name of its own.
std::string_view OperationName(std::int32_t type) {
  constexpr std::array<std::pair<std::int32_t, std::string_view>, 6> kNames = {{{rco::kOpPosition, "设置对象坐标"},
                                                                                {rco::kOpColour, "设置对象颜色"},
                                                                                {rco::kOpScale, "设置对象比例"},
                                                                                {rco::kOpAlpha, "设置对象透明度"},
                                                                                {rco::kOpDelay, "延迟"},
                                                                                {rco::kOpEvent, "触发事件"}}};
  for (const auto& [known, name] : kNames) {
    if (known == type) {
      return name;
    }
  }
  return {};
}

// Rows are 16-bit numbers: line 32768 is failure 6. This also ends the walk over nested operations, whose copies of the
// record index would let a hostile file go on for ever.
void AddLine(ListLines& list, Int16 depth, const std::string& text) {
  static_cast<void>(Int16(list.Count()) + Int16(1));
  list.Add(std::string((Int16(3) * depth).Index(), ' ') + text);
}

// What the walks read of an entry's head, but its type and label.
struct EntryHead {
  std::int32_t size = 0;
  std::int32_t children = 0;
  std::int32_t next = 0;
  std::int32_t previous = 0;
};

// Reads the head at the file's position in one go, its type and label into `record`.
EntryHead ReadHead(RcoFile& file, EntryRec& record) {
  std::array<std::uint8_t, rco::entryParent> bytes{};
  file.Read(bytes);
  record.recType = ReadI32(bytes, rco::entryClass);
  record.recLabel = ReadI32(bytes, rco::entryLabel);
  return {.size = ReadI32(bytes, rco::entrySize),
          .children = ReadI32(bytes, rco::entryChildren),
          .next = ReadI32(bytes, rco::entryNext),
          .previous = ReadI32(bytes, rco::entryPrev)};
}

// The table's pointers in the file's order, without the zeros at their end.
std::vector<std::int32_t> ReadSortedPointers(RcoFile& file, std::int32_t offset, std::int32_t byteLength) {
  std::vector<std::int32_t> pointers = ReadPointers(file, offset, byteLength);
  SortEntryPointers(pointers);
  while (!pointers.empty() && pointers.back() == 0) {
    pointers.pop_back();
  }
  return pointers;
}

// Steps through one table's top-level pointers.
class TableWalk {
 public:
  TableWalk(RcoFile& file, RcoDocument& document, bool isPageTable, bool expert)
      : file_(file),
        labelBase_(document.labelBase),
        list_(isPageTable ? document.lstPage : document.lstAnim),
        recs_(isPageTable ? document.pageRecs : document.animRecs),
        count_(isPageTable ? document.pageCount : document.animCount),
        isPageTable_(isPageTable),
        expert_(expert) {}

  void Run(std::int32_t endBound);

 private:
  // The fields of the entry at `position` into `record`, its line into the list, the number of its children into the
  // counter of the next depth. `end` is where the entry ends if it doesn't tell its own length.
  void ReadEntry(std::int32_t position, std::int32_t end, EntryRec& record);
  [[nodiscard]] std::string Line(const EntryRec& record);
  // Moves the depth on to that of the next page, by the counts alone.
  void StepDepth();

  RcoFile& file_;
  std::int32_t labelBase_;
  ListLines& list_;
  std::vector<EntryRec>& recs_;
  Int16& count_;
  bool isPageTable_;
  bool expert_;
  DepthCounters counters_{};
  Int16 depth_;
};

void TableWalk::Run(std::int32_t endBound) {
  const std::int32_t offset = file_.ReadI32();
  const std::int32_t byteLength = file_.ReadI32();
  count_ = 0;
  recs_.clear();
  if (offset < 1) {
    return;
  }
  const std::vector<std::int32_t> pointers = ReadSortedPointers(file_, offset, byteLength);
  count_ = static_cast<std::int64_t>(pointers.size());
  recs_.resize(isPageTable_ ? count_.Index() : kAnimRecords);
  counters_[0] = count_.Int() + 1;
  Int16 recIndex;
  for (std::size_t i = 0; i < pointers.size(); ++i) {
    const std::int32_t position = pointers[i];
    const std::int32_t end = i + 1 < pointers.size() ? pointers[i + 1] : endBound;
    EntryRec& record = At(recs_, recIndex.Int());
    ReadEntry(position, end, record);
    if (isPageTable_) {
      StepDepth();
    } else {
      const std::int32_t total = CheckedInt32(std::int64_t{end} - position);
      file_.Seek(AddInt32(position, record.recSize));
      ScanChildEntries(counters_[1], recs_, recIndex, file_, list_, depth_ + Int16(1), rco::kEntryHeadSize, total);
    }
    ++recIndex;
  }
  if (!isPageTable_) {
    recs_.resize(recIndex.Index());
  }
}

void TableWalk::ReadEntry(std::int32_t position, std::int32_t end, EntryRec& record) {
  record.recPos = position;
  file_.Seek(position);
  const EntryHead head = ReadHead(file_, record);
  AddLine(list_, depth_, Line(record));
  record.recDepth = depth_.Int();
  record.recSize = head.size;
  At(counters_, depth_.Int() + 1) = head.children;
  if (record.recSize == 0) {
    record.recSize = CheckedInt32(std::int64_t{end} - position);
  }
}

std::string TableWalk::Line(const EntryRec& record) {
  std::string line = record.recLabel >= 0
                         ? ReadLabel(file_, AddInt32(labelBase_, record.recLabel)) + " @ 0x" + HexOf(record.recPos)
                         : "项目 #" + std::to_string(list_.Count());
  if (expert_) {
    line += " [0x" + HexOf(record.recType) + "]";
  }
  return line;
}

void TableWalk::StepDepth() {
  --At(counters_, depth_.Int());
  if (At(counters_, depth_.Int() + 1) > 0) {
    ++depth_;
    return;
  }
  // The counter of depth 0 starts one above the number of entries, so that this ends there at the latest.
  while (At(counters_, depth_.Int()) <= 0) {
    --depth_;
  }
}

// Sets the length of a child that may have none of its own: the distance to its next sibling, then what is left of its
// parent for the last child and the distance to the previous sibling for any other, and again that to the next one.
// `usedBytes` counts what the children in front of the last one take of their parent.
void SetChildSize(const EntryHead& head, bool last, std::int32_t& usedBytes, std::int32_t totalBytes,
                  EntryRec& record) {
  record.recSize = head.size < 1 ? head.next : head.size;
  if (last) {
    if (record.recSize < 1) {
      record.recSize = CheckedInt32(std::int64_t{totalBytes} - usedBytes);
    }
  } else {
    if (record.recSize < 1) {
      record.recSize = head.previous;
    }
    usedBytes = AddInt32(usedBytes, record.recSize);
  }
  if (record.recSize < 1) {
    record.recSize = head.next;
  }
}

}  // namespace

void ScanEntryTable(RcoFile& file, std::int32_t endBound, RcoDocument& document, bool isPageTable, bool expert) {
  TableWalk(file, document, isPageTable, expert).Run(endBound);
}

void ScanChildEntries(std::int32_t childCount, std::vector<EntryRec>& recs, Int16& recIndex, RcoFile& file,
                      ListLines& list, Int16 depth, std::int32_t usedBytes, std::int32_t totalBytes) {
  std::string_view name;  // kept from one child to the next: a type without a name shows the one before it
  for (std::int32_t child = 0; child < childCount; ++child) {
    EntryRec& record = At(recs, (recIndex + Int16(1)).Int());
    record.recPos = CheckedInt32(file.Position());
    const EntryHead head = ReadHead(file, record);
    if (const std::string_view own = OperationName(record.recType); !own.empty()) {
      name = own;
    }
    AddLine(list, depth, "[0x" + HexOf(record.recType) + "] " + std::string(name));
    record.recDepth = depth.Int();
    SetChildSize(head, child == childCount - 1, usedBytes, totalBytes, record);
    file.Seek(AddInt32(record.recPos, record.recSize));
    ++recIndex;
    if (head.children > 0) {
      // The copy stays behind here, and the siblings that follow overwrite records of the nested call: rows and records
      // of such a table no longer agree, and the writers work by those records.
      Int16 nested = recIndex + Int16(1);
      ScanChildEntries(head.children, recs, nested, file, list, depth + Int16(1), usedBytes, head.next);
    }
  }
}

void SortEntryPointers(std::vector<std::int32_t>& pointers) {
  std::vector<std::int32_t> positive;
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < pointers.size(); ++i) {
    if (pointers[i] > 0) {
      positive.push_back(pointers[i]);
      places.push_back(i);
    }
  }
  // Pass i of the exchange sort puts the next positive item at i; what stood there, if it isn't positive, goes to where
  // the first of the remaining positive items was found.
  for (std::size_t i = 0; i < places.size(); ++i) {
    pointers[places[i]] = pointers[i];
  }
  std::sort(positive.begin(), positive.end());
  std::copy(positive.begin(), positive.end(), pointers.begin());
}

}  // namespace kelvane
