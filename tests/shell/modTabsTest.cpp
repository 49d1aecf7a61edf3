#include <gtest/gtest.h>
#include <set>
#include <string>

#include "shell/modTabs.h"

namespace kelvane {
namespace {

TEST(ModTabs, StateFollowsTheMouse) {
  struct Step {
    TabState old;
    TabEvent event;
    TabState expected;
  };
  using enum TabState;
  using enum TabEvent;
  const Step steps[] = {
      {Normal, MouseMove, Hover},    {Hover, MouseMove, Hover},    {Pressed, MouseMove, Pressed},
      {Normal, ButtonDown, Pressed}, {Hover, ButtonDown, Pressed}, {Pressed, ButtonDown, Pressed},
      {Normal, ButtonUp, Normal},    {Hover, ButtonUp, Normal},    {Pressed, ButtonUp, Normal},
      {Normal, MouseLeave, Normal},  {Hover, MouseLeave, Normal},  {Pressed, MouseLeave, Normal},
      {Normal, Other, Normal},       {Hover, Other, Hover},        {Pressed, Other, Pressed},
      {Selected, MouseMove, Hover},  {Selected, Other, Selected},
  };
  for (const Step& step : steps) {
    EXPECT_EQ(NextTabState(step.old, false, step.event), step.expected)
        << static_cast<int>(step.old) << " " << static_cast<int>(step.event);
  }
}

TEST(ModTabs, NoMouseEventLeavesTheSelectedState) {
  for (const TabEvent event :
       {TabEvent::MouseMove, TabEvent::ButtonDown, TabEvent::ButtonUp, TabEvent::MouseLeave, TabEvent::Other}) {
    EXPECT_EQ(NextTabState(TabState::Normal, true, event), TabState::Selected);
    EXPECT_EQ(NextTabState(TabState::Pressed, true, event), TabState::Selected);
    EXPECT_EQ(NextTabState(TabState::Selected, true, event), TabState::Selected);
  }
}

int Reached(TabKey key, int index, const std::set<int>& disabled = {}) {
  return TabKeyDown(key, index, 4, [&](int header) { return !disabled.contains(header); });
}

TEST(ModTabs, RightAndDownGoOnAndAroundTheEnd) {
  for (const TabKey key : {TabKey::Right, TabKey::Down}) {
    EXPECT_EQ(Reached(key, 0), 1);
    EXPECT_EQ(Reached(key, 2), 3);
    EXPECT_EQ(Reached(key, 3), 0);
  }
}

TEST(ModTabs, LeftAndUpGoBackAndAroundTheStart) {
  for (const TabKey key : {TabKey::Left, TabKey::Up}) {
    EXPECT_EQ(Reached(key, 3), 2);
    EXPECT_EQ(Reached(key, 1), 0);
    EXPECT_EQ(Reached(key, 0), 3);
  }
}

TEST(ModTabs, ArrowsPassOverDisabledHeaders) {
  EXPECT_EQ(Reached(TabKey::Right, 0, {1, 2}), 3);
  EXPECT_EQ(Reached(TabKey::Right, 2, {3, 0}), 1);
  EXPECT_EQ(Reached(TabKey::Left, 1, {0}), 3);
  EXPECT_EQ(Reached(TabKey::Up, 3, {2, 1, 0}), 3);
}

TEST(ModTabs, CaptionsAndButtonsFollowTheTable) {
  struct Row {
    std::string caption;
    const char* defaultButton;
    const char* cancelButton;
  };
  const Row rows[] = {{"常规资源", nullptr, nullptr},
                      {"文本数据", "cmdTextChange", "cmdTextReset"},
                      {"页面数据", "cmdPageChange", nullptr},
                      {"动画数据", "cmdAnimChange", nullptr}};
  for (int tab = 0; tab < kTabCount; ++tab) {
    EXPECT_EQ(CaptionOfTab(tab), rows[tab].caption);
    EXPECT_STREQ(ButtonsOfTab(tab).defaultButton, rows[tab].defaultButton);
    EXPECT_STREQ(ButtonsOfTab(tab).cancelButton, rows[tab].cancelButton);
  }
}

}  // namespace
}  // namespace kelvane
