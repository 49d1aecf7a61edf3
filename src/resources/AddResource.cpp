#include "resources/AddResource.h"

#include <optional>

#include "common/Encoding.h"
#include "common/Files.h"
#include "common/PositionField.h"
#include "common/TempFiles.h"
#include "container/RcoFormat.h"
#include "gim/BitmapToGim.h"
#include "resources/Codec.h"
#include "resources/PathEnding.h"

namespace kelvane {

namespace {

constexpr int kBestCompression = 9;
constexpr int kTiled = 1;

// The kind of resource that a file of that ending makes; nothing for any other ending.
std::optional<int> KindOf(const std::string& ending) {
  if (ending == ".mig" || ending == ".gim") {
    return rco::kKindImage;
  }
  if (ending == ".vag") {
    return rco::kKindVag;
  }
  if (ending == ".omg" || ending == ".gmo") {
    return rco::kKindGmo;
  }
  return std::nullopt;
}

}  // namespace

bool AddGenRsc(const AddGenFields& fields, const WriteContext& context, const AfterInsert& after) {
  Prompts& prompts = context.prompts;
  if (fields.txtLabel.empty()) {
    Tell(prompts, "必须输入一个标记", Icon::Exclamation);
    return false;
  }
  std::filesystem::path path = PathFromUtf8(fields.txtFile);
  if (!FileExists(path)) {
    Tell(prompts, "文件不存在！", Icon::Exclamation);
    return false;
  }
  // Neither in front of the first row nor behind the last.
  const std::optional<Int16> position = AcceptPosition(prompts, fields.txtPos, context.document.lst.Count(), 1);
  if (!position.has_value()) {
    return false;
  }

  const std::filesystem::path tempGim = context.mod.TempPath("temp.gim");
  const std::filesystem::path tempDat = context.mod.TempPath("temp.dat");
  const TempFiles temps({tempGim, tempDat});
  if (PathEnding(path) == ".bmp") {
    if (!BitmapToGim(path, tempGim, false, kTiled, context.mod.cFirstColTrans)) {
      Tell(prompts, "GIM转换失败", Icon::Exclamation);
      return false;
    }
    path = tempGim;
  }
  const std::optional<int> kind = KindOf(PathEnding(path));
  if (!kind.has_value()) {
    Tell(prompts, "无效的扩展名", Icon::Exclamation);
    return false;
  }
  std::int32_t extra = 0;
  if (*kind != rco::kKindVag) {
    extra = CheckedInt32(FileLength(path));
    // Whether it could be compressed shows in what follows.
    CompressFile(path, tempDat, kBestCompression);
    path = tempDat;
  }
  InsertGenRsc({.position = *position, .dataFile = path, .label = fields.txtLabel, .kind = *kind, .extra = extra},
               context, after);
  return true;
}

}  // namespace kelvane
