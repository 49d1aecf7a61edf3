#include "gim/GimPadding.h"

#include "gim/GimFormat.h"

namespace kelvane {

namespace {

Int16 RoundedUp(Int16 value, int multiple) {
  const int over = value.Int() % multiple;
  return value + Int16(over > 0 ? multiple - over : -over);
}

}  // namespace

GimPadding ComputeGimPadding(Int16 width, Int16 height, Int16 pitchAlign, Int16 pixelOrder, Int16 bits) {
  if (bits == 0) {
    throw RuntimeFailure(FailureCode::DivisionByZero);
  }
  const Int16 pixelsPerUnit = RoundToInt16(pitchAlign.Int() / (bits.Int() / 8.0));
  if (pixelsPerUnit == 0) {
    throw RuntimeFailure(FailureCode::DivisionByZero);
  }
  if (pixelsPerUnit < 0) {
    throw RuntimeFailure(FailureCode::InvalidCall);
  }
  return {.paddedWidth = RoundedUp(width, pixelsPerUnit.Int()),
          .paddedHeight = pixelOrder == 0 ? height : RoundedUp(height, gim::kTileRows)};
}

}  // namespace kelvane
