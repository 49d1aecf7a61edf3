// Where every control of the main form lies.
#pragma once

#include <map>
#include <string>

namespace kelvane {

// In twips, 1,440 to the inch, relative to the control's parent.
struct TwipRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const TwipRect&) const = default;
};

// Twips to a pixel at 100%; the toolkit scales pixels from there.
inline constexpr int kTwipsPerPixel = 15;
// To the nearest pixel.
[[nodiscard]] int PixelsOf(int twips);

inline constexpr int kMinimumFormWidth = 7815;
inline constexpr int kMinimumFormHeight = 7020;
inline constexpr int kStartFormWidth = 9600;
inline constexpr int kStartFormHeight = 8010;

// The controls' places by their names, for a form of that size in twips. `positionShown` tells whether picPagePos
// shows: lstPageData lies below it then. Without `expert` the controls of expert mode leave no holes.
[[nodiscard]] std::map<std::string, TwipRect> LayOutForm(int width, int height, bool positionShown, bool expert);

}  // namespace kelvane
