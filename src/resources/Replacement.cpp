#include "resources/Replacement.h"

#include <algorithm>

#include "common/Encoding.h"
#include "common/Files.h"
#include "common/TempFiles.h"
#include "container/FileBracket.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"
#include "gim/BitmapToGim.h"
#include "gim/BmpHeader.h"
#include "gim/Palette.h"
#include "imaging/c32bppDIB.h"
#include "resources/Codec.h"
#include "resources/Extraction.h"
#include "resources/PathEnding.h"
#include "resources/ReplaceDialogs.h"
#include "resources/VagSound.h"

namespace kelvane {

namespace {

namespace fs = std::filesystem;

constexpr int kBestCompression = 9;
constexpr int kTiled = 1;  // pixelOrder of every GIM that is made
constexpr int kMostPaletteColours = 256;
constexpr std::int64_t kSmallestFile = 3;  // bytes

bool IsOneOf(const std::string& extension, std::initializer_list<const char*> those) {
  return std::find(those.begin(), those.end(), extension) != those.end();
}

bool IsGim(const GenRsc& record) {
  return record.rscKind == Int16(rco::kKindImage) && record.rscFormat == Int16(rco::kFormatGim);
}

// Where the entry has the field: the length of the unpacked data.
void UpdateUnpackedSize(GenRsc& record, std::int64_t length) {
  if (record.unpackedSize != -1) {
    record.unpackedSize = CheckedInt32(length);
  }
}

// One press of cmdReplace.
class Replacement {
 public:
  Replacement(const ReplaceContext& context, int row)
      : context_(context),
        mod_(context.write.mod),
        prompts_(context.write.prompts),
        row_(row),
        record_(At(context.write.document.genRsc, row)) {}

  bool Run() {
    const TempFiles temps(
        {mod_.TempPath("temp.gim"), mod_.TempPath("temp.dat"), mod_.TempPath("temp.vag"), mod_.TempPath("temp.bmp")});
    const fs::path path = ChooseFile();
    if (path.empty()) {
      context_.refresh();
      return false;
    }
    const fs::path data = Prepare(path);
    if (data.empty()) {
      return false;
    }
    const bool replaced = ReplaceGenRscData(data, row_, context_.write);
    context_.refresh();
    return replaced;
  }

 private:
  fs::path ChooseFile() {
    if (record_.rscKind == Int16(rco::kKindVag)) {
      RcoFile file(mod_.cCurFile);
      mod_.vagChannels = file.ReadI16At(std::int64_t{record_.entryPos} + rco::FromEntryPos(rco::bodyChannels));
      file.Close();
      AskForVag(mod_, prompts_);
      return mod_.vagPath;
    }
    const FileDialog* dialog = ReplaceDialogFor(record_.rscKind, record_.rscFormat);
    if (dialog == nullptr) {
      return {};
    }
    fs::path path = prompts_.ShowFileDialog(*dialog).path;
    if (IsGim(record_) && IsOneOf(PathEnding(path), {".png", ".ico", ".gif"})) {
      // Whether the image could be read shows in what follows.
      const fs::path bitmap = mod_.TempPath("temp.bmp");
      c32bppDIB image(context_.pictures);
      image.LoadPicture_File(path, 0, 0);
      image.SaveToFile(bitmap);
      path = bitmap;
    }
    return path;
  }

  // The file that holds the data in their final stored form; empty where the replacement ends here.
  fs::path Prepare(const fs::path& path) {
    if (!FileExists(path) || FileLength(path) < kSmallestFile) {
      Tell(prompts_, "File is too small!", Icon::Exclamation);
      return {};
    }
    const std::string ext = PathEnding(path);
    Int16 colours;
    if (ext == ".bmp" && !AcceptBitmap(path, colours)) {
      return {};
    }
    BackupOnce(mod_, context_.write.watch);
    if (ext == ".bmp") {
      return PrepareBitmap(path, colours);
    }
    UpdateUnpackedSize(record_, FileLength(path));
    if (!IsOneOf(ext, {".mig", ".gim", ".gmo", ".omg"})) {
      return path;  // taken to be in its final form
    }
    return mod_.cNoCompression ? path : Compress(path);
  }

