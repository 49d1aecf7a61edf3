// What a piece of code fails with.
#pragma once

#include "common/RuntimeFailure.h"

namespace kelvane::test {

// The number of the run-time failure that `action` ends with; 0 if it doesn't fail.
template <class Action>
int NumberOf(Action&& action) {
  try {
    action();
  } catch (const RuntimeFailure& failure) {
    return failure.Number();
  }
  return 0;
}

}  // namespace kelvane::test
