#include <QElapsedTimer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "shell/ListBox.h"

namespace kelvane {
namespace {

ListLines Numbered(int count) {
  ListLines lines;
  for (int i = 0; i < count; ++i) {
    lines.Add("row " + std::to_string(i));
  }
  return lines;
}

class ListBoxTest : public ::testing::Test {
 protected:
  ListBoxTest() {
    box.resize(200, 300);
    box.show();
    box.activateWindow();
    box.setFocus();
    QTest::qWait(1);
  }

  void Show() { box.Show(lines); }
  [[nodiscard]] QPoint PointOf(int row) { return box.visualRect(box.model()->index(row, 0)).center(); }

  ListLines lines = Numbered(5);
  ListBox box{"lst", nullptr};
  QSignalSpy chosen{&box, &ListBox::RowChosen};
};

TEST_F(ListBoxTest, ShowsLinesAndSelectionWithoutSayingSo) {
  lines.Select(3);
  Show();
  EXPECT_EQ(box.model()->rowCount(), 5);
  EXPECT_EQ(box.model()->index(4, 0).data().toString(), "row 4");
  EXPECT_EQ(box.Row(), 3);
  lines.Select(-1);
  Show();
  EXPECT_EQ(box.Row(), -1);
  EXPECT_EQ(chosen.count(), 0);
}

TEST_F(ListBoxTest, ClickChoosesItsRow) {
  Show();
  QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, PointOf(2));
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen[0][0].toInt(), 2);
}

TEST_F(ListBoxTest, CtrlClickDoesNotTakeTheSelectionAway) {
  Show();
  QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, PointOf(2));
  QTest::mouseClick(box.viewport(), Qt::LeftButton, Qt::ControlModifier, PointOf(2));
  EXPECT_EQ(box.Row(), 2);
  EXPECT_EQ(chosen.count(), 1);
}

TEST_F(ListBoxTest, FocusSelectsNothingAndDownGoesToTheFirstRow) {
  Show();
  box.clearFocus();
  box.setFocus();
  EXPECT_EQ(box.Row(), -1);
  EXPECT_EQ(chosen.count(), 0);
  QTest::keyClick(&box, Qt::Key_Down);
  EXPECT_EQ(box.Row(), 0);
  QTest::keyClick(&box, Qt::Key_Down);
  EXPECT_EQ(box.Row(), 1);
  QTest::keyClick(&box, Qt::Key_End);
  EXPECT_EQ(box.Row(), 4);
  EXPECT_EQ(chosen.count(), 3);
}

TEST_F(ListBoxTest, LineThatIsRewrittenKeepsThePlaceUnderTheEye) {
  lines = Numbered(500);
  Show();
  QTest::qWait(1);
  box.verticalScrollBar()->setValue(250);
  const int before = box.verticalScrollBar()->value();
  ASSERT_EQ(before, 250);
  lines.Set(255, "changed");
  Show();
  EXPECT_EQ(box.verticalScrollBar()->value(), before);
  EXPECT_EQ(box.model()->index(255, 0).data().toString(), "changed");
}

TEST_F(ListBoxTest, SelectedRowComesIntoSight) {
  lines = Numbered(500);
  Show();
  lines.Select(499);
  Show();
  QTest::qWait(1);
  EXPECT_TRUE(box.viewport()->rect().contains(PointOf(499)));
}

TEST_F(ListBoxTest, ShowsOtherLinesOfTheSameCount) {
  Show();
  lines.Clear();
  for (int i = 0; i < 5; ++i) {
    lines.Add("other");
  }
  Show();
  EXPECT_EQ(box.model()->index(2, 0).data().toString(), "other");
}

// A row costs what it shows: the list asks for some dozens of its texts, not for all.
TEST_F(ListBoxTest, ThirtyTwoThousandRowsAskOnlyForWhatTheyShow) {
  class Counted : public ListLinesModel {
   public:
    using ListLinesModel::ListLinesModel;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
      ++asked;
      return ListLinesModel::data(index, role);
    }
    mutable int asked = 0;
  };
  lines = Numbered(32000);
  Counted model(nullptr);
  model.Show(lines);
  box.setModel(&model);
  QTest::qWait(1);
  box.grab();
  EXPECT_GT(model.asked, 0);
  EXPECT_LT(model.asked, 2000);
  box.scrollTo(model.index(31999));
  box.grab();
  EXPECT_LT(model.asked, 4000);
}

}  // namespace
}  // namespace kelvane
