#include "common/Files.h"
#include "editor/Editor.h"
#include "editor/EditorFixture.h"

namespace kelvane {
namespace {

using test::SmallRco;

class EditorTest : public test::EditorFixture {};

TEST_F(EditorTest, TheProgramsFolderEndsInASeparator) {
  const std::string text = editor.State().cAppPath.string();
  EXPECT_EQ(text.back(), std::filesystem::path::preferred_separator);
  EXPECT_EQ(editor.State().TempPath("temp.dat"), folder / "program" / "temp.dat");
  const Editor other(folder.Path().string() + "/program/", {.prompts = prompts, .watch = watch, .progress = progress});
  EXPECT_EQ(other.State().cAppPath, editor.State().cAppPath);
}

TEST_F(EditorTest, BeforeAnythingIsOpenTheCaptionIsThatOfTheProgram) {
  EXPECT_EQ(editor.Document().caption, "Kelvane Editor MOD(by Orrelin)");
}

TEST_F(EditorTest, TheWordExpertTurnsTheModeOnAndOpensNothing) {
  for (const char* word : {"expert", " Expert ", "\"EXPERT\""}) {
    editor.State().cExpert = false;
    editor.TakeCommandLine(word);
    EXPECT_TRUE(editor.State().cExpert) << word;
    EXPECT_TRUE(editor.State().cCurFile.empty());
  }
}

TEST_F(EditorTest, ExpertTogetherWithAnythingElseIsNotRecognised) {
  editor.TakeCommandLine("expert small.rco");
  EXPECT_FALSE(editor.State().cExpert);
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(EditorTest, AFileNamedExpertInTheCurrentFolderIsOpenedToo) {
  folder.Write("expert", SmallRco());
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  editor.TakeCommandLine("expert");
  std::filesystem::current_path(before);
  EXPECT_TRUE(editor.State().cExpert);
  EXPECT_EQ(editor.State().cCurFile, "expert");
}

TEST_F(EditorTest, ACommandLineThatNamesAFileOpensItBlanksAndAll) {
  folder.Write("my small file.rco", SmallRco());
  editor.TakeCommandLine((folder / "my small file.rco").string());
  EXPECT_EQ(editor.State().cCurFile, folder / "my small file.rco");
}

TEST_F(EditorTest, AQuotedPathPassesTheTestAndFailsInTheOpening) {
  folder.Write("small.rco", SmallRco());
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
  editor.TakeCommandLine("\"" + (folder / "small.rco").string() + "\"");
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(EditorTest, ABlankInFrontOfAPathPassesTheTestAndFailsInTheOpening) {
  folder.Write("small.rco", SmallRco());
  prompts.ExpectUnknownFailure(FailureCode::FileNotFound, Answer::No);
  editor.TakeCommandLine(" " + (folder / "small.rco").string());
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(EditorTest, BlanksInsideQuotesAreNotTrimmed) {
  editor.TakeCommandLine("\" expert \"");
  EXPECT_FALSE(editor.State().cExpert);
}

TEST_F(EditorTest, AnEmptyCommandLineOrOneThatNamesNothingOpensNothing) {
  editor.TakeCommandLine("");
  editor.TakeCommandLine("  ");
  editor.TakeCommandLine((folder / "none.rco").string());
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(EditorTest, OpenAsksForAFileWithItsTitleAndFilters) {
  prompts.ExpectFileDialog({.path = folder.Write("small.rco", SmallRco())}, [](const FileDialog& dialog) {
    EXPECT_EQ(dialog.title, "选择一个RCO文件");
    EXPECT_EQ(dialog.filters, (std::vector<FileFilter>{{"RCO文件(*.rco)", "*.rco"}, {"所有文件(*.*)", "*.*"}}));
    EXPECT_TRUE(dialog.open);
  });
  editor.cmdOpen();
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
}

TEST_F(EditorTest, OpenThatIsCancelledLeavesTheDocument) {
  editor.OpenRcoFile(folder.Write("small.rco", SmallRco()));
  prompts.ExpectFileDialog({});
  editor.cmdOpen();
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
}

TEST_F(EditorTest, ADropOpensTheFile) {
  editor.DropFiles({folder.Write("small.rco", SmallRco())});
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
}

TEST_F(EditorTest, ADropOfTwoFilesUsesTheFirst) {
  prompts.ExpectTell("More than one file was dropped - only the first file will be used.", Icon::Exclamation);
  editor.DropFiles({folder.Write("small.rco", SmallRco()), folder.Write("b.rco", SmallRco())});
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
}

TEST_F(EditorTest, ADropOfAFileThatIsNotThereDoesNothing) {
  editor.DropFiles({});
  editor.DropFiles({folder / "none.rco"});
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(EditorTest, ADropWhoseFirstFileIsNotThereDoesNothingWithTheOthers) {
  prompts.ExpectTell("More than one file was dropped - only the first file will be used.", Icon::Exclamation);
  editor.DropFiles({folder / "none.rco", folder.Write("small.rco", SmallRco())});
  EXPECT_TRUE(editor.State().cCurFile.empty());
}

TEST_F(EditorTest, ADropOfAFileThatIsNoRcoLeavesTheOpenDocumentAsItWas) {
  editor.OpenRcoFile(folder.Write("small.rco", SmallRco()));
  prompts.ExpectTell("Not a valid RCO!", Icon::Exclamation);
  editor.DropFiles({folder.Write("a.txt", Bytes(100))});
  EXPECT_EQ(editor.State().cCurFile, folder / "small.rco");
  EXPECT_EQ(editor.Document().lst.Count(), 1);
}

}  // namespace
}  // namespace kelvane