  bool AcceptBitmap(const fs::path& path, Int16& colours) {
    if (!CountBitmapColours(path, colours, false, prompts_)) {
      return false;
    }
    return colours <= Int16(kMostPaletteColours) || mod_.cImpt32bitMode != Int16(0) ||
           Ask(prompts_, "你选择的图像多于256色，不能替换为索引GIM图像。是否使用32位GIM图像代替？", Icon::Question);
  }

  fs::path PrepareBitmap(const fs::path& path, Int16 colours) {
    const fs::path gim = mod_.TempPath("temp.gim");
    const bool palette = ShouldUsePalette(colours, path, mod_.cImpt32bitMode);
    if (!BitmapToGim(path, gim, palette, kTiled, mod_.cFirstColTrans)) {
      Tell(prompts_, "GIM转换失败", Icon::Critical);
      return {};
    }
    UpdateUnpackedSize(record_, FileLength(gim));
    return mod_.cNoCompression ? gim : Compress(gim);
  }

  fs::path Compress(const fs::path& path) {
    fs::path packed = mod_.TempPath("temp.dat");
    if (!CompressFile(path, packed, kBestCompression)) {
      Tell(prompts_, "压缩失败", Icon::Critical);
      return {};
    }
    return packed;
  }

  const ReplaceContext& context_;
  Mod& mod_;
  Prompts& prompts_;
  Int16 row_;
  GenRsc& record_;
};

// One run of cmdReplaceAll. Files and outcomes are those of going through "temp.gim" and "temp.dat" with each resource;
// but only the first ones do, which tells whether these files can be made. The others stay in memory.
class FolderReplacement {
 public:
  FolderReplacement(const ReplaceContext& context, fs::path folder)
      : context_(context),
        mod_(context.write.mod),
        folder_(std::move(folder)),
        tempGim_(mod_.TempPath("temp.gim")),
        tempDat_(mod_.TempPath("temp.dat")),
        tempVag_(mod_.TempPath("temp.vag")),
        replacer_(context.write) {}

  void Run() {
    const RcoDocument& document = context_.write.document;
    const int rows = std::min(document.lst.Count(), static_cast<int>(document.genRsc.size()));
    const TempFiles temps({tempGim_, tempDat_, tempVag_});
    try {
      for (int row = 0; row < rows; ++row) {
        context_.progress.Show(row, rows);
        ReplaceRow(row);
      }
    } catch (...) {
      replacer_.Finish();  // what was replaced before the failure is stored
      throw;
    }
    context_.progress.Show(rows, rows);
    replacer_.Finish();
  }

 private:
  void ReplaceRow(int row) {
    RcoDocument& document = context_.write.document;
    GenRsc& record = At(document.genRsc, row);
    base_ = folder_ / PathFromUtf8(FileNameOfLabel(LabelOfRow(document, row)));
    if (record.rscKind == Int16(rco::kKindVag)) {
      ReplaceVag(row);
    } else if (record.rscKind == Int16(rco::kKindGmo)) {
      ReplaceGmo(row);
    } else if (IsGim(record)) {
      ReplaceGim(row, record);
    } else {
      HandOver(Named("." + ExtensionForImageType(record.rscFormat)), row);
    }
  }

  [[nodiscard]] fs::path Named(const std::string& ending) const {
    fs::path path = base_;
    path += ending;
    return path;
  }

  // Stores the file as it is, if it is there.
  void HandOver(const fs::path& path, int row) {
    if (FileExists(path)) {
      replacer_.Replace(path, row);
    }
  }

  // Stores the file, compressed unless the settings forbid it.
  void HandOverPacked(const fs::path& path, int row) {
    if (mod_.cNoCompression) {
      replacer_.Replace(path, row);
    } else {
      HandOverWrapper(DeflateFile(path, kBestCompression), row);
    }
  }

  // Stores what came of the compression. Whether anything did isn't tested: without it the resource becomes what
  // "temp.dat" holds, and stays as it is where there is none.
  void HandOverWrapper(const std::optional<Bytes>& wrapper, int row) {
    if (wrapper && CanPassTempDat(*wrapper)) {
      replacer_.Replace(*wrapper, row);
    } else {
      replacer_.Replace(tempDat_, row);
    }
    DeleteFileQuietly(tempDat_);
  }

