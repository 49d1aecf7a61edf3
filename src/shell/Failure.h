// A failure without a handler: told in a critical box, and then the application ends with status 1.
#pragma once

#include <utility>

namespace kelvane {

// Leaves a command that waits for a dialog when the application ends under it. It is no failure, so no handler asks
// about it, and what the command made is cleaned up on the way out.
struct ApplicationEnds {};

// Whether a failure has ended the application. Loops of dialogs are left then; who waited for one calls LeaveIfEnding.
[[nodiscard]] bool IsEnding();
// Throws ApplicationEnds if the application ends.
void LeaveIfEnding();

// Call it inside a catch block only: shows the failure in flight as `Run-time error 'N':`, an empty line and its
// description, and ends the application. Takes note of nothing for ApplicationEnds. An exception that is no run-time
// failure is thrown on.
void EndWithCurrentFailure();

// `handler` for a signal, with its failures ending the application: none may fly through the toolkit.
template <class Handler>
auto Guarded(Handler handler) {
  return [handler = std::move(handler)](auto&&... arguments) {
    try {
      handler(std::forward<decltype(arguments)>(arguments)...);
    } catch (...) {
      EndWithCurrentFailure();
    }
  };
}

}  // namespace kelvane
