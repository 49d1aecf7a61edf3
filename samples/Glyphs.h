// The signs on the demo's icons, drawn for a field of 64 by 64 with its middle at (32, 32).
#pragma once

#include "samples/Canvas.h"

namespace kelvane::sample {

[[nodiscard]] Shape GearGlyph();
[[nodiscard]] Shape PhotoGlyph();
[[nodiscard]] Shape MusicGlyph();
[[nodiscard]] Shape VideoGlyph();
[[nodiscard]] Shape GameGlyph();
[[nodiscard]] Shape GlobeGlyph();
[[nodiscard]] Shape MailGlyph();
[[nodiscard]] Shape ClockGlyph();
[[nodiscard]] Shape CalendarGlyph();
[[nodiscard]] Shape FolderGlyph();
[[nodiscard]] Shape MemoryCardGlyph();
[[nodiscard]] Shape DiscGlyph();
[[nodiscard]] Shape SearchGlyph();
[[nodiscard]] Shape QuestionGlyph();
[[nodiscard]] Shape InfoGlyph();
[[nodiscard]] Shape WarningGlyph();
[[nodiscard]] Shape CrossGlyph();
[[nodiscard]] Shape CheckGlyph();
[[nodiscard]] Shape StarGlyph();
[[nodiscard]] Shape HeartGlyph();
[[nodiscard]] Shape LockGlyph();
[[nodiscard]] Shape KeyGlyph();
[[nodiscard]] Shape UserGlyph();
[[nodiscard]] Shape TrashGlyph();
[[nodiscard]] Shape CloudGlyph();
[[nodiscard]] Shape MoonGlyph();
[[nodiscard]] Shape SunGlyph();
// An arrow that points up, turned clockwise by so many turns.
[[nodiscard]] Shape ArrowGlyph(float turn);
// A capital letter of strokes; only those that the demo writes: A E K L N V.
[[nodiscard]] Shape LetterGlyph(char letter, float thickness);

}  // namespace kelvane::sample
