// The editor's commands that change general resources.
#include "EditorFixture.h"
#include "resources/GenDataExport.h"
#include "support/PlainBmp.h"

namespace kelvane {
namespace {

class EditorResourcesTest : public test::EditorFixture {
 protected:
  EditorResourcesTest() { editor.OpenRcoFile(folder.Write("a.rco", test::SmallRco())); }
  [[nodiscard]] Bytes Content() const { return ReadWholeFile(folder / "a.rco"); }

  // 16 x 8 pixels.
  Bytes bitmap =
      test::BuildBmp8(16, 8, std::vector<std::uint32_t>(128, 1), std::vector<std::uint32_t>(256, 0x0A0B0C0D));
};

TEST_F(EditorResourcesTest, ReplaceShowsTheNewImageAtOnce) {
  editor.lst_Click(0);
  EXPECT_EQ(editor.Document().general.lblDim, "尺寸:未知");
  prompts.ExpectFileDialog({.path = folder.Write("a.bmp", bitmap)});
  EXPECT_TRUE(editor.cmdReplace());
  EXPECT_EQ(editor.Document().general.lblDim, "尺寸: 16x8");
  EXPECT_FALSE(editor.Document().general.lblPreviewFailVisible);
  EXPECT_EQ(editor.Document().general.lblGenCompr, "压缩");
  EXPECT_TRUE(FileExists(folder / "a.rco.bak"));
  EXPECT_TRUE(watch.Running());
  EXPECT_TRUE(std::filesystem::is_empty(folder / "program"));
}

TEST_F(EditorResourcesTest, ReplaceThatIsCancelledOrHasNoRowDoesNothing) {
  EXPECT_FALSE(editor.cmdReplace());
  editor.lst_Click(0);
  prompts.ExpectFileDialog({});
  EXPECT_FALSE(editor.cmdReplace());
  EXPECT_EQ(Content(), test::SmallRco());
}

TEST_F(EditorResourcesTest, ReplaceAllShowsTheNewImageBeforeTheEndIsTold) {
  std::filesystem::create_directory(folder / "in");
  folder.Write("in/ab.bmp", bitmap);
  editor.lst_Click(0);
  prompts.ExpectFolder("选择输出目录", folder / "in");
  prompts.ExpectTell("完成", Icon::Information);
  editor.cmdReplaceAll();
  EXPECT_EQ(editor.Document().general.lblDim, "尺寸: 16x8");
  EXPECT_EQ(progress.Shown(), (std::vector<std::pair<int, int>>{{0, 1}, {1, 1}}));
}

TEST_F(EditorResourcesTest, AddStartsWithTheSelectedRowAndNeedsAFile) {
  EXPECT_EQ(editor.cmdGenRscAdd(), "");
  editor.lst_Click(0);
  EXPECT_EQ(editor.cmdGenRscAdd(), "0");
  editor.OpenRcoFile({});
  prompts.ExpectTell("Must have a file loaded to use this feature!", Icon::Exclamation);
  EXPECT_EQ(editor.cmdGenRscAdd(), std::nullopt);
  editor.OpenRcoFile(folder.Write("a.rco", test::SmallRco()));
  DeleteFile(folder / "a.rco");
  prompts.ExpectTell("Must have a file loaded to use this feature!", Icon::Exclamation);
  EXPECT_EQ(editor.cmdGenRscAdd(), std::nullopt);
}

TEST_F(EditorResourcesTest, AddRefusesAPlaceThatAFileOfOneRowDoesNotHave) {
  prompts.ExpectTell(
      "Sorry, I'm too lazy to implement border checking, so you cannot add a resource at this location T_T.",
      Icon::Information);
  EXPECT_FALSE(
      editor.frmAddGen_cmdOK({.txtFile = folder.Write("a.gim", Bytes(20)).string(), .txtPos = "1", .txtLabel = "new"}));
  EXPECT_EQ(Content(), test::SmallRco());
}

}  // namespace
}  // namespace kelvane
