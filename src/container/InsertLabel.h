// A new name in the label area.
#pragma once

#include <cstdint>
#include <string_view>

#include "container/GenWrite.h"

namespace kelvane {

// The owners of labels, in the order of the label area.
enum class LabelSection : int { Text = 1, Image = 2, Vag = 3, Gmo = 4, Page = 5, Anim = 6 };

// Moves the label offsets, in records and file, behind the place of a new label that takes `growth` bytes: item
// `itemIndex` of `section`. Gives the label's place relative to the label area; where no item marks the place that is
// the start of the area. Failures: 9 where what marks the place isn't there, 6.
std::int32_t MakeLabelRoom(LabelSection section, Int16 itemIndex, std::int32_t growth, RcoFile& file,
                           const WriteContext& context);

// Makes room and puts `label`, UTF-8, into the open file, in Latin-1 and with 1 to 4 NULs behind it. Gives its absolute
// offset. Failures: those of MakeLabelRoom, 9 where the place is the start or the end of the file.
std::int32_t InsertLabel(LabelSection section, Int16 itemIndex, std::string_view label, RcoFile& file,
                         const WriteContext& context);

}  // namespace kelvane
