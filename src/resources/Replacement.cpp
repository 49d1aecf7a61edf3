#include "resources/Replacement.h"

#include <algorithm>

#include "common/Encoding.h"
#include "common/Files.h"
#include "container/FileBracket.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"
#include "gim/BitmapToGim.h"
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

// The temporary files of a replacement, deleted on every way out.
class TemporaryFiles {
 public:
  explicit TemporaryFiles(const Mod& mod) : mod_(mod) {}
  TemporaryFiles(const TemporaryFiles&) = delete;
  TemporaryFiles& operator=(const TemporaryFiles&) = delete;
  ~TemporaryFiles() {
    for (const char* name : {"temp.gim", "temp.dat", "temp.vag", "temp.bmp"}) {
      DeleteFileQuietly(mod_.TempPath(name));
    }
  }

 private:
  const Mod& mod_;
};

bool IsOneOf(const std::string& extension, std::initializer_list<const char*> those) {
  return std::find(those.begin(), those.end(), extension) != those.end();
}

bool IsGim(const GenRsc& record) {
  return record.rscKind == Int16(rco::kKindImage) && record.rscFormat == Int16(rco::kFormatGim);
}

// Where the entry has the field: the length of the file that holds the unpacked data.
void UpdateUnpackedSize(GenRsc& record, const fs::path& file) {
  if (record.unpackedSize != -1) {
    record.unpackedSize = CheckedInt32(FileLength(file));
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

  void Run() {
    const TemporaryFiles temporary(mod_);
    const fs::path path = ChooseFile();
    if (path.empty()) {
      context_.refresh();
      return;
    }
    const fs::path data = Prepare(path);
    if (!data.empty()) {
      ReplaceGenRscData(data, row_, context_.write);
      context_.refresh();
    }
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
    UpdateUnpackedSize(record_, path);
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
    UpdateUnpackedSize(record_, gim);
    return mod_.cNoCompression ? gim : Compress(gim);
  }

  fs::path Compress(const fs::path& path) {
    const fs::path packed = mod_.TempPath("temp.dat");
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

// One run of cmdReplaceAll.
class FolderReplacement {
 public:
  FolderReplacement(const ReplaceContext& context, fs::path folder)
      : context_(context), mod_(context.write.mod), folder_(std::move(folder)), replacer_(context.write) {}

  void Run() {
    const RcoDocument& document = context_.write.document;
    const int rows = std::min(document.lst.Count(), static_cast<int>(document.genRsc.size()));
    const TemporaryFiles temporary(mod_);
    const Finished finished(replacer_);
    for (int row = 0; row < rows; ++row) {
      context_.progress.Show(row, rows);
      ReplaceRow(row);
    }
    context_.progress.Show(rows, rows);
  }

 private:
  // Stores what was replaced, also where a failure ends the run.
  class Finished {
   public:
    explicit Finished(GenReplacer& replacer) : replacer_(replacer) {}
    Finished(const Finished&) = delete;
    Finished& operator=(const Finished&) = delete;
    ~Finished() { replacer_.Finish(); }

   private:
    GenReplacer& replacer_;
  };

  void ReplaceRow(int row) {
    GenRsc& record = At(context_.write.document.genRsc, row);
    constexpr std::size_t kPrefixLength = 6;  // as in "[GIM] "
    const std::string& line = context_.write.document.lst.Text(row);
    base_ = PathToUtf8(folder_ / FileNameOfLabel(line.substr(std::min(kPrefixLength, line.size()))));
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

  [[nodiscard]] fs::path Named(const std::string& ending) const { return PathFromUtf8(base_ + ending); }

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
      return;
    }
    const fs::path packed = mod_.TempPath("temp.dat");
    CompressFile(path, packed, kBestCompression);
    replacer_.Replace(packed, row);
    DeleteFileQuietly(packed);
  }

  void ReplaceGim(int row, GenRsc& record) {
    // The export of the image's own depth wins over that of 32 bits.
    for (const char* ending : {".bmp", ".32bit.bmp"}) {
      if (FileExists(Named(ending))) {
        ReplaceByBitmap(Named(ending), row, record);
        return;
      }
    }
    if (FileExists(Named(".gim"))) {
      UpdateUnpackedSize(record, Named(".gim"));
      HandOverPacked(Named(".gim"), row);
      return;
    }
    HandOver(Named(".dat"), row);
  }

  void ReplaceByBitmap(const fs::path& bitmap, int row, GenRsc& record) {
    // The count goes on from one bitmap to the next: after a few of them all are taken to have more than 256 colours.
    if (!CountBitmapColours(bitmap, colours_, true, context_.write.prompts)) {
      return;
    }
    const fs::path gim = mod_.TempPath("temp.gim");
    const bool palette = ShouldUsePalette(colours_, bitmap, mod_.cImpt32bitMode);
    if (BitmapToGim(bitmap, gim, palette, kTiled, mod_.cFirstColTrans)) {
      UpdateUnpackedSize(record, gim);
      HandOverPacked(gim, row);
    }
    DeleteFileQuietly(gim);
  }

  void ReplaceVag(int row) {
    const fs::path left = Named(".ch1.vag");
    const fs::path right = Named(".ch2.vag");
    if (FileExists(left) && FileExists(right)) {
      mod_.vagChannels = 2;
      mod_.vagSize1 = CheckedInt32(FileLength(left));
      mod_.vagSize2 = CheckedInt32(FileLength(right));
      MergeVagChannels(left, right, mod_);
      replacer_.Replace(mod_.TempPath("temp.vag"), row);
      DeleteFileQuietly(mod_.TempPath("temp.vag"));
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
  GenReplacer replacer_;
  std::string base_;  // folder and label of the row
  Int16 colours_;
};

}  // namespace

void CmdReplace(const ReplaceContext& context) {
  const int row = context.write.document.lst.Selected();
  if (row >= 0) {
    Replacement(context, row).Run();
  }
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
