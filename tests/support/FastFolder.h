// A folder of its own for thousands of files that are flushed: in memory where the system has a place for that.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kelvane::test {

class FastFolder {
 public:
  FastFolder() {
    const std::filesystem::path memory = "/dev/shm";
    for (const std::filesystem::path& parent : {memory, std::filesystem::temp_directory_path()}) {
      std::string name = (parent / "kelvane-fast-XXXXXX").string();
      if (mkdtemp(name.data()) != nullptr) {
        path_ = name;
        return;
      }
    }
    throw std::runtime_error("no temporary folder");
  }
  FastFolder(const FastFolder&) = delete;
  FastFolder& operator=(const FastFolder&) = delete;
  ~FastFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace kelvane::test
