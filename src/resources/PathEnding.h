// Files told by their names.
#pragma once

#include <filesystem>
#include <string>

namespace kelvane {

// The last four bytes of a path, with ASCII letters in lower case, as in ".png": what tells the kind of a file.
[[nodiscard]] std::string PathEnding(const std::filesystem::path& path);

}  // namespace kelvane
