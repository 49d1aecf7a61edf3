#include "resources/VagSound.h"

#include "common/Bytes.h"
#include "common/FileWriter.h"
#include "common/Files.h"
#include "common/Int16.h"

namespace kelvane {

namespace {

constexpr const char* kMergedName = "temp.vag";

Bytes ReadChannel(const std::filesystem::path& path) {
  Bytes bytes = ReadWholeFile(path);
  RequireArraySize(static_cast<std::int64_t>(bytes.size()));
  return bytes;
}

}  // namespace

void MergeVagChannels(const std::filesystem::path& leftPath, const std::filesystem::path& rightPath, const Mod& mod) {
  FileWriter merged;
  merged.Replace(mod.TempPath(kMergedName));
  Bytes left = ReadChannel(leftPath);
  left.resize((left.size() + 3) / 4 * 4);
  merged.Write(left);
  merged.Write(ReadChannel(rightPath));
  merged.Close();
}

bool AcceptVagChoice(const VagChoice& choice, Mod& mod, Prompts& prompts) {
  if (!FileExists(choice.left)) {
    Tell(prompts, "左声道的VAG文件不存在！", Icon::Exclamation);
    return false;
  }
  if (choice.stereo && !FileExists(choice.right)) {
    Tell(prompts, "右声道的VAG文件不存在！", Icon::Exclamation);
    return false;
  }
  mod.vagChannels = choice.stereo ? 2 : 1;
  mod.vagSize1 = CheckedInt32(FileLength(choice.left));
  if (!choice.stereo) {
    mod.vagPath = choice.left;
    return true;
  }
  mod.vagSize2 = CheckedInt32(FileLength(choice.right));
  MergeVagChannels(choice.left, choice.right, mod);
  mod.vagPath = mod.TempPath(kMergedName);
  return true;
}

void AskForVag(Mod& mod, Prompts& prompts) {
  mod.vagSize1 = 0;
  mod.vagSize2 = 0;
  mod.vagPath.clear();
  prompts.ShowVagReplace(mod.vagChannels == Int16(2),
                         [&](const VagChoice& choice) { return AcceptVagChoice(choice, mod, prompts); });
}

}  // namespace kelvane
