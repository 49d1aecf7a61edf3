#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "resources/ExtractDialogs.h"

namespace kelvane {
namespace {

struct Row {
  int kind;
  int format;
  std::string title;
  std::string defaultExt;
  std::vector<FileFilter> filters;
  std::vector<int> modes;  // by filter number, from 1
};

const std::vector<Row> kTable = {
    {3, 0, "选择动画保存位置", "omg", {{"GMO文件(*.gmo)", "*.omg"}, {"DAT文件(*.dat)", "*.dat"}}, {4, 3}},
    {2, 0, "选择VAG保存位置", "vag", {{"VAG文件(*.vag)", "*.vag"}}, {3}},
    {1, 0, "选择PNG保存位置", "png", {{"PNG文件(*.png)", "*.png"}}, {3}},
    {1, 1, "选择JPG保存位置", "jpg", {{"JPG图像(*.jpg)", "*.jpg"}}, {3}},
    {1, 2, "选择TIF保存位置", "tiff", {{"TIFF文件(*.tiff)", "*.tiff"}}, {3}},
    {1, 3, "选择GIF保存位置", "gif", {{"GIF图像(*.gif)", "*.gif"}}, {3}},
    {1, 4, "选择BMP保存位置", "bmp", {{"BMP Images (*.bmp)", "*.bmp"}}, {3}},
    {1,
     5,
     "选择ICO保存位置",
     "bmp",
     {{"Bitmap (force 32bit) Images (*.bmp)", "*.bmp"},
      {"Bitmap (no colour conversion) Files (*.bmp)", "*.bmp"},
      {"DAT文件(*.dat)", "*.dat"},
      {"GIM图像(*.gim)", "*.gim"}},
     {1, 2, 3, 4}},
};

TEST(ExtractDialogs, EveryKindHasItsTitleExtensionAndFilters) {
  for (const Row& row : kTable) {
    const ExtractDialog* dialog = ExtractDialogFor(row.kind, row.format);
    ASSERT_NE(dialog, nullptr) << row.title;
    EXPECT_EQ(dialog->title, row.title);
    EXPECT_EQ(dialog->defaultExt, row.defaultExt) << row.title;
    EXPECT_EQ(dialog->filters, row.filters) << row.title;
  }
}

TEST(ExtractDialogs, EveryFilterHasItsMode) {
  for (const Row& row : kTable) {
    const ExtractDialog* dialog = ExtractDialogFor(row.kind, row.format);
    ASSERT_NE(dialog, nullptr) << row.title;
    for (std::size_t filter = 0; filter < row.modes.size(); ++filter) {
      EXPECT_EQ(static_cast<int>(dialog->ModeOf(static_cast<int>(filter) + 1)), row.modes[filter])
          << row.title << filter;
    }
  }
}

TEST(ExtractDialogs, AFilterNumberThatTheDialogDoesNotHaveCountsAsTheNearest) {
  const ExtractDialog* gim = ExtractDialogFor(1, 5);
  ASSERT_NE(gim, nullptr);
  EXPECT_EQ(gim->ModeOf(0), ExportMode::Bitmap32);
  EXPECT_EQ(gim->ModeOf(5), ExportMode::Unpacked);
  const ExtractDialog* png = ExtractDialogFor(1, 0);
  ASSERT_NE(png, nullptr);
  EXPECT_EQ(png->ModeOf(2), ExportMode::Raw);
}

TEST(ExtractDialogs, OnlyAnImagesFormatIsLookedAt) {
  EXPECT_EQ(ExtractDialogFor(3, 5), ExtractDialogFor(3, 0));
  EXPECT_EQ(ExtractDialogFor(2, 1), ExtractDialogFor(2, 0));
}

TEST(ExtractDialogs, AnImageOfAnyOtherFormatHasNone) {
  EXPECT_EQ(ExtractDialogFor(1, 6), nullptr);
  EXPECT_EQ(ExtractDialogFor(1, -1), nullptr);
}

}  // namespace
}  // namespace kelvane
