// Wildcard patterns.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

namespace kelvane {

// A pattern over UTF-16 code units, compared by their code:
//   *       any run of characters, also none
//   ?       any one character
//   #       one digit from 0 to 9
//   [abc]   one character of a set; a-z in it is a range, a hyphen at either end stands for itself
//   [!abc]  one character outside the set
// The first ] closes a set, so that [] matches no character and [!] any; outside a set a ] stands for itself.
class Pattern {
 public:
  // Failure 93 for a set without its ] or a range whose first character is above its last.
  explicit Pattern(std::u16string_view pattern);

  // Whether the whole of `text` matches. Takes at most time in proportion to the product of both lengths.
  [[nodiscard]] bool Matches(std::u16string_view text) const;

 private:
  using Ranges = std::vector<std::pair<char16_t, char16_t>>;

  // What one character of a text is compared with, or any run of characters.
  struct Element {
    static Element AnyRun() { return {true, false, {}}; }
    static Element Inside(Ranges ranges) { return {false, false, std::move(ranges)}; }
    static Element Outside(Ranges ranges) { return {false, true, std::move(ranges)}; }

    [[nodiscard]] bool Accepts(char16_t unit) const;

    bool anyRun;
    bool outside;
    Ranges ranges;
  };

  static Element ReadSet(std::u16string_view set);

  std::vector<Element> elements_;
};

}  // namespace kelvane
