#include <gtest/gtest.h>
#include <memory>

#include "shell/DragEvents.h"
#include "shell/FileDrop.h"
#include "shell/WindowFixture.h"

namespace kelvane::test {
namespace {

class FileDropTest : public WindowFixture {
 protected:
  FileDropTest() {
    RcoBuilder builder;
    builder.AddImage({.label = "one", .data = Bytes(8)});
    path = folder.Write("one.rco", builder.Build().bytes);
  }

  // All that take drops, as the toolkit addresses them: of a list its viewport.
  std::vector<QWidget*> Targets() {
    std::vector<QWidget*> targets = {&form};
    for (const char* name : {"lst", "lstText", "lstPage", "lstAnim"}) {
      targets.push_back(Find<ListBox>(name)->viewport());
    }
    for (const char* name : {"picTab(0)", "picTab(1)", "picTab(2)", "picTab(3)"}) {
      targets.push_back(Find(name));
    }
    return targets;
  }

  [[nodiscard]] QString Title() const { return form.windowTitle(); }

  std::filesystem::path path;
};

TEST_F(FileDropTest, DragOfTextIsRefusedEverywhere) {
  Start();
  const std::unique_ptr<QMimeData> text(FileDrag::Text());
  for (QWidget* target : Targets()) {
    EXPECT_TRUE(target->acceptDrops()) << target->objectName().toStdString();
    EXPECT_FALSE(IsAccepted(*target, *text)) << target->objectName().toStdString();
  }
}

TEST_F(FileDropTest, DragOfFilesIsAcceptedEverywhere) {
  Start();
  FileDrag drag({path});
  for (QWidget* target : Targets()) {
    EXPECT_TRUE(IsAccepted(*target, drag.Data())) << target->objectName().toStdString();
  }
}

TEST_F(FileDropTest, LinkIntoTheWebIsNoFile) {
  Start();
  QMimeData link;
  link.setUrls({QUrl("https://example.org/one.rco")});
  EXPECT_FALSE(IsAccepted(form, link));
  Drop(form, link);
  EXPECT_EQ(Title(), "Kelvane Editor MOD(by Orrelin)");
}

TEST_F(FileDropTest, DropOpensTheFileWhereverItFalls) {
  Start();
  FileDrag drag({path});
  for (QWidget* target : Targets()) {
    Drop(*target, drag.Data());
    EXPECT_EQ(Title(), "Kelvane Editor [one.rco] (by Orrelin)") << target->objectName().toStdString();
    EXPECT_EQ(Find<ListBox>("lst")->model()->rowCount(), 1);
    // Closed again by dropping a copy that vanishes at the next tick.
    std::filesystem::rename(path, folder / "away.rco");
    prompts.ExpectTell("当前RCO文件已被删除！", Icon::Exclamation);
    QTest::qWait(400);
    EXPECT_EQ(Title(), "Kelvane Editor MOD");
    std::filesystem::rename(folder / "away.rco", path);
  }
}

TEST_F(FileDropTest, OfSeveralFilesTheFirstIsOpened) {
  Start();
  prompts.ExpectTell("More than one file was dropped - only the first file will be used.", Icon::Exclamation);
  FileDrag drag({path, folder / "nothing.rco"});
  Drop(form, drag.Data());
  EXPECT_EQ(Title(), "Kelvane Editor [one.rco] (by Orrelin)");
}

TEST_F(FileDropTest, FileThatIsNotThereDoesNothing) {
  Start();
  FileDrag drag({folder / "nothing.rco"});
  Drop(form, drag.Data());
  EXPECT_EQ(Title(), "Kelvane Editor MOD(by Orrelin)");
}

TEST_F(FileDropTest, FileThatIsNoRcoLeavesTheOpenDocument) {
  Start(path.string());
  prompts.ExpectTell("Not a valid RCO!", Icon::Exclamation);
  FileDrag drag({folder.Write("zeros.rco", Bytes(200))});
  Drop(form, drag.Data());
  EXPECT_EQ(Title(), "Kelvane Editor [one.rco] (by Orrelin)");
  EXPECT_EQ(Find<ListBox>("lst")->model()->rowCount(), 1);
}

}  // namespace
}  // namespace kelvane::test
