#include "common/Statements.h"

#include <string>

namespace kelvane {

Message UnknownFailureMessage(const RuntimeFailure& failure) {
  return {.text = "发生了未知错误！\n" + failure.Description() + " (Code: " + std::to_string(failure.Number()) +
                  ")\n\n继续",
          .icon = Icon::Critical,
          .buttons = Buttons::YesNo,
          .defaultAnswer = Answer::No};
}

void Statements::AskAboutCurrentFailure() {
  const RuntimeFailure failure = CurrentFailure();
  if (prompts_.ShowMessage(UnknownFailureMessage(failure)) != Answer::Yes) {
    throw Abandoned();
  }
}

}  // namespace kelvane
