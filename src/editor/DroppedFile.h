// Files that are dropped where one file is wanted.
#pragma once

#include <filesystem>
#include <vector>

#include "common/Prompts.h"

namespace kelvane {

// The first of the files if it exists, else an empty path. More than one is told.
[[nodiscard]] std::filesystem::path DroppedFile(const std::vector<std::filesystem::path>& files, Prompts& prompts);

}  // namespace kelvane
