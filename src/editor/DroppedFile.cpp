#include "editor/DroppedFile.h"

#include "common/Files.h"

namespace kelvane {

std::filesystem::path DroppedFile(const std::vector<std::filesystem::path>& files, Prompts& prompts) {
  if (files.size() > 1) {
    Tell(prompts, "More than one file was dropped - only the first file will be used.", Icon::Exclamation);
  }
  return !files.empty() && FileExists(files.front()) ? files.front() : std::filesystem::path();
}

}  // namespace kelvane
