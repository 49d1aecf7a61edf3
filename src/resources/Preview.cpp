#include "resources/Preview.h"

#include <filesystem>
#include <string>

#include "common/Bytes.h"
#include "common/Files.h"
#include "common/Numbers.h"
#include "common/TempFiles.h"
#include "container/RcoFormat.h"
#include "gim/BmpHeader.h"
#include "gim/GimToBitmap.h"
#include "imaging/c32bppDIB.h"
#include "resources/Codec.h"
#include "resources/GenDataExport.h"

namespace kelvane {

namespace {

class ResourceView {
 public:
  ResourceView(const PreviewContext& context, int row)
      : context_(context),
        mod_(context.mod),
        display_(context.document.general),
        row_(row),
        record_(At(context.document.genRsc, row)) {}

  void Show() {
    bool drawn = false;
    if (record_.rscKind == Int16(rco::kKindImage)) {
      drawn = record_.rscFormat == Int16(rco::kFormatGim) ? DrawGim() : DrawImage();
    }
    if (!drawn) {
      display_.lblPreviewFailVisible = true;
      display_.lblDim = "尺寸:未知";
      display_.shpResWidth = 0;
      display_.shpResHeight = 0;
    }
    display_.lblGenCompr = CompressionText();
    display_.lblGenOffsetEntry = "0x" + HexOf(AddInt32(record_.entryPos, -rco::kEntryPosBias));
    // The area of the images, for sounds and models too.
    display_.lblGenOffsetData = "0x" + HexOf(AddInt32(record_.dataOffset, context_.document.dataAreas[0]));
  }

 private:
  bool ExportTo(std::filesystem::path path) {
    return ExportGenData(mod_, context_.document, path, row_, context_.prompts);
  }

  bool DrawImage() {
    const std::filesystem::path data = mod_.TempPath("temp.dat");
    const TempFiles temps({data});
    if (!ExportTo(data)) {
      return false;
    }
    if (record_.rscCompression == Int16(rco::kCompressionZlib)) {
      // What can't be unpacked is tried as it is.
      const std::filesystem::path unpacked = mod_.TempPath("temp2.dat");
      const TempFiles unpackedTemps({unpacked});
      if (DecompressFile(data, unpacked)) {
        CopyWholeFile(unpacked, data);
      }
    }
    c32bppDIB image(context_.pictures);
    image.LoadPicture_File(data, 0, 0);
    Render(image);
    SetSize(image.Width(), image.Height());
    return true;
  }

  bool DrawGim() {
    const std::filesystem::path data = mod_.TempPath("temp.dat");
    const std::filesystem::path gim = mod_.TempPath("temp.gim");
    const std::filesystem::path bitmap = mod_.TempPath("temp.bmp");
    const TempFiles temps({data, gim, bitmap});
    if (!ExportTo(data) || !DecompressFile(data, gim) || !GimToBitmap(gim, bitmap, true, mod_.cAppPath)) {
      return false;
    }
    c32bppDIB image(context_.pictures);
    image.LoadPicture_File(bitmap, 0, 0);
    Render(image);
    const BitmapHeader header = ReadBitmapHeader(bitmap);
    SetSize(header.biWidth, header.biHeight);
    return true;
  }

  void Render(const c32bppDIB& image) const {
    display_.lblPreviewFailVisible = false;
    for (Surface* surface : context_.surfaces) {
      constexpr std::int32_t kOpaque = 100;  // per cent
      std::int32_t width = 0;
      image.Render(surface, 0, 0, width, 0, kOpaque);
    }
  }

  void SetSize(std::int32_t width, std::int32_t height) const {
    display_.lblDim = "尺寸: " + std::to_string(width) + "x" + std::to_string(height);
    display_.shpResWidth = width;
    display_.shpResHeight = height;
  }

  // A sound has its number of channels in this place: mono shows as compressed and stereo as RLZ.
  [[nodiscard]] std::string CompressionText() const {
    switch (record_.rscCompression.Int()) {
      case rco::kCompressionNone:
        return "无";
      case rco::kCompressionZlib:
        return "压缩";
      case rco::kCompressionRlz:
        return "RLZ";
      default:
        return "Unknown (0x" + HexOf(record_.rscCompression.Value()) + ")";
    }
  }

  const PreviewContext& context_;
  const Mod& mod_;
  GeneralDisplay& display_;
  Int16 row_;
  const GenRsc& record_;
};

}  // namespace

void ShowSelectedResource(const PreviewContext& context) {
  GeneralDisplay& display = context.document.general;
  const int row = context.document.lst.Selected();
  if (row < 0) {
    display.lblGenItemNo.clear();
    return;
  }
  display.lblGenItemNo = "项目 #" + std::to_string(row);
  for (Surface* surface : context.surfaces) {
    if (surface != nullptr) {
      surface->Clear();
    }
  }
  ResourceView(context, row).Show();
}

}  // namespace kelvane
