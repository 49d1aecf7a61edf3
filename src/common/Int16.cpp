#include "common/Int16.h"

#include <cmath>

namespace kelvane {

std::int32_t RoundToInt32(double value) {
  const double rounded = std::nearbyint(value);  // the default rounding mode takes ties to the even integer
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
    throw RuntimeFailure(FailureCode::Overflow);
  }
  return static_cast<std::int32_t>(rounded);
}

Int16 RoundToInt16(double value) {
  return Int16(RoundToInt32(value));
}

}  // namespace kelvane
