#include <chrono>
#include <functional>

#include "common/Files.h"
#include "editor/EditorFixture.h"
#include "support/Failures.h"
#include "support/RcoBuilder.h"

namespace kelvane {
namespace {

using test::SmallRco;

class WatcherTest : public test::EditorFixture {
 protected:
  WatcherTest() { editor.OpenRcoFile(folder.Write("small.rco", SmallRco())); }

  void MoveDate(std::chrono::seconds by) const {
    const auto path = folder / "small.rco";
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + by);
  }
  void ExpectReloadQuestion(Answer answer) {
    prompts.Expect({.text = "当前文件已被其它程序修改，是否重新加载？",
                    .icon = Icon::Exclamation,
                    .buttons = Buttons::YesNo,
                    .defaultAnswer = Answer::Yes},
                   answer);
  }
};

TEST_F(WatcherTest, AnUnchangedFileAsksNothing) {
  editor.timDetectChange();
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
}

TEST_F(WatcherTest, ADeletedFileIsToldAndTheDocumentClosed) {
  DeleteFile(folder / "small.rco");
  prompts.ExpectTell("当前RCO文件已被删除！", Icon::Exclamation);
  editor.timDetectChange();
  EXPECT_TRUE(editor.State().cCurFile.empty());
  EXPECT_FALSE(watch.Running());
}

TEST_F(WatcherTest, ADeletedFileWhoseNameHoldsAWildcardIsToldAlthoughAnotherOneMatches) {
  for (const bool noUpdatChk : {false, true}) {
    editor.State().cNoUpdatChk = noUpdatChk;
    editor.OpenRcoFile(folder.Write("s????.rco", SmallRco()));
    editor.timDetectChange();
    DeleteFile(folder / "s????.rco");
    prompts.ExpectTell("当前RCO文件已被删除！", Icon::Exclamation);
    editor.timDetectChange();
    EXPECT_TRUE(editor.State().cCurFile.empty());
  }
}

TEST_F(WatcherTest, AChangedFileIsLoadedAgainOnYes) {
  Bytes other = SmallRco();
  other[256] = 'x';
  WriteWholeFile(folder / "small.rco", other);
  MoveDate(std::chrono::seconds(5));
  ExpectReloadQuestion(Answer::Yes);
  editor.timDetectChange();
  EXPECT_EQ(editor.Document().lst.Lines(), std::vector<std::string>{"[GIM] xb"});
  editor.timDetectChange();
}

TEST_F(WatcherTest, RefusingTheReloadClosesTheDocument) {
  MoveDate(std::chrono::seconds(5));
  ExpectReloadQuestion(Answer::No);
  editor.timDetectChange();
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(WatcherTest, AFileWhoseDateGoesBackwardsAlsoCountsAsChanged) {
  MoveDate(std::chrono::seconds(-5));
  ExpectReloadQuestion(Answer::Yes);
  editor.timDetectChange();
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
}

TEST_F(WatcherTest, ADateChangedByTheWindowsOwnWriteIsRecorded) {
  test::RcoBuilder b;
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "t", .strings = {u"a", u"b"}});
  editor.OpenRcoFile(folder.Write("texts.rco", b.Build().bytes));
  editor.lstText_Click(0);
  editor.cmdTextChange(u"longer than before");
  editor.timDetectChange();
  EXPECT_EQ(editor.State().cCurFile, folder / "texts.rco");
}

TEST_F(WatcherTest, AReloadOfWhatIsNoRcoAnyMoreLeavesTheDocumentAndAsksAgain) {
  WriteWholeFile(folder / "small.rco", Bytes(100));
  MoveDate(std::chrono::seconds(5));
  for (int tick = 0; tick < 2; ++tick) {
    ExpectReloadQuestion(Answer::Yes);
    prompts.ExpectTell("Not a valid RCO!", Icon::Exclamation);
    editor.timDetectChange();
    EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
    EXPECT_EQ(editor.Document().lst.Count(), 1);
    EXPECT_TRUE(watch.Running());
  }
}

TEST_F(WatcherTest, AFailedWriteLeavesTheTimerStoppedUntilTheNextSuccessfulOpen) {
  test::RcoBuilder b;
  b.AddLanguage(0x10000);
  b.AddLanguage(0x10001);
  b.AddText({.label = "t", .strings = {u"a", u"b"}});
  const auto path = folder.Write("texts.rco", b.Build().bytes);
  editor.OpenRcoFile(path);
  editor.lstText_Click(0);
  folder.Write("texts.rco.bak", b.Build().bytes);
  DeleteFile(path);
  EXPECT_EQ(test::NumberOf([&] { editor.cmdTextChange(u"x"); }), 53);
  EXPECT_FALSE(watch.Running());
  editor.OpenRcoFile(folder.Write("texts.rco", b.Build().bytes));
  EXPECT_TRUE(watch.Running());
}

TEST_F(WatcherTest, WithTheCheckTurnedOffADateIsNotCompared) {
  editor.State().cNoUpdatChk = true;
  MoveDate(std::chrono::seconds(5));
  editor.timDetectChange();
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
}

TEST_F(WatcherTest, TheRemovalCheckRunsEvenWithTheCheckTurnedOff) {
  editor.State().cNoUpdatChk = true;
  DeleteFile(folder / "small.rco");
  prompts.ExpectTell("当前RCO文件已被删除！", Icon::Exclamation);
  editor.timDetectChange();
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

// A tick that comes while the question of another one stands open.
class TickingPrompts : public test::ScriptedPrompts {
 public:
  std::function<void()> tick;

  Answer ShowMessage(const Message& message) override {
    tick();
    return ScriptedPrompts::ShowMessage(message);
  }
};

TEST(Watcher, AsksOnlyOnceWhileItsQuestionStandsOpen) {
  const test::TempFolder folder;
  const auto path = folder.Write("small.rco", SmallRco());
  TickingPrompts prompts;
  test::ScriptedWatch watch;
  test::ScriptedProgress progress;
  Editor editor(folder.Path(), {.prompts = prompts, .watch = watch, .progress = progress});
  prompts.tick = [&editor] { editor.timDetectChange(); };
  editor.OpenRcoFile(path);
  DeleteFile(path);
  prompts.ExpectTell("当前RCO文件已被删除！", Icon::Exclamation);
  editor.timDetectChange();
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

}  // namespace
}  // namespace kelvane
