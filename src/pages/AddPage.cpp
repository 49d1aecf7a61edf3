#include "pages/AddPage.h"

#include "common/Numbers.h"
#include "common/PositionField.h"

namespace kelvane {

std::vector<std::int32_t> NewPageWords(int cboID) {
  switch (cboID) {
    case 0:
      return {0x111, -1, -1, -1, -1, -1, -1, -1, -1};
    case 1:
      return {0, -1, -1, -1, -1, 0};
    default:
      return {};
  }
}

std::optional<NewPage> AcceptAddPage(Prompts& prompts, const RcoDocument& document, const AddPageFields& fields) {
  if (fields.txtDepth.empty()) {
    Tell(prompts, "Must enter a depth value!", Icon::Exclamation);
    return std::nullopt;
  }
  constexpr int kLowest = 1;
  const std::optional<Int16> position = AcceptPosition(prompts, fields.txtPos, document.lstPage.Count(), kLowest);
  if (!position.has_value()) {
    return std::nullopt;
  }
  return NewPage{.position = *position,
                 .words = NewPageWords(fields.cboID),
                 .label = fields.txtLabel,
                 .id = fields.cboID + 1,
                 .depth = RoundToInt32(LeadingNumber(fields.txtDepth))};
}

}  // namespace kelvane
