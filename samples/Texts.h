// The demo's texts in its twelve languages.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelvane::sample {

inline constexpr std::size_t kLanguages = 12;
// Japanese, English, French, Spanish, German, Italian, Dutch, Portuguese, Russian, Korean, Chinese in traditional and
// in simplified characters have the codes from here on.
inline constexpr std::uint32_t kFirstLanguageCode = 0x10000;

struct DemoText {
  const char* label;
  std::array<const char16_t*, kLanguages> words;
};

// Words of menus.
[[nodiscard]] const std::vector<DemoText>& MenuTexts();
// Words about media, files and states.
[[nodiscard]] const std::vector<DemoText>& MediaTexts();
// Questions and notices, many of several lines.
[[nodiscard]] const std::vector<DemoText>& MessageTexts();

struct SameText {
  const char* label;
  const char16_t* text;
};

// What reads the same in every language: the languages' own names, time zones, formats.
[[nodiscard]] const std::vector<SameText>& SameTexts();

}  // namespace kelvane::sample