  static void Make(const fs::path& temp, const Bytes& content) {
    DeleteFileIfThere(temp);
    WriteWholeFile(temp, content);
  }

  bool CanPassTempDat(const Bytes& wrapper) {
    if (!passedTempDat_) {
      try {
        Make(tempDat_, wrapper);
        passedTempDat_ = true;
      } catch (...) {
        (void)CurrentFailure();  // as where the compression failed
      }
    }
    return passedTempDat_;
  }

  void PassTempGim(const Bytes& gim) {
    if (!passedTempGim_) {
      Make(tempGim_, gim);
      passedTempGim_ = true;
    }
  }

  void ReplaceGim(int row, GenRsc& record) {
    // The export of the image's own depth wins over that of 32 bits.
    for (const char* ending : {".bmp", ".32bit.bmp"}) {
      if (FileExists(Named(ending))) {
        ReplaceByBitmap(Named(ending), row, record);
        DeleteFileQuietly(tempGim_);
        return;
      }
    }
    if (FileExists(Named(".gim"))) {
      UpdateUnpackedSize(record, FileLength(Named(".gim")));
      HandOverPacked(Named(".gim"), row);
      return;
    }
    HandOver(Named(".dat"), row);
  }

  void ReplaceByBitmap(const fs::path& path, int row, GenRsc& record) {
    const Bytes bitmap = ReadWholeFile(path);
    // The count goes on from one bitmap to the next: after a few of them all are taken to have more than 256 colours.
    if (!CountBitmapColours(bitmap, colours_)) {
      return;
    }
    const bool palette = ShouldUsePalette(colours_, ReadBitmapHeader(bitmap), mod_.cImpt32bitMode);
    const std::optional<Bytes> gim = BitmapToGim(bitmap, palette, kTiled, mod_.cFirstColTrans);
    if (!gim) {
      return;
    }
    PassTempGim(*gim);
    UpdateUnpackedSize(record, static_cast<std::int64_t>(gim->size()));
    if (mod_.cNoCompression) {
      replacer_.Replace(*gim, row);
    } else {
      HandOverWrapper(DeflateToWrapper(*gim, kBestCompression), row);
    }
  }

  void ReplaceVag(int row) {
    const fs::path left = Named(".ch1.vag");
    const fs::path right = Named(".ch2.vag");
    if (FileExists(left) && FileExists(right)) {
      mod_.vagChannels = 2;
      mod_.vagSize1 = CheckedInt32(FileLength(left));
      mod_.vagSize2 = CheckedInt32(FileLength(right));
      MergeVagChannels(left, right, mod_);
      replacer_.Replace(tempVag_, row);
      DeleteFileQuietly(tempVag_);
      return;
    }
    mod_.vagPath = FileExists(left) ? left : FileExists(Named(".vag")) ? Named(".vag") : fs::path();
    if (!mod_.vagPath.empty()) {
      mod_.vagChannels = 1;
      mod_.vagSize1 = CheckedInt32(FileLength(mod_.vagPath));
      mod_.vagSize2 = 0;
      replacer_.Replace(mod_.vagPath, row);
    }
  }

  void ReplaceGmo(int row) {
    if (FileExists(Named(".omg"))) {
      // The unpacked size stays as it is on this road, unlike that of cmdReplace.
      HandOverPacked(Named(".omg"), row);
      return;
    }
    HandOver(Named(".dat"), row);
  }

  const ReplaceContext& context_;
  Mod& mod_;
  fs::path folder_;
  fs::path tempGim_;
  fs::path tempDat_;
  fs::path tempVag_;
  GenReplacer replacer_;
  fs::path base_;  // folder and label of the row
  Int16 colours_;
  bool passedTempGim_ = false;  // could be made, and so could the others
  bool passedTempDat_ = false;
};

}  // namespace

bool CmdReplace(const ReplaceContext& context) {
  const int row = context.write.document.lst.Selected();
  return row >= 0 && Replacement(context, row).Run();
}

void CmdReplaceAll(const ReplaceContext& context) {
  const fs::path folder = context.write.prompts.BrowseForFolder("选择输出目录");
  if (folder.empty()) {
    return;
  }
  FolderReplacement(context, folder).Run();
  context.refresh();
  Tell(context.write.prompts, "完成", Icon::Information);
}

}  // namespace kelvane
