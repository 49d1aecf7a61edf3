#include "text/AddText.h"

#include "common/PositionField.h"

namespace kelvane {

std::string FirstAddTextPosition(const RcoDocument& document) {
  const int selected = document.lstText.Selected();
  return selected >= 0 ? std::to_string(selected) : "";
}

std::optional<Int16> AcceptAddText(Prompts& prompts, const RcoDocument& document, std::string_view label,
                                   std::string_view position) {
  if (label.empty()) {
    Tell(prompts, "必须输入一个标记", Icon::Exclamation);
    return std::nullopt;
  }
  return AcceptPosition(prompts, position, document.lstText.Count(), 0);
}

}  // namespace kelvane
