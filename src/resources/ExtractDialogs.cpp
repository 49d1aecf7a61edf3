#include "resources/ExtractDialogs.h"

#include <algorithm>
#include <cstddef>

#include "container/RcoFormat.h"

namespace kelvane {

namespace {

// The title of the GIM dialog says ICO, and the first GMO filter's label says gmo where its pattern says omg: these are
// the texts that users know.
const std::vector<ExtractDialog>& Dialogs() {
  using enum ExportMode;
  static const std::vector<ExtractDialog> kDialogs = {
      {rco::kKindGmo,
       0,
       "选择动画保存位置",
       "omg",
       {{"GMO文件(*.gmo)", "*.omg"}, {"DAT文件(*.dat)", "*.dat"}},
       {Unpacked, Raw}},
      {rco::kKindVag, 0, "选择VAG保存位置", "vag", {{"VAG文件(*.vag)", "*.vag"}}, {Raw}},
      {rco::kKindImage, rco::kFormatPng, "选择PNG保存位置", "png", {{"PNG文件(*.png)", "*.png"}}, {Raw}},
      {rco::kKindImage, rco::kFormatJpg, "选择JPG保存位置", "jpg", {{"JPG图像(*.jpg)", "*.jpg"}}, {Raw}},
      {rco::kKindImage, rco::kFormatTif, "选择TIF保存位置", "tiff", {{"TIFF文件(*.tiff)", "*.tiff"}}, {Raw}},
      {rco::kKindImage, rco::kFormatGif, "选择GIF保存位置", "gif", {{"GIF图像(*.gif)", "*.gif"}}, {Raw}},
      {rco::kKindImage, rco::kFormatBmp, "选择BMP保存位置", "bmp", {{"BMP Images (*.bmp)", "*.bmp"}}, {Raw}},
      {rco::kKindImage,
       rco::kFormatGim,
       "选择ICO保存位置",
       "bmp",
       {{"Bitmap (force 32bit) Images (*.bmp)", "*.bmp"},
        {"Bitmap (no colour conversion) Files (*.bmp)", "*.bmp"},
        {"DAT文件(*.dat)", "*.dat"},
        {"GIM图像(*.gim)", "*.gim"}},
       {Bitmap32, Bitmap, Raw, Unpacked}},
  };
  return kDialogs;
}

}  // namespace

ExportMode ExtractDialog::ModeOf(int filterNumber) const {
  const int nearest = std::clamp(filterNumber, 1, static_cast<int>(modes.size()));
  return modes[static_cast<std::size_t>(nearest - 1)];
}

const ExtractDialog* ExtractDialogFor(Int16 rscKind, Int16 rscFormat) {
  const std::vector<ExtractDialog>& dialogs = Dialogs();
  const auto found = std::find_if(dialogs.begin(), dialogs.end(), [&](const ExtractDialog& dialog) {
    return rscKind == Int16(dialog.kind) && (rscKind != Int16(rco::kKindImage) || rscFormat == Int16(dialog.format));
  });
  return found == dialogs.end() ? nullptr : &*found;
}

}  // namespace kelvane
