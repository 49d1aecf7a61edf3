// The pages' and the animations' tab, with real keys and clicks.
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <algorithm>
#include <gtest/gtest.h>
#include <tuple>

#include "common/Bytes.h"
#include "common/Files.h"
#include "shell/ListBox.h"
#include "shell/WindowFixture.h"

namespace kelvane::test {
namespace {

class EntryTabsTest : public WindowFixture {
 protected:
  EntryTabsTest() {
    RcoBuilder builder;
    builder.AddImage({.label = "tex_a", .data = Bytes(8)});
    builder.AddEvent("native:/go");
    builder.AddPage({.label = "page_main",
                     .body = {0x111, 1.5F, EventRef("native:/go"), BlankRef(), 2.5F},
                     .children = {{.label = "plane_a",
                                   .entryClass = 2,
                                   .position = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12.5F}},
                                   .body = {0x20}}}});
    builder.AddAnimation({.label = "anim_in", .body = {7, 0.5F}});
    built = builder.Build();
    path = folder.Write("entries.rco", built.bytes);
  }

  void Open(int tab) {
    Start(path.string());
    ClickTab(tab);
  }
  void DoubleClickRow(const char* name, int row) {
    ClickRow(name, row);
    auto* list = Find<ListBox>(name);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(row, 0)).center());
  }
  std::uint32_t WordInFile(const EntryPlace& entry, int word) {
    return static_cast<std::uint32_t>(ReadI32(ReadWholeFile(path), entry.entry + 40 + word * 4));
  }
  QLineEdit* Box(int index) { return Find<QLineEdit>(("txtPageOpt(" + std::to_string(index) + ")").c_str()); }

  BuiltRco built;
  std::filesystem::path path;
};

TEST_F(EntryTabsTest, CaptionsOfThePositionBlockStandBesideTheirBoxes) {
  struct Line {
    const char* label;
    const char* caption;
    std::vector<std::tuple<const char*, const char*, int>> letters;  // each with its box
  };
  const Line lines[] = {{"lblPagePosDes", "坐    标:", {{"lblPagePosX", "X:", 0}, {"lblPagePosY", "Y:", 1}}},
                        {"lblPageScaleObj", "对象比例:", {{nullptr, nullptr, 2}}},
                        {"lblPageChannel", "RGB颜色/Alpha透明通道:", {}},
                        {nullptr, nullptr, {{"lblPageChannelR", "R:", 3}, {"lblPageChannelG", "G:", 4}}},
                        {nullptr, nullptr, {{"lblPageChannelB", "B:", 5}, {"lblPageChannelA", "A:", 6}}},
                        {"lblPageDim", "分辨率:", {{"lblPageDimW", "W:", 7}, {"lblPageDimH", "H:", 8}}},
                        {"lblPageUnknown", "未知数值:", {{nullptr, nullptr, 9}}},
                        {"lblPageStretch", "拉伸:", {{"lblPageStretchW", "W:", 10}, {"lblPageStretchH", "H:", 11}}},
                        {"lblPageScale", "原始比例:", {{nullptr, nullptr, 12}}}};
  Open(2);
  ClickRow("lstPage", 1);
  int bottom = 0;
  for (const Line& line : lines) {
    int right = 0;
    int lowest = bottom;
    const auto expectNext = [&](const QWidget* control) {
      EXPECT_GE(control->x(), right) << control->objectName().toStdString();
      EXPECT_GE(control->y(), bottom) << control->objectName().toStdString();
      right = control->geometry().right();
      lowest = std::max(lowest, control->geometry().bottom());
    };
    const auto expectCaption = [&](const char* name, const char* caption) {
      if (name != nullptr) {
        const auto* label = Find<QLabel>(name);
        EXPECT_EQ(label->text(), caption);
        EXPECT_GE(label->width(), label->sizeHint().width()) << name << " is cut off";
        expectNext(label);
      }
    };
    expectCaption(line.label, line.caption);
    for (const auto& [name, letter, box] : line.letters) {
      expectCaption(name, letter);
      expectNext(Box(box));
    }
    bottom = lowest;
  }
}

TEST_F(EntryTabsTest, NothingIsEnabledWithoutASelection) {
  Open(2);
  EXPECT_FALSE(Find("lstPageData")->isEnabled());
  EXPECT_FALSE(Find("cmdPageChange")->isEnabled());
  EXPECT_FALSE(Find("picPagePos")->isVisible());
  ClickTab(3);
  EXPECT_FALSE(Find("lstAnimData")->isEnabled());
  EXPECT_FALSE(Find("cmdAnimChange")->isEnabled());
}

TEST_F(EntryTabsTest, PageWithoutAPositionBlockListsItsWordsFromTheTop) {
  Open(2);
  ClickRow("lstPage", 0);
  EXPECT_EQ(Rows("lstPageData"), (QStringList{"0x00000111", "1.5", "[event] native:/go", "[blank]", "2.5"}));
  EXPECT_FALSE(Find("picPagePos")->isVisible());
  EXPECT_EQ(Find("lstPageData")->geometry(), QRect(355, 4, 237, 370));
  EXPECT_TRUE(Find("cmdPageChange")->isEnabled());
}

