#include "pages/EditChoices.h"

#include <array>

#include "common/Bytes.h"
#include "common/Int16.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"
#include "pages/StringArea.h"

namespace kelvane {

namespace {

// Selects a row that the list has; a reference may lead to none.
void SelectIfThere(EditChoices& choices, std::int32_t row) {
  if (row >= 0 && row < static_cast<std::int32_t>(choices.lines.size())) {
    choices.selected = row;
  }
}

void SelectLast(EditChoices& choices) {
  choices.selected = static_cast<int>(choices.lines.size()) - 1;
}

std::string LabelOf(RcoFile& file, const RcoDocument& document, std::int32_t label) {
  return ReadLabel(file, AddInt32(document.labelBase, label));
}

EditChoices Events(RcoFile& file, std::int32_t curValue) {
  std::array<std::int32_t, 2> area{};
  file.ReadLongsAt(rco::hdrEventOffset, area);
  const std::int32_t room = area[1] / rco::kAlignment;
  EditChoices choices;
  for (AreaString& event : ReadAreaStrings(file, area[0], area[1])) {
    choices.lines.push_back(std::move(event.text));
    if (static_cast<std::int32_t>(choices.lines.size()) > room) {
      throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
    }
    choices.values.push_back(event.offset);
    if (event.offset == curValue) {
      SelectLast(choices);
    }
  }
  return choices;
}

EditChoices Texts(RcoFile& file, const RcoDocument& document, std::int32_t curValue) {
  EditChoices choices;
  for (Int16 i; i < document.textCount; ++i) {
    choices.lines.push_back(LabelOf(file, document, At(At(document.textRsc, 0), i.Int()).textLabel));
    choices.values.push_back(i.Int());
  }
  if (curValue < document.textCount.Int()) {
    SelectIfThere(choices, curValue);
  }
  return choices;
}

EditChoices Images(RcoFile& file, const RcoDocument& document, std::int32_t curValue) {
  // The header, two heads in front of the first entry, and entries with all fields.
  constexpr int kFirst = 244;
  constexpr int kStride = 56;
  EditChoices choices;
  Int16 i;
  for (const GenRsc& record : document.genRsc) {
    if (record.rscKind != Int16(rco::kKindImage)) {
      break;
    }
    choices.lines.push_back(LabelOf(file, document, record.labelOffset));
    choices.values.push_back((i * Int16(kStride) + Int16(kFirst)).Int());
    ++i;
  }
  const double row = (static_cast<double>(curValue) - kFirst) / kStride;
  if (document.genCount.Int() > row) {
    SelectIfThere(choices, RoundToInt32(row));
  }
  return choices;
}

EditChoices Models(RcoFile& file, const RcoDocument& document, std::int32_t curValue) {
  EditChoices choices;
  choices.values.resize(document.genRsc.size());
  for (std::size_t i = 0; i < document.genRsc.size(); ++i) {
    const GenRsc& record = document.genRsc[i];
    if (record.rscKind != Int16(rco::kKindGmo)) {
      continue;
    }
    choices.lines.push_back(LabelOf(file, document, record.labelOffset));
    choices.values[i] = AddInt32(record.entryPos, -rco::entryLabel);
    if (choices.values[i] == curValue) {
      SelectLast(choices);
    }
  }
  return choices;
}

EditChoices Anims(RcoFile& file, const RcoDocument& document, std::int32_t curValue) {
  EditChoices choices;
  choices.values.resize(document.animCount.Index());
  for (const EntryRec& record : document.animRecs) {
    if (record.recLabel <= 0) {
      continue;  // operations have no names
    }
    choices.lines.push_back(LabelOf(file, document, record.recLabel));
    At(choices.values, static_cast<std::int64_t>(choices.lines.size()) - 1) = record.recPos;
    if (record.recPos == curValue) {
      SelectLast(choices);
    }
  }
  return choices;
}

EditChoices Pages(RcoFile& file, const RcoDocument& document, std::int32_t curValue) {
  EditChoices choices;
  for (Int16 i; i < document.pageCount; ++i) {
    const EntryRec& record = At(document.pageRecs, i.Int());
    choices.lines.push_back(LabelOf(file, document, record.recLabel));
    choices.values.push_back(record.recPos);
    if (record.recPos == curValue) {
      SelectLast(choices);
    }
  }
  return choices;
}

}  // namespace

bool HasChoices(std::int32_t type) {
  return type == rco::kRefEvent || type == rco::kRefText || type == rco::kRefImage || type == rco::kRefModel ||
         type == rco::kRefAnim || type == rco::kRefPage;
}

EditChoices ListChoices(RcoFile& file, const RcoDocument& document, std::int32_t type, std::int32_t curValue) {
  switch (type) {
    case rco::kRefEvent:
      return Events(file, curValue);
    case rco::kRefText:
      return Texts(file, document, curValue);
    case rco::kRefImage:
      return Images(file, document, curValue);
    case rco::kRefModel:
      return Models(file, document, curValue);
    case rco::kRefAnim:
      return Anims(file, document, curValue);
    default:
      return Pages(file, document, curValue);
  }
}

}  // namespace kelvane
