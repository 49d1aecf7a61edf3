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

std::optional<NewPageRsc> AcceptAddPage(Prompts& prompts, const RcoDocument& document, const AddPageFields& fields) {
  if (fields.txtDepth.empty()) {
    Tell(prompts, "Must enter a depth value!", Icon::Exclamation);
    return std::nullopt;
  }
  constexpr int kLowest = 1;
  const std::optional<Int16> position = AcceptPosition(prompts, fields.txtPos, document.lstPage.Count(), kLowest);
  if (!position.has_value()) {
    return std::nullopt;
  }
  return NewPageRsc{.index = *position,
                    .body = NewPageWords(fields.cboID),
                    .label = fields.txtLabel,
                    .entryClass = static_cast<std::uint8_t>(fields.cboID + 1),
                    .depth = RoundToInt16(LeadingNumber(fields.txtDepth))};
}

}  // namespace kelvane
