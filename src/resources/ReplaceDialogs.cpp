#include "resources/ReplaceDialogs.h"

#include <array>

#include "container/RcoFormat.h"

namespace kelvane {

const FileDialog* ReplaceDialogFor(Int16 rscKind, Int16 rscFormat) {
  // By rscFormat.
  static const std::array<FileDialog, 6> kImages = {{
      {.title = "选择一个图像", .filters = {{"PNG文件(*.png)", "*.png"}}},
      {.title = "选择一个图像", .filters = {{"JPG图像(*.jpg)", "*.jpg"}}},
      {.title = "选择一个图像", .filters = {{"TIFF文件(*.tiff)", "*.tiff"}}},
      {.title = "选择一个图像", .filters = {{"GIF图像(*.gif)", "*.gif"}}},
      {.title = "选择一个图像", .filters = {{"BMP Images (*.bmp)", "*.bmp"}}},
      {.title = "选择一个图像",
       .filters = {{"支持图像类型(*.gim;*.mig;*.bmp;*.png;*.gif;*.ico)", "*.gim;*.mig;*.bmp;*.png;*.gif;*.ico"}}},
  }};
  static const FileDialog kModel = {.title = "选择一个模块文件",
                                    .filters = {{"支持模块(*.dat;*.omg;*.gmo)", "*.dat;*.omg;*.gmo"}}};
  if (rscKind == Int16(rco::kKindGmo)) {
    return &kModel;
  }
  const int format = rscFormat.Int();
  if (rscKind != Int16(rco::kKindImage) || format < 0 || format >= static_cast<int>(kImages.size())) {
    return nullptr;
  }
  return &kImages[static_cast<std::size_t>(format)];
}

}  // namespace kelvane
