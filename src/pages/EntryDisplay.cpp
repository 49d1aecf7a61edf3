#include "pages/EntryDisplay.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "common/Bytes.h"
#include "common/Numbers.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"
#include "pages/PlainFloat.h"

namespace kelvane {

namespace {

// The words behind an entry's head. A walk over them goes by a 16-bit index and looks one word ahead, so that no more
// are ever read, whatever length the entry claims.
struct Body {
  std::int32_t count = 0;
  std::vector<std::int32_t> words;
};

Body ReadBody(RcoFile& file, const EntryRec& record) {
  constexpr std::int32_t kReachable = std::numeric_limits<std::int16_t>::max() + 2;
  Body body;
  body.count = (record.recSize - rco::kEntryHeadSize) / rco::kWordSize;
  if (std::int64_t{body.count} * rco::kWordSize > kMaxArrayBytes) {
    throw RuntimeFailure(FailureCode::OutOfMemory);
  }
  body.words.resize(static_cast<std::size_t>(std::min(body.count, kReachable)));
  file.ReadLongsAt(AddInt32(record.recPos, rco::kEntryHeadSize), body.words);
  return body;
}

// Turns references into names. A place that lies outside the file has a name too, however far away it is: in front of
// the file that of no label, behind it what zeros give.
class References {
 public:
  References(RcoFile& file, std::int32_t labelBase)
      : file_(file),
        labelBase_(labelBase),
        textRoot_(file.ReadI32At(rco::hdrTextRoot)),
        eventOffset_(file.ReadI32At(rco::hdrEventOffset)) {}

  // The name that a reference of a type with a prefix leads to.
  [[nodiscard]] std::string Name(std::int32_t type, std::int32_t value) {
    switch (type) {
      case rco::kRefEvent:
        return LabelAt(std::int64_t{eventOffset_} + value);
      case rco::kRefText:
        return NameAt(std::int64_t{textRoot_} + rco::kEntryHeadSize + rco::langRecords +
                      std::int64_t{value} * rco::kTextRecSize);
      default:
        return NameAt(std::int64_t{value} + rco::entryLabel);
    }
  }

 private:
  // The label whose offset stands at `position`. In front of the file there is none to read.
  [[nodiscard]] std::string NameAt(std::int64_t position) {
    return LabelAt(position < 0 ? position : std::int64_t{labelBase_} + file_.ReadI32At(position));
  }

  [[nodiscard]] std::string LabelAt(std::int64_t position) {
    constexpr std::int64_t kBehindAnyFile = std::numeric_limits<std::int32_t>::max();
    return ReadLabel(file_, static_cast<std::int32_t>(std::clamp(position, std::int64_t{-1}, kBehindAnyFile)));
  }

  RcoFile& file_;
  std::int32_t labelBase_;
  std::int32_t textRoot_;
  std::int32_t eventOffset_;
};

void FillBoxes(EntryDisplay& display, const Body& body) {
  for (std::size_t i = 0; i < display.txtPageOpt.size(); ++i) {
    display.txtPageOpt[i] = FloatText(std::bit_cast<float>(At(body.words, static_cast<std::int64_t>(i))));
    ++display.txtPageOptRevision;
  }
}

void ListPageRows(const Body& body, References& references, Int16 first, ListLines& list) {
  Int16 i = first;
  while (i.Int() < body.count) {
    const std::int32_t word = At(body.words, i.Int());
    if (i.Int() == body.count - 1) {  // never a reference: there is no word for its value
      AddValueRow(word, list);
      ++i;
      continue;
    }
    const std::int32_t value = At(body.words, i.Int() + 1);
    if (word == rco::kBlankType && value == rco::kBlankValue) {
      list.Add(std::string(kBlankRow));
      i += 2;
    } else if (const std::string_view prefix = ReferencePrefix(word); !prefix.empty()) {
      list.Add(std::string(prefix) + references.Name(word, value));
      i += 2;
    } else if (word >= rco::kRefFirst && word <= rco::kRefLast) {
      list.Add("[0x" + HexOf(word) + "] " + HexWordText(value));
      i += 2;
    } else {
      AddValueRow(word, list);
      ++i;
    }
  }
}

}  // namespace

bool HasPositionBlock(std::int32_t type) {
  constexpr std::array<std::pair<std::int32_t, std::int32_t>, 6> kRanges = {
      {{0x802, 0x804}, {0x806, 0x809}, {0x80D, 0x80F}, {0x811, 0x813}, {0x815, 0x817}, {0x819, 0x819}}};
  return std::any_of(kRanges.begin(), kRanges.end(),
                     [type](const auto& range) { return type >= range.first && type <= range.second; });
}

std::string_view ReferencePrefix(std::int32_t type) {
  switch (type) {
    case rco::kRefEvent:
      return "[event] ";
    case rco::kRefText:
      return "[text] ";
    case rco::kRefImage:
      return "[image] ";
    case rco::kRefModel:
      return "[model] ";
    case rco::kRefAnim:
      return "[anim] ";
    case rco::kRefPageOld:
    case rco::kRefPage:
      return "[page] ";
    default:
      return {};
  }
}

void AddValueRow(std::int32_t value, ListLines& list) {
  list.Add(IsPlainFloat(value) ? FloatText(std::bit_cast<float>(value)) : HexWordText(value));
}

void lstPage_Click(const Mod& mod, RcoDocument& document) {
  const bool sel = document.lstPage.Selected() >= 0;
  document.entries.lstPageDataEnabled = sel;
  document.entries.cmdPageChangeEnabled = sel;
  if (!sel) {
    return;
  }
  document.lstPageData.Clear();
  RcoFile file(mod.cCurFile);
  ShowPageEntry(file, document);
}

void lstAnim_Click(const Mod& mod, RcoDocument& document) {
  const bool sel = document.lstAnim.Selected() >= 0;
  document.entries.lstAnimDataEnabled = sel;
  document.entries.cmdAnimChangeEnabled = sel;
  if (!sel) {
    return;
  }
  document.lstAnimData.Clear();
  RcoFile file(mod.cCurFile);
  ShowAnimEntry(file, document);
}

void ShowPageEntry(RcoFile& file, RcoDocument& document) {
  EntryDisplay& display = document.entries;
  const EntryRec& record = At(document.pageRecs, document.lstPage.Selected());
  if (record.recSize < rco::kSmallestWithBody) {
    return;
  }
  const Body body = ReadBody(file, record);
  display.picPagePosVisible = HasPositionBlock(record.recType);
  display.pageDataStart = display.picPagePosVisible ? rco::kPositionWords : 0;
  References references(file, document.labelBase);
  if (display.picPagePosVisible) {
    FillBoxes(display, body);
  }
  ListPageRows(body, references, display.pageDataStart, document.lstPageData);
}

void ShowAnimEntry(RcoFile& file, RcoDocument& document) {
  const EntryRec& record = At(document.animRecs, document.lstAnim.Selected());
  if (record.recSize < rco::kSmallestWithBody) {
    return;
  }
  const Body body = ReadBody(file, record);
  for (Int16 i; i.Int() < body.count; ++i) {
    AddValueRow(At(body.words, i.Int()), document.lstAnimData);
  }
}

}  // namespace kelvane
