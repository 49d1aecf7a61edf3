#include <gtest/gtest.h>
#include <string>

#include "resources/ReplaceDialogs.h"

namespace kelvane {
namespace {

struct Offered {
  int kind;
  int format;
  std::string title;
  FileFilter filter;
};

class ReplaceDialogTable : public ::testing::TestWithParam<Offered> {};

TEST_P(ReplaceDialogTable, HasItsTitleAndItsOneFilter) {
  const Offered& row = GetParam();
  const FileDialog* dialog = ReplaceDialogFor(Int16(row.kind), Int16(row.format));
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->title, row.title);
  EXPECT_EQ(dialog->filters, std::vector<FileFilter>{row.filter});
  EXPECT_TRUE(dialog->open);
}

const std::string kAnImage = "选择一个图像";

INSTANTIATE_TEST_SUITE_P(
    AllKinds, ReplaceDialogTable,
    ::testing::Values(
        Offered{1, 0, kAnImage, {"PNG文件(*.png)", "*.png"}}, Offered{1, 1, kAnImage, {"JPG图像(*.jpg)", "*.jpg"}},
        Offered{1, 2, kAnImage, {"TIFF文件(*.tiff)", "*.tiff"}}, Offered{1, 3, kAnImage, {"GIF图像(*.gif)", "*.gif"}},
        Offered{1, 4, kAnImage, {"BMP Images (*.bmp)", "*.bmp"}},
        Offered{1,
                5,
                kAnImage,
                {"支持图像类型(*.gim;*.mig;*.bmp;*.png;*.gif;*.ico)", "*.gim;*.mig;*.bmp;*.png;*.gif;*.ico"}},
        // A model's format doesn't matter.
        Offered{3, 0, "选择一个模块文件", {"支持模块(*.dat;*.omg;*.gmo)", "*.dat;*.omg;*.gmo"}},
        Offered{3, 9, "选择一个模块文件", {"支持模块(*.dat;*.omg;*.gmo)", "*.dat;*.omg;*.gmo"}}));

TEST(ReplaceDialogFor, SoundsAndImagesOfOtherFormatsHaveNone) {
  EXPECT_EQ(ReplaceDialogFor(2, 0), nullptr);
  EXPECT_EQ(ReplaceDialogFor(2, 5), nullptr);
  EXPECT_EQ(ReplaceDialogFor(1, 6), nullptr);
  EXPECT_EQ(ReplaceDialogFor(1, -1), nullptr);
  EXPECT_EQ(ReplaceDialogFor(4, 0), nullptr);
}

}  // namespace
}  // namespace kelvane
