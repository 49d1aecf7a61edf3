// The rules of the tab strip: how a header's state follows the mouse, and where the arrow keys lead.
#pragma once

#include <array>
#include <functional>
#include <optional>

namespace kelvane {

inline constexpr int kTabCount = 4;

enum class TabState { Normal = 0, Hover = 1, Pressed = 2, Selected = 3 };

enum class TabEvent { MouseMove, ButtonDown, ButtonUp, MouseLeave, Other };

// The state after an event. A selected header is in state Selected, and no mouse event leaves it.
[[nodiscard]] TabState NextTabState(TabState state, bool selected, TabEvent event);

enum class TabKey { Left, Right, Up, Down };

// The header that an arrow key on header `index` of `count` leads to: the next or the previous enabled one, around the
// ends. With no other header enabled it is `index` itself.
[[nodiscard]] int TabKeyDown(TabKey key, int index, int count, const std::function<bool(int)>& enabled);

// The buttons that Enter and Esc press while a tab is current; null: none.
struct TabButtons {
  const char* defaultButton;
  const char* cancelButton;
};
[[nodiscard]] TabButtons ButtonsOfTab(int tab);

[[nodiscard]] const char* CaptionOfTab(int tab);

}  // namespace kelvane
