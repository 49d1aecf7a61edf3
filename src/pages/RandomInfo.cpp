#include "pages/RandomInfo.h"

#include <array>
#include <utility>

#include "common/Int16.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"
#include "pages/PointerTable.h"
#include "pages/StringArea.h"

namespace kelvane {

RandomInfo frmOther_Load(const Mod& mod) {
  RcoFile file(mod.cCurFile);
  return ReadRandomInfo(file);
}

RandomInfo ReadRandomInfo(RcoFile& file) {
  const std::int32_t labelOffset = file.ReadI32At(rco::hdrLabelOffset);
  std::array<std::int32_t, 4> tables{};  // offset and length of the page, then of the animation table
  file.ReadLongsAt(rco::hdrPagePtrs, tables);

  RandomInfo info;
  info.lstPageEnabled = tables[0] >= 1;
  info.lstAnimEnabled = tables[2] >= 1;
  ListPointerTable(file, tables[0], tables[1], labelOffset, info.lstPage);
  ListPointerTable(file, tables[2], tables[3], labelOffset, info.lstAnim);

  std::array<std::int32_t, rco::kLabelLongs> areas{};  // offset and length of the label, then of the event area
  file.ReadLongsAt(rco::kLabelLongsAt, areas);
  ReadStringArea(file, info.lstLabel, areas[0], areas[1]);
  ReadStringArea(file, info.lstNative, areas[2], areas[3]);
  return info;
}

void ListPointerTable(RcoFile& file, std::int32_t offset, std::int32_t byteLength, std::int32_t labelOffset,
                      ListLines& list) {
  if (offset < 1) {
    return;
  }
  const std::vector<std::int32_t> pointers = ReadPointers(file, offset, byteLength);
  const std::int32_t count = PointerCount(byteLength);
  for (Int16 i; i.Int() < count; ++i) {
    // Behind the end of the file all pointers are zeros.
    const std::int32_t pointer = i.Index() < pointers.size() ? pointers[i.Index()] : 0;
    if (pointer > 0) {
      const std::int32_t label = file.ReadI32At(AddInt32(pointer, rco::entryLabel));
      list.Add(ReadLabel(file, AddInt32(labelOffset, label)));
    } else {
      list.Add(" --- BLANK --- ");
    }
  }
}

void ReadStringArea(RcoFile& file, ListLines& list, std::int32_t offset, std::int32_t byteLength) {
  list.Clear();
  if (byteLength < 1) {
    return;
  }
  for (AreaString& string : ReadAreaStrings(file, offset, byteLength)) {
    list.Add(std::move(string.text));
  }
}

}  // namespace kelvane
