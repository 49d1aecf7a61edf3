// What the list dialog offers for the value of a reference.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "container/RcoDocument.h"
#include "container/RcoFile.h"

namespace kelvane {

struct EditChoices {
  std::vector<std::string> lines;
  // The value behind each line, by row; there may be more values than lines, never fewer.
  std::vector<std::int32_t> values;
  // The row that stands for the present value; -1: none.
  int selected = -1;
};

// Whether the value of a reference of that type is chosen from a list: event, text, image, model, anim and page
// (0x409).
[[nodiscard]] bool HasChoices(std::int32_t type);

// The list for a reference of such a type whose value is `curValue`, from the records and the labels and events of the
// file. Failures: 6 for the 582nd image and for offsets beyond 32 bits; 9 for an event area without bytes, for more
// events than a quarter of its length, for more labelled animation records than animations, and for counts without
// records; 7, 5.
//
// Two lists don't give what their lines say, and files in the field hold what was chosen that way: images get offsets
// by a fixed layout and not their own, and the values of models stand by their index among all resources and not by
// row.
[[nodiscard]] EditChoices ListChoices(RcoFile& file, const RcoDocument& document, std::int32_t type,
                                      std::int32_t curValue);

}  // namespace kelvane