TEST_F(EntryTabsTest, PositionBlockShowsAboveTheList) {
  Open(2);
  ClickRow("lstPage", 1);
  EXPECT_TRUE(Find("picPagePos")->isVisible());
  EXPECT_EQ(Find("lstPageData")->geometry(), QRect(355, 204, 237, 177));
  EXPECT_EQ(Rows("lstPageData"), QStringList{"0x00000020"});
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(Box(i)->text(), QString::number(i));
  }
  EXPECT_EQ(Box(12)->text(), "12.5");
  ClickRow("lstPage", 0);
  EXPECT_FALSE(Find("picPagePos")->isVisible());
  EXPECT_EQ(Find("lstPageData")->geometry(), QRect(355, 4, 237, 370));
}

TEST_F(EntryTabsTest, HexadecimalRowChangesThroughItsDialogAndTheNextRowIsSelected) {
  Open(2);
  ClickRow("lstPage", 0);
  ClickRow("lstPageData", 0);
  prompts.ExpectEditVal("00000111", "00000222");
  Click("cmdPageChange");
  EXPECT_EQ(WordInFile(built.layout.pages[0], 0), 0x222U);
  EXPECT_EQ(Rows("lstPageData")[0], "0x00000222");
  EXPECT_EQ(Find<ListBox>("lstPageData")->Row(), 1);
}

TEST_F(EntryTabsTest, EnterInTheListOfWordsChangesTheSelectedOne) {
  Open(2);
  ClickRow("lstPage", 0);
  ClickRow("lstPageData", 1);
  prompts.ExpectInput("输入新数值", "1.5", "-4");
  Press(Qt::Key_Return);
  EXPECT_EQ(Rows("lstPageData")[1], "-4");
  EXPECT_EQ(WordInFile(built.layout.pages[0], 1), 0xC0800000U);
}

TEST_F(EntryTabsTest, DoubleClickOnAReferenceOpensItsList) {
  Open(2);
  ClickRow("lstPage", 0);
  prompts.ExpectEditList({"native:/go"}, 0, std::nullopt);
  DoubleClickRow("lstPageData", 2);
  EXPECT_EQ(ReadWholeFile(path), built.bytes) << "cancelled";
}

TEST_F(EntryTabsTest, BlankRowIsOnlyTold) {
  Open(2);
  ClickRow("lstPage", 0);
  ClickRow("lstPageData", 3);
  prompts.ExpectTell("Not much can be done with a blank entry... :S", Icon::Information);
  Click("cmdPageChange");
  EXPECT_EQ(ReadWholeFile(path), built.bytes);
}

TEST_F(EntryTabsTest, EnterInABoxSetsTheWholePositionBlock) {
  Open(2);
  ClickRow("lstPage", 1);
  Box(3)->setFocus();
  Box(3)->selectAll();
  QTest::keyClicks(Box(3), "0.25");
  Press(Qt::Key_Return);
  const EntryPlace& plane = built.layout.pages[1];
  EXPECT_EQ(WordInFile(plane, 3), 0x3E800000U);
  EXPECT_EQ(WordInFile(plane, 12), 0x41480000U);
  EXPECT_EQ(WordInFile(plane, 13), 0x20U);
  EXPECT_EQ(Box(3)->text(), "0.25") << "the boxes keep what was typed";
}

TEST_F(EntryTabsTest, AnimationsListTheirWordsAndChangeThem) {
  Open(3);
  ClickRow("lstAnim", 0);
  EXPECT_EQ(Rows("lstAnimData"), (QStringList{"0x00000007", "0.5"}));
  prompts.ExpectEditVal("00000007", "0000000A");
  DoubleClickRow("lstAnimData", 0);
  EXPECT_EQ(Rows("lstAnimData")[0], "0x0000000A");
  EXPECT_EQ(Find<ListBox>("lstAnimData")->Row(), 1);
  prompts.ExpectInput("输入新数值", "0.5", "1");
  Press(Qt::Key_Return);  // the tab's default button
  EXPECT_EQ(WordInFile(built.layout.animEntries[0], 0), 0xAU);
  EXPECT_EQ(WordInFile(built.layout.animEntries[0], 1), 0x3F800000U);
  EXPECT_EQ(Find<ListBox>("lstAnimData")->Row(), 1) << "the last row stays selected";
}

TEST_F(EntryTabsTest, RandomInfoNeedsAnOpenFile) {
  Start("expert");
  prompts.ExpectTell("Must have a file loaded to use this feature!", Icon::Exclamation);
  Click("cmdOther");
}

TEST_F(EntryTabsTest, RandomInfoListsTheOpenFile) {
  StartExpert(path.string());
  QTimer::singleShot(50, [] {
    auto* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->objectName(), "frmOther");
    const auto first = [&](const char* list) {
      return dialog->findChild<ListBox*>(list)->model()->index(0, 0).data().toString();
    };
    EXPECT_EQ(first("lstPage"), "page_main");
    EXPECT_EQ(first("lstAnim"), "anim_in");
    EXPECT_EQ(first("lstNative"), "native:/go");
    EXPECT_EQ(first("lstLabel"), "tex_a");
    dialog->findChild<QPushButton*>("cmdClose")->click();
  });
  Click("cmdOther");
}

}  // namespace
}  // namespace kelvane::test
