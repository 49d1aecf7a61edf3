#include <chrono>

#include "common/Files.h"
#include "editor/EditorFixture.h"

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

}  // namespace
}  // namespace kelvane
