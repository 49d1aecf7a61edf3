#include "resources/Preview.h"

#include <filesystem>
#include <string>
#include <utility>

#include "common/Bytes.h"
#include "common/Files.h"
#include "common/Numbers.h"
#include "container/RcoFormat.h"
#include "gim/BmpHeader.h"
#include "gim/GimToBitmap.h"
#include "imaging/c32bppDIB.h"
#include "resources/Codec.h"
#include "resources/GenDataExport.h"

namespace kelvane {

namespace {

// A file that is deleted on every way out.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::filesystem::path path) : path_(std::move(path)) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { DeleteFileQuietly(path_); }

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

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
  bool ExportTo(const TemporaryFile& file) {
    std::filesystem::path path = file.Path();
    return ExportGenData(mod_, context_.document, path, row_, context_.prompts);
  }

  bool DrawImage() {
    const TemporaryFile data(mod_.TempPath("temp.dat"));
    if (!ExportTo(data)) {
      return false;
    }
    if (record_.rscCompression == Int16(rco::kCompressionZlib)) {
      // What can't be unpacked is tried as it is.
      const TemporaryFile unpacked(mod_.TempPath("temp2.dat"));
      if (DecompressFile(data.Path(), unpacked.Path())) {
        CopyWholeFile(unpacked.Path(), data.Path());
      }
    }
    c32bppDIB image(context_.pictures);
    image.LoadPicture_File(data.Path(), 0, 0);
    Render(image);
    SetSize(image.Width(), image.Height());
    return true;
  }

  bool DrawGim() {
    const TemporaryFile data(mod_.TempPath("temp.dat"));
    const TemporaryFile gim(mod_.TempPath("temp.gim"));
    const TemporaryFile bitmap(mod_.TempPath("temp.bmp"));
    if (!ExportTo(data) || !DecompressFile(data.Path(), gim.Path()) ||
        !GimToBitmap(gim.Path(), bitmap.Path(), true, mod_.cAppPath)) {
      return false;
    }
    c32bppDIB image(context_.pictures);
    image.LoadPicture_File(bitmap.Path(), 0, 0);
    Render(image);
    const BitmapHeader header = ReadBitmapHeader(bitmap.Path());
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
