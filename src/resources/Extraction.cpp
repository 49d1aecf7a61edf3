#include "resources/Extraction.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string_view>

#include "common/Encoding.h"
#include "common/TempFiles.h"
#include "container/Labels.h"
#include "container/RcoFormat.h"
#include "gim/GimToBitmap.h"
#include "resources/Codec.h"
#include "resources/ExtractDialogs.h"
#include "resources/GenDataExport.h"

namespace kelvane {

namespace fs = std::filesystem;

namespace {

// Up to this length an unpacked image is kept to be converted; a longer one is read again from its file.
constexpr std::size_t kMostHeld = std::size_t{1} << 24;

void ExtractTo(const Mod& mod, const RcoDocument& document, Prompts& prompts, int row, const fs::path& path,
               ExportMode mode) {
  const fs::path tempDat = mod.TempPath("temp.dat");
  const fs::path tempGim = mod.TempPath("temp.gim");
  TempFiles temps({tempGim, tempDat});

  fs::path target = mode == ExportMode::Raw ? path : tempDat;
  if (!ExportGenData(mod, document, target, Int16(row), prompts)) {
    Tell(prompts, "数据获取失败", Icon::Critical);
    return;
  }
  if (mode == ExportMode::Raw) {
    temps.Dismiss();
    return;
  }

  target = mode == ExportMode::Unpacked ? path : tempGim;
  if (IsOpenFile(mod, target) || !DecompressFile(tempDat, target)) {
    Tell(prompts, "解压失败", Icon::Critical);
    return;
  }
  if (mode == ExportMode::Unpacked) {
    return;
  }
  if (IsOpenFile(mod, path) || !GimToBitmap(tempGim, path, mode == ExportMode::Bitmap32, mod.cAppPath)) {
    Tell(prompts, "无效的GIM", Icon::Critical);
  }
}

// One run of cmdExtractAll. Data that a step left in a file and the next step needs are taken from memory; files and
// outcomes are those of going from file to file.
class AllExtraction {
 public:
  AllExtraction(const Mod& mod, const RcoDocument& document, Prompts& prompts, fs::path folder)
      : mod_(mod), document_(document), exporter_(mod, document, prompts), folder_(std::move(folder)) {}

  void Extract(Int16 row) {
    const GenRsc& record = At(document_.genRsc, row.Int());
    base_ = folder_ / PathFromUtf8(FileNameOfLabel(LabelOfRow(document_, row.Int())));
    switch (record.rscKind.Int()) {
      case rco::kKindGmo:
        // A model comes out under the name of an image: users' folders are full of them.
        if (Export(row, ".dat")) {
          Unpack(".gim");
        }
        break;
      case rco::kKindVag:
        Export(row, ".vag");
        break;
      default:
        ExtractImage(row, record);
    }
  }

 private:
  void ExtractImage(Int16 row, const GenRsc& record) {
    const std::string extension = "." + ExtensionForImageType(record.rscFormat);
    content_.reset();
    switch (record.rscCompression.Int()) {
      case rco::kCompressionZlib:
        if (Export(row, ".dat")) {
          Unpack(extension);
        }
        break;
      case rco::kCompressionNone:
        Export(row, extension);
        if (exporter_.Written() != nullptr) {
          content_ = *exporter_.Written();
        }
        break;
      default:
        return;
    }
    if (record.rscFormat == Int16(rco::kFormatGim)) {
      ConvertGim(".bmp", false);
      ConvertGim(".32bit.bmp", true);
    }
  }

  [[nodiscard]] fs::path File(std::string_view suffix) const {
    fs::path path = base_;
    path += suffix;
    return path;
  }

  bool Export(Int16 row, std::string_view suffix) {
    fs::path path = File(suffix);
    return exporter_.Export(path, row);
  }

  // Unpacks the ".dat" file, whatever comes of it.
  void Unpack(std::string_view suffix) {
    const fs::path from = File(".dat");
    const fs::path to = File(suffix);
    if (IsOpenFile(mod_, to)) {
      return;
    }
    const Bytes* stored = exporter_.Written();
    if (stored == nullptr) {
      DecompressFile(from, to);
      return;
    }
    unpacked_.clear();
    bool complete = true;
    DecompressHeldFile(*stored, from, to, [&](ByteView chunk) {
      complete = complete && unpacked_.size() + chunk.size() <= kMostHeld;
      if (complete) {
        Append(unpacked_, chunk);
      }
    });
    if (complete) {
      content_ = IsPlainData(*stored) ? *stored : unpacked_;
    }
  }

  // Makes a bitmap of the ".gim" file, if it can be made.
  void ConvertGim(std::string_view suffix, bool force32) {
    const fs::path to = File(suffix);
    if (IsOpenFile(mod_, to)) {
      return;
    }
    if (content_) {
      GimBytesToBitmap(*content_, to, force32, mod_.cAppPath);
    } else {
      GimToBitmap(File(".gim"), to, force32, mod_.cAppPath);
    }
  }

  const Mod& mod_;
  const RcoDocument& document_;
  GenDataExporter exporter_;
  fs::path folder_;
  fs::path base_;  // of the row's files: the folder and the label
  Bytes unpacked_;
  std::optional<ByteView> content_;  // of the image's own file, where it is known
};

}  // namespace

std::string LabelOfRow(const RcoDocument& document, int row) {
  constexpr std::size_t kPrefix = 6;
  const std::string& text = document.lst.Text(row);
  return text.size() > kPrefix ? text.substr(kPrefix) : "";
}

std::string ExtensionForImageType(Int16 format) {
  constexpr std::array<const char*, 6> kExtensions = {"png", "jpg", "tiff", "gif", "bmp", "gim"};
  return format >= Int16(0) && format < Int16(kExtensions.size()) ? kExtensions[format.Index()] : "";
}

void CmdExtract(const Mod& mod, const RcoDocument& document, Prompts& prompts) {
  const int row = document.lst.Selected();
  if (row < 0) {
    return;
  }
  const GenRsc& record = At(document.genRsc, row);
  const ExtractDialog* dialog = ExtractDialogFor(record.rscKind, record.rscFormat);
  if (dialog == nullptr) {
    return;
  }
  const FileChoice choice = prompts.ShowFileDialog({.title = dialog->title,
                                                    .filters = dialog->filters,
                                                    .initialDir = mod.cCurFile,
                                                    .open = false,
                                                    .defaultExt = dialog->defaultExt});
  if (!choice.path.empty()) {
    ExtractTo(mod, document, prompts, row, choice.path, dialog->ModeOf(choice.filterNumber));
  }
}

void CmdExtractAll(const Mod& mod, const RcoDocument& document, Prompts& prompts, Progress& progress) {
  const fs::path folder = prompts.BrowseForFolder("选择输出目录");
  if (folder.empty()) {
    return;
  }
  // A closed document keeps its count, and one without resources the records of the document before.
  const int total = std::min(std::max(document.genCount.Int(), 0), static_cast<int>(document.genRsc.size()));
  AllExtraction run(mod, document, prompts, folder);
  progress.Show(0, total);
  for (int row = 0; row < total; ++row) {
    run.Extract(Int16(row));
    progress.Show(row + 1, total);
  }
  Tell(prompts, "完成", Icon::Information);
}

}  // namespace kelvane
