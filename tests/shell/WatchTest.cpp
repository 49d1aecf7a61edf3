// The timer of the watcher, with real ticks.
#include <QTimer>
#include <gtest/gtest.h>

#include "common/Files.h"
#include "shell/WindowFixture.h"

namespace kelvane::test {
namespace {

class WatchTest : public WindowFixture {
 protected:
  WatchTest() {
    RcoBuilder builder;
    builder.AddImage({.label = "one", .data = Bytes(8)});
    path = folder.Write("one.rco", builder.Build().bytes);
  }

  QTimer* Timer() {
    auto* timer = form.findChild<QTimer*>("timDetectChange");
    EXPECT_NE(timer, nullptr);
    return timer;
  }
  static void WaitForATick() { QTest::qWait(350); }
  // As another program does.
  void Touch(std::chrono::seconds by) {
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + by);
  }

  std::filesystem::path path;
};

TEST_F(WatchTest, TimerTicksFourTimesASecondAndRunsOnlyWhileAFileIsOpen) {
  Start();
  EXPECT_EQ(Timer()->interval(), 250);
  EXPECT_FALSE(Timer()->isActive());
  prompts.ExpectFileDialog({.path = path});
  Click("cmdOpen");
  EXPECT_TRUE(Timer()->isActive());
}

TEST_F(WatchTest, DeletedFileClosesTheDocument) {
  Start(path.string());
  std::filesystem::remove(path);
  prompts.ExpectTell("当前RCO文件已被删除！", Icon::Exclamation);
  WaitForATick();
  EXPECT_EQ(form.windowTitle(), "Kelvane Editor MOD");
  EXPECT_EQ(Find<ListBox>("lst")->model()->rowCount(), 0);
  EXPECT_FALSE(Timer()->isActive());
}

TEST_F(WatchTest, ChangedFileIsLoadedAgainOnYes) {
  Start(path.string());
  RcoBuilder builder;
  builder.AddImage({.label = "one", .data = Bytes(8)});
  builder.AddImage({.label = "two", .data = Bytes(8)});
  WriteWholeFile(path, builder.Build().bytes);
  Touch(std::chrono::seconds(5));
  prompts.Expect({.text = "当前文件已被其它程序修改，是否重新加载？",
                  .icon = Icon::Exclamation,
                  .buttons = Buttons::YesNo,
                  .defaultAnswer = Answer::Yes},
                 Answer::Yes);
  WaitForATick();
  EXPECT_EQ(Find<ListBox>("lst")->model()->rowCount(), 2);
  EXPECT_TRUE(Timer()->isActive());
}

TEST_F(WatchTest, DateThatGoesBackCountsAsChangedAndNoCloses) {
  Start(path.string());
  Touch(std::chrono::seconds(-3600));
  prompts.Expect({.text = "当前文件已被其它程序修改，是否重新加载？",
                  .icon = Icon::Exclamation,
                  .buttons = Buttons::YesNo,
                  .defaultAnswer = Answer::Yes},
                 Answer::No);
  WaitForATick();
  EXPECT_EQ(form.windowTitle(), "Kelvane Editor MOD");
  EXPECT_FALSE(Timer()->isActive());
}

TEST_F(WatchTest, NothingHappensWhileTheFileStaysAsItIs) {
  Start(path.string());
  WaitForATick();
  WaitForATick();
  EXPECT_EQ(form.windowTitle(), "Kelvane Editor [one.rco] (by Orrelin)");
}

// The dialog of cmdOpen stands open while the file vanishes: the command ends first.
TEST_F(WatchTest, TicksWaitForTheEndOfACommand) {
  Start(path.string());
  QString duringDialog;
  prompts.ExpectFileDialog({}, [&](const FileDialog&) {
    std::filesystem::remove(path);
    WaitForATick();
    duringDialog = form.windowTitle();
  });
  Click("cmdOpen");
  EXPECT_EQ(duringDialog, "Kelvane Editor [one.rco] (by Orrelin)");
  prompts.ExpectTell("当前RCO文件已被删除！", Icon::Exclamation);
  WaitForATick();
  EXPECT_EQ(form.windowTitle(), "Kelvane Editor MOD");
}

}  // namespace
}  // namespace kelvane::test
