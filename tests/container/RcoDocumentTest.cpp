#include <gtest/gtest.h>

#include "container/RcoDocument.h"
#include "support/Failures.h"

namespace kelvane {
namespace {

using test::NumberOf;

TEST(ListLines, ARowThatTheListDoesNotHaveReadsAsEmpty) {
  ListLines list;
  list.Add("a");
  EXPECT_EQ(list.Text(0), "a");
  EXPECT_EQ(list.Text(1), "");
  EXPECT_EQ(list.Text(-1), "");
}

TEST(ListLines, ClearingTakesTheSelectionAway) {
  ListLines list;
  list.Add("a");
  list.Select(0);
  EXPECT_EQ(list.Selected(), 0);
  list.Clear();
  EXPECT_EQ(list.Selected(), -1);
  EXPECT_EQ(list.Count(), 0);
}

TEST(ListLines, SelectingOrSettingARowBeyondTheEndFails) {
  ListLines list;
  list.Add("a");
  EXPECT_EQ(NumberOf([&] { list.Select(1); }), 5);
  EXPECT_EQ(NumberOf([&] { list.Select(-2); }), 5);
  EXPECT_EQ(NumberOf([&] { list.Set(1, "b"); }), 9);
  EXPECT_EQ(list.Selected(), -1);
}

TEST(ListLines, EveryChangeOfALineHasARevisionOfItsOwn) {
  ListLines list;
  const unsigned first = list.Revision();
  list.Add("a");
  const unsigned second = list.Revision();
  list.Set(0, "b");
  const unsigned third = list.Revision();
  EXPECT_NE(first, second);
  EXPECT_NE(second, third);
  list.Select(0);
  EXPECT_EQ(list.Revision(), third);
}

}  // namespace
}  // namespace kelvane
