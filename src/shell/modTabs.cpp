#include "shell/modTabs.h"

#include <cstddef>

namespace kelvane {

TabState NextTabState(TabState state, bool selected, TabEvent event) {
  if (selected) {
    return TabState::Selected;
  }
  switch (event) {
    case TabEvent::MouseMove:
      return state == TabState::Pressed ? TabState::Pressed : TabState::Hover;
    case TabEvent::ButtonDown:
      return TabState::Pressed;
    case TabEvent::ButtonUp:
    case TabEvent::MouseLeave:
      return TabState::Normal;
    case TabEvent::Other:
      break;
  }
  return state;
}

int TabKeyDown(TabKey key, int index, int count, const std::function<bool(int)>& enabled) {
  const int step = key == TabKey::Right || key == TabKey::Down ? 1 : count - 1;
  for (int tried = 1; tried < count; ++tried) {
    const int reached = (index + tried * step) % count;
    if (enabled(reached)) {
      return reached;
    }
  }
  return index;
}

namespace {

struct Tab {
  const char* caption;
  TabButtons buttons;
};

constexpr std::array<Tab, kTabCount> kTabs = {{{"常规资源", {nullptr, nullptr}},
                                               {"文本数据", {"cmdTextChange", "cmdTextReset"}},
                                               {"页面数据", {"cmdPageChange", nullptr}},
                                               {"动画数据", {"cmdAnimChange", nullptr}}}};

}  // namespace

TabButtons ButtonsOfTab(int tab) {
  return kTabs.at(static_cast<std::size_t>(tab)).buttons;
}

const char* CaptionOfTab(int tab) {
  return kTabs.at(static_cast<std::size_t>(tab)).caption;
}

}  // namespace kelvane
