#include "common/PositionField.h"

#include "common/Files.h"
#include "common/Numbers.h"

namespace kelvane {

std::string PositionRangeText(int lineCount) {
  return "(0 to " + std::to_string(lineCount) + ")";
}

std::optional<Int16> AcceptPosition(Prompts& prompts, std::string_view text, int lineCount, int lowest) {
  const Int16 position = RoundToInt16(LeadingNumber(text));
  if (position.Int() > lineCount || position.Int() < 0) {
    Tell(prompts, "无效坐标", Icon::Exclamation);
    return std::nullopt;
  }
  if (position.Int() > lineCount - 1 || position.Int() < lowest) {
    Tell(prompts,
         "Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.",
         Icon::Information);
    return std::nullopt;
  }
  return position;
}

bool RequireLoadedFile(Prompts& prompts, const Mod& mod) {
  if (FileExists(mod.cCurFile)) {
    return true;
  }
  Tell(prompts, "Must have a file loaded to use this feature!", Icon::Exclamation);
  return false;
}

}  // namespace kelvane
