// The demo's pictures, each painted from scratch.
#pragma once

#include <cstdint>

#include "samples/Canvas.h"

namespace kelvane::sample {

// A rounded tile with a shadow and a light sign on it.
[[nodiscard]] Canvas Tile(int size, const Shape& glyph, std::uint32_t top, std::uint32_t bottom);
// A sign in one colour on nothing.
[[nodiscard]] Canvas Sign(int size, const Shape& glyph, std::uint32_t rgb);
// A ring with a symbol in its colour: 'o', 'x', 's' (square) or 't' (triangle).
[[nodiscard]] Canvas RoundButton(int size, char symbol, std::uint32_t rgb);

// A dial that shows a level from 0 to 1.
[[nodiscard]] Canvas Dial(int size, float level, std::uint32_t rgb);
// 48 by 24: a battery with a level from 0 to 1.
[[nodiscard]] Canvas Battery(float level, std::uint32_t rgb);
// 32 by 32: a signal of 0 to 3 arcs.
[[nodiscard]] Canvas Signal(int arcs);
[[nodiscard]] Canvas ProgressBar(int width, int height, float level);
[[nodiscard]] Canvas AnalogClock(int size, float hour, float minute);
[[nodiscard]] Canvas WeatherSun(int size);
[[nodiscard]] Canvas WeatherCloud(int size);
[[nodiscard]] Canvas WeatherMoon(int size);

// Opaque pictures, as large as asked.
[[nodiscard]] Canvas WaveBackground(int width, int height);
[[nodiscard]] Canvas NightBackground(int width, int height);
[[nodiscard]] Canvas LineBackground(int width, int height);
[[nodiscard]] Canvas Landscape(int width, int height);
[[nodiscard]] Canvas ColourCard(int width, int height);

[[nodiscard]] Canvas DialogPanel(int width, int height);
[[nodiscard]] Canvas Logo(int width, int height);
[[nodiscard]] Canvas Badge(int size);
[[nodiscard]] Canvas Spinner(int size);
// One pixel of white.
[[nodiscard]] Canvas WhitePixel();

}  // namespace kelvane::sample
