// What no change of a file touches in its header.
#include "common/Files.h"
#include "editor/EditorFixture.h"
#include "support/RcoSeeds.h"

namespace kelvane {
namespace {

// The lengths of labels (68) and events (76), which would change if anybody worked them out again, and the longs
// without a meaning.
constexpr std::array<std::int32_t, 11> kKept = {8, 12, 16, 20, 40, 44, 68, 76, 152, 156, 160};

class KeptHeader : public test::EditorFixture {
 protected:
  KeptHeader() {
    test::RcoBuilder b = test::SmallRcoOfEverything();
    for (const std::int32_t offset : kKept) {
      b.Options().headerLongs[offset] = ValueAt(offset);
    }
    editor.OpenRcoFile(folder.Write("f.rco", b.Build().bytes));
    lengthBefore_ = FileLength(folder / "f.rco");
  }

  static std::int32_t ValueAt(std::int32_t offset) { return 0x01010000 + offset; }

  void ExpectGrownAndKept() const {
    const Bytes file = ReadWholeFile(folder / "f.rco");
    EXPECT_GT(std::ssize(file), lengthBefore_);
    for (const std::int32_t offset : kKept) {
      EXPECT_EQ(ReadI32(file, offset), ValueAt(offset)) << offset;
    }
  }

 private:
  std::int64_t lengthBefore_ = 0;
};

TEST_F(KeptHeader, AddingALabelLeavesTheLengthOfTheLabelsAndAllReservedFieldsUnchanged) {
  EXPECT_TRUE(editor.frmAddText_cmdOK("a_label_of_its_own", "1"));
  EXPECT_EQ(editor.Document().lstText.Text(1), "a_label_of_its_own");
  ExpectGrownAndKept();
}

TEST_F(KeptHeader, AChangedTextLeavesThemToo) {
  editor.lstText_Click(0);
  editor.cmdTextChange(u"A text that is longer than the one before it");
  ExpectGrownAndKept();
}

TEST_F(KeptHeader, AnAddedPageLeavesThemToo) {
  EXPECT_TRUE(editor.frmAddPage_cmdOK({.txtLabel = "page_new", .txtPos = "1", .txtDepth = "0", .cboID = 0}));
  ExpectGrownAndKept();
}

TEST_F(KeptHeader, AnAddedAndAReplacedResourceLeaveThemToo) {
  const std::string gim = folder.Write("a.gim", Bytes(600, 'M')).string();
  EXPECT_TRUE(editor.frmAddGen_cmdOK({.txtFile = gim, .txtPos = "1", .txtLabel = "tex_new"}));
  EXPECT_EQ(editor.Document().lst.Text(1), "[GIM] tex_new");
  ExpectGrownAndKept();
  const std::int64_t lengthBefore = FileLength(folder / "f.rco");
  Bytes other(900);
  for (std::size_t i = 0; i < other.size(); ++i) {
    other[i] = static_cast<std::uint8_t>(i * i / 7);
  }
  prompts.ExpectFileDialog({.path = folder.Write("b.gim", other)});
  editor.lst_Click(1);
  EXPECT_TRUE(editor.cmdReplace());
  EXPECT_GT(FileLength(folder / "f.rco"), lengthBefore);
  ExpectGrownAndKept();
}

}  // namespace
}  // namespace kelvane
