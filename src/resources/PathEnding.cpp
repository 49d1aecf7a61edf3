#include "resources/PathEnding.h"

#include <algorithm>

#include "common/Encoding.h"

namespace kelvane {

std::string PathEnding(const std::filesystem::path& path) {
  std::string text = PathToUtf8(path);
  text = text.size() > 4 ? text.substr(text.size() - 4) : text;
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}

}  // namespace kelvane
