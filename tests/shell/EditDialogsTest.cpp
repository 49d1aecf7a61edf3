// The dialogs of a word's value, opened from the lists of words and answered by keys and clicks.
#include <QInputDialog>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "common/Bytes.h"
#include "shell/WindowFixture.h"
#include "shell/frmEditList.h"
#include "shell/frmEditVal.h"

namespace kelvane::test {
namespace {

class EditDialogsTest : public DialogFixture {
 protected:
  EditDialogsTest() {
    RcoBuilder builder;
    builder.AddLanguage(0x10000);
    builder.AddLanguage(0x10001);
    for (const char* label : {"msg_a", "msg_b", "msg_c"}) {
      builder.AddText({.label = label, .strings = {u"甲", u"text"}});
    }
    builder.AddPage({.label = "page", .body = {0x111, TextRef("msg_a"), 1.5F, 0x222}});
    builder.AddAnimation({.label = "anim", .body = {7, 0.5F}});
    built = builder.Build();
    path = folder.Write("entries.rco", built.bytes);
  }

  // Selects the page or the animation, and one of its words.
  void SelectWord(int tab, int row) {
    Start(path.string());
    ClickTab(tab);
    ClickRow(tab == 2 ? "lstPage" : "lstAnim", 0);
    ClickRow(tab == 2 ? "lstPageData" : "lstAnimData", row);
  }
  [[nodiscard]] std::uint32_t WordInFile(const EntryPlace& entry, int word) const {
    return static_cast<std::uint32_t>(ReadI32(ReadWholeFile(path), entry.entry + 40 + word * 4));
  }
  void ExpectUntouched() {
    EXPECT_EQ(ReadWholeFile(path), built.bytes);
    EXPECT_FALSE(FileExists(path.string() + ".bak"));
  }

  BuiltRco built;
  std::filesystem::path path;
};

TEST_F(EditDialogsTest, TypedDigitsAndEnterChangeAHexadecimalWord) {
  SelectWord(2, 0);
  dialogs.Expect<frmEditVal>([this](frmEditVal& dialog) {
    EXPECT_EQ(dialog.parentWidget(), &form);
    EXPECT_EQ(In<QLineEdit>(dialog, "txt")->text(), "00000111");
    TypeIn(dialog, "deadb");
    PressIn(dialog, Qt::Key_Return);
  });
  Press(Qt::Key_Return);
  EXPECT_EQ(WordInFile(built.layout.pages[0], 0), 0xDEADB111U);
  EXPECT_EQ(Rows("lstPageData")[0], "0xDEADB111");
  EXPECT_EQ(Find<ListBox>("lstPageData")->Row(), 1);
}

TEST_F(EditDialogsTest, CancelledHexadecimalDialogChangesNothing) {
  SelectWord(2, 0);
  for (const auto& leave :
       {std::function<void(frmEditVal&)>(
            [](frmEditVal& dialog) { QTest::mouseClick(In<QPushButton>(dialog, "cmdCancel"), Qt::LeftButton); }),
        std::function<void(frmEditVal&)>([](frmEditVal& dialog) { PressIn(dialog, Qt::Key_Escape); }),
        std::function<void(frmEditVal&)>([](frmEditVal& dialog) { dialog.close(); })}) {
    dialogs.Expect<frmEditVal>([&leave](frmEditVal& dialog) {
      TypeIn(dialog, "F");
      leave(dialog);
    });
    Click("cmdPageChange");
  }
  ExpectUntouched();
  EXPECT_EQ(Find<ListBox>("lstPageData")->Row(), 0);
  EXPECT_TRUE(form.findChild<QTimer*>("timDetectChange")->isActive());
}

TEST_F(EditDialogsTest, RowChosenFromTheListChangesAReference) {
  SelectWord(2, 1);
  dialogs.Expect<frmEditList>([this](frmEditList& dialog) {
    EXPECT_EQ(dialog.parentWidget(), &form);
    auto* list = In<ListBox>(dialog, "lst");
    EXPECT_TRUE(list->hasFocus());
    EXPECT_EQ(list->model()->rowCount(), 3);
    EXPECT_EQ(list->Row(), 0);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
  });
  Press(Qt::Key_Return);
  EXPECT_EQ(WordInFile(built.layout.pages[0], 1), 0x401U);
  EXPECT_EQ(WordInFile(built.layout.pages[0], 2), 1U);
  EXPECT_EQ(Rows("lstPageData")[1], "[text] msg_b");
  EXPECT_EQ(Find<ListBox>("lstPageData")->Row(), 2);
}

TEST_F(EditDialogsTest, DoubleClickInTheListIsOk) {
  SelectWord(2, 1);
  dialogs.Expect<frmEditList>([](frmEditList& dialog) {
    auto* list = In<ListBox>(dialog, "lst");
    const QPoint third = list->visualRect(list->model()->index(2, 0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, third);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, third);
    EXPECT_FALSE(dialog.isVisible());
  });
  Click("cmdPageChange");
  EXPECT_EQ(WordInFile(built.layout.pages[0], 2), 2U);
}

TEST_F(EditDialogsTest, CancelledListChangesNothing) {
  SelectWord(2, 1);
  dialogs.Expect<frmEditList>([](frmEditList& dialog) {
    QTest::keyClick(In<ListBox>(dialog, "lst"), Qt::Key_Down);
    QTest::mouseClick(In<QPushButton>(dialog, "cmdCancel"), Qt::LeftButton);
  });
  Click("cmdPageChange");
  ExpectUntouched();
}

TEST_F(EditDialogsTest, InputBoxChangesAFloatAndCancelDoesNot) {
  SelectWord(2, 2);
  dialogs.Expect<QInputDialog>([](QInputDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  Click("cmdPageChange");
  ExpectUntouched();
  dialogs.Expect<QInputDialog>([this](QInputDialog& dialog) {
    EXPECT_EQ(dialog.parentWidget(), &form);
    EXPECT_EQ(dialog.textValue(), "1.5");
    TypeIn(dialog, "1e2");
    PressIn(dialog, Qt::Key_Return);
  });
  Click("cmdPageChange");
  EXPECT_EQ(WordInFile(built.layout.pages[0], 3), 0x42C80000U);
  EXPECT_EQ(Rows("lstPageData")[2], "100");
}

TEST_F(EditDialogsTest, AnimationWordsUseTheSameDialogs) {
  SelectWord(3, 0);
  dialogs.Expect<frmEditVal>([](frmEditVal& dialog) {
    PressIn(dialog, Qt::Key_End);
    TypeIn(dialog, "9");
    PressIn(dialog, Qt::Key_Return);
  });
  Press(Qt::Key_Return);
  dialogs.Expect<QInputDialog>([](QInputDialog& dialog) {
    TypeIn(dialog, "abc");
    PressIn(dialog, Qt::Key_Return);
  });
  Press(Qt::Key_Return);
  EXPECT_EQ(WordInFile(built.layout.animEntries[0], 0), 9U);
  EXPECT_EQ(WordInFile(built.layout.animEntries[0], 1), 0U) << "no number at the start is 0";
}

}  // namespace
}  // namespace kelvane::test
