#include "support/TempFolder.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include "common/Files.h"

namespace kelvane::test {

TempFolder::TempFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "kelvane-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary folder");
  }
  path_ = name;
}

TempFolder::~TempFolder() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

std::filesystem::path TempFolder::Write(const std::string& name, ByteView content) const {
  WriteWholeFile(path_ / name, content);
  return path_ / name;
}

std::vector<std::string> TempFolder::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace kelvane::test
